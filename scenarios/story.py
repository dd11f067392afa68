"""Turns a story into a scenario file: an hour is too long to write down by hand. Each story is a script beside this."""

import json
import math
import pathlib

HEAT_EVERY, CENSUS_EVERY = 15, 120  # seconds between frames of a kind when nothing happens


def between(points, at):
    """On the straight lines through `points`, (seconds, value) each."""
    for (start, first), (end, last) in zip(points, points[1:]):
        if start <= at < end:
            return first + (last - first) * (at - start) / (end - start)
    return points[-1][1]


def unrest(at, seed):
    """Between -1 and 1, the same in each run."""
    return (math.sin(at * 0.71 + seed * 2.3) + math.sin(at * 0.23 + seed * 5.9)) / 2


class Story:
    """What happens when.

    processes: (pid, name, path, start, other keys, [(since, millicores), ...]) each; None ends one. Young ones first,
    as the system lists them.
    pressure, displays: by the second at which they begin. plugged, low_power: spans of seconds.
    sensors, battery_temperature: of the second. steps: further seconds whose sensors matter.
    """

    def __init__(self, head, processes, pressure, displays, plugged, low_power, charge, sensors, battery_temperature,
                 steps=()):
        self.head, self.processes, self.pressure, self.displays = head, processes, pressure, displays
        self.plugged, self.low_power, self.charge = plugged, low_power, charge
        self.sensors, self.battery_temperature, self.steps = sensors, battery_temperature, steps

    def power(self, at):
        is_plugged = any(start <= at < end for start, end in self.plugged)
        battery = {"BatteryInstalled": True, "CurrentCapacity": round(between(self.charge, at)), "MaxCapacity": 100,
                   "IsCharging": is_plugged, "FullyCharged": False, "ExternalConnected": is_plugged,
                   "Temperature": round((self.battery_temperature(at) + 273.15) * 10)}
        return {"providing": "AC Power" if is_plugged else "Battery Power",
                "lowPowerMode": any(start <= at < end for start, end in self.low_power), "entries": [battery]}

    def running(self, at):
        listed = []
        for pid, name, path, started, other, uses in self.processes:
            past = [millicores for since, millicores in uses if since <= at]
            if not past or past[-1] is None:
                continue
            busy = min(past[-1] * (1 + 0.12 * unrest(at, pid)), 995 if past[-1] < 1000 else 4000)
            listed.append({"pid": pid, **other, "longName": name, **({"path": path} if path else {}),
                           "startedAt": started, "millicores": round(busy)})
        return listed

    def load(self, listed):
        def thousandths(of_system):
            busy = [one["millicores"] for one in listed if (one.get("user", 501) < 100) == of_system]
            return round(sum(busy) / self.head["machine"]["processorCount"])
        return {"user": thousandths(False), "system": thousandths(True), "nice": 0}

    def frames(self):
        duration = self.head["duration"]
        changes = {since for process in self.processes for since, _ in process[5]}
        plugging = {instant for span in self.plugged + self.low_power for instant in span if instant < duration}
        census = changes | set(range(0, duration, CENSUS_EVERY))
        supply = plugging | set(range(0, duration, CENSUS_EVERY))
        heat = set(range(0, duration, HEAT_EVERY)) | set(self.steps)
        for at in sorted(census | supply | heat | set(self.pressure) | set(self.displays)):
            frame = {"at": at}
            if at in self.pressure:
                frame["thermalState"], frame["pressure"] = self.pressure[at]
            if at in self.displays:
                frame["displays"] = self.displays[at]
            if at in supply:
                frame["power"] = self.power(at)
            if at in heat:
                frame["sensors"] = [{"product": product, "celsius": round(celsius, 1)}
                                    for product, celsius in self.sensors(at)]
            if at in census:
                listed = self.running(at)
                frame["load"] = self.load(listed)
                frame["processes"] = listed
            yield frame

    def write(self, script):
        """Writes the scenario beside its script, under the script's name."""
        lines = [f'  "{key}": {json.dumps(value)}' for key, value in self.head.items()]
        lines.append('  "frames": [\n' + ",\n".join(text(frame) for frame in self.frames()) + "]")
        pathlib.Path(script).with_suffix(".json").write_text("{\n" + ",\n".join(lines) + "}\n", encoding="utf-8")


def text(frame):
    """A line a frame, but a line for each process of a list."""
    def in_lines(value):
        return "[\n" + ",\n".join("      " + json.dumps(one) for one in value) + "]"
    parts = [f'"{key}": {in_lines(value) if key == "processes" else json.dumps(value)}' for key, value in frame.items()]
    return "    {" + ", ".join(parts) + "}"
