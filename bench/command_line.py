#!/usr/bin/env python3
"""How fast kestrane-cli starts and goes through many small files, beside a script on Python's own XML parser that does no
more than read the same files and print their elements. Prints a line for each mark; the exit status is 1 when one is missed.

Usage: command_line.py CLI SAMPLE
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

CLI, SAMPLE = map(os.path.abspath, sys.argv[1:])
FILES = 1000
ROUNDS = 5
MOST_MILLISECONDS = 15     # of one call
LEAST_FILES = 1000         # a second, of one call

SCRIPT = """
import json, sys
import xml.etree.ElementTree as ElementTree

for name in sys.argv[1:]:
    print(json.dumps([[element.tag, element.attrib, element.text] for element in ElementTree.parse(name).iter()]))
"""


def best_seconds(*words):
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        subprocess.run(words, check=True, stdout=subprocess.DEVNULL)
        times.append(time.perf_counter() - start)
    return min(times)


with tempfile.TemporaryDirectory() as folder:
    names = [shutil.copy(SAMPLE, os.path.join(folder, f"{i}.xml")) for i in range(FILES)]
    one, many = best_seconds(CLI, "show", names[0]), best_seconds(CLI, "show", *names)
    script_one, script_many = (best_seconds(sys.executable, "-c", SCRIPT, *part) for part in (names[:1], names))

marks = (("show of a small file", one * 1000, MOST_MILLISECONDS, "ms", script_one * 1000),
         ("small files in one call", FILES / many, LEAST_FILES, "a second", FILES / script_many))
isReached = (one * 1000 <= MOST_MILLISECONDS, FILES / many >= LEAST_FILES)
for (what, reached, mark, unit, script), isGood in zip(marks, isReached):
    print(f"{what}: {reached:.1f} {unit}, mark {mark}; the script {script:.1f} {'' if isGood else 'MISSED'}")
sys.exit(not all(isReached))
