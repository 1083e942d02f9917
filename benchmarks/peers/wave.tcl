# The arithmetic of wave.dat. Nothing is drawn; the last stroke's end on the sheet is printed.
proc wave {} {
  set radians 0.017453293 ;# in a degree, as Vaxel has it
  set i 0
  while {$i < 1000000} {
    set i [expr {$i + 1}]
    set a [expr {$i * 0.36}]
    set r [expr {20 + 5 * sin($a * 3 * $radians)}]
    set x [expr {$a / 3600 - 50}]
    set y [expr {$r * 2 - 40}]
  }
  return [format "%.3f,%.3f" [expr {100 + $x}] [expr {100 - $y}]]
}
puts [wave]
