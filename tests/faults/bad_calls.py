"""Calls the agent on the session bus in every wrong way, and prints how many it refused.

None of the calls may be answered, and each must be refused: the agent may not let anybody wait.
"""

import random
import sys

from gi.repository import Gio, GLib

AGENT = "app.cindertop.Agent"
PATH = "/app/cindertop/Agent"
PROPERTIES = "org.freedesktop.DBus.Properties"
LONG = "x" * 8_000_000
PATIENCE = 10_000  # milliseconds
METHODS = ["Pause", "Resume", "AcceptTerms", "ResetSettings", "Open", "OpenSettings", "Settings"]
PREFERENCES = [
    "experimentalTemperatureSensorsEnabled",
    "menuBarInfoMode",
    "showDockIcon",
    "diagnosticLogsEnabled",
    "notificationsEnabled",
    "notificationMinimumLevel",
    "recommendationVerbosity",
    "showProcessOffenders",
    "showContextInsights",
    "historyEnabled",
    "historyDurationMinutes",
]
VALUES = [
    GLib.Variant("s", LONG),
    GLib.Variant("d", float("nan")),
    GLib.Variant("as", ["a"] * 1000),
    GLib.Variant("a{sv}", {"a": GLib.Variant("v", GLib.Variant("v", GLib.Variant("i", 1)))}),
    GLib.Variant("o", "/"),
    GLib.Variant("(iii)", (1, 2, 3)),
    GLib.Variant("ay", bytes(100_000)),
]
WORDS_OF_OTHERS = {
    "menuBarInfoMode": "thermalScore",
    "notificationMinimumLevel": "fair",
    "recommendationVerbosity": "none",
}


def wrong_calls(dice):
    for value in VALUES:
        for method in METHODS + ["ExportDiagnostics", "Set", "Quit"]:
            if method != "ExportDiagnostics" or value.get_type_string() != "s":
                yield PATH, AGENT, method, GLib.Variant.new_tuple(value)
        for name in PREFERENCES:
            yield PATH, AGENT, "Set", GLib.Variant("(sv)", (name, value))
        yield PATH, PROPERTIES, "Set", GLib.Variant("(ssv)", (AGENT, "Paused", value))
    for name, word in WORDS_OF_OTHERS.items():
        yield PATH, AGENT, "Set", GLib.Variant("(sv)", (name, GLib.Variant("s", word)))
    for name in ["", "historyDurationMinutes ", "schemaVersion", "\u202e", LONG]:
        yield PATH, AGENT, "Set", GLib.Variant("(sv)", (name, GLib.Variant("i", 1)))
    for file in ["", "fault-relative", "../fault-relative", "/", "/proc/self/mem", "/nowhere/" + "y/" * 3000, "/" + LONG]:
        yield PATH, AGENT, "ExportDiagnostics", GLib.Variant("(s)", (file,))
    for number in range(2000):
        word = "".join(dice.choice("AaZz_09") for _ in range(dice.randint(1, 200)))
        yield PATH, AGENT, "M" + word, GLib.Variant("(x)", (number,))
        yield PATH, "i." + "I" + word, "M", None
        yield "/" + word, AGENT, "Pause", None
        yield PATH, PROPERTIES, "Get", GLib.Variant("(ss)", (AGENT, word))


def main():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    refused = 0
    waiting = 0
    loop = GLib.MainLoop()
    faults = []

    def done(connection, result, call):
        nonlocal refused, waiting
        waiting -= 1
        try:
            connection.call_finish(result)
            faults.append(f"answered: {call[2]}")
        except GLib.Error as error:
            refused += 1
            name = Gio.DBusError.get_remote_error(error) or "nothing"
            is_known = name.startswith("app.cindertop.Error.") or name.startswith("org.freedesktop.DBus.Error.")
            if not is_known or name.endswith((".NoReply", ".Timeout", ".Disconnected")):
                faults.append(f"{name} for {call[2]}")
        if waiting == 0:
            loop.quit()

    for call in wrong_calls(random.Random(1)):
        path, interface, method, arguments = call
        waiting += 1
        bus.call(AGENT, path, interface, method, arguments, None, 0, PATIENCE, None, done, [c[:60] for c in call[:3]])
    loop.run()
    print(f"{refused} wrong calls at once refused" if not faults else f"{len(faults)} faults, the first: {faults[0]}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
