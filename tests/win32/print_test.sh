#!/usr/bin/env bash
# Usage: print_test.sh SOURCE_DIR ADD_PRINTER.exe PRINT_TESTS.exe
#
# Prints the test sheet on a printer that writes files, and measures it.
set -euo pipefail
export LC_ALL=C.UTF-8
source_dir=$1 print_tests=$3
export VAXEL_ADD_PRINTER=$2

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export VAXEL_SPOOL_FOLDER=$folder VAXEL_PRINTED_FOLDER=$folder

fail() { echo "print_test: $1" >&2; exit 1; }
run_tests() { timeout 120 "$source_dir/scripts/wine-with-printer" "$print_tests" --gtest_brief=1 --gtest_filter="$1"; }

run_tests 'Printing.*'
# The job is written by a process of its own.
for _ in {1..100}; do
  jobs=("$folder"/*.ps)
  [[ -f ${jobs[0]} ]] && break
  sleep 0.1
done
[[ -f ${jobs[0]} && ${#jobs[@]} == 1 ]] || fail "not one job but: $(ls "$folder")"
grep -aq '^%%Title: Test sheet 1' "${jobs[0]}" || fail "the document has lost its name"

gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=pgmraw -r600 -o "$folder/page%d.pgm" "${jobs[0]}"
[[ $(ls "$folder" | grep -c '\.pgm$') == 3 ]] || fail "not three pages"
run_tests 'PrintedSheet.*'
text=$(gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=pdfwrite -o - "${jobs[0]}" | pdftotext - -)
# Omega and the ohm are one character to PostScript.
[[ $(grep -cE $'axel (\u03A9|\u2126) .+ °' <<<"$text") == 3 ]] || fail "the text is not there as text: $text"
