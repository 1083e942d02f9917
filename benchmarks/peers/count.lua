-- The loop of count.dat. Locals, and the test at the end of the pass: Lua's fastest way to say it.
local i = 0
repeat
  i = i + 1
until i >= 1000000
print(i)
