#!/usr/bin/env python3
"""Saves over an existing file while every system call on the way fails, or kills the program, once: first the first call
of its kind, then the second, until none is left to fail. Afterwards the old file or the new one is there, whole, and a
save that reports success has written the new one. Then the same on a disk that is really full.

Usage: save_faults.py CLI SAMPLE
"""

import os
import shutil
import subprocess
import sys
import tempfile

CALLS = ["openat", "write", "fchmod", "fdatasync", "close", "rename", "fsync"]
MOST = 200


def save(cli, source, target, folder, prefix=()):
    command = [*prefix, cli, "--settings", os.path.join(folder, "settings.ini"), "save", source, "-o", target]
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode


def read(path):
    with open(path, "rb") as file:
        return file.read()


def fault_loop(cli, sample, folder, old, new):
    failures = runs = 0
    target = os.path.join(folder, "target.xml")
    log = os.path.join(folder, "strace.log")
    for call in CALLS:
        for fault in ("error=EIO", "error=ENOSPC", "signal=KILL"):
            for when in range(1, MOST):
                with open(target, "wb") as file:
                    file.write(old)
                inject = ["strace", "-f", "-o", log, "-e", f"trace={call}", "-e", f"inject={call}:{fault}:when={when}"]
                status = save(cli, sample, target, folder, inject)
                injected = b"INJECTED" in read(log) or b"killed by SIGKILL" in read(log)
                if not injected:
                    break
                runs += 1
                found = read(target)
                if found not in (old, new) or (status == 0 and found != new):
                    failures += 1
                    print(f"{call} {fault} call {when}: status {status}, the file has {len(found)} bytes")
    print(f"{runs} faults injected, {failures} failures")
    return failures == 0 and runs > 50


def full_disk(cli, sample, folder, old):
    disk = os.path.join(folder, "disk")
    os.mkdir(disk)
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", disk], check=False).returncode != 0:
        print("a small disk cannot be mounted here: left out")
        return True
    try:
        target = os.path.join(disk, "target.xml")
        with open(target, "wb") as file:
            file.write(old)
        status = save(cli, sample, target, folder)
        good = status == 1 and read(target) == old and os.listdir(disk) == ["target.xml"]
        print("full disk:", "ok" if good else f"status {status}, {os.listdir(disk)}")
        return good
    finally:
        subprocess.run(["umount", disk], check=True)


def main():
    cli, sample = sys.argv[1:3]
    if b"__asan_init" in read(cli):
        print("a sanitizer makes system calls of its own: left out")
        return 77
    if shutil.which("strace") is None or subprocess.run(["strace", "-o", "/dev/null", "true"], check=False).returncode != 0:
        print("strace cannot run here: left out")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        old = b"<?xml version=\"1.0\"?><instruments></instruments>\n"
        reference = os.path.join(folder, "new.xml")
        if save(cli, sample, reference, folder) != 0:
            print("a save without faults fails")
            return 1
        good = fault_loop(cli, sample, folder, old, read(reference))
        good = full_disk(cli, sample, folder, old) and good
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
