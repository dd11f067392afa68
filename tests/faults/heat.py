#!/usr/bin/env python3
"""Plays the heat of a scenario into a folder that stands for /sys/class/thermal: fast until the processor is held back
as far as it goes, then in real time.
usage: heat.py SCENARIO FOLDER"""

import json
import pathlib
import sys
import time

FAST = 60
COOLER_STATES = {0: 0, 1: 2, 2: 6, 3: 10}
ZONE = {"type": "acpitz", "mode": "enabled", "policy": "step_wise", "temp": "40000",
        "trip_point_0_type": "passive", "trip_point_0_temp": "95000",
        "trip_point_1_type": "critical", "trip_point_1_temp": "119000", "cdev0_trip_point": "0"}

scenario = json.loads(pathlib.Path(sys.argv[1]).read_text())
folder = pathlib.Path(sys.argv[2])
zone, cooler = folder / "thermal_zone0", folder / "cooling_device0"
for device, attributes in ((cooler, {"type": "Processor", "max_state": "10", "cur_state": "0"}), (zone, ZONE)):
    device.mkdir(parents=True)
    for name, value in attributes.items():
        (device / name).write_text(value + "\n")
(zone / "cdev0").symlink_to("../cooling_device0")
print("made", flush=True)

now = pressure = 0
for frame in scenario["frames"]:
    time.sleep((frame["at"] - now) / (1 if pressure == 3 else FAST))
    now = frame["at"]
    pressure = frame.get("pressure", pressure)
    (cooler / "cur_state").write_text(f"{COOLER_STATES[pressure]}\n")
    if frame.get("sensors"):
        (zone / "temp").write_text(f"{round(frame['sensors'][0]['celsius'] * 1000)}\n")
