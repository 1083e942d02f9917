-- The arithmetic of wave.dat. Nothing is drawn; the last stroke's end on the sheet is printed.
local sin = math.sin
local radians = 0.017453293 -- in a degree, as Vaxel has it
local i = 0
local a, r, x, y
repeat
  i = i + 1
  a = i * 0.36
  r = 20 + 5 * sin(a * 3 * radians)
  x = a / 3600 - 50
  y = r * 2 - 40
until i >= 1000000
print(string.format("%.3f,%.3f", 100 + x, 100 - y))
