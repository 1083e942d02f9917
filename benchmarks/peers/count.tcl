# The loop of count.dat, in a procedure, for outside of one variables are slower.
proc count {} {
  set i 0
  while {$i < 1000000} {
    set i [expr {$i + 1}]
  }
  return $i
}
puts [count]
