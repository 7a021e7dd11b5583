#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tells, per library, how many of its lines the tests have reached: coverage.py BUILD_FOLDER [LIBRARY]

The build is the one of the preset "coverage", with its tests run. What belongs to which library says the CMakeLists.txt
of its folder. With a library's name the lines come, too, that no test has reached.
"""
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
KINDS = {"core": "core", "windows": "windows", "plugin": "core", "program": "program"}


def libraries():
    """Every source with the library that lists it."""
    owners = {}
    for listing in sorted(ROOT.glob("src/*/CMakeLists.txt")) + sorted(ROOT.glob("apps/*/CMakeLists.txt")):
        folder = listing.parent.relative_to(ROOT).as_posix()
        calls = re.finditer(r"^(?:sixtrace_(core|windows|plugin|program)|add_library)\((\S+)(.*?)\)",
                            listing.read_text(encoding="utf-8"), re.M | re.S)
        for call in calls:
            kind = KINDS.get(call[1], "core")
            name = call[2] + ("_windows" if kind == "windows" else "")
            for source in re.findall(r"[\w/]+\.(?:cpp|h)\b", call[3]):
                owners[f"{folder}/{source}"] = (kind, name)
    return owners


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    report = subprocess.run(["gcovr", "--root", ROOT, "--filter", "src/", "--filter", "apps/", "--json", "-", sys.argv[1]],
                            cwd=ROOT, check=True, capture_output=True, text=True).stdout
    owners, counts = libraries(), {}
    for file in json.loads(report)["files"]:
        library = owners.get(file["file"])
        if library is None:
            continue
        lines = [line for line in file["lines"] if not line.get("gcovr/noncode")]
        missed = [line["line_number"] for line in lines if line["count"] == 0]
        reached, whole = counts.get(library, (0, 0))
        counts[library] = (reached + len(lines) - len(missed), whole + len(lines))
        if library[1] in sys.argv[2:]:
            text = (ROOT / file["file"]).read_text(encoding="utf-8").split("\n")
            for number in missed:
                print(f"{file['file']}:{number}: {text[number - 1].strip()}")
    for (kind, name), (reached, whole) in sorted(counts.items()):
        print(f"{kind:8} {name:22} {reached:5} of {whole:5} {100 * reached / whole:5.1f} %")


if __name__ == "__main__":
    main()
