# The loop of count.dat with the command that Tcl has for adding whole numbers alone.
proc count {} {
  set i 0
  while {$i < 1000000} {
    incr i
  }
  return $i
}
puts [count]
