# The arithmetic of wave.dat. Nothing is drawn; the last stroke's end on the sheet is printed.
BEGIN {
  radians = 0.017453293 # in a degree, as Vaxel has it
  i = 0
  do {
    i = i + 1
    a = i * 0.36
    r = 20 + 5 * sin(a * 3 * radians)
    x = a / 3600 - 50
    y = r * 2 - 40
  } while (i < 1000000)
  printf "%.3f,%.3f\n", 100 + x, 100 - y
}
