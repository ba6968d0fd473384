#!/usr/bin/env python3
"""compare.py LINUX WINDOWS SAMPLES: saves and exports each sample with the kestrane-cli of both systems, prints its report
where that of Windows can draw, and compares the files byte by byte, of reports the words. Exits with 1 when any of them differ."""
import os
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

linux, windows, samples = sys.argv[1:]
emulator = Path(__file__).parent / "wine.sh"
programs = {"linux": [linux], "windows": [str(emulator), windows]}
# What one call does to all files at once, since each start of Wine takes a while.
works = [("save", ["save"]), *((f"export {f}", ["export", "--format", f]) for f in ("csv", "ndjson", "xlsx"))]
if (Path(windows).parent.parent / "lib/kestrane/kestrane-drawing.dll").exists():
    works.append(("report", ["report", "--print-date", "2026-11-25T18:00:00"]))


def run(program, words, folder, files):
    settings = folder / "settings.ini"
    separators = ["--decimal-separator", ".", "--date-separator", "/"]
    call = [*programs[program], "--settings", str(settings), *separators, *words, *files, "-O", str(folder)]
    result = subprocess.run(call, capture_output=True, text=True, check=False, timeout=600,
                            env={**os.environ, "TZ": "UTC", "LC_ALL": "C.UTF-8"})
    return result.returncode, result.stderr.replace("\r", "").replace("Z:", "")


def parts(path):
    """The bytes of a file; of a workbook those of its parts without the one that says when it was made; the words of a
    report, whose letters and fonts are placed and put into the file as the system does it."""
    if path.suffix == ".pdf":
        words = subprocess.run(["pdftotext", str(path), "-"], capture_output=True, text=True, check=True).stdout
        return words.replace("Z:", "").split()
    if path.suffix != ".xlsx":
        return path.read_bytes()
    with zipfile.ZipFile(path) as book:
        return {name: book.read(name) for name in book.namelist() if name != "docProps/core.xml"}


files = sorted(str(p) for p in Path(samples).rglob("*") if p.suffix not in (".md", ".py", ".kxa") and p.is_file())
compared = different = 0
with tempfile.TemporaryDirectory() as scratch:
    for name, words in works:
        folders = {program: Path(scratch) / program / name.replace(" ", "-") for program in programs}
        ends = {}
        for program, folder in folders.items():
            folder.mkdir(parents=True)
            ends[program] = run(program, words, folder, files)
        if ends["linux"][0] != ends["windows"][0]:
            different += 1
            print(f"{name}: {ends['linux']} on Linux, {ends['windows']} on Windows")
        written = {program: {p.name: parts(p) for p in folder.iterdir() if p.name != "settings.ini"}
                   for program, folder in folders.items()}
        for file in sorted(written["linux"].keys() | written["windows"].keys()):
            compared += 1
            if written["linux"].get(file) != written["windows"].get(file):
                different += 1
                print(f"{name}: {file} differs")
print(f"{compared} files compared, {different} differences")
sys.exit(1 if different or not compared else 0)
