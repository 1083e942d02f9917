-- The loop of count.dat. A local, and the test at the end of the pass: Lua's fastest short of "for".
local i = 0
repeat
  i = i + 1
until i >= 1000000
print(i)
