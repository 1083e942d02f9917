#!/usr/bin/python3
"""The dial of dial.dat, drawn by Cairo as SVG on standard output."""

import math
import sys

import cairo

MM = 72 / 25.4
RADIUS = 60


def on_dial(angle, rho):
    """A point at a scale angle: 0 to the left, 90 up, 180 to the right."""
    return -rho * math.cos(math.radians(angle)), -rho * math.sin(math.radians(angle))


def line(context, start, end, width):
    context.move_to(*start)
    context.line_to(*end)
    context.set_line_width(width)
    context.stroke()


def marks(context, count, length, width):
    for i in range(count + 1):
        angle = -45 + 270 * i / count
        line(context, on_dial(angle, RADIUS), on_dial(angle, RADIUS + length), width)


def plus(context, x, y, half):
    line(context, (x - half, y), (x + half, y), 0.3)
    line(context, (x, y - half), (x, y + half), 0.3)


def main():
    surface = cairo.SVGSurface(sys.stdout.buffer, 200 * MM, 200 * MM)
    context = cairo.Context(surface)
    context.scale(MM, MM)
    context.translate(100, 100)
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    context.set_line_join(cairo.LINE_JOIN_ROUND)

    context.arc(0, 0, RADIUS, math.radians(135), math.radians(45))
    context.set_line_width(0.5)
    context.stroke()
    marks(context, 120, 4, 0.3)
    marks(context, 24, 6, 0.45)
    context.set_line_cap(cairo.LINE_CAP_BUTT)
    marks(context, 12, 9, 0.7)
    context.set_line_cap(cairo.LINE_CAP_ROUND)

    plus(context, 0, 0, 5)
    line(context, (-50, 60), (50, 60), 0.4)
    line(context, (-50, 60), (-50, 64), 0.4)
    line(context, (50, 60), (50, 64), 0.4)
    context.set_source_rgb(1, 0, 0)
    plus(context, -30, 30, 2)

    context.set_line_width(0.3)
    context.set_source_rgb(0, 0, 0)
    context.rectangle(-20, 25, 40, 15)
    context.stroke()
    context.set_source_rgb(0, 0, 1)
    context.rectangle(-80, -80, 160, 150)
    context.stroke()
    surface.finish()


main()
