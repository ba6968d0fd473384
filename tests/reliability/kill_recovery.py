#!/usr/bin/python3
"""Kills the desktop program at random moments of a session and looks at what is left.

    kill_recovery.py KESTRANE SAMPLE [--kills N] [--longest SECONDS] [--seed S]

The session, under Xvfb: a collection of the file is renamed again and again ("edit-1", "edit-2" and so on), and saved now and
then. After each kill -9 the file must be whole, and every edit that is older than 30 seconds must be in it or in
a copy. The next start must offer the copies there are; it opens them, and the session goes on with them. Prints a line for
the table of docs/reliability.md. Ends with 77 when there is no display or no xdotool here.
"""

import argparse
import datetime
import json
import os
import pathlib
import random
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree

SKIPPED = 77
PATIENCE = 60  # seconds, for the program to show something
MOST_LOST = 30  # seconds
FRAME = "^Kestrane - "
OFFER = "Unsaved Work"
IN_TREE = ["100", "650"]  # below its nodes


def skip(why):
    print("skipped:", why)
    sys.exit(SKIPPED)


def start_display():
    read, write = os.pipe()
    try:
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1366x768x24", "-nolisten", "tcp",
                                   "-noreset"],
                                  pass_fds=[write], stderr=subprocess.DEVNULL)
    except FileNotFoundError as error:
        skip(error)
    os.close(write)
    if not select.select([read], [], [], 30)[0]:
        skip("no display")
    os.environ.update(DISPLAY=":" + os.read(read, 16).decode().strip(), QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
    return server


def windows(title):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True, text=True)
    return found.stdout.split()


def wait_for(what, look):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if found := look():
            return found
        time.sleep(0.1)
    names = [subprocess.run(["xdotool", "getwindowname", window], capture_output=True, text=True).stdout.strip()
             for window in windows(".")]
    raise SystemExit(f"FAILED: waited in vain for {what} among {names}")


def press(window, *words):
    subprocess.run(["xdotool", "windowfocus", "--sync", window, *words], check=True, stderr=subprocess.DEVNULL)


def name_in(path):
    """The name of the first collection of a data file, which must be whole."""
    return xml.etree.ElementTree.parse(path).find(".//instrument-detail").get("name")


def number_of(name):
    match = re.fullmatch(r"edit-(\d+)", name or "")
    return int(match[1]) if match else 0


class Session:
    def __init__(self, program, sample, home):
        self.program, self.home = program, pathlib.Path(home)
        self.file = self.home / "work.xml"
        shutil.copy(sample, self.file)
        self.state = self.home / "state"
        self.edits = []  # when each was finished
        self.begun, self.kept = 0, 0  # the edits before this session, and the last one that was kept
        self.lost, self.damaged, self.offered, self.silent = 0.0, 0, 0, 0

    def copies(self):
        return sorted(self.state.glob("kestrane/recovery/[!.]*/*.xml"))

    def start(self):
        environment = dict(os.environ, HOME=str(self.home), XDG_STATE_HOME=str(self.state),
                           XDG_CONFIG_HOME=str(self.home / "config"), XDG_RUNTIME_DIR=str(self.home))
        expected = bool(self.copies())
        self.begun = len(self.edits)
        process = subprocess.Popen([self.program, str(self.file)], env=environment, stderr=subprocess.DEVNULL)
        found = wait_for("the window", lambda: process.poll() is not None or windows(FRAME))
        if process.poll() is not None:
            raise SystemExit(f"FAILED: the program ended by itself with {process.returncode}")
        frame = found[-1]
        if expected:
            end = time.monotonic() + PATIENCE
            while not windows(OFFER) and time.monotonic() < end:
                time.sleep(0.1)
            offers = windows(OFFER)
            self.offered += bool(offers)
            self.silent += not offers
            if offers:
                press(offers[0], "key", "Return")
                wait_for("the documents", lambda: not windows(OFFER))
        time.sleep(2)  # the tree is built and the log shown
        return process, frame

    def edit(self, frame):
        number = len(self.edits) + 1
        press(frame, "mousemove", *IN_TREE, "click", "1", "key", "Home", "key", "Down", "key", "F2", "key", "ctrl+a", "type", f"edit-{number}")
        subprocess.run(["xdotool", "key", "Return"], check=True)
        self.edits.append(time.monotonic())

    def kill_within(self, process, frame, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.edit(frame)
            if random.random() < 0.1:
                press(frame, "key", "ctrl+s")
            time.sleep(min(random.uniform(0, 3), max(0, end - time.monotonic())))
        process.kill()
        process.wait()
        self.look(time.monotonic())

    def look(self, killed):
        kept = [0]
        for path in [self.file, *self.copies()]:
            try:
                kept.append(number_of(name_in(path)))
                if path != self.file:
                    json.loads(path.with_suffix(".json").read_text())
            except (xml.etree.ElementTree.ParseError, ValueError) as error:
                self.damaged += 1
                print(f"damaged: {path}: {error}")
        missing = self.edits[max(*kept, self.begun):]  # of this session; what was lost before is lost
        if missing:
            self.lost = max(self.lost, killed - missing[0])
        if max(kept) < self.kept:
            self.damaged += 1
            print(f"damaged: edit-{self.kept} was kept and is gone")
        self.kept = max(kept)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("sample")
    parser.add_argument("--kills", type=int, default=3)
    parser.add_argument("--longest", type=float, default=45, help="seconds from the first edit to the kill")
    parser.add_argument("--seed", type=int, default=None)
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else random.randrange(1 << 32)
    random.seed(seed)
    if shutil.which("xdotool") is None:
        skip("no xdotool")
    server = start_display()
    try:
        with tempfile.TemporaryDirectory() as home:
            session = Session(options.program, options.sample, home)
            for _ in range(options.kills):
                session.kill_within(*session.start(), random.uniform(0.5, options.longest))
            edits = len(session.edits)
    finally:
        server.terminate()
        server.wait()
    print(f"| {datetime.date.today()} | {options.kills} kills, {edits} edits, seed {seed} | {session.lost:.0f} s | "
          f"{session.damaged} | {session.offered} of {session.offered + session.silent} |")
    return 1 if session.lost > MOST_LOST or session.damaged or session.silent or edits == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
