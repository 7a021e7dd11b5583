#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What kqx costs over thousands of captures, beside a baseline in the same run; the page cache is warm.

    captures_as_data.py BIN FOLDER [--count 10000] [--old KQX]

BIN holds kqx and sixtrace-instrument; FOLDER is made and filled with captures of six full channels, 123 kB each, and stays for the
next run. What is converted, 3 GB, stays in FOLDER/made-* too; remove it some minutes before the next run. --old names a kqx to
compare the start of the process with. Every figure is the least of several runs, the thing and its baseline by turns; of the
conversion and of the start the worst turn is told too."""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import numpy


def timed(command, quiet_codes=(0,)):
    start = time.perf_counter()
    code = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode
    if code not in quiet_codes:
        sys.exit(f"{command[:3]} ended with {code}")
    return time.perf_counter() - start


def all_turns(runs, *things):
    """The seconds of each thing, a list for each turn."""
    return [[thing() for thing in things] for _ in range(runs)]


def by_turns(runs, *things):
    """The least seconds of each thing."""
    return [min(seconds) for seconds in zip(*all_turns(runs, *things))]


def row(what, figure, goal, more):
    print(f"| {what} | {figure:.2f} | {goal} | {more} |", flush=True)


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("bin", type=pathlib.Path)
    p.add_argument("folder", type=pathlib.Path)
    p.add_argument("--count", type=int, default=10000)
    p.add_argument("--old", type=pathlib.Path)
    a = p.parse_args()
    kqx = str(a.bin / "kqx")
    a.folder.mkdir(parents=True, exist_ok=True)
    master = a.folder / "master"
    subprocess.run([a.bin / "sixtrace-instrument", "--write", master, "--scene", "full"], check=True)
    content = master.read_bytes()
    names = [str(a.folder / f"f{i:05}.bin") for i in range(a.count)]
    for name in names:
        if not os.path.exists(name) or os.path.getsize(name) != len(content):
            pathlib.Path(name).write_bytes(content)
    listing = a.folder / "list"
    listing.write_text("\n".join(names) + "\n")
    over = ["--files-from", str(listing)]
    cat = ["sh", "-c", f"xargs cat < '{listing}'"]
    timed(cat)

    print("| What | Ratio | Goal | Seconds |\n|---|---|---|---|")
    base, info = by_turns(5, lambda: timed(cat), lambda: timed([kqx, "info", "--json", "--jobs", "1", *over]))
    row(f"`info --json` of {a.count} files, one job / `cat`", info / base, "at most 3", f"{info:.2f} / {base:.2f}")
    base, one, two = by_turns(5, lambda: timed(cat), lambda: timed([kqx, "measure", "--json", "--jobs", "1", *over]),
                              lambda: timed([kqx, "measure", "--json", "--jobs", "2", *over]))
    row("`measure --json`, one job / `cat`", one / base, "at most 6", f"{one:.2f} / {base:.2f}")
    row("one job / two jobs", one / two, "at least 1.8", f"{one:.2f} / {two:.2f}")

    few = names[:200]
    out = a.folder / "npz"
    out.mkdir(exist_ok=True)
    subprocess.run([kqx, "convert", "--to", "npz", "--out-dir", out, names[0]], check=True)
    with numpy.load(out / "f00000.npz") as loaded:
        arrays = {name: loaded[name] for name in loaded.files}

    # Both make new files in a new folder, for overwriting or removing files costs the system more than making them. What one
    # leaves to be written to the disk would slow the next one down: it is written before.
    # Nothing is removed here: ext4 searches past the inodes of files that were removed in the last five minutes, one by one, at
    # every new file.
    def new_folder():
        into = pathlib.Path(tempfile.mkdtemp(prefix="made-", dir=a.folder))
        os.sync()
        return into

    def savez():
        into = new_folder()
        start = time.perf_counter()
        for name in few:
            numpy.savez(into / (pathlib.Path(name).stem + ".npz"), **arrays)
        return time.perf_counter() - start

    def convert(*jobs):
        into = new_folder()
        return timed([kqx, "convert", *jobs, "--to", "npz", "--out-dir", str(into), *few])

    # The source files are read once, so that no turn pays for that.
    timed(["cat", *few])
    turns = all_turns(7, savez, lambda: convert("--jobs", "1"), convert)
    for which, jobs in ((1, "one job"), (2, f"the default of {len(os.sched_getaffinity(0))} jobs")):
        theirs, ours = (min(turn[i] for turn in turns) for i in (0, which))
        worst = max(turns, key=lambda turn: turn[which] / turn[0])
        row(f"`convert --to npz` of {len(few)} files, {jobs} / `savez`", ours / theirs, "at most 0.5",
            f"{ours:.2f} / {theirs:.2f}; worst of {len(turns)} turns {worst[which] / worst[0]:.2f}: "
            f"{worst[which]:.2f} / {worst[0]:.2f}")

    def memory(count):
        some = a.folder / "some"
        some.write_text("\n".join(names[:count]) + "\n")
        command = [kqx, "measure", "--json", "--jobs", "2", "--files-from", str(some)]
        told = subprocess.run(["/usr/bin/time", "-f", "%M", *command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=True)
        return int(told.stderr)

    hundred, all_of_them = memory(100), memory(a.count)
    row("memory over all files / over the first hundred", all_of_them / hundred, "1: no growth beyond the names",
        f"{all_of_them} kB / {hundred} kB")

    if a.old:
        single = ["info", "--json", names[0]]
        runs = [by_turns(40, lambda: timed([str(a.old), *single]), lambda: timed([kqx, *single])) for _ in range(5)]
        old, new = max(runs, key=lambda run: run[1] / run[0])
        row("`info` of one file, whole process / before, worst of 5 runs", new / old, "at most 0.5",
            f"{new * 1e3:.1f} ms / {old * 1e3:.1f} ms")


if __name__ == "__main__":
    main()
