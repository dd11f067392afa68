#!/bin/sh
# The real program without windows, on a message bus and in folders of its own.
# usage: cindertop.sh PROGRAM CINDERTOPCTL SCENARIO
set -u
umask 0 # what is private must be so by itself
[ -n "${LC_ALL-}${LC_CTYPE-}${LANG-}" ] || export LC_ALL=C.UTF-8 # Qt 6.8 says more of a locale without UTF-8

program=$1
ctl=$2
scenario=$3
work=$(mktemp -d)
bus=
agent=
failed=0

finish() {
    for process in $agent $bus; do
        kill "$process" 2>/dev/null
        wait "$process"
    done
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM

complain() {
    echo "FAILED: $1" >&2
    failed=1
}

# await WHAT COMMAND...: until the command succeeds, for at most half a minute.
await() {
    what=$1
    shift
    rounds=600
    until "$@" >/dev/null 2>&1; do
        rounds=$((rounds - 1))
        [ "$rounds" -gt 0 ] || {
            complain "in vain awaited: $what"
            exit 1
        }
        sleep 0.05
    done
}

# run STATUS ARGUMENT...: runs the program with its output in files and compares the exit status.
run() {
    expected=$1
    shift
    timeout 60 "$program" "$@" >"$work/out" 2>"$work/err" </dev/null
    status=$?
    [ "$status" -eq "$expected" ] || complain "$*: exit status $status instead of $expected"
}

# start ARGUMENT...: lets the program run in the background. Before a second one starts it has to have said or done
# something: whoever comes first runs.
start() {
    env --default-signal=INT "$program" "$@" >"$work/agent-out" 2>"$work/agent-err" </dev/null &
    agent=$!
}

# end SIGNAL: tells the program to end, which it has to do in peace.
end() {
    kill -"$1" "$agent"
    wait "$agent"
    status=$?
    agent=
    [ "$status" -eq 0 ] || complain "SIG$1: exit status $status"
    [ ! -s "$work/agent-out" ] || complain "quiet outside a terminal: $(cat "$work/agent-out")"
}

answers() {
    run 0 --headless
    grep -q 'already running without windows' "$work/out"
}

# The snapshot of a program that has measured carries its advice, which a look of the client's own has not.
is_measured() {
    "$ctl" status --json | grep -q '"recommendation":{'
}

is_private() {
    find "$1" -type d ! -perm 0700 -o -type f ! -perm 0600 | grep . >&2 && complain "not private: $1"
}

unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
export XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config"
export DBUS_SESSION_BUS_ADDRESS="unix:path=$work/bus"

run 0 --help
grep -q '^usage: cindertop' "$work/out" || complain "--help does not show the usage"
run 0 --version
grep -Eq '^cindertop [0-9]+\.[0-9]+\.[0-9]+$' "$work/out" || complain "--version shows no version"
for words in "--nonsense" "nonsense" "--speed 2" "--scenario" "--scenario $work/none" "--headless --open popover"; do
    # shellcheck disable=SC2086  # the words are meant to be split
    run 2 $words
    [ -s "$work/err" ] && [ ! -s "$work/out" ] || complain "\"$words\": not said why, or to the wrong place"
done

# A scenario needs no bus, ends by itself, and keeps nothing.
run 0 --headless --scenario "$scenario" --speed 3000
grep -Eq 'Fair|Serious|Critical' "$work/out" || complain "the scenario does not get hot"
if grep -q "$(printf '\033')" "$work/out"; then
    complain "a scenario writes colours into a file"
fi
[ ! -e "$work/data" ] && [ ! -e "$work/config" ] || complain "a scenario keeps files"

dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS" 2>"$work/bus-err" &
bus=$!
await "the bus" test -S "$work/bus"

# Nothing is watched before the terms are accepted; then it goes on by itself.
start
await "the message about the terms" grep -q 'cindertopctl accept-terms' "$work/agent-err"
await "the bus name" answers
[ ! -e "$work/data/Cindertop/thermal-history.plist" ] || complain "something was recorded before"
"$ctl" accept-terms >"$work/terms" || complain "accept-terms is refused"
grep -q 'without any warranty' "$work/terms" || complain "accept-terms does not show what is accepted"
await "a measurement" is_measured
await "the history" test -s "$work/data/Cindertop/thermal-history.plist"
end TERM
is_private "$work/data"
is_private "$work/config"

# What was accepted stays so, and the program before has left nothing in the way.
start --headless
await "a measurement" is_measured
"$ctl" status --json | grep -q '"termsAccepted":true}$' || complain "the agent's document is not passed on whole"
"$ctl" settings showDockIcon on || complain "a preference is refused"
"$ctl" pause && "$ctl" status | grep -q '^Monitoring is paused' || complain "a paused agent is not told"
"$ctl" resume
answers || complain "a second start does not find the first: $(cat "$work/out")"
[ ! -s "$work/agent-err" ] || complain "$(cat "$work/agent-err")"
end INT
[ "$("$ctl" settings showDockIcon)" = true ] || complain "the preference is lost"
"$ctl" settings experimentalTemperatureSensorsEnabled off >"$work/remark" || complain "a switch is refused"
grep -q 'menuBarInfoMode is none now' "$work/remark" || complain "what else changed is not told"
for mode in thermalScore temperature; do # retired, and not to be had without sensors
    "$ctl" settings menuBarInfoMode "$mode" 2>"$work/refusal" && complain "the label $mode is taken"
    grep -Eq 'one of none, thermalStatus, temperature$|needs sensors' "$work/refusal" || complain "refused without a reason"
done
"$ctl" settings showProcessOffenders off 2>/dev/null && complain "the ranking is switched off"
"$ctl" settings historyDurationMinutes -3 | grep -q '15 is the least' || complain "a repaired value is not told"
"$ctl" pause 2>/dev/null && complain "an agent answers that has ended"

# Neither a bus that goes nor one that is missing ends it; only --accept-terms is told again.
rm -r "$work/config"
start --accept-terms
await "that the terms count for this run" grep -q 'for this run' "$work/agent-err"
await "the bus name" answers
kill "$bus"
wait "$bus"
bus=
await "the second start without a bus" sh -c "'$program' | grep -q 'cannot be reached'"
end TERM
[ ! -e "$work/config/Cindertop" ] || ! grep -rqi legal "$work/config" || complain "the terms are accepted for good"

[ "$failed" -eq 0 ] && echo "all as expected"
exit "$failed"
