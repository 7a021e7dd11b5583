# SPDX-License-Identifier: MIT
"""An independent model of `kqx measure` in NumPy: reads the captures itself, works each figure out array by array, and
compares. Usage: measure_model.py KQX FILE... Prints a table of all figures; exit code 1 where any differs."""
import json
import struct
import subprocess
import sys

import numpy

LABELS = {"1": "ch1", "2": "ch2", "A": "A", "B": "B", "C": "C", "D": "D"}


def channels(content):
    """Label, fields and samples of each block of a sound capture."""
    probe = content[3:6] != b"bin"
    at = 10
    while content[at:at + 2] == b"CH":
        label = LABELS[chr(content[at + 2])]
        slots, count, scan, row = struct.unpack_from("<4i", content, at + 7)
        exponent = struct.unpack_from("<h", content, at + 31)[0] if probe else 0
        first = at + (51 if probe else 47)
        interval, frequency, period, scale = struct.unpack_from("<4f", content, first - 16)
        samples = numpy.frombuffer(content, "<i2", count, first).astype(numpy.float64)
        yield label, dict(count=count, scan=scan, row=row, factor=10.0 ** exponent, interval=interval,
                          frequency=frequency, period=period, scale=scale), samples
        at = first + 2 * max(slots, count) + (2 if count == 0 else 0)


def level(values, outer, sign):
    counts, frequencies = numpy.unique(values * sign, return_counts=True)
    most = frequencies.max()
    if most * 20 < len(values):
        return outer
    return sign * counts[frequencies == most].max()


def switches(states):
    """Indexes of the samples that change the state, and the states; 0 is neither."""
    where = numpy.flatnonzero(states)
    kept = states[where]
    change = numpy.flatnonzero(numpy.diff(kept)) + 1
    return where[change], kept[change]


def crossing(x, i, wanted):
    """Moment of the last way through `wanted` at or before sample i, in the direction of x at i."""
    up = x[i] >= wanted
    for k in range(i, 0, -1):
        if (up and x[k - 1] < wanted <= x[k]) or (not up and x[k - 1] > wanted >= x[k]):
            return k - 1 + (wanted - x[k - 1]) / (x[k] - x[k - 1])
    raise ValueError


def leaving(x, i, wanted, up):
    for k in range(i, 0, -1):
        if (up and x[k - 1] <= wanted < x[k]) or (not up and x[k - 1] >= wanted > x[k]):
            return k - 1 + (wanted - x[k - 1]) / (x[k] - x[k - 1])
    raise ValueError


def reaching(x, i, wanted):
    return i - 1 + (wanted - x[i - 1]) / (x[i] - x[i - 1])


def mean(values):
    return float(numpy.mean(values)) if len(values) else None


def figures(fields, x, everything):
    if not everything and fields["row"] >= 22 and 0 < fields["scan"] < fields["count"]:
        x = x[:fields["scan"]]
    seconds = fields["interval"] * 1e-6
    result = dict(samples=len(x), interval_s=seconds, duration_s=len(x) * seconds,
                  instrument_frequency_hz=fields["frequency"] or None,
                  instrument_period_s=fields["period"] * 1e-6 or None)
    if not len(x):
        return result
    volts = fields["scale"] * fields["factor"] / 1000
    least, greatest = x.min(), x.max()
    middle = (least + greatest) / 2
    top = level(x[x > middle], greatest, 1) if (x > middle).any() else greatest
    base = level(x[x < middle], least, -1) if (x < middle).any() else least
    amplitude = top - base
    result.update(min_v=least * volts, max_v=greatest * volts, peak_to_peak_v=(greatest - least) * volts,
                  mean_v=x.mean() * volts, rms_v=numpy.sqrt((x * x).mean()) * volts, ac_rms_v=x.std() * volts,
                  top_v=top * volts, base_v=base * volts, amplitude_v=amplitude * volts)
    if amplitude == 0:
        return result
    result.update(overshoot_pct=100 * (greatest - top) / amplitude, preshoot_pct=100 * (base - least) / amplitude)
    centre = (top + base) / 2
    at, states = switches((20 * x >= 20 * centre + amplitude) * 1 - (20 * x <= 20 * centre - amplitude) * 1)
    moments = numpy.array([crossing(x, i, centre) for i in at])
    rises = moments[states > 0] if len(at) else moments
    widths = numpy.diff(moments)
    result.update(positive_width_s=mean(widths[states[:-1] > 0] * seconds if len(at) else []),
                  negative_width_s=mean(widths[states[:-1] < 0] * seconds if len(at) else []))
    if len(rises) >= 2:
        period = (rises[-1] - rises[0]) / (len(rises) - 1) * seconds
        result.update(cycles=len(rises) - 1, period_s=period, frequency_hz=1 / period)
        if result["positive_width_s"] is not None:
            result.update(duty_pct=100 * result["positive_width_s"] / period)
    ten, ninety = base + amplitude / 10, top - amplitude / 10
    at, states = switches((10 * x >= 10 * base + 9 * amplitude) * 1 - (10 * x <= 10 * base + amplitude) * 1)
    rise = [reaching(x, i, ninety) - leaving(x, i, ten, True) for i, s in zip(at, states) if s > 0]
    fall = [reaching(x, i, ten) - leaving(x, i, ninety, False) for i, s in zip(at, states) if s < 0]
    result.update(rise_time_s=mean(numpy.array(rise) * seconds), fall_time_s=mean(numpy.array(fall) * seconds))
    return result


def main():
    kqx, files = sys.argv[1], sys.argv[2:]
    differences = compared = 0
    for everything in ([], ["--all"]):
        lines = subprocess.run([kqx, "measure", "--json", *everything, *files], capture_output=True, check=True)
        told = [json.loads(line) for line in lines.stdout.splitlines()]
        assert [entry["file"] for entry in told] == files
        for entry in told:
            with open(entry["file"], "rb") as file:
                held = list(channels(file.read()))
            assert [c["label"] for c in entry["channels"]] == [label for label, _, _ in held], entry["file"]
            for channel, (label, fields, samples) in zip(entry["channels"], held):
                expected = figures(fields, samples, bool(everything))
                for key, value in channel.items():
                    if key == "label":
                        continue
                    wanted = expected.get(key)
                    compared += 1
                    # Scales are 32-bit reals. kqx prints the shortest decimal number for each.
                    same = value is wanted or (value is not None and wanted is not None and
                                               abs(value - wanted) <= 2e-7 * max(abs(wanted), abs(value)) + 1e-12)
                    differences += not same
                    print("%s %s %s %s %r %r" % ("  " if same else "!=", entry["file"], label, key, value, wanted))
    print("%d figures compared, %d differ" % (compared, differences))
    sys.exit(differences > 0 or compared == 0)


if __name__ == "__main__":
    main()
