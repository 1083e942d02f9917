#!/usr/bin/env bash
# Usage: windows_program_test.sh SOURCE_FOLDER VAXEL_RENDER_EXE
#
# The Windows program under Wine: it draws what the native one draws, into a file whose name no code page holds.
set -euo pipefail
source=$1 program=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() { echo "FAILED: $*"; exit 1; }
render() { "$source/scripts/wine-run" "$program" --language en "$@"; }

cp "$source/examples/linear-270.dat" "$folder/Ωhm.dat"
cd "$folder"
render -o Ωhm.list -o Ωhm.svg Ωhm || fail "status $?"
cmp Ωhm.list "$source/tests/golden/linear-270.screen.txt" || fail "another drawing"
grep -q '^<svg ' Ωhm.svg || fail "no SVG"

# Standard output is not changed on its way, and a missing renderer is said.
render --format list Ωhm.dat | cmp - Ωhm.list || fail "standard output differs"
status=0
render -o x.pdf Ωhm.dat 2>message || status=$?
[[ $status -eq 3 ]] || fail "status $status for a PDF"
grep -q 'SVG and the list format only' message || fail "message: $(cat message)"
status=0
echo 'X = 1/0' | render - 2>message || status=$?
[[ $status -eq 1 ]] || fail "status $status for a failing script"
[[ ! -e x.pdf && $(ls | wc -l) -eq 4 ]] || fail "left behind: $(ls)"

# A file is the same however it is spelled.
echo 'Open = Data.txt' >reads.dat
echo 1 >Data.txt
status=0
render -o dATA.TXT reads.dat 2>message || status=$?
[[ $status -eq 2 && $(<Data.txt) == 1 ]] || fail "status $status, Data.txt: $(<Data.txt)"
grep -q 'dATA.TXT would overwrite Data.txt' message || fail "message: $(cat message)"

# A link does not lead out of the folder that may be read, one to another place in it does no harm.
mkdir -p inside/sub outside
echo 1 | tee inside/sub/data.txt >outside/data.txt
ln -s ../outside inside/out
ln -s sub inside/in
ln -s inside root
echo 'Open = in/data.txt' >inside/in.dat
echo 'Open = out/data.txt' >inside/out.dat
render --root root --format list -o - inside/in.dat >/dev/null || fail "status $? inside of the root"
status=0
render --root root --format list -o - inside/out.dat >/dev/null 2>message || status=$?
[[ $status -eq 1 ]] && grep -q 'outside of the folder' message || fail "status $status, message: $(cat message)"

# Nothing but the system says which language is the user's; this prefix is an English one.
"$source/scripts/wine-run" "$program" --help | grep -q '^Usage: ' || fail "help in another language"
