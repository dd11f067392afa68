#!/usr/bin/env python3
"""Writes warm-train.json. Run it after changing the story below."""

from story import Story, between, unrest

DURATION = 3600

# Seconds, then the hottest cluster of cores in degrees Celsius. Firmware slows it down from 95 °C.
CORE = [(0, 38), (240, 40), (300, 44), (420, 70), (600, 74), (660, 82), (780, 86), (1080, 90), (1200, 95.6), (1320, 99),
        (1500, 105.6), (1590, 107), (1650, 103), (1720, 100), (1910, 96.5), (1916, 93), (1918, 90), (1980, 84), (2250, 82),
        (2290, 74), (2400, 58), (2520, 47), (2640, 43), (2700, 50), (2800, 86), (2990, 88), (3080, 66), (3360, 57),
        (3420, 46), (3600, 41)]
BATTERY = [(0, 28.4), (600, 30.2), (900, 32.6), (1650, 36.4), (2280, 35.8), (2640, 33.2), (3600, 30.6)]
CHARGE = [(0, 64), (840, 55), (1980, 77), (2640, 73), (3600, 92)]

PRESSURE = {0: (0, 0), 720: (1, 1), 1205: (2, 2), 1500: (3, 3), 1650: (2, 2), 1916: (1, 1), 1990: (0, 0), 2810: (1, 1),
            3080: (0, 0)}
BUILT_IN, DESK = {"id": 1, "builtIn": True}, {"id": 2, "builtIn": False}
DISPLAYS = {0: [BUILT_IN], 840: [BUILT_IN, DESK], 960: [DESK], 1680: [BUILT_IN, DESK], 2040: [BUILT_IN]}
PLUGGED = [(840, 1980), (2760, DURATION)]
POWER_SAVER = [(1620, 2160)]

APPLICATIONS = {"Firefox": "org.mozilla.firefox", "Tidewater Mail": "org.example.Tidewater",
                "Workbench": "org.example.Workbench", "Lumen Photo": "org.example.Lumen"}


def application(name, executable):
    return f"/{APPLICATIONS[name]}.app/{executable}"


# Who runs, youngest first, as the system lists them.
ROOT, KERNEL, USER = {"user": 0}, {"user": 0, "systemFlag": True}, {"user": 1000}
COMPILER = application("Workbench", "cc1plus")
TAB = application("Firefox", "firefox-bin")
PROCESSES = [
    (9921, "unattended-upgrade", "/usr/bin/unattended-upgrade", 2880, ROOT, [(2880, 520), (3160, None)]),
    (9742, "localsearch-extractor-3", "/usr/libexec/localsearch-extractor-3", 2700, USER,
     [(2700, 1240), (3090, 310), (3390, None)]),
    (9710, "localsearch-3", "/usr/libexec/localsearch-3", 2690, USER, [(2690, 1850), (3090, 640), (3390, None)]),
    (8310, "lumen-photo", application("Lumen Photo", "lumen-photo"), 1950, USER,
     [(1950, 3350), (2250, 420), (2310, 30), (3300, None)]),
    (7874, "cc1plus", COMPILER, 1260, USER, [(1260, 960), (1800, 610), (1915, None)]),
    (7871, "cc1plus", COMPILER, 1175, USER, [(1175, 970), (1800, 650), (1915, None)]),
    (7868, "cc1plus", COMPILER, 1175, USER, [(1175, 990), (1640, 700), (1915, None)]),
    (7865, "cc1plus", COMPILER, 645, USER, [(645, 930), (1175, 985), (1640, 690), (1915, None)]),
    (7862, "cc1plus", COMPILER, 640, USER, [(640, 950), (1175, 990), (1640, 720), (1915, None)]),
    (7851, "ninja", application("Workbench", "ninja"), 630, USER, [(630, 20), (1915, None)]),
    (7840, "workbench", application("Workbench", "workbench"), 610, USER, [(610, 260), (1915, 40), (2640, None)]),
    (5713, "Isolated Web Content", TAB, 300, USER, [(300, 1320), (600, 340), (1300, 150), (2640, None)]),
    (5708, "RDD Process", TAB, -5290, USER, [(0, 40), (300, 610), (600, 180), (2640, 20)]),
    (5702, "firefox", application("Firefox", "firefox"), -5300, USER, [(0, 60), (300, 440), (600, 120), (2640, 20)]),
    (4511, "tidewater", application("Tidewater Mail", "tidewater"), -9100, USER, [(0, 35), (2640, 10)]),
    (2288, "pipewire", "/usr/bin/pipewire", -86400, USER, [(0, 8), (300, 70), (600, 8)]),
    (2190, "gnome-shell", "/usr/bin/gnome-shell", -86400, USER,
     [(0, 90), (300, 230), (840, 340), (1680, 280), (2040, 170), (2640, 50)]),
    (812, "NetworkManager", "/usr/sbin/NetworkManager", -86405, ROOT, [(0, 4), (300, 18), (600, 4)]),
    (388, "systemd-journald", "/usr/lib/systemd/systemd-journald", -86408, ROOT, [(0, 5)]),
    (97, "kswapd0", None, -86410, KERNEL, [(0, 2), (1205, 140), (1650, 60), (1916, 4)]),
    (41, "kworker/u16:2-events_unbound", None, -86410, KERNEL, [(0, 12), (840, 45), (1980, 14)]),
]


def sensors(at):
    core = between(CORE, at) + 0.5 * unrest(at, 1)
    little = core - 1.5 - max(0, core - 45) * 0.08 + 0.4 * unrest(at, 3)
    graphics = core - 2 - max(0, core - 45) * 0.16 + 0.4 * unrest(at, 2)
    drive = 31 + max(0, core - 40) * 0.22 + 0.2 * unrest(at, 4)
    return [("CPU Cluster 1", core), ("CPU Cluster 0", little), ("GPU", graphics), ("SSD Composite (nvme0n1)", drive),
            ("Battery", battery(at))]


def battery(at):
    return between(BATTERY, at)


head = {
    "schemaVersion": 1,
    "name": "Warm train",
    "description": "A fanless laptop on a train and then at a desk: mail, a video call in the browser, a build with the lid "
                   "closed while charging, serious, sustained and critical pressure, power saver, a photo export, and an "
                   "indexer that catches up. Written by warm-train.py.",
    "system": "linux",
    "start": "2026-07-14T12:30:00Z", "timeZone": "Europe/Berlin", "locale": "en_GB", "duration": DURATION,
    "machine": {"modelIdentifier": "Featherbook 13", "cpuBrand": "Octo 8c", "processorCount": 8},
    "bundles": {f"/{identifier}.app": {"CFBundleIdentifier": identifier, "CFBundleName": name}
                for name, identifier in APPLICATIONS.items()},
}
Story(head, PROCESSES, PRESSURE, DISPLAYS, PLUGGED, POWER_SAVER, CHARGE, sensors, battery).write(__file__)
