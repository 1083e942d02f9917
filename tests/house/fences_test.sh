#!/usr/bin/env bash
# Usage: fences_test.sh CHECK_FENCES
# Builds small source trees and looks at what the check says about each.
set -euo pipefail

check=$(realpath "$1")
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
cases=0 wrong=0

# put FILE [INCLUDE...]: a source whose includes begin in its second line.
put() {
  mkdir -p "$tree/$(dirname "$1")"
  { echo '// A file.'; [[ $# == 1 ]] || printf '#include %s\n' "${@:2}"; } >"$tree/$1"
}

# verdict NAME STATUS [LINE_START REASON]: runs the check; with a reason it must give exactly one offence,
# which starts and continues so.
verdict() {
  local said status=0
  said=$("$check" "$tree" 2>&1) || status=$?
  rm -rf "${tree:?}"/*
  cases=$((cases + 1))
  if [[ $status != "$2" ]] || { [[ $# == 4 ]] && [[ $said != "$3: "*"$4"* || $said == *$'\n'* ]]; }; then
    wrong=$((wrong + 1))
    printf '%s: status %s, expected %s %s\n%s\n' "$1" "$status" "$2" "${*:3}" "$said"
  fi
}

# What each folder may do, in one tree.
put resources/table.cpp '"resources/table.h"' '"resources/strings.def"' '<string>'
put interpreter/run.h '"drawing/pen.h"' '"scale/marks.h"' '"geometry/point.h"'
put render/cairo_png.cpp '<cairo/cairo.h>' '<pango/pangocairo.h>' '<png.h>' '<unistd.h>' '"drawing/pen.h"'
put render/gdi_page.cpp '<windows.h>' '<gdiplus.h>'
put app/win32/window.cpp '<windows.h>' '<commctrl.h>' '"app/state.h"' '"app/win32/window.h"'
put cli/main.cpp '<CLI/CLI.hpp>' '<sys/stat.h>' '"app/state.h"' '"commands/row.h"'
put tests/drawing/pen_test.cpp '<gtest/gtest.h>' '<unistd.h>' '"drawing/pen.h"' '"tests/support/script.h"'
put benchmarks/run.cpp '<benchmark/benchmark.h>' '<cairo.h>' '"cli/options.h"'
put build/dev/generated.cpp '"pen.h"'
verdict 'good tree' 0

# FILE | INCLUDE | what the reason says: one case a rule
while IFS='|' read -r file include reason; do
  put "$file" '<vector>' "$include"
  verdict "$file $include" 1 "$file:3" "$reason"
done <<'CASES'
drawing/pen.cpp|"interpreter/run.h"|upward
app/state.cpp|"app/win32/window.h"|upward
drawing/pen.h|"scale/marks.h"|sideways
app/win32/window.cpp|"cli/options.h"|sideways
drawing/pen.cpp|"tests/support/script.h"|must not include tests/
drawing/pen.cpp|"pen.h"|from the root
drawing/pen.cpp|"drawing/../app/state.h"|from the root
drawing/pen.cpp|<app/state.h>|with quotes
app/state.cpp|<Windows.h>|Windows headers
render/list.cpp|<cairo/cairo-pdf.h>|Cairo
interpreter/run.cpp|<sys/stat.h>|POSIX
app/state.cpp|<CLI/CLI.hpp>|command-line library
drawing/pen.cpp|<gtest/gtest.h>|test libraries
CASES

put misc/thing.cpp
verdict 'unknown folder' 1 misc/thing.cpp:1 'outside the known folders'

put drawing/a.h '"drawing/b.h"'
put drawing/b.h '"drawing/c.h"'
put drawing/c.h '"drawing/b.h"'
verdict 'circle behind another' 1 drawing/c.h:2 'drawing/b.h -> drawing/c.h -> drawing/b.h'

verdict 'empty tree' 2

echo "$cases cases, $wrong wrong"
((wrong == 0))
