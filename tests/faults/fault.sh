# What the fault tests share: an agent with folders and a bus of its own, and one line at the end. Sourced.
# usage of every fault test: tests/faults/NAME PROGRAM_BUILD TEST_BUILD
# shellcheck shell=sh
set -eu

[ $# -eq 2 ] || { sed -n 's/^# usage of every fault test: /usage: /p' "$(dirname "$0")/fault.sh" >&2; exit 2; }
name=${0##*/}
faults=$(cd "$(dirname "$0")" && pwd)
programs=$(cd "$1" && pwd)/bin
tests=$(cd "$2" && pwd)/bin
ctl=$programs/cindertopctl

# shellcheck source=tests/desktop/desktop.sh
. "$faults/../desktop/desktop.sh"

agent=
held=
lost=
broken=
skipped=

# What stood the test, what was lost as it has to be, and what must not have happened.
held() { held="$held${held:+, }$1"; }
lost() { lost="$lost${lost:+, }$1"; }
broken() { broken="$broken${broken:+, }$1"; }
skip() { skipped=$1 && exit 0; }

finish() {
    status=$?
    trap - EXIT
    set +e # the line comes, whatever fails here
    cd /
    [ -z "$agent" ] || processes="$processes $agent"
    [ "$status" -eq 0 ] || broken "given up after the last thing held"
    if [ -n "$broken" ] && [ -s "$work/err" ]; then
        cat "$work/err" >&2
    fi
    for place in $(awk -v work="$work/" 'index($2, work) == 1 { print $2 }' /proc/mounts); do
        umount -l "$place"
    done
    end_desktop
    if [ -n "$skipped" ]; then
        echo "fault test $name: skipped, $skipped"
        exit 0
    fi
    echo "fault test $name: held ${held:-nothing}; lost ${lost:-nothing}${broken:+; BROKEN: $broken}"
    [ -z "$broken" ] || exit 1
}
trap finish EXIT
trap 'exit 1' HUP

# enter OPTION...: runs the test again from its start in namespaces of its own, as their root unless told otherwise.
enter() {
    [ -z "${FAULT_IS_INSIDE:-}" ] || return 0
    case "$(id -u) $*" in
    0\ * | *--map-user*) ;;
    *) set -- --map-root-user "$@" ;;
    esac
    unshare "$@" true 2>/dev/null || skip "this system gives no namespaces of one's own (unshare $*)"
    trap - EXIT
    rm -rf "$work"
    FAULT_IS_INSIDE=1 exec unshare "$@" "$faults/$name" "${programs%/bin}" "${tests%/bin}"
}

unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
export HOME="$work/home" XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config" XDG_CACHE_HOME="$work/cache" \
    XDG_RUNTIME_DIR="$work/runtime"
mkdir -p "$HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
history=$XDG_DATA_HOME/Cindertop/thermal-history.plist

# The snapshot of a program that has measured carries its advice, which a look of the client's own has not.
told() { "$ctl" status --json | grep '"recommendation":{'; }
answers() { told >/dev/null; }
samples() { "$ctl" history --json | grep -o '"measuredAt"' | wc -l; }
has_samples() { [ "$(samples)" -ge "$1" ]; }
measured_at() { told | grep -o '"measuredAt":[0-9.]*,"cpuPercent' | tr -dc '0-9.'; }
milliseconds() { date +%s%3N; }
memory() { awk '/^VmRSS/ { print $2 }' "/proc/$agent/status"; }         # kB
cpu_time() { awk '{ print int($1 / 1000000) }' "/proc/$agent/schedstat"; } # milliseconds, of its main thread

start_agent() {
    "$programs/cindertop" --accept-terms "$@" >"$work/out" 2>"$work/err" </dev/null &
    agent=$!
}

# Told to end, it has to, in peace.
end_agent() {
    kill -TERM "$agent"
    (sleep 20 && kill -KILL "$agent") 2>/dev/null &
    guard=$!
    status=0
    wait "$agent" || status=$?
    kill "$guard" 2>/dev/null || true
    wait "$guard" 2>/dev/null || true
    agent=
    [ "$status" -eq 0 ] || broken "the agent ended with $status"
}

is_up() { kill -0 "$agent" 2>/dev/null && answers; }

# repeat TIMES PROGRAM FILTER: the tests of that name, that often; without any it fails.
repeat() {
    "$tests/$2" --gtest_filter="$3" --gtest_repeat="$1" --gtest_brief=0 >"$work/tests" 2>&1 || {
        broken "$2 $3"
        tail -n 20 "$work/tests" >&2
    }
    passed=$(grep -c '^\[       OK' "$work/tests" || true)
    [ "$passed" -gt 0 ] || broken "no test is called $3"
}
