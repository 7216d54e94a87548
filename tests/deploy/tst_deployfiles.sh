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

# --- fresh-database-asks-for-enquiry ----------------------------------------
# A new installation shows the enquiry form: the flags table is there, empty.
case_name=fresh-database-asks-for-enquiry
make_db "$root/fresh.db" || fail "could not make the database"
rows=$(sqlite3 "$root/fresh.db" "SELECT count(*) FROM flags" 2>&1)
[ "$rows" = 0 ] || fail "flags holds '$rows'"
columns=$(sqlite3 "$root/fresh.db" "SELECT name FROM pragma_table_info('flags')" 2>&1)
[ "$columns" = show_reg_form ] || fail "flags has columns '$columns'"

# --- rebuild-keeps-users-answer ---------------------------------------------
case_name=rebuild-keeps-users-answer
make_db "$root/user.db"
sqlite3 "$root/user.db" "INSERT INTO flags VALUES (1)"
make_db "$root/user.db" || fail "a second build failed"
rows=$(sqlite3 "$root/user.db" "SELECT show_reg_form FROM flags" 2>&1)
[ "$rows" = 1 ] || fail "the user's row became '$rows'"

# --- interrupted-build-is-not-kept ------------------------------------------
case_name=interrupted-build-is-not-kept
echo "half a database" >"$root/cut.db.partial"
make_db "$root/cut.db" || fail "could not make the database"
[ "$(sqlite3 "$root/cut.db" "SELECT count(*) FROM flags" 2>&1)" = 0 ] || fail "bad database"
[ ! -e "$root/cut.db.partial" ] || fail "partial file left behind"

# --- schema-error-leaves-no-database ----------------------------------------
case_name=schema-error-leaves-no-database
echo "CREATE TABLE flags (" >"$root/broken.sql"
cmake -DSQLITE3="$(command -v sqlite3)" -DSCHEMA="$root/broken.sql" -DTARGET="$root/none.db" \
    -P "$maker" >/dev/null 2>&1 && fail "a broken schema was accepted"
[ ! -e "$root/none.db" ] || fail "a database was left from a broken schema"

# --- beep-is-a-telephone-prompt ---------------------------------------------
# The same format as the telephone prompts: 8 kHz, 16-bit, mono, and short.
case_name=beep-is-a-telephone-prompt
[ "$(soxi -r "$beep" 2>&1)" = 8000 ] || fail "rate $(soxi -r "$beep" 2>&1)"
[ "$(soxi -b "$beep" 2>&1)" = 16 ] || fail "bits $(soxi -b "$beep" 2>&1)"
[ "$(soxi -c "$beep" 2>&1)" = 1 ] || fail "channels $(soxi -c "$beep" 2>&1)"
samples=$(soxi -s "$beep" 2>&1)
[ "$samples" -gt 400 ] && [ "$samples" -lt 8000 ] || fail "$samples samples"
peak=$(sox "$beep" -n stat 2>&1 | sed -n 's/^Maximum amplitude: *//p')
awk -v p="$peak" 'BEGIN { exit !(p > 0.1) }' || fail "too quiet: peak $peak"

if [ "$failures" -ne 0 ]; then
    echo "$failures failure(s)"
    exit 1
fi
echo "All deployment file cases passed"
