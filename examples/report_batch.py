#!/usr/bin/env python3
"""Reports of all data files below a folder, on all cores. What is there already and newer than its data is left alone.

    report_batch.py FOLDER OUT [OPTIONS OF kestrane-cli report...]

OUT gets the folders of FOLDER. A file that cannot be reported is named, the others go on, and the exit status is 1.
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys

SUFFIXES = {".xml", ".zdp", ".log", ".zd2", ".zd4", ".csv", ".zdf", ".zdo"}


def report(data, pdf, options):
    """The message of a report that failed, or nothing."""
    if pdf.exists() and pdf.stat().st_mtime >= data.stat().st_mtime:
        return ""
    pdf.parent.mkdir(parents=True, exist_ok=True)
    call = [os.environ.get("KESTRANE_CLI", "kestrane-cli"), "--quiet", "report", *options, str(data), "-o", str(pdf)]
    done = subprocess.run(call, capture_output=True, text=True)
    return "" if done.returncode == 0 else f"{data}: {done.stderr.strip()}"


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    folder, out = map(pathlib.Path, sys.argv[1:3])
    files = sorted(path for path in folder.rglob("*") if path.suffix.lower() in SUFFIXES)
    jobs = [(path, out / path.relative_to(folder).with_name(path.name + ".pdf"), sys.argv[3:]) for path in files]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(lambda job: report(*job), jobs) if fault]
    print(f"{len(files) - len(faults)} of {len(files)} reports", *faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
