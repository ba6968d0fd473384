#!/usr/bin/env python3
"""Asks kestrane-cli about random logs, and counts the answers again from the rows that it exports.

    check_questions.py [LOGS [SEED]]

The logs have gaps, rows that begin late, midnight, a clock that is put back, rows without a level and excluded ranges.
A range, the rest of the log, the loudest and quietest stretch, events, a percentile, the distribution, two logs side by side and
the level from octave bands are compared. kestrane-cli is found
on the path or by KESTRANE_CLI. Prints how many logs agree; ends with 1 at the first one that does not.
"""
import csv
import datetime
import io
import json
import math
import os
import random
import subprocess
import sys
import tempfile


def cli(*words):
    program = os.environ.get("KESTRANE_CLI", "kestrane-cli")
    return subprocess.run([program, "--quiet", *words], check=True, capture_output=True, text=True).stdout


# The octave bands, and what A-weighting takes off them.
BANDS = {"63": 26.2, "250": 8.6, "1k": 0, "4k": -1}


def write_log(path, dice):
    """Some hundred rows of one length, in octave bands or without."""
    octaves = dice.random() < 0.5
    length = dice.choice([1, 10, 60])
    time = datetime.datetime(2024, 10, 26, 23, 40) + datetime.timedelta(seconds=dice.randrange(3600))
    rows = []
    for _ in range(dice.randrange(2, 400)):
        bands = "".join(f"<f{band.upper()}>{dice.randrange(400, 1200) / 10}</f{band.upper()}>" for band in BANDS if octaves)
        level = "" if dice.random() < 0.02 else f"<leq><f>{dice.randrange(400, 1200) / 10}</f>{bands}</leq>"
        rows.append(f"<intvl><date>{time:%d&#47;%m&#47;%Y}</date><time>{time:%H:%M:%S}</time><ca>{level}</ca></intvl>")
        late = dice.choice([0] * 40 + [1, 2, 600, -3600])
        time += datetime.timedelta(seconds=length + late)
    with open(path, "w", encoding="ascii") as file:
        file.write('<?xml version="1.0"?><instruments><instrument-data><instrument-detail name="x"/><logs><log>'
                   f'<md>{int(octaves)}</md><cri>85</cri><ex>3</ex><ca><fw>{"ZA"[not octaves]}</fw></ca><interval>{length}</interval>'
                   f'<intvls>{"".join(rows)}</intvls></log></logs></instrument-data></instruments>')
    return len(rows)


def counting(path):
    """Number, begin, seconds, level and level from the bands of the rows that count."""
    found = []
    for number, row in enumerate(csv.DictReader(io.StringIO(cli("export", "--format", "csv", "-o", "-", path))), 1):
        if row["excluded"] == "0" and row["LeqA_dB"]:
            found.append((number, datetime.datetime.fromisoformat(row["start"]), float(row["seconds"]),
                          float(row["LeqA_dB"]), from_bands(row)))
    return found


def from_bands(row):
    levels = [float(row[f"LeqA_{band}_dB"]) - less for band, less in BANDS.items() if row.get(f"LeqA_{band}_dB")]
    return 10 * math.log10(sum(10 ** (level / 10) for level in levels)) if levels else None


def mean(rows, level=3):
    energy = sum(row[2] * 10 ** (row[level] / 10) for row in rows)
    return 10 * math.log10(energy / sum(row[2] for row in rows)) if rows else None


def runs(rows):
    """Rows without a gap of more than a second."""
    parts = []
    for row in rows:
        last = parts[-1][-1] if parts else None
        if last and row[0] == last[0] + 1 and (row[1] - last[1]).total_seconds() <= last[2] + 1:
            parts[-1].append(row)
        else:
            parts.append([row])
    return parts


def windows(rows, seconds):
    for part in runs(rows):
        count = math.ceil(seconds / part[0][2])
        yield from (mean(part[first:first + count]) for first in range(len(part) - count + 1))


def percentile(rows, percent):
    """Between the middles of the sorted rows, which are all of one length."""
    levels = sorted((row[3] for row in rows), reverse=True)
    place = min(max(len(levels) * percent / 100 - 0.5, 0), len(levels) - 1)
    below = math.floor(place)
    return levels[below] + (place - below) * (levels[min(below + 1, len(levels) - 1)] - levels[below])


def same(found, wanted):
    return found is None and wanted is None or None not in (found, wanted) and math.isclose(found, wanted, rel_tol=1e-6, abs_tol=1e-3)


def disagreements(path, count, dice):
    rows = counting(path)
    first, last = sorted(dice.choices(range(1, count + 1), k=2))
    within = [row for row in rows if first <= row[0] <= last]
    rest = [row for row in rows if not first <= row[0] <= last]
    ask = lambda *words: json.loads(cli("analyse", path, *words))
    answer = ask("--range", f"{first}-{last}")
    dose = sum(row[2] / 288 * 2 ** ((row[3] - 85) / 3) for row in within) if within else None
    seconds = dice.choice([1, 60, 300])
    worst = ask("--worst", str(seconds / 60))
    means = list(windows(rows, seconds))
    limit = dice.randrange(600, 1150) / 10
    events = ask("--events", str(limit))
    percent = dice.randrange(0, 1001) / 10
    loud = [row for row in rows if row[3] >= limit]
    width = dice.choice([1, 2.5, 5])
    classes = {item["Level"]: item["Seconds"] for item in ask("--distribution", str(width)) if item["Seconds"]}
    counted = {}
    for row in rows:
        edge = math.floor(row[3] / width + 1e-9) * width
        counted[edge] = counted.get(edge, 0) + row[2]
    compared = ask("--compare", path)
    bands = [row for row in within if row[4] is not None]
    return [name for name, agree in {
        "range": same(answer["LAeq"], mean(within)),
        "rest": same(answer["Rest"]["LAeq"], mean(rest)),
        "length": answer["Seconds"] == sum(row[2] for row in within),
        "dose": same(answer["Dose"], dose),
        "loudest": same(worst["Loudest"]["LAeq"], max(means, default=None)),
        "quietest": same(worst["Quietest"]["LAeq"], min(means, default=None)),
        "events": len(events) == len(runs(loud)),
        "distribution": classes == counted,
        "comparison": same(compared["Mean"], mean(rows)) and [log["Difference"] for log in compared["Logs"]] in ([0, 0], [None, None]),
        "bands": same(answer.get("LAeqFromBands"), mean(bands, 4)),
        "percentile": not rows or same(ask("--ln", str(percent))[str(percent)], percentile(rows, percent)),
    }.items() if not agree]


def main():
    logs = int(sys.argv[1]) if len(sys.argv) > 1 else 100
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    with tempfile.TemporaryDirectory() as folder:
        for number in range(logs):
            dice = random.Random(f"{seed}/{number}")
            path, cut = (os.path.join(folder, name) for name in ("log.xml", "cut.xml"))
            count = write_log(path, dice)
            first, last = sorted(dice.choices(range(1, count + 1), k=2))
            if dice.random() < 0.7:
                cli("cut", path, dice.choice(["--exclude", "--include"]), f"{first}-{last}", "-o", cut)
                path = cut
            wrong = disagreements(path, count, dice)
            if wrong:
                sys.exit(f"log {number} of seed {seed}: {', '.join(wrong)}")
    print(f"{logs} logs agree")


if __name__ == "__main__":
    main()
