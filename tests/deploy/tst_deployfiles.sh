#!/bin/sh
# Checks the files the build puts beside the program, other than regSvr.sh.
#   tst_deployfiles.sh <makecalllog.cmake> <calllog.sql> <beep.wav>
db=$(mktemp -d)/CallLog.db || exit 1
trap 'rm -rf "$(dirname "$db")"' EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
make_db() { cmake -DSQLITE3="$(command -v sqlite3)" -DSCHEMA="$2" -DTARGET="$db" -P "$1" >/dev/null 2>&1; }

# A new installation shows the enquiry form: the flags table is there, empty.
make_db "$1" "$2" || fail "fresh-database: could not make it"
[ "$(sqlite3 "$db" "SELECT count(*) FROM flags" 2>&1)" = 0 ] || fail "fresh-database-skips-enquiry"
sqlite3 "$db" "INSERT INTO flags (show_reg_form) VALUES (1)"
make_db "$1" "$2" || fail "rebuild: a second build failed"
[ "$(sqlite3 "$db" "SELECT show_reg_form FROM flags" 2>&1)" = 1 ] || fail "rebuild-loses-users-answer"

# The same format as the telephone prompts: 8 kHz, 16-bit, mono.
format="$(soxi -r "$3" 2>&1) $(soxi -b "$3" 2>&1) $(soxi -c "$3" 2>&1)"
[ "$format" = "8000 16 1" ] || fail "beep-not-a-telephone-prompt: rate, bits and channels are $format"
[ "$(soxi -s "$3" 2>&1)" -gt 400 ] || fail "beep-too-short"

[ "$failures" -eq 0 ] || { echo "$failures failure(s)"; exit 1; }
echo "All deployment file cases passed"
