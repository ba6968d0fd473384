#!/usr/bin/env python3
"""LAeq of each task of a shift: the energy mean, by row length, of the rows that count.

    task_means.py FILE TASK=FROM-TO[,FROM-TO...]...

Times are hh:mm of the log's clock, FROM included, TO not; kestrane-cli is found on the path or by KESTRANE_CLI.
Example: task_means.py samples/shift-dosimeter.xml grinding=07:00-09:00,13:00-15:00 break=09:00-09:15
"""
import csv
import io
import math
import os
import subprocess
import sys


def rows_of(file):
    cli = os.environ.get("KESTRANE_CLI", "kestrane-cli")
    text = subprocess.run([cli, "export", "--format", "csv", "-o", "-", file], check=True, capture_output=True).stdout
    return list(csv.DictReader(io.StringIO(text.decode())))


def mean(rows):
    """The energy mean of LAeq in dB, and the hours that it stands for; no rows: None."""
    parts = [(float(row["seconds"]), float(row["LeqA_dB"])) for row in rows
             if row["excluded"] == "0" and row["LeqA_dB"]]
    seconds = sum(length for length, _ in parts)
    if not seconds:
        return None, 0
    return 10 * math.log10(sum(length * 10 ** (level / 10) for length, level in parts) / seconds), seconds / 3600


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    rows = rows_of(sys.argv[1])
    for task in sys.argv[2:]:
        name, _, spans = task.partition("=")
        ranges = [span.split("-") for span in spans.split(",")]
        taken = [row for row in rows if any(begin <= row["start"][11:16] < end for begin, end in ranges)]
        level, hours = mean(taken)
        print(f"{name}\t{'none' if level is None else f'{level:.1f} dB'}\t{hours:.2f} h")


if __name__ == "__main__":
    main()
