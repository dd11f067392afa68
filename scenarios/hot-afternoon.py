#!/usr/bin/env python3
"""Writes hot-afternoon.json. Run it after changing the story below."""

from story import Story, between, unrest

DURATION = 3600

# Seconds, then the hottest core in degrees Celsius; straight lines between.
CORE = [(0, 41), (240, 43), (300, 47), (420, 79), (600, 82), (660, 91), (780, 94), (900, 96), (1080, 98),
        (1200, 103), (1320, 105), (1500, 110), (1590, 114), (1650, 110), (1720, 107), (1910, 104.5),
        (1915, 104.3), (1916, 100.5), (1917, 96), (1918, 92), (1919, 90), (1980, 88), (2250, 88), (2290, 80),
        (2400, 60), (2520, 47), (2640, 44), (2700, 52), (2800, 76), (2990, 78), (3080, 68), (3360, 60),
        (3420, 47), (3600, 42)]
BATTERY = [(0, 29.6), (600, 31.8), (900, 33.4), (1650, 37.2), (2280, 36.4), (2640, 34.1), (3600, 31.0)]
CHARGE = [(0, 71), (840, 63), (1980, 84), (2640, 81), (3600, 99)]

# What else changes, and when.
PRESSURE = {0: (0, 0), 430: (1, 1), 1205: (2, 2), 1500: (3, 3), 1650: (2, 2), 1916: (1, 1), 2290: (0, 0), 2830: (1, 1),
            3080: (0, 0)}
BUILT_IN, DESK = {"id": 1, "builtIn": True}, {"id": 2, "builtIn": False}
DISPLAYS = {0: [BUILT_IN], 840: [BUILT_IN, DESK], 960: [DESK], 1680: [BUILT_IN, DESK], 2040: [BUILT_IN]}
PLUGGED = [(840, 1980), (2760, DURATION)]
LOW_POWER = [(1620, 2160)]

APPLICATIONS = {
    "Hedgehog": "org.example.hedgehog", "Parley": "org.example.parley", "Tidewater Mail": "org.example.tidewater",
    "Workbench": "org.example.workbench", "Lumen Photo": "org.example.lumen",
}


def application(name, executable=None):
    return f"/Applications/{name}.app/Contents/MacOS/{executable or name}"


def helper(name, kind):
    folder = f"/Applications/{name}.app/Contents/Frameworks/{name} Helper.app/Contents/MacOS"
    return f"{folder}/{name} Helper ({kind})"


# Who runs: pid, name, path, when it started, and (since when, millicores) until the next. Young ones first, as
# the system lists them. None ends a process.
SYSTEM = {"user": 0, "systemFlag": True}
PROCESSES = [
    (4521, "softwareupdated", "/usr/libexec/softwareupdated", 2880, SYSTEM, [(2880, 520), (3160, None)]),
    (4492, "mdworker_shared", "/usr/libexec/mdworker_shared", 2700, {}, [(2700, 880), (3090, 310), (3390, None)]),
    (4490, "mdworker_shared", "/usr/libexec/mdworker_shared", 2700, {}, [(2700, 830), (3090, 280), (3390, None)]),
    (4471, "mds_stores", "/usr/libexec/mds_stores", 2690, SYSTEM, [(2690, 1650), (3090, 640), (3390, None)]),
    (3310, "Lumen Photo", application("Lumen Photo"), 1950, {},
     [(1950, 3350), (2250, 420), (2310, 30), (3300, None)]),
    (2874, "clang", application("Workbench", "clang"), 1260, {}, [(1260, 960), (1800, 610), (1915, None)]),
    (2871, "clang", application("Workbench", "clang"), 1175, {}, [(1175, 970), (1800, 650), (1915, None)]),
    (2868, "clang", application("Workbench", "clang"), 1175, {}, [(1175, 990), (1640, 700), (1915, None)]),
    (2865, "clang", application("Workbench", "clang"), 645, {},
     [(645, 930), (1175, 985), (1640, 690), (1915, None)]),
    (2862, "clang", application("Workbench", "clang"), 640, {},
     [(640, 950), (1175, 990), (1640, 720), (1915, None)]),
    (2840, "Workbench", application("Workbench"), 610, {}, [(610, 260), (1915, 40), (2640, None)]),
    (2202, "Parley", application("Parley"), 330, {}, [(330, 480), (600, None)]),
    (1713, "Hedgehog Helper (Renderer)", helper("Hedgehog", "Renderer"), 300, {},
     [(300, 920), (600, 340), (1300, 150), (2640, None)]),
    (1708, "Hedgehog Helper (GPU)", helper("Hedgehog", "GPU"), -5290, {},
     [(0, 40), (300, 610), (600, 180), (2640, 20)]),
    (1702, "Hedgehog", application("Hedgehog"), -5300, {}, [(0, 60), (300, 340), (600, 120), (2640, 20)]),
    (1511, "Tidewater Mail", application("Tidewater Mail"), -9100, {}, [(0, 35), (2640, 10)]),
    (402, "coreaudiod", "/usr/sbin/coreaudiod", -86400, {"user": 202}, [(0, 8), (330, 60), (600, 8)]),
    (388, "WindowServer", "/System/Library/WindowServer", -86400, {"user": 88},
     [(0, 110), (300, 260), (840, 390), (1680, 340), (2040, 200), (2640, 60)]),
    (0, "kernel_task", None, -86410, SYSTEM,
     [(0, 90), (430, 190), (1205, 620), (1500, 940), (1650, 600), (1916, 260), (2290, 110), (2700, 240), (3400, 80)]),
]


def sensors(at):
    core = between(CORE, at) + 0.5 * unrest(at, 1)
    # The colder it is, the closer the graphics processor is to the cores.
    graphics = core - 2 - max(0, core - 45) * 0.16 + 0.4 * unrest(at, 2)
    return [("pACC MTR Temp Sensor0", core), ("GPU MTR Temp Sensor1", graphics), ("gas gauge battery", battery(at))]


def battery(at):
    return between(BATTERY, at)


head = {
    "schemaVersion": 1,
    "name": "Hot afternoon",
    "description": "A calm start on battery, a browser with a video call, a build at the desk with the lid closed while "
                   "charging, serious, sustained and critical pressure, recovery, a photo export, and the indexing that "
                   "usually runs at night. Written by hot-afternoon.py.",
    "start": "2026-07-14T12:30:00Z", "timeZone": "Europe/Berlin", "locale": "en_GB", "duration": DURATION,
    "machine": {"modelIdentifier": "Mac14,2", "cpuBrand": "Apple M2", "processorCount": 8},
    "settings": {"notificationsEnabled": True, "experimentalTemperatureSensorsEnabled": True,
                 "menuBarInfoMode": "temperature"},
    "bundles": {f"/Applications/{name}.app": {"CFBundleIdentifier": identifier, "CFBundleName": name}
                for name, identifier in APPLICATIONS.items()},
}
Story(head, PROCESSES, PRESSURE, DISPLAYS, PLUGGED, LOW_POWER, CHARGE, sensors, battery, range(1915, 1920)).write(__file__)
