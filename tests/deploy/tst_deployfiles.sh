#!/bin/sh
# Checks the files the build puts beside the program, other than regSvr.sh.
#   tst_deployfiles.sh <makecalllog.cmake> <calllog.sql> <beep.wav>
maker=$1
schema=$2
beep=$3
root=$(mktemp -d) || exit 1
trap 'rm -rf "$root"' EXIT
failures=0

fail() {
    echo "FAIL: $case_name: $*"
    failures=$((failures + 1))
}

make_db() {
    cmake -DSQLITE3="$(command -v sqlite3)" -DSCHEMA="$schema" -DTARGET="$1" -P "$maker" >/dev/null 2>&1
}

# A new installation shows the enquiry form: the flags table is there, empty.
case_name=fresh-database-skips-enquiry
make_db "$root/fresh.db" || fail "could not make the database"
rows=$(sqlite3 "$root/fresh.db" "SELECT count(*) FROM flags" 2>&1)
[ "$rows" = 0 ] || fail "flags holds '$rows'"

case_name=rebuild-loses-users-answer
sqlite3 "$root/fresh.db" "INSERT INTO flags (show_reg_form) VALUES (1)"
make_db "$root/fresh.db" || fail "a second build failed"
rows=$(sqlite3 "$root/fresh.db" "SELECT show_reg_form FROM flags" 2>&1)
[ "$rows" = 1 ] || fail "the user's row became '$rows'"

# The same format as the telephone prompts: 8 kHz, 16-bit, mono.
case_name=beep-not-a-telephone-prompt
format="$(soxi -r "$beep" 2>&1) $(soxi -b "$beep" 2>&1) $(soxi -c "$beep" 2>&1)"
[ "$format" = "8000 16 1" ] || fail "rate, bits and channels are $format"
[ "$(soxi -s "$beep" 2>&1)" -gt 400 ] || fail "too short"

[ "$failures" -eq 0 ] || { echo "$failures failure(s)"; exit 1; }
echo "All deployment file cases passed"
