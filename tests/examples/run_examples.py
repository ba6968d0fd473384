#!/usr/bin/env python3
"""Runs the programs of examples/ on the samples. run_examples.py CLI EXAMPLES SAMPLES"""
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

CLI, EXAMPLES, SAMPLES = map(os.path.abspath, sys.argv[1:4])


def run(*call):
    done = subprocess.run(call, capture_output=True, text=True, env={**os.environ, "KESTRANE_CLI": CLI})
    assert done.returncode == 0, done.stderr
    return done.stdout


def example(name, *arguments):
    return run(sys.executable, os.path.join(EXAMPLES, name), *arguments)


class Examples(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def test_means_leave_excluded_rows_out_and_go_by_row_length(self):
        rows = [f"<intvl><date>08&#47;05&#47;2024</date><time>10:0{minute}:00</time><ca><leq><f>{level}</f></leq></ca></intvl>"
                for minute, level in enumerate([80, 90, 120])]
        path = os.path.join(self.folder, "log.xml")
        with open(path, "w") as file:
            file.write('<?xml version="1.0"?><instruments><instrument-data><instrument-detail name="x"/><logs><log>'
                       f"<interval>60</interval><intvls>{''.join(rows)}</intvls></log></logs></instrument-data></instruments>")
        cut = os.path.join(self.folder, "cut.xml")
        run(CLI, "--quiet", "cut", path, "--exclude", "3-3", "-o", cut)
        self.assertEqual(example("task_means.py", cut, "both=10:00-10:03", "second=10:01-10:02", "none=11:00-12:00"),
                         "both\t87.4 dB\t0.03 h\nsecond\t90.0 dB\t0.02 h\nnone\tnone\t0.00 h\n")
        if shutil.which("Rscript"):
            means = run("Rscript", os.path.join(EXAMPLES, "hourly_means.R"), cut)
            self.assertEqual(means, "10:00\t87.4 dB\t0.03 h\n")

    def test_a_spectrogram_has_a_column_a_row_and_eight_lines_a_band(self):
        picture = os.path.join(self.folder, "out.png")
        example("spectrogram.py", os.path.join(SAMPLES, "third-octave-2000.xml"), picture)
        with open(picture, "rb") as file:
            head = file.read(24)
        self.assertEqual(struct.unpack(">II", head[16:24]), (2000, 33 * 8))

    def test_an_archive_is_made_summed_up_and_reported(self):
        archive, out = os.path.join(self.folder, "archive"), os.path.join(self.folder, "out")
        example("make_archive.py", archive, "3")
        self.assertEqual(example("report_batch.py", archive, out), "3 of 3 reports\n")
        files = sorted(os.path.join(folder, name) for folder, _, names in os.walk(archive) for name in names)
        lines = run(CLI, "--quiet", "export", "--summary", "--format", "ndjson", "-o", "-", *files).splitlines()
        self.assertEqual(len(lines), 3)

    def test_questions_are_answered_as_the_exported_rows_say(self):
        self.assertEqual(example("check_questions.py", "5"), "5 logs agree\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
