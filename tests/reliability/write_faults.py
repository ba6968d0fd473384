#!/usr/bin/python3
"""Lets everything that the programs write fail, and looks at what is on the disk then.

    write_faults.py BIN SAMPLES [--kills N] [--errors N] [--seed S]

BIN is the folder of kestrane-cli, one_program and failing_calls.so. What is written are documents with their history and
backup, copies of unsaved work, assessments, settings, exports and protector databases. First each runs undisturbed,
which gives the old and the new content and the number of system calls. Then a call fails or writes less than it was given, or
the program is killed, in front of a call or at any moment. After that each file must be whole, as it was or as it should be; a
program that says that it has written it must have; and the same must succeed when it is tried again. Prints lines for the
table of docs/reliability.md.
"""

import argparse
import datetime
import errno
import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import zipfile

PATIENCE = 120  # seconds
KILL, SHORT = -1, 0
ERRORS = {"open": [errno.EACCES, errno.ENOSPC, errno.EINTR], "write": [errno.ENOSPC, errno.EIO, errno.EINTR, SHORT],
          "fsync": [errno.EIO, errno.ENOSPC], "close": [errno.EIO, errno.EINTR], "rename": [errno.EACCES, errno.ENOSPC]}


class Broken(Exception):
    pass


def whole(path):
    """What a file says, without what differs from run to run; None when there is none. Raises Broken."""
    if not path.exists():
        return None
    try:
        if path.suffix == ".xlsx":
            with zipfile.ZipFile(path) as book:
                if book.testzip():
                    raise Broken(f"{path.name}: {book.testzip()}")
                return book.read("xl/worksheets/sheet1.xml")
        text = path.read_bytes()
        if path.suffix == ".jsonl":
            if not text:
                return None  # it was made and not yet written to
            if not text.endswith(b"\n"):
                raise Broken(f"{path.name}: the last line is torn")
            return [{key: value for key, value in json.loads(line).items() if key != "Time"} for line in text.splitlines()]
        if path.suffix == ".json":
            return sorted(json.loads(text))
        return text
    except (ValueError, zipfile.BadZipFile, KeyError) as error:
        raise Broken(f"{path.name}: {error}") from error


class Case:
    """One thing that is written: in a folder with files, by a command; the files to look at, with "*" for any name. What
    the command has written before the faults begin is what it writes with the last word "first"."""

    def __init__(self, name, files, command, watched, waits=False):
        self.name, self.files, self.command, self.watched, self.waits = name, files, command, watched, waits

    def prepare(self, folder):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        for name, content in self.files.items():
            (folder / name).write_bytes(content)

    def start(self, folder, command=None, **faults):
        environment = dict(os.environ, LC_ALL="C", ASAN_OPTIONS="verify_asan_link_order=0", FAULT_FOLDER=str(folder),
                           **{key: str(value) for key, value in faults.items()})
        if faults:
            environment["LD_PRELOAD"] = str(BIN / "failing_calls.so")
        if self.waits:
            environment["FAULT_WAITS"] = "1"
        words = [word.replace("DIR", str(folder)) for word in command or self.command]
        return subprocess.Popen([str(BIN / words[0]), *words[1:]], env=environment, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, text=True)

    def state(self, folder):
        state = {}
        for pattern in self.watched:
            found = sorted(folder.glob(pattern))
            state[pattern] = whole(found[-1]) if found else None
        return state

    def learn(self, folder):
        """The content before and after an undisturbed run, the calls of each kind, and the seconds that it takes."""
        self.prepare(folder)
        self.old = self.state(folder)
        begin = time.monotonic()
        process = self.start(folder)
        told = process.communicate(timeout=PATIENCE)[1]
        assert process.returncode == 0, f"{self.name}: {told}"
        self.seconds = time.monotonic() - begin
        self.new = self.state(folder)
        assert self.new != self.old and None not in self.new.values(), f"{self.name}: {self.new}"
        self.first = self.old
        if "autosave" in self.command:
            self.prepare(folder)
            self.start(folder, [*self.command[:-1], "first"]).communicate(timeout=PATIENCE)
            self.first = self.state(folder)
        self.calls = {}
        for call in [*ERRORS, "any"]:
            self.prepare(folder)
            count = folder.parent / "count"
            self.start(folder, FAULT_CALL=call, FAULT_COUNT=count).communicate(timeout=PATIENCE)
            self.calls[call] = int(count.read_text())


class Tally:
    def __init__(self):
        self.runs = self.said = self.false = self.broken = self.left = self.stuck = 0

    def tell(self, kind, case, fault, text):
        setattr(self, kind, getattr(self, kind) + 1)
        print(f"{kind}: {case.name}, {fault}: {text}", flush=True)


def look(case, folder, fault, tally, is_said, told):
    try:
        state = case.state(folder)
    except Broken as error:
        return tally.tell("broken", case, fault, error)
    for name, content in state.items():
        is_new = content == case.new[name]
        if not is_new and content not in (case.old[name], case.first[name]):
            tally.tell("broken", case, fault, f"{name} is neither old nor new")
        is_excepted = name.endswith(".jsonl") and "history" in told.lower()
        if is_said and not is_new and not is_excepted:
            tally.tell("false", case, fault, f"{name} is said to be written")


