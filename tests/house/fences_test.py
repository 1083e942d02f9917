"""Builds small source trees and looks at what the check says about each.

Usage: fences_test.py CHECK_FENCES
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(sys.argv.pop(1)).resolve()
FLOORS = """
vaxel_floor(0 base)
vaxel_floor(1 resources drawing scale)
vaxel_floor(2 interpreter render)
vaxel_floor(3 commands)
vaxel_floor(4 app)
vaxel_floor(5 win32 cli)
"""

# File, include, what the reason says.
OFFENCES = [
    ("src/drawing/pen.cpp", '"interpreter/run.h"', "upward"),
    ("src/app/state.cpp", '"win32/window.h"', "upward"),
    ("src/render/gdi/view.cpp", '"app/state.h"', "upward"),
    ("src/drawing/pen.h", '"scale/marks.h"', "sideways"),
    ("src/win32/window.cpp", '"cli/options.h"', "sideways"),
    ("src/drawing/pen.cpp", '"tests/support/script.h"', "must not include tests/"),
    ("src/drawing/pen.cpp", '"pen.h"', "from src/"),
    ("src/drawing/pen.cpp", '"src/drawing/pen.h"', "from src/"),
    ("src/drawing/pen.cpp", '"drawing/../app/state.h"', "from src/"),
    ("src/drawing/pen.cpp", "HEADER", "not a plain name"),
    ("src/drawing/pen.cpp", "<app/state.h>", "with quotes"),
    ("src/app/state.cpp", "<Windows.h>", "Windows headers"),
    ("src/render/list.cpp", "<cairo/cairo-pdf.h>", "Cairo"),
    ("src/render/cairo/png.cpp", "<gdk-pixbuf/gdk-pixbuf.h>", "picture library"),
    ("src/interpreter/run.cpp", "<sys/stat.h>", "POSIX"),
    ("src/app/state.cpp", "<CLI/CLI.hpp>", "command-line library"),
    ("src/drawing/pen.cpp", "<gtest/gtest.h>", "test libraries"),
]


class FencesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name)

    def put(self, file, *includes):
        """A source whose includes begin in its second line."""
        path = self.tree / file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("// A file.\n" + "".join(f"#include {name}\n" for name in includes))

    def said(self, status):
        (self.tree / "src").mkdir(exist_ok=True)
        (self.tree / "src/CMakeLists.txt").write_text(FLOORS)
        run = subprocess.run([CHECK, self.tree], capture_output=True, text=True)
        self.assertEqual(run.returncode, status, run.stdout + run.stderr)
        return run.stdout.splitlines()

    def test_what_each_room_may_do(self):
        self.put("src/resources/table.cpp", '"resources/table.h"', '"resources/strings.def"', "<string>")
        self.put("src/interpreter/run.h", '"drawing/pen.h"', '"scale/marks.h"', '"base/point.h"')
        self.put("src/render/cairo/png.cpp", "<cairo/cairo.h>", "<pango/pangocairo.h>", "<png.h>", "<unistd.h>")
        self.put("src/render/cairo_module.cpp", "<dlfcn.h>", '"drawing/pen.h"')
        self.put("src/render/gdi/page.cpp", "<windows.h>", "<gdiplus.h>", '"render/renderer.h"')
        self.put("src/render/system.cpp", '"render/gdi/page.h"')
        self.put("src/win32/window.cpp", "<windows.h>", "<commctrl.h>", '"app/state.h"', '"win32/window.h"')
        self.put("src/cli/main.cpp", "<CLI/CLI.hpp>", "<sys/stat.h>", '"app/state.h"', '"commands/row.h"')
        self.put("tests/drawing/pen_test.cpp", "<gtest/gtest.h>", "<unistd.h>", '"drawing/pen.h"',
                 '"tests/support/script.h"')
        self.put("benchmarks/run.cpp", "<benchmark/benchmark.h>", "<cairo.h>", '"cli/options.h"')
        self.put("build/dev/generated.cpp", '"pen.h"')
        self.assertEqual(self.said(0), [])

    def test_each_offence(self):
        for file, include, reason in OFFENCES:
            with self.subTest(file=file, include=include):
                self.put(file, "<vector>", include)
                lines = self.said(1)
                self.assertEqual(len(lines), 1, lines)
                self.assertTrue(lines[0].startswith(f"{file}:3: "), lines[0])
                self.assertIn(reason, lines[0])
                (self.tree / file).unlink()

    def test_calls_of_one_file(self):
        path = self.tree / "src/win32/fonts.cpp"
        self.put("src/win32/fonts.cpp")
        for call in ('LoadLibraryW(L"x.dll")', "LoadLibraryExA (name, nullptr, 0)", 'dlopen("x.so", 0)'):
            path.write_text(f"// LoadLibrary(\nauto x = {call};\n")
            lines = self.said(1)
            self.assertEqual(len(lines), 1, lines)
            self.assertTrue(lines[0].startswith("src/win32/fonts.cpp:2: "), lines)
        path.write_text('LoadSystemLibrary(L"x.dll");\n')
        self.said(0)

    def test_unknown_room(self):
        self.put("src/misc/thing.cpp")
        self.assertRegex(self.said(1)[0], "^src/misc/thing.cpp:1: .*outside of the rooms")

    def test_circle_behind_another_file(self):
        self.put("src/drawing/a.h", '"drawing/b.h"')
        self.put("src/drawing/b.h", '"drawing/c.h"')
        self.put("src/drawing/c.h", '"drawing/b.h"')
        lines = self.said(1)
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith("src/drawing/c.h:2: "), lines[0])
        self.assertIn("src/drawing/b.h -> src/drawing/c.h -> src/drawing/b.h", lines[0])

    def test_empty_tree(self):
        self.assertEqual(self.said(2), [])


unittest.main()
