#!/usr/bin/env bash
# Usage: export_test.sh SOURCE_DIR ADD_PRINTER.exe PROGRAM_TESTS.exe
#
# Exports a dial as PDF through a printer and measures the files. Under Wine a printer writes PostScript into the
# file that a program names; what is complete there is turned into PDF here, as a PDF printer would do itself.
set -euo pipefail
export LC_ALL=C.UTF-8
source_dir=$1 program_tests=$3
export VAXEL_ADD_PRINTER=$2

folder=$(mktemp -d)
trap 'kill "$converter" 2>/dev/null || true; rm -rf "$folder"' EXIT
export VAXEL_EXPORT_FOLDER=$folder

fail() { echo "export_test: $1" >&2; exit 1; }
run_tests() { timeout 120 "$source_dir/scripts/wine-with-printer" "$program_tests" --gtest_brief=1 --gtest_filter="$1"; }
gs() { command gs -q -dNOPAUSE -dBATCH -dSAFER "$@"; }

is_whole_postscript() { [[ $(head -c 4 "$1") == %!PS ]] && tail -c 64 "$1" | grep -aq '%%EOF'; }
convert() {
  while sleep 0.1; do
    for draft in "$folder"/vaxel-*.pdf; do
      { [[ -f $draft ]] && is_whole_postscript "$draft"; } 2>/dev/null || continue
      gs -sDEVICE=pdfwrite -o "$folder/converted" "$draft" && mv "$folder/converted" "$draft"
    done
  done
}
convert &
converter=$!

run_tests 'PdfExports.AreWritten'
for name in drawing paper; do
  [[ -f $folder/$name.pdf ]] || fail "there is no $name.pdf"
  gs -sDEVICE=pgmraw -r600 -o "$folder/$name.pgm" "$folder/$name.pdf"
  pdftotext "$folder/$name.pdf" - | grep -q Omega || fail "the text of $name.pdf is not there as text"
done
run_tests 'PdfExports.AreOfTrueSize'
