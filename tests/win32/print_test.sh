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

# Each job is written by a process of its own.
await_jobs() {
  for _ in {1..100}; do
    jobs=("$folder"/*.ps)
    [[ -f ${jobs[0]} && ${#jobs[@]} == "$1" ]] && return
    sleep 0.1
  done
  fail "not $1 jobs but: $(ls "$folder")"
}
job_named() { grep -alq "^%%Title: $1" "${jobs[@]}" && grep -al "^%%Title: $1" "${jobs[@]}" || fail "no document is $1"; }
rasterise() { gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=pgmraw -r600 -o "$folder/$1 %d.pgm" "$2"; }

run_tests 'Printing.*'
await_jobs 2
small=$(job_named 'Test sheet 1') large=$(job_named 'Test sheet 2')
rasterise 'Test sheet 1' "$small" &
rasterise 'Test sheet 2' "$large"
wait $!
[[ $(ls "$folder" | grep -c '\.pgm$') == 6 ]] || fail "not six pages"
run_tests 'PrintedSheet.*'
text=$(gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=pdfwrite -o - "$small" | pdftotext - -)
# Omega and the ohm are one character to PostScript. The text of the mirrored page is outlines.
[[ $(grep -cE $'axel (\u03A9|\u2126) .+ °' <<<"$text") == 3 ]] || fail "the text is not there as text: $text"
