#!/usr/bin/env python3
"""Holds the walls between the rooms: who may include whose headers."""
import pathlib
import re
import subprocess
import sys

EFFECT = ["hostapi", "access", "platform", "resources", "stats", "analysis", "render", "ui", "plugin"]
PROGRAMS = ["host", "validate", "media", "footage", "report", "cli"]

# The rooms that each room may include besides itself.
MAY = {room: set(EFFECT) for room in EFFECT}
MAY["hostapi"] = set()
MAY["host"] = {"hostapi"}
MAY["validate"] = {"host", "hostapi"}
MAY["media"] = set()
MAY["footage"] = set()
MAY["report"] = set()
MAY["cli"] = {"host", "hostapi", "validate", "media", "footage", "report"}

# Files of the effect that others may read all the same: what the host-free statistics records are.
OPEN_TO_CLI = {
    "stats/flat_image.h",
    "stats/frame_stats.h",
    "stats/sequence_state.h",
}
# plugin/ is the top floor; these headers of its are plain tables that lower rooms may read.
OPEN_PLUGIN = {"plugin/global_state.h", "plugin/param_index.h"}
# Mathematics that must stay free of the host's records.
HOST_FREE = re.compile(r'hostapi/(callbacks|command_data|parameters|suites/)')
HOST_TOUCHING_STATS = re.compile(r"stats/(sequence_arrays|lifecycle|live_registry|target_checkouts|invalidation|restore)\.")

root = pathlib.Path(__file__).resolve().parent.parent
files = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], cwd=root, check=True,
                       capture_output=True, text=True).stdout.split()
breaches = []
for name in files:
    room = name.split("/")[0]
    if room not in MAY:
        continue
    for number, line in enumerate((root / name).read_text().splitlines(), 1):
        match = re.match(r'\s*#include "([^"]+)"', line)
        if not match:
            continue
        header = match.group(1)
        target = header.split("/")[0]
        where = f"{name}:{number}: "
        if target not in EFFECT + PROGRAMS:
            breaches.append(where + f"include {header} by its path from the top")
        elif target == room:
            pass
        elif room == "cli" and header in OPEN_TO_CLI:
            pass
        elif target not in MAY[room]:
            breaches.append(where + f"{room}/ may not include {header}")
        elif target == "plugin" and room != "plugin" and header not in OPEN_PLUGIN:
            breaches.append(where + f"{room}/ is below plugin/ and may not include {header}")
        if room == "stats" and HOST_FREE.search(header) and not HOST_TOUCHING_STATS.match(name):
            breaches.append(where + "the mathematics of stats/ take nothing of the host's")
print("\n".join(breaches), file=sys.stderr)
sys.exit(bool(breaches))
