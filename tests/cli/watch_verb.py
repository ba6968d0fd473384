#!/usr/bin/env python3
"""The verb watch: files that come while it runs, slowly or at once, and what a second run does.

Usage: watch_verb.py CLI SAMPLES
"""

import contextlib
import json
import os
import shutil
import signal
import subprocess
import time

from harness import CLI, InAFolder, check_output, main, run, sample

SHIFT = sample("shift-dosimeter")
PATIENCE = 30     # seconds; a file counts as complete when it has been left alone for two


class Watch(InAFolder):
    def setUp(self):
        super().setUp()
        for folder in ("in", "out"):
            os.mkdir(folder)

    @contextlib.contextmanager
    def watching(self, work, *words, end=signal.SIGTERM, status=0):
        with open("told", "wb") as told:
            process = subprocess.Popen([CLI, "--settings", "settings.ini", "watch", "in", "--do", work, "-O", "out", *words],
                                       stdout=subprocess.PIPE, stderr=told)
        lines = []
        try:
            yield lines, process
            process.send_signal(end)
            out, _ = process.communicate(timeout=PATIENCE)
            self.assertEqual(process.returncode, status)
            check_output(["watch"], out.decode())
            lines.extend(json.loads(line) for line in out.splitlines())
        finally:
            process.kill()
            process.wait()

    def wait_for(self, *names):
        until = time.monotonic() + PATIENCE
        while not all(os.path.exists(os.path.join("out", name)) for name in names):
            self.assertLess(time.monotonic(), until, os.listdir("out"))
            time.sleep(0.05)

    def test_files_that_come_are_worked_on_once_they_are_complete(self):
        shutil.copy(SHIFT, "in/there.xml")
        with open(SHIFT, "rb") as file:
            content = file.read()
        with self.watching("report") as (lines, _):
            with open("in/slow.xml", "wb") as slow:     # open for longer than a file is left alone
                slow.write(content[:5000])
                slow.flush()
                self.wait_for("there.pdf")
                time.sleep(2.5)
                self.assertEqual(os.listdir("out"), ["there.pdf"])
                slow.write(content[5000:])
            for name in ("in/notes.txt", "in/.hidden.xml"):
                shutil.copy(SHIFT, name)
            with open("in/bad.xml", "wb") as file:
                file.write(content[:5000])
            shutil.copy(SHIFT, "moved")
            os.rename("moved", "in/moved.xml")
            self.wait_for("slow.pdf", "moved.pdf")
        self.assertEqual(sorted(os.path.basename(line["FileName"]) for line in lines), ["moved.xml", "slow.xml", "there.xml"])
        self.assertEqual(sorted(os.listdir("out")), ["moved.pdf", "slow.pdf", "there.pdf"])
        with open("told", encoding="utf-8") as told:
            self.assertRegex(told.read(), r"not well formed: .*\sin/bad.xml\s")

        before = {name: os.stat(os.path.join("out", name)).st_mtime_ns for name in os.listdir("out")}
        with self.watching("report", end=signal.SIGINT) as (lines, _):     # nothing twice, but what has changed
            shutil.copy(SHIFT, "in/bad.xml")
            self.wait_for("bad.pdf")
        self.assertEqual([os.path.basename(line["FileName"]) for line in lines], ["bad.xml"])
        self.assertEqual({name: os.stat(os.path.join("out", name)).st_mtime_ns for name in before}, before)

    def test_exports_and_documents(self):
        shutil.copy(SHIFT, "in/a.xml")
        with self.watching("export", "--format", "ndjson"):
            self.wait_for("a.ndjson")
        with self.watching("save", status=1) as (_, process):
            self.wait_for("a.xml")
            shutil.rmtree("in")
            process.wait(PATIENCE)
        with open("out/a.xml", "rb") as file:
            self.assertTrue(file.read().startswith(b"<?xml"))
        with open("told", encoding="utf-8") as told:
            self.assertEqual(told.read(), "Kestrane: The folder in cannot be opened\n")

    def test_what_cannot_be(self):
        shutil.copy(SHIFT, "in/a.xml")
        shutil.copy(SHIFT, "in/a.zdp")
        with self.watching("report") as (lines, _):
            shutil.copy(SHIFT, "in/b.xml")
            self.wait_for("b.pdf")
        self.assertEqual(os.listdir("out"), ["b.pdf"])
        with open("told", encoding="utf-8") as told:
            self.assertEqual(told.read().count("would both be written to out/a.pdf"), 2)
        for words in (["in", "--do", "save", "-O", "in"], ["none", "--do", "save", "-O", "out"], ["in", "--do", "save", "-O", "none"],
                      ["in", "--do", "odd", "-O", "out"], ["in", "-O", "out"]):
            self.assertEqual(run("watch", *words, timeout=PATIENCE)[:2], (2, ""), words)


if __name__ == "__main__":
    main()
