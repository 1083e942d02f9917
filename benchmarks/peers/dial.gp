# The dial of dial.dat. A unit of the plot is a millimetre: the plane is 200 of them wide and high.
set terminal svg size 756,756 fixed rounded
set angles degrees
set margins 0, 0, 0, 0
set xrange [-100:100]
set yrange [-100:100]
unset border
unset tics
unset key
set style data lines
mm = 756 / 200.0
radius = 60

# A point at a scale angle: 0 to the left, 90 up, 180 to the right.
px(angle, rho) = -rho * cos(angle)
py(angle, rho) = rho * sin(angle)

$Feet << END
-50 -64
-50 -60
50 -60
50 -64
END
$Pivot << END
-5 0
5 0

0 -5
0 5
END
$Stop << END
-32 -30
-28 -30

-30 -32
-30 -28
END
$Window << END
-20 -40
20 -40
20 -25
-20 -25
-20 -40
END
$Outline << END
-80 -70
80 -70
80 80
-80 80
-80 -70
END

plot sample \
  [a=-45:225:3] "+" using (px(a, radius)):(py(a, radius)) linewidth 0.5 * mm linecolor rgb "black", \
  [i=0:120:1] "+" using (px(-45 + 2.25 * i, radius)):(py(-45 + 2.25 * i, radius)): \
    (px(-45 + 2.25 * i, 4)):(py(-45 + 2.25 * i, 4)) \
    with vectors nohead linewidth 0.3 * mm linecolor rgb "black", \
  [i=0:24:1] "+" using (px(-45 + 11.25 * i, radius)):(py(-45 + 11.25 * i, radius)): \
    (px(-45 + 11.25 * i, 6)):(py(-45 + 11.25 * i, 6)) \
    with vectors nohead linewidth 0.45 * mm linecolor rgb "black", \
  [i=0:12:1] "+" using (px(-45 + 22.5 * i, radius)):(py(-45 + 22.5 * i, radius)): \
    (px(-45 + 22.5 * i, 9)):(py(-45 + 22.5 * i, 9)) \
    with vectors nohead linewidth 0.7 * mm linecolor rgb "black", \
  $Pivot linewidth 0.3 * mm linecolor rgb "black", \
  $Feet linewidth 0.4 * mm linecolor rgb "black", \
  $Stop linewidth 0.3 * mm linecolor rgb "red", \
  $Window linewidth 0.3 * mm linecolor rgb "black", \
  $Outline linewidth 0.3 * mm linecolor rgb "blue"
