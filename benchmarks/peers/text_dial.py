#!/usr/bin/python3
"""The dial of text-dial.dat, drawn by Cairo as PDF on standard output."""

import math
import sys

import cairo

MM = 72 / 25.4
POINT = 25.4 / 72
BLACK, BLUE, RED = (0, 0, 0), (0, 0, 1), (1, 0, 0)


def on_dial(angle, rho):
    """A point at a scale angle: 0 to the left, 90 up, 180 to the right."""
    return -rho * math.cos(math.radians(angle)), -rho * math.sin(math.radians(angle))


def arc(context, start, end, radius):
    context.new_path()
    context.arc(0, 0, radius, math.radians(180 + start), math.radians(180 + end))
    context.set_line_width(0.5)
    context.stroke()


def marks(context, count, start, end, radius, length, width):
    context.set_line_width(width)
    for i in range(count + 1):
        angle = start + (end - start) * i / count
        context.move_to(*on_dial(angle, radius))
        context.line_to(*on_dial(angle, radius + length))
        context.stroke()


def select(context, family, size, bold=False, italic=False):
    """Sets the font and returns the ascent and the descent of its cells."""
    context.select_font_face(family, cairo.FONT_SLANT_ITALIC if italic else cairo.FONT_SLANT_NORMAL,
                             cairo.FONT_WEIGHT_BOLD if bold else cairo.FONT_WEIGHT_NORMAL)
    context.set_font_size(size * POINT)
    return context.font_extents()[:2]


def length_of(context, text):
    return context.text_extents(text).x_advance


def show(context, x, y, rotation, text, back=0.0, down=0.0):
    """The baseline begins at the point, moved back along it and down across it."""
    context.save()
    context.translate(x, y)
    context.rotate(-math.radians(rotation))
    context.move_to(-back, down)
    context.show_text(text)
    context.restore()


def centred(context, cell, x, y, rotation, text):
    show(context, x, y, rotation, text, length_of(context, text) / 2, (cell[0] - cell[1]) / 2)


def values(context, cell, count, texts, start, end, radius, direction):
    for i, text in enumerate(texts):
        angle = start + (end - start) * i / count
        rotation = {"level": 0, "tangent": 90 - angle, "ray": 180 - angle}[direction]
        centred(context, cell, *on_dial(angle, radius), rotation, text)


def along_arc(context, radius, angle, text):
    """Character by character, its middle at the angle, with a negative radius along the inside."""
    side = 1 if radius > 0 else -1
    degrees = 1 / math.radians(radius)
    angle += length_of(context, text) / 2 * degrees
    for character in text:
        length = length_of(context, character)
        angle -= length / 2 * degrees
        x, y = on_dial(180 - angle, abs(radius))
        show(context, x, y, angle - 90 * side, character, length / 2)
        angle -= length / 2 * degrees


def draw_titles(context):
    cell = select(context, "Times New Roman", 14, bold=True)
    centred(context, cell, 0, -22, 0, "Temperature")

    subtitle = "of the outer bearing"
    cell = select(context, "Times New Roman", 10)
    centred(context, cell, 0, -14, 0, subtitle)
    half = length_of(context, subtitle) / 2
    y = -14 + (cell[0] - cell[1]) / 2 + 0.3
    context.set_line_width(0.17)
    context.move_to(-half, y)
    context.line_to(half, y)
    context.stroke()

    ascent, descent = select(context, "Times New Roman", 8)
    for x, rotation, text in (-92, 90, 'Type T-270 "Bearing"'), (92, -90, "Class 1.5 <horizontal>"):
        show(context, x, 0, rotation, text, length_of(context, text) / 2)
    for i, text in enumerate(("Range", "Supply", "Output", "Weight")):
        show(context, -40, 20 + ascent + i * (ascent + descent), 0, text)
    for i, text in enumerate(("-10 to 30 degrees", "24 V & 0.1 A", "4 to 20 mA", "180 g")):
        show(context, 40, 20 + ascent + i * (ascent + descent), 0, text, length_of(context, text))


def main():
    surface = cairo.PDFSurface(sys.stdout.buffer, 200 * MM, 200 * MM)
    context = cairo.Context(surface)
    context.scale(MM, MM)
    context.translate(100, 100)
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    context.set_line_join(cairo.LINE_JOIN_ROUND)

    arc(context, -45, 225, 70)
    marks(context, 120, -45, 225, 70, 3, 0.3)
    marks(context, 24, -45, 225, 70, 5, 0.5)
    cell = select(context, "Arial", 9)
    values(context, cell, 24, [f"{5 * i}" for i in range(25)], -45, 225, 80, "level")
    cell = select(context, "Times New Roman", 6)
    values(context, cell, 60, [f"{i / 4:g}" for i in range(61)], -45, 225, 66, "tangent")
    context.set_source_rgb(*BLUE)
    cell = select(context, "Times New Roman", 6, italic=True)
    values(context, cell, 27, [f"{10 * i - 45}°" for i in range(28)], -45, 225, 89, "ray")

    context.set_source_rgb(*BLACK)
    arc(context, 0, 180, 46)
    marks(context, 40, 0, 180, 46, 2, 0.3)
    cell = select(context, "Courier New", 6, bold=True)
    values(context, cell, 40, [f"{i - 10}" for i in range(41)], 0, 180, 51, "level")
    cell = select(context, "Arial", 7)
    for percent, name, colour in (20, "cold", BLUE), (50, "normal", BLACK), (80, "hot", RED):
        context.set_source_rgb(*colour)
        angle = 1.8 * percent
        centred(context, cell, *on_dial(angle, 41), 90 - angle, name)

    select(context, "Arial", 8, bold=True)
    context.set_source_rgb(*RED)
    along_arc(context, 34, 90, "VAXEL PRECISION")
    context.set_source_rgb(*BLACK)
    along_arc(context, -64, 270, "Made to measure")
    draw_titles(context)
    surface.finish()


main()
