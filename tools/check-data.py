#!/usr/bin/env python3
"""Check the shipped data files before they are turned into binary files.

Loads data/library.json (factory templates) and data/hints.json (editor hints),
reports every rule violation it finds and exits with status 1 if there is any.
It also prints a small table per template (highest angle, smallest distance to
the angle ceiling) so that a human can judge whether the maps look plausible.

Usage: tools/check-data.py [LIBRARY_JSON [HINTS_JSON]]
Standard library only.
"""

import json
import math
import struct
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LIBRARY_PATH = ROOT / "data" / "library.json"
HINTS_PATH = ROOT / "data" / "hints.json"

MAX_RPM = 20000
MAX_ANGLE = 49
MAP_POINTS = 10
MIN_USED_POINTS = 5
K0_RANGE = (10.0, 45.0)          # the editor's sensor advance box
VOLTAGE_RANGE = (100, 250)       # the editor's voltage box and the device check
PLAUSIBLE_VOLTAGE = (150, 250)
K1_RANGE = (-2e-3, 0.0)          # a sensor lag grows with speed, so K1 <= 0
K2_RANGE = (-1e-7, 0.0)
MIN_MARGIN = 2                   # degrees between a map point and its ceiling
HINT_COUNT = 5                   # 0 voltage, 1 side stand, 2 edge, 3 sensor advance, 4 map
LANGUAGES = ("en", "de")

PROFILE_KEYS = {
    "motorbikeType": int,
    "templateType": int,
    "isCustom": bool,
    "auxFlag": bool,
    "name": str,
    "notes": str,
    "extraText": list,
    "map": list,
    "sensorCoefficients": list,
    "sideStandMonitoring": bool,
    "groundEnablesIgnition": bool,
    "pickUpRisingEdge": bool,
    "sensorMode": int,
    "voltage": int,
    "pickUpEdgeSelectable": bool,
    "k1Rising": float,
    "k1Falling": float,
}

problems = []
warnings = []


def problem(where, text):
    problems.append(f"{where}: {text}")


def warning(where, text):
    warnings.append(f"{where}: {text}")


def is_int(value):
    # bool is a subclass of int in Python; a JSON true is not a number here.
    return isinstance(value, int) and not isinstance(value, bool)


def is_number(value):
    return (is_int(value) or isinstance(value, float)) and math.isfinite(value)


def has_type(value, wanted):
    if wanted is int:
        return is_int(value)
    if wanted is float:
        return is_number(value)
    return isinstance(value, wanted)


