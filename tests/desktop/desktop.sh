# What the desktop tests share: a screen and a bus of their own, and their end. Sourced; the caller has `set -eu`.
# shellcheck shell=sh

work=$(mktemp -d)
processes=

# shellcheck disable=SC2086  # the words are meant to be split
end_desktop() {
    [ -z "$processes" ] || kill $processes 2>/dev/null || true
    wait
    processes=
    rm -rf "$work"
}
trap end_desktop EXIT
trap 'exit 1' INT TERM

# Runs a command again and again, for twenty seconds or a little more, until it succeeds.
await() {
    deadline=$(($(date +%s) + 20))
    until "$@" >/dev/null 2>&1; do
        if [ "$(date +%s)" -gt "$deadline" ]; then
            echo "in vain: $*" >&2
            exit 1
        fi
        sleep 0.1
    done
}

# start_bus [LINE]: the bus starts nothing by itself, unless the line of its settings says so.
start_bus() {
    cat >"$work/bus.conf" <<END
<busconfig>
  <type>session</type>
  <listen>unix:path=$work/bus</listen>
  ${1:-}
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
    dbus-daemon --nofork --nopidfile --config-file="$work/bus.conf" 2>"$work/bus.log" &
    processes="$processes $!"
    await test -S "$work/bus"
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$work/bus"
}

# start_screen SIZE: an X server, and a home where nobody has lived.
start_screen() {
    Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$work/display" 2>"$work/xvfb.log" &
    processes="$processes $!"
    await test -s "$work/display"
    mkdir -p "$work/home"
    mkdir -m 700 "$work/runtime"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY HOME="$work/home" XDG_CONFIG_HOME="$work/config" XDG_CACHE_HOME="$work/cache" \
        XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/runtime"
}

window_manager_is_there() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}

start_window_manager() {
    openbox >"$work/openbox.log" 2>&1 &
    processes="$processes $!"
    await window_manager_is_there
}

# start_panel DARK [PLUGIN]: a panel with a tray, or another host, in the screen's upper left corner.
start_panel() {
    channels=$work/config/xfce4/xfconf/xfce-perchannel-xml
    mkdir -p "$channels"
    cat >"$channels/xfce4-panel.xml" <<END
<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="$1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="${2:-systray}">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
END
    xfce4-panel --disable-wm-check >"$work/panel.log" 2>&1 &
    panel_pid=$!
    processes="$processes $panel_pid"
}

# pixels COLOUR: how many of the status item's have exactly that one.
pixels() {
    import -window root -crop 32x30+0+0 -depth 8 txt:- | grep -ic "$1 "
}

has_flame() {
    [ "$(pixels "$1")" -ge 40 ]
}