def run(case, folder, tally, fault, kill_after=None, **faults):
    case.prepare(folder)
    process = case.start(folder, **faults)
    if kill_after is not None:
        try:
            process.wait(kill_after)
        except subprocess.TimeoutExpired:
            process.kill()
    told = process.communicate(timeout=PATIENCE)[1]
    is_said = process.returncode == 0
    is_killed = process.returncode == -signal.SIGKILL
    tally.runs += 1
    tally.said += is_said
    if not is_said and not is_killed and not (process.returncode == 1 and told):
        tally.tell("false", case, fault, f"status {process.returncode} without a message")
    look(case, folder, fault, tally, is_said, told)
    if not is_killed and list(folder.rglob(".kestrane-*.tmp")):
        tally.tell("left", case, fault, "a temporary file stays")
    again = case.start(folder)
    told = again.communicate(timeout=PATIENCE)[1]
    if again.returncode != 0 or list(folder.glob(".kestrane-*.tmp")):
        tally.tell("stuck", case, fault, told)


def cases(samples):
    data = (samples / "roadworks-selection.xml").read_bytes()
    assessment = (samples / "welder-tasks.kxa").read_bytes()
    settings = "[Preferences]\n" + "".join(f"Key{i}=text {i}\n" for i in range(200)) + "Value=old\n"
    document = {"a.xml": data}
    cli = ["kestrane-cli", "--quiet", "--settings", "DIR/../settings.ini"]
    log = ["a.xml", "a.xml.history.jsonl"]

    def export(form):
        return Case(form, {**document, "out." + form: b"old"} if form != "xlsx" else document,
                    [*cli, "export", "DIR/a.xml", "--format", form, "-o", f"DIR/out.{form}"], ["out." + form])

    return [
        Case("document", document, ["one_program", "document", "DIR/a.xml", "new"], [*log, "a.xml.bak"], waits=True),
        Case("on the command line", document, [*cli, "recalc", "DIR/a.xml", "--criterion", "80", "-o", "DIR/a.xml",
                                               "--history"], log),
        Case("autosave", document, ["one_program", "autosave", "DIR/a.xml", "new"],
             ["state/recovery/*/1.xml", "state/recovery/*/1.json"], waits=True),
        Case("assessment", {"a.kxa": assessment}, ["one_program", "assessment", "DIR/a.kxa", "new"],
             ["a.kxa", "a.kxa.bak"], waits=True),
        Case("settings", {"a.ini": settings.encode()}, ["one_program", "settings", "DIR/a.ini", "new"], ["a.ini"],
             waits=True),
        export("csv"), export("xlsx"), export("ndjson"),
        Case("protectors", {"a.txt": (samples.parent / "src/resources/hpd_hml_db.txt").read_bytes(), "b.txt": b"old"},
             [*cli, "protectors", "save", "--database", "DIR/a.txt", "-o", "DIR/b.txt"], ["b.txt"]),
    ]


def sampled(items, count):
    """So many of the items, all of them as often as another where there are fewer."""
    items = list(items)
    chosen = []
    while len(chosen) < count:
        chosen += random.sample(items, min(len(items), count - len(chosen)))
    return chosen


def name_of(call, number, error):
    what = {KILL: "killed in front of it", SHORT: "half of it written"}.get(error) or errno.errorcode[error]
    return f"{call} {number}: {what}"


def main():
    global BIN
    parser = argparse.ArgumentParser()
    parser.add_argument("bin", type=pathlib.Path)
    parser.add_argument("samples", type=pathlib.Path)
    parser.add_argument("--kills", type=int, default=600)
    parser.add_argument("--errors", type=int, default=400)
    parser.add_argument("--seed", type=int, default=None)
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else random.randrange(1 << 32)
    random.seed(seed)
    BIN = options.bin.resolve()
    kills, errors = Tally(), Tally()
    with tempfile.TemporaryDirectory() as home:
        home = pathlib.Path(home).resolve()
        os.environ.update(HOME=str(home), XDG_STATE_HOME=str(home / "xdg"), XDG_CONFIG_HOME=str(home / "xdg"))
        folder = home / "work"
        known = cases(options.samples.resolve())
        for case in known:
            case.learn(folder)
        everything = [(case, call, number, error) for case in known for call, choices in ERRORS.items()
                      for number in range(1, case.calls[call] + 1) for error in choices]
        for case, call, number, error in sampled(everything, options.errors):
            run(case, folder, errors, name_of(call, number, error), FAULT_CALL=call, FAULT_NUMBER=number, FAULT_ERROR=error)
        places = [(case, number) for case in known for number in range(1, case.calls["any"] + 1)]
        for case, number in sampled(places, options.kills // 2):
            run(case, folder, kills, name_of("any", number, KILL), FAULT_CALL="any", FAULT_NUMBER=number, FAULT_ERROR=KILL)
        for case in sampled(known, options.kills - options.kills // 2):
            after = random.uniform(0, case.seconds)
            run(case, folder, kills, f"killed after {after:.3f} s", kill_after=after)
    print(f"{len(known)} kinds, {len(everything)} errors and {len(places)} places of a kill are possible")
    for what, tally in (("kills", kills), ("errors", errors)):
        print(f"| {datetime.date.today()} | {tally.runs} {what}, seed {seed} | {tally.said} | {tally.false} | {tally.broken} | "
              f"{tally.left} | {tally.stuck} |")
    return 1 if any(tally.false or tally.broken or tally.left or tally.stuck for tally in (kills, errors)) else 0


if __name__ == "__main__":
    sys.exit(main())