def to_float32(value):
    """The device stores the coefficients as 32-bit floats."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


def angle_ceiling(k0, k1, k2, rpm):
    """Largest allowed angle at rpm: the curve minus 2 degrees, truncated toward zero.

    Same operation order as the program, so the rounding is the same.
    """
    r = float(rpm)
    return math.trunc(k0 + k1 * r + k2 * r * r - 2.0)


def effective_coefficient_sets(profile, where):
    """Every coefficient triple the program may check this map against.

    With sensor mode 1 or 2 the program replaces K1 by the K1 of the chosen
    pick-up edge and K2 by 0 after loading; if the user may choose the edge,
    both edges count. Each triple is also taken in 32-bit float precision,
    as the CDI gives it back on import.
    """
    k0, k1, k2 = profile["sensorCoefficients"]
    sets = []
    if profile["sensorMode"] == 0:
        sets.append(("own", (k0, k1, k2)))
    else:
        rising = profile["pickUpRisingEdge"]
        current = profile["k1Rising"] if rising else profile["k1Falling"]
        sets.append(("rising" if rising else "falling", (k0, current, 0.0)))
        if profile["pickUpEdgeSelectable"]:
            other = profile["k1Falling"] if rising else profile["k1Rising"]
            sets.append(("falling" if rising else "rising", (k0, other, 0.0)))
    result = []
    for label, triple in sets:
        result.append((label, triple))
        result.append((label + "/float", tuple(to_float32(v) for v in triple)))
    return result


def check_map(profile, where):
    """Return (max angle, min margin) or None when the map is malformed."""
    points = profile["map"]
    if len(points) != MAP_POINTS:
        problem(where, f"map has {len(points)} points, expected {MAP_POINTS}")
        return None
    for i, point in enumerate(points):
        if not (isinstance(point, list) and len(point) == 2 and all(is_int(v) for v in point)):
            problem(where, f"map point {i + 1} is not a pair of integers: {point!r}")
            return None

    used = 0
    for i, (rpm, angle) in enumerate(points):
        if rpm <= 0 and angle <= 0:
            continue
        used += 1
        if not 0 <= rpm <= MAX_RPM:
            problem(where, f"point {i + 1}: rpm {rpm} outside 0..{MAX_RPM}")
        if not 0 <= angle <= MAX_ANGLE:
            problem(where, f"point {i + 1}: angle {angle} outside 0..{MAX_ANGLE}")
        if rpm % 50 != 0:
            warning(where, f"point {i + 1}: rpm {rpm} is not a multiple of 50 (the graph snaps to 50)")
    if used < MIN_USED_POINTS:
        problem(where, f"only {used} used map points, at least {MIN_USED_POINTS} needed")

    for i in range(1, MAP_POINTS):
        if points[i][0] <= points[i - 1][0]:
            problem(where, f"rpm not strictly ascending at point {i + 1} "
                           f"({points[i - 1][0]} then {points[i][0]})")

    min_margin = None
    for label, (k0, k1, k2) in effective_coefficient_sets(profile, where):
        for i, (rpm, angle) in enumerate(points):
            if rpm <= 0 and angle <= 0:
                continue
            if not (0 <= rpm <= MAX_RPM and 0 <= angle <= MAX_ANGLE):
                continue
            ceiling = angle_ceiling(k0, k1, k2, rpm)
            margin = ceiling - angle
            if ceiling < angle:
                problem(where, f"point {i + 1} ({rpm} rpm, {angle} deg) exceeds its ceiling "
                               f"{ceiling} ({label} coefficients)")
            elif margin < MIN_MARGIN:
                problem(where, f"point {i + 1} ({rpm} rpm, {angle} deg) is only {margin} deg "
                               f"below its ceiling {ceiling} ({label}); keep {MIN_MARGIN}")
            min_margin = margin if min_margin is None else min(min_margin, margin)
    max_angle = max(angle for _, angle in points)
    return max_angle, min_margin


def check_profile(index, profile):
    where = f"template {index}"
    if not isinstance(profile, dict):
        problem(where, "is not an object")
        return None
    if isinstance(profile.get("name"), str):
        where = f"template {index} ({profile['name']})"

    keys = set(profile)
    for missing in sorted(set(PROFILE_KEYS) - keys):
        problem(where, f"missing key '{missing}'")
    for extra in sorted(keys - set(PROFILE_KEYS)):
        problem(where, f"unknown key '{extra}'")
    bad_type = False
    for key, wanted in PROFILE_KEYS.items():
        if key in profile and not has_type(profile[key], wanted):
            problem(where, f"'{key}' has the wrong type ({type(profile[key]).__name__})")
            bad_type = True
    if bad_type or keys != set(PROFILE_KEYS):
        return None

    if profile["motorbikeType"] != index:
        problem(where, f"motorbikeType is {profile['motorbikeType']}, expected {index}")
    if profile["templateType"] != profile["motorbikeType"]:
        problem(where, "templateType differs from motorbikeType")
    if profile["isCustom"]:
        problem(where, "a factory template must have isCustom false")
    if profile["auxFlag"]:
        problem(where, "auxFlag must be false")
    if not profile["name"].strip():
        problem(where, "empty name")

    texts = profile["extraText"]
    if len(texts) != 2 or not all(isinstance(t, str) and t.strip() for t in texts):
        problem(where, "extraText must be two non-empty strings (English, German)")
    elif any("<" in t or ">" in t for t in texts):
        problem(where, "extraText is shown as plain text; no markup")

    coefficients = profile["sensorCoefficients"]
    if len(coefficients) != 3 or not all(is_number(v) for v in coefficients):
        problem(where, "sensorCoefficients must be three numbers")
        return None
    k0, k1, k2 = coefficients
    if not K0_RANGE[0] <= k0 <= K0_RANGE[1]:
        problem(where, f"sensor advance K0 {k0} outside {K0_RANGE[0]}..{K0_RANGE[1]}")
    if abs(k0 * 10 - round(k0 * 10)) > 1e-9:
        problem(where, f"sensor advance K0 {k0} has more than the one decimal the editor shows")
    if not K1_RANGE[0] <= k1 <= K1_RANGE[1]:
        problem(where, f"K1 {k1} outside {K1_RANGE[0]}..{K1_RANGE[1]}")
    if not K2_RANGE[0] <= k2 <= K2_RANGE[1]:
        problem(where, f"K2 {k2} outside {K2_RANGE[0]}..{K2_RANGE[1]}")

    mode = profile["sensorMode"]
    rising, falling = profile["k1Rising"], profile["k1Falling"]
    if mode not in (0, 1, 2):
        problem(where, f"sensorMode {mode} is not 0, 1 or 2")
        return None
    if mode == 0:
        if rising != 0.0 or falling != 0.0:
            problem(where, "sensor mode 0 takes no k1Rising/k1Falling; set both to 0.0")
    else:
        for label, value in (("k1Rising", rising), ("k1Falling", falling)):
            if not K1_RANGE[0] <= value < 0.0:
                problem(where, f"{label} {value} should be small and negative")
        if rising == falling:
            problem(where, "k1Rising and k1Falling should differ")
        chosen = rising if profile["pickUpRisingEdge"] else falling
        if k1 != chosen or k2 != 0.0:
            problem(where, f"with sensor mode {mode} store sensorCoefficients as "
                           f"[K0, {chosen}, 0.0] (the program derives them on loading)")

    if not profile["sideStandMonitoring"] and not profile["groundEnablesIgnition"]:
        # The flag byte only carries the polarity while monitoring is on.
        problem(where, "with side stand monitoring off, groundEnablesIgnition must be true "
                       "(the flag byte cannot keep false)")

    voltage = profile["voltage"]
    if not VOLTAGE_RANGE[0] <= voltage <= VOLTAGE_RANGE[1]:
        problem(where, f"voltage {voltage} outside {VOLTAGE_RANGE[0]}..{VOLTAGE_RANGE[1]} V")
    elif not PLAUSIBLE_VOLTAGE[0] <= voltage <= PLAUSIBLE_VOLTAGE[1]:
        warning(where, f"voltage {voltage} V is unusual for a charging voltage")

    return check_map(profile, where)


def check_library(path):
    try:
        data = json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        problem(str(path), f"cannot be read: {error}")
        return []
    if not isinstance(data, dict) or set(data) != {"libraryValue", "profiles"}:
        problem(str(path), "top level must be an object with exactly 'libraryValue' and 'profiles'")
        return []
    if not is_int(data["libraryValue"]):
        problem(str(path), "libraryValue must be an integer")
    profiles = data["profiles"]
    if not isinstance(profiles, list) or len(profiles) < 8:
        problem(str(path), "profiles must be a list of at least eight templates")
        if not isinstance(profiles, list):
            return []

    rows = []
    names = set()
    for index, profile in enumerate(profiles):
        summary = check_profile(index, profile)
        if isinstance(profile, dict):
            name = profile.get("name")
            if name in names:
                problem(f"template {index}", f"name '{name}' is used twice")
            names.add(name)
            if summary is not None:
                rows.append((index, profile, summary))
    return rows


def check_hints(path):
    try:
        data = json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        problem(str(path), f"cannot be read: {error}")
        return
    if not isinstance(data, dict) or set(data) != {"catalogValue", "hints"}:
        problem(str(path), "top level must be an object with exactly 'catalogValue' and 'hints'")
        return
    if not is_int(data["catalogValue"]):
        problem(str(path), "catalogValue must be an integer")
    hints = data["hints"]
    if not isinstance(hints, list) or len(hints) != HINT_COUNT:
        problem(str(path), f"hints must be a list of exactly {HINT_COUNT} entries")
        if not isinstance(hints, list):
            return
    for index, hint in enumerate(hints):
        where = f"hint {index}"
        if not isinstance(hint, dict) or set(hint) != set(LANGUAGES):
            problem(where, f"must be an object with exactly the languages {LANGUAGES}")
            continue
        for language in LANGUAGES:
            entry = hint[language]
            if not isinstance(entry, dict) or set(entry) != {"title", "text"}:
                problem(f"{where}/{language}", "must be an object with exactly 'title' and 'text'")
                continue
            for key in ("title", "text"):
                value = entry[key]
                if not isinstance(value, str) or not value.strip():
                    problem(f"{where}/{language}", f"empty or missing {key}")
            if isinstance(entry.get("title"), str) and "<" in entry["title"]:
                problem(f"{where}/{language}", "the title is shown as plain text; no markup")


def print_table(rows):
    header = f"{'type':>4}  {'name':<42} {'mode':>4} {'edge':<9} {'V':>4} {'K0':>5} {'top rpm':>7} {'max deg':>7} {'margin':>6}"
    print(header)
    print("-" * len(header))
    for index, profile, (max_angle, min_margin) in rows:
        edge = "rising" if profile["pickUpRisingEdge"] else "falling"
        if profile["pickUpEdgeSelectable"]:
            edge += "*"
        top = max(rpm for rpm, _ in profile["map"])
        margin = "-" if min_margin is None else str(min_margin)
        print(f"{index:>4}  {profile['name']:<42} {profile['sensorMode']:>4} {edge:<9} "
              f"{profile['voltage']:>4} {profile['sensorCoefficients'][0]:>5.1f} {top:>7} "
              f"{max_angle:>7} {margin:>6}")
    print("(* = edge selectable by the user; margin = smallest ceiling minus angle, in degrees,"
          " over all edges the user may choose)")


def main(argv):
    library_path = Path(argv[1]) if len(argv) > 1 else LIBRARY_PATH
    hints_path = Path(argv[2]) if len(argv) > 2 else HINTS_PATH
    rows = check_library(library_path)
    check_hints(hints_path)
    if rows:
        print_table(rows)
    for text in warnings:
        print(f"warning: {text}")
    for text in problems:
        print(f"problem: {text}")
    if problems:
        print(f"{len(problems)} problem(s) found")
        return 1
    print("data OK")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
