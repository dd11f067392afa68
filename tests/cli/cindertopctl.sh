#!/bin/sh
# The real program as a careful user meets it: exit statuses, pipes, a full disk.
# usage: cindertopctl.sh PROGRAM
set -u

program=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

complain() {
    echo "FAILED: $1" >&2
    failed=1
}

# run STATUS ARGUMENT...: runs the program with its output in files and compares the exit status.
run() {
    expected=$1
    shift
    "$program" "$@" >"$work/out" 2>"$work/err" </dev/null
    status=$?
    [ "$status" -eq "$expected" ] || complain "$*: exit status $status instead of $expected"
}

is_json() {
    if command -v python3 >/dev/null 2>&1; then
        python3 -c 'import json, sys; [json.loads(line) for line in sys.stdin]' <"$1"
    elif command -v jq >/dev/null 2>&1; then
        jq . <"$1" >/dev/null
    fi
}

is_json_file() {
    tr '\n' ' ' <"$1" >"$work/line"
    is_json "$work/line"
}

run 0 --help
grep -q '^usage: cindertopctl' "$work/out" || complain "--help does not show the usage"
run 0 --version
grep -Eq '^cindertopctl [0-9]+\.[0-9]+\.[0-9]+$' "$work/out" || complain "--version shows no version"

for words in "--nonsense" "nonsense" "status watch" ""; do
    # shellcheck disable=SC2086  # the words are meant to be split
    run 2 $words
    grep -q 'cindertopctl --help' "$work/err" || complain "\"$words\": no hint to --help"
    [ ! -s "$work/out" ] || complain "\"$words\": wrote to standard output"
done

run 0 status
grep -q '^Where the facts come from' "$work/out" || complain "status names no sources"
if grep -q "$(printf '\033')" "$work/out"; then
    complain "status writes colours into a file"
fi
run 0 status --json
[ "$(wc -l <"$work/out")" -eq 1 ] || complain "status --json is more than one line in a file"
is_json "$work/out" || complain "status --json is not JSON"
run 0 offenders --json
is_json "$work/out" || complain "offenders --json is not JSON"

# What the agent stored, which here is nothing; the preferences that are made belong to this test.
export XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config"
run 0 history
grep -q '^No history is stored' "$work/out" || complain "history does not say that there is none"
run 0 history --json
is_json "$work/out" || complain "history --json is not JSON"
run 0 export "$work/export.json"
is_json_file "$work/export.json" || complain "the export is not JSON"
run 1 export "$work"
grep -q '^cindertopctl: .* is a folder' "$work/err" || complain "an export into a folder: not said why"
[ ! -e "$work/data" ] || complain "reading made a data folder"

# A reader that has seen enough is no failure; `watch` must notice between two ticks, too.
for format in "" --json; do
    # shellcheck disable=SC2086  # no word when empty
    { "$program" watch $format 2>"$work/err"; echo "$?" >"$work/status"; } | head -n 1 >"$work/line"
    [ "$(cat "$work/status")" -eq 0 ] || complain "watch $format | head: exit status $(cat "$work/status")"
    [ ! -s "$work/err" ] || complain "watch $format | head: $(cat "$work/err")"
    [ "$(wc -l <"$work/line")" -eq 1 ] || complain "watch $format | head: no line arrived"
done
is_json "$work/line" || complain "a line of watch --json is not JSON"

if [ -w /dev/full ]; then
    for words in --help "status --json" watch; do
        # shellcheck disable=SC2086  # the words are meant to be split
        "$program" $words >/dev/full 2>"$work/err"
        status=$?
        [ "$status" -eq 1 ] || complain "$words into a full disk: exit status $status instead of 1"
        grep -q '^cindertopctl: cannot write' "$work/err" || complain "$words into a full disk: not said why"
    done
fi

"$program" --help >&- 2>"$work/err" && complain "a closed output is not noticed"

# SIGTERM ends a watch and shows as such; SIGINT is the user's ordinary way out.
for signal in TERM:143 INT:0; do
    mkfifo "$work/fifo"
    # An asynchronous list would start with SIGINT ignored, so env sets it right again.
    env --default-signal=INT "$program" watch >"$work/fifo" 2>"$work/err" &
    child=$!
    read -r _ <"$work/fifo" & # keeps nothing open: the first line is proof that the watch runs
    exec 3<"$work/fifo"
    wait $!
    kill -"${signal%:*}" "$child"
    wait "$child"
    status=$?
    exec 3<&-
    rm "$work/fifo"
    [ "$status" -eq "${signal#*:}" ] || complain "SIG${signal%:*}: exit status $status"
done

[ "$failed" -eq 0 ] && echo "all as expected"
exit "$failed"
