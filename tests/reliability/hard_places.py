#!/usr/bin/python3
"""Saves and exports where there is no room, no right to write, no folder any more, or a lock of another program.

    hard_places.py BIN SAMPLES

BIN is the folder of kestrane-cli and one_program. A save that does not succeed must say so and leave the old file whole; when
the place is as it was again, the same program must be able to save what it still has. Some places need a file system of
their own, which only root can mount: without that they are left out, and a word is said. Prints lines for the table of
docs/reliability.md.
"""

import contextlib
import datetime
import fcntl
import os
import pathlib
import resource
import shutil
import signal
import subprocess
import sys
import tempfile

import steps


class NeedsRoot(Exception):
    pass


def call(*words):
    if subprocess.run(words, capture_output=True).returncode != 0:
        raise NeedsRoot(" ".join(words))


@contextlib.contextmanager
def plain(folder):
    """A folder of the present file system."""
    place = folder / "place"
    place.mkdir()
    yield place


@contextlib.contextmanager
def stick(folder):
    """A file system of its own."""
    place = folder / "place"
    place.mkdir()
    call("mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", str(place))
    try:
        yield place
    finally:
        subprocess.run(["umount", "-l", str(place)], capture_output=True)


@contextlib.contextmanager
def full(path, _):
    with contextlib.suppress(OSError), open(path.parent / "filler", "wb", buffering=0) as filler:
        while True:
            filler.write(bytes(4096))
    yield
    (path.parent / "filler").unlink()


@contextlib.contextmanager
def read_only(path, _):
    call("mount", "-o", "remount,ro", str(path.parent))
    yield
    call("mount", "-o", "remount,rw", str(path.parent))


@contextlib.contextmanager
def closed_folder(path, _):
    if os.geteuid() == 0:
        raise NeedsRoot("root may write everywhere")
    path.parent.chmod(0o555)
    yield
    path.parent.chmod(0o755)


@contextlib.contextmanager
def pulled_out(path, _):
    """The stick is gone, and its folder with it; then it is there again, as it was."""
    kept = path.read_bytes()
    call("umount", "-l", str(path.parent))
    path.parent.rmdir()
    yield
    path.parent.mkdir()
    call("mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", str(path.parent))
    path.write_bytes(kept)


@contextlib.contextmanager
def folder_gone(path, _):
    away = path.parent.with_name("away")
    path.parent.rename(away)
    yield
    away.rename(path.parent)


@contextlib.contextmanager
def limited(path, program):
    """No file may grow past a few bytes, as with a quota."""
    before = resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, (100, resource.RLIM_INFINITY))
    yield
    resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, before)


@contextlib.contextmanager
def immutable(path, _):
    call("chattr", "+i", str(path))
    yield
    call("chattr", "-i", str(path))


@contextlib.contextmanager
def locked(path, _):
    with open(path, "rb+") as file:
        fcntl.flock(file, fcntl.LOCK_EX)
        fcntl.lockf(file, fcntl.LOCK_EX)
        yield


# What is done to the place, where, and whether a save must succeed there.
PLACES = [("a full disk", stick, full, False), ("no room for a file (a limit)", plain, limited, False),
          ("a file system for reading only", stick, read_only, False), ("a folder without the right", plain, closed_folder, False),
          ("a stick pulled out and put in again", stick, pulled_out, False), ("a folder gone and back", plain, folder_gone, False),
          ("a file that cannot be changed", plain, immutable, False), ("a file locked by another program", plain, locked, True)]


def save_there(bin_folder, sample, where, spoil, must_succeed):
    """Returns what went wrong."""
    wrong = []
    with tempfile.TemporaryDirectory() as home, where(pathlib.Path(home)) as place:
        path = place / ("a" + sample.suffix)
        shutil.copy(sample, path)
        before = steps.name_in(path)
        program = steps.Program(bin_folder, path, pathlib.Path(home) / "state",
                                preexec_fn=lambda: signal.signal(signal.SIGXFSZ, signal.SIG_IGN), restore_signals=False)
        assert program.step("open") == "done" and program.step("name new") == "done"
        with spoil(path, program):
            answer = program.step("save")
            if must_succeed != (answer == "done"):
                wrong.append(f"the save was {answer or 'the end of the program'}")
            if not must_succeed and path.exists() and steps.name_in(path) != before:
                wrong.append("the old file is not there")
        if must_succeed != (steps.name_in(path) == "new"):
            wrong.append(f"the file has {steps.name_in(path)}")
        if not must_succeed and (program.step("save") not in ("done", "done asked") or steps.name_in(path) != "new"):
            wrong.append("what was not saved could not be saved later")
        if list(place.glob(".kestrane-*")):
            wrong.append("a temporary file stays")
        program.end()
    return wrong


def export_there(bin_folder, sample, form):
    """An export onto a full disk. Returns what went wrong."""
    wrong = []
    with tempfile.TemporaryDirectory() as home, stick(pathlib.Path(home)) as place:
        out = place / ("out." + form)
        out.write_bytes(b"old")
        words = [str(bin_folder / "kestrane-cli"), "--settings", home + "/settings.ini", "export", str(sample), "--format",
                 form, "-o", str(out)]
        with full(out, None):
            done = subprocess.run(words, capture_output=True, text=True)
            if done.returncode != 1 or not done.stderr:
                wrong.append(f"status {done.returncode}, {done.stderr!r}")
            if out.read_bytes() != b"old" or len(list(place.iterdir())) != 2:
                wrong.append("the old file is not there alone")
        if subprocess.run(words, capture_output=True).returncode != 0 or out.read_bytes() == b"old":
            wrong.append("it could not be exported later")
    return wrong


def main():
    bin_folder, samples = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    data, assessment = samples / "roadworks-selection.xml", samples / "welder-tasks.kxa"
    tries = [(name, lambda sample=sample, more=more: save_there(bin_folder, sample, *more))
             for name, *more in PLACES for sample in (data, assessment)]
    tries += [(f"a full disk, export as {form}", lambda form=form: export_there(bin_folder, data, form))
              for form in ("csv", "xlsx", "ndjson")]
    results = {}
    for name, attempt in tries:
        try:
            wrong = attempt()
        except NeedsRoot as error:
            results.setdefault(name, f"left out: {error}")
            continue
        for text in wrong:
            print(f"FAILED: {name}: {text}")
        results[name] = "wrong" if wrong or results.get(name) == "wrong" else "as it must"
    for name, result in results.items():
        print(f"| {datetime.date.today()} | {name} | {result} |")
    return 1 if "wrong" in results.values() else 0


if __name__ == "__main__":
    sys.exit(main())
