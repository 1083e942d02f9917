# The loop of count.dat.
BEGIN {
  i = 0
  do
    i = i + 1
  while (i < 1000000)
  print i
}
