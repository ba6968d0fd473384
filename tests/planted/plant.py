#!/usr/bin/env python3
"""Plants changes in the source, one at a time, and expects a test to fail.

plant.py --check            whether each change still fits the source; builds nothing
plant.py [--work FOLDER] [WORDS...]
                            makes every change (or those whose description contains WORDS) in a copy of the last
                            commit, and prints a line for each; the copy and its build stay in FOLDER for the next run.
Exit status 1 when a change does not fit, does not compile, or no test has seen it.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tomllib

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def load():
    return tomllib.loads((HERE / "changes.toml").read_text())["change"]


def misfits(changes, root):
    for change in changes:
        count = (root / change["file"]).read_text().count(change["from"])
        if count != 1:
            print(f"{change['what']}: the text stands {count} times in {change['file']}")
            yield change


def run(words, folder, **more):
    return subprocess.run(words, cwd=folder, capture_output=True, text=True, **more)


def copied(work):
    if not (work / ".git").exists():
        subprocess.run(["git", "clone", "-q", "--shared", str(ROOT), str(work)], check=True)
    subprocess.run(["git", "fetch", "-q", "origin", "HEAD"], cwd=work, check=True)
    subprocess.run(["git", "reset", "-q", "--hard", "FETCH_HEAD"], cwd=work, check=True)
    # Not optimised, because building takes longer here than running.
    subprocess.run(["cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_CXX_FLAGS=-Wno-error", "-DKESTRANE_BENCH=OFF", *os.environ.get("KESTRANE_CMAKE", "").split()],
                   cwd=work, check=True, stdout=subprocess.DEVNULL)


def programs(change):
    return [test.partition(":")[0] for test in change["tests"]]


def build(work, targets):
    return run(["ninja", "-C", "build", *targets], work)


def is_seen(change, work):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    for test in change["tests"]:
        program, _, tests = test.partition(":")
        words = [f"build/bin/{program}", f"--gtest_filter={tests or '*'}", "--gtest_fail_fast"]
        try:
            if run(words, work, env=environment, timeout=600).returncode != 0:
                return True
        except subprocess.TimeoutExpired:
            return True
    return False


def plant(change, work):
    """What came of the change: "red", "GREEN", or why it could not be tried."""
    path = work / change["file"]
    before = path.read_text()
    path.write_text(before.replace(change["from"], change["to"]))
    try:
        built = build(work, programs(change))
        if built.returncode != 0:
            return "DOES NOT COMPILE\n" + built.stdout[-2000:]
        return "red" if is_seen(change, work) else "GREEN"
    finally:
        path.write_text(before)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--work", type=pathlib.Path, default=pathlib.Path("/tmp/kestrane-planted"))
    parser.add_argument("words", nargs="*")
    wanted = parser.parse_args()
    changes = load()
    if list(misfits(changes, ROOT)):
        return 1
    if wanted.check:
        return 0
    changes = [change for change in changes if all(word in change["what"] for word in wanted.words)]
    copied(wanted.work)
    targets = sorted({program for change in changes for program in programs(change)})
    built = build(wanted.work, targets)
    if built.returncode != 0:
        print(built.stdout[-4000:])
        return 1
    unchanged = {"tests": sorted({test for change in changes for test in change["tests"]})}
    if is_seen(unchanged, wanted.work):
        print("a test fails without any change")
        return 1
    unseen = 0
    for change in changes:
        outcome = plant(change, wanted.work)
        unseen += outcome != "red"
        print(f"{outcome}  {change['what']}", flush=True)
    print(f"{len(changes) - unseen} of {len(changes)} seen")
    return 1 if unseen else 0


sys.exit(main())
