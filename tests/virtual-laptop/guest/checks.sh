# How the story changes the laptop, and how it looks at the program. Sourced by a busybox shell.
# shellcheck shell=sh

checks=0
failures=0
memory=$((0x30000000)) # where the firmware finds its readings
patience=25            # seconds for the program to see what has changed

# set_reading NAME VALUE: what the firmware answers from now on.
set_reading() {
    case $1 in
    temperature) offset=0 ;;
    charge) offset=1 ;;
    mains) offset=2 ;;
    lid) offset=3 ;;
    board) offset=4 ;;
    rate) offset=5 ;;
    esac
    printf '%b' "\\0$(printf %o "$2")" | dd of=/dev/mem bs=1 count=1 seek=$((memory + offset)) conv=notrunc 2>/dev/null
}

# Nothing of the program runs as root. No function: what runs in the background has to have the number that $! tells.
as_user='su -s /bin/sh user -c'

# verdict NAME COMMAND...: one line of the story.
verdict() {
    name=$1
    shift
    checks=$((checks + 1))
    if "$@"; then
        echo "ok: $name"
    else
        echo "FAILED: $name"
        failures=$((failures + 1))
        false
    fi
}

# within SECONDS COMMAND...: tries again and again.
within() {
    deadline=$(($(cut -d. -f1 /proc/uptime) + $1))
    shift
    until "$@"; do
        [ "$(cut -d. -f1 /proc/uptime)" -lt "$deadline" ] || return 1
        sleep 0.1
    done
}

# told EXPRESSION: whether what the program tells now makes the jq expression true. $kernel has the kernel's own answers.
told() {
    kernel=$(jq -cn --arg temp "$(cat /sys/class/thermal/thermal_zone0/temp)" \
        --arg cooler "$(cooler_state)" \
        --arg charge "$(cat /sys/class/power_supply/BAT0/capacity 2>/dev/null)" \
        '{celsius: ($temp | tonumber / 1000), cooler: ($cooler | tonumber), charge: ($charge | tonumber? // null)}')
    $as_user 'cindertopctl status --json' >/tmp/told && jq -e --argjson kernel "$kernel" "$1" /tmp/told >/dev/null
}

# check NAME EXPRESSION: that it becomes true soon.
check() {
    verdict "$1" within "$patience" told "$2" ||
        jq -c --argjson kernel "$kernel" '[$kernel, .score, .context, .temperatures, .sources[:7]]' /tmp/told
}

# holds_in FILE EXPRESSION [OPTION...]
holds_in() {
    file=$1
    expression=$2
    shift 2
    jq -e "$@" "$expression" "$file" >/dev/null
}

# watched LEVELS: whether a watch has told these, one after the other. Its last line can be half of one.
watched() {
    levels=$(jq -nRr '[inputs | fromjson? | .score.level]
        | reduce .[] as $level ([]; if last == $level then . else . + [$level] end) | join(" ")' /tmp/watch)
    [ "$levels" = "$1" ]
}

cooler_state() {
    cat /sys/class/thermal/cooling_device0/cur_state
}

cooler_is() {
    [ "$(cooler_state)" -eq "$1" ]
}

# The states through which the cooler goes to 0, within 40 seconds.
follow_cooler() {
    former=
    for _ in $(seq 200); do
        state=$(cooler_state)
        [ "$state" = "$former" ] || printf %s "$state"
        former=$state
        [ "$state" -ne 0 ] || return
        sleep 0.2
    done
}

# sleep_for SECONDS: suspends to memory; the machine's own clock wakes it.
sleep_for() {
    echo deep >/sys/power/mem_sleep
    echo enabled >/sys/class/rtc/rtc0/device/power/wakeup
    echo 0 >/sys/class/rtc/rtc0/wakealarm
    echo "+$1" >/sys/class/rtc/rtc0/wakealarm
    echo mem >/sys/power/state
}

# What the history says of the day: whole seconds under pressure, and its episodes.
hot_seconds() {
    $as_user 'cindertopctl history --json' | jq '.todaySummary.levelDurations | .serious + .critical | floor'
}

day_episodes() {
    $as_user 'cindertopctl history --json' | jq -c '.todaySummary | [.throttlingEpisodeCount, .criticalEpisodeCount]'
}

# set_clock ALLOWED: of 3400 MHz.
set_clock() {
    echo $(($1 * 1000)) >/sys/devices/system/cpu/cpufreq/policy0/scaling_max_freq
}

# says LINE: whether the status page has it.
says() {
    $as_user 'cindertopctl status' | grep -q "$1"
}

# throttle_to STATE: heats until the kernel's governor has gone there, then holds the zone at its passive trip.
throttle_to() {
    set_reading temperature 96
    within 30 cooler_is "$1"
    set_reading temperature 85
    verdict "the governor throttles to $1 of 3" cooler_is "$1"
}

# witnessed LINE: whether the desktop's stand-in has seen it.
witnessed() {
    grep -qxF "$1" /tmp/witness
}

check_alert() {
    verdict "alert: $1" within "$patience" witnessed "notification $1" || grep '^notification' /tmp/witness
}
