#!/usr/bin/env python3
"""The verb report: its forms as pages of a PDF file, and that nothing is written when it fails.

Usage: report_verb.py CLI SAMPLES
"""

import hashlib
import os
import re
import shutil
import signal
import subprocess
import time

from harness import CLI, InAFolder, main, run, sample


class Report(InAFolder):
    def pages(self, *words):
        self.assertEqual(run("report", *words, "-o", "out.pdf"), (0, "", ""), words)
        text = subprocess.run(["pdftotext", "-layout", "out.pdf", "-"], capture_output=True, check=True).stdout.decode()
        return [re.sub(" +", " ", page) for page in text.split("\f")[:-1]]

    def test_forms(self):
        night = sample("night-environment")
        cumulative = self.pages(night, "--form", "cumulative")
        self.assertEqual(len(cumulative), 2)                # the second says where the figures come from
        both = self.pages(night, "--form", "intervals", "--landscape")
        self.assertEqual(len(both), 5)                  # figures apart from the chart, a page a channel, the origin
        self.assertIn("Interval: Tuesday 11 June 2024, 22:00 Channel B", both[3])
        self.assertEqual(len(self.pages(night)), 4)      # the plot keeps its 5 cm, so the figures have the second page
        self.assertEqual(len(self.pages("--with", "spectrum", night)), 4)
        with open("settings.ini", "w", encoding="utf-8") as settings:
            settings.write("[Preferences]\nblnPrintIntervals=False\nCompany=Fen Acoustics\n")
        by_settings = self.pages(night)
        self.assertEqual(len(by_settings), 2)
        self.assertIn("Fen Acoustics", by_settings[0])

    def test_chosen_log_and_selection(self):
        self.assertIn("Frequency Data", "".join(self.pages(sample("machine-survey-octave"), "--log", "O2I1F1")))
        excluded = self.pages(sample("roadworks-selection"), "--form", "intervals")
        self.assertIn("Modified Report", excluded[0])
        self.assertEqual("".join(excluded).count("\n*"), 4 + 1)  # rows, and the line that tells what the star means

    def test_where_the_figures_come_from(self):
        run("merge", sample("shift-dosimeter"), sample("night-environment"), "--history", "-o", "m.xml")
        run("recalc", "m.xml", "--criterion", "90", "-o", "m2.xml")
        change = "Criterion Level: 85 dB \u2192 90 dB"
        self.assertIn(change, self.pages("m2.xml")[-1])
        self.assertNotIn(change, self.pages("m2.xml", "--log", "L2I2F1")[-1])   # of the same name
        with open("m2.xml.history.jsonl", "w", encoding="utf-8") as history:
            history.write("not ours")
        run("report", "m2.xml", "-o", "out.pdf")
        text = subprocess.run(["pdftotext", "out.pdf", "-"], capture_output=True, check=True).stdout.decode()
        self.assertIn("The history beside the data file cannot be read", text)
        with open("m2.xml", "rb") as file:
            data = file.read()
        self.assertEqual(run("report", "-", "-o", "out.pdf", input=data)[0], 0)
        text = subprocess.run(["pdftotext", "out.pdf", "-"], capture_output=True, check=True).stdout.decode()
        self.assertIn(hashlib.sha256(data).hexdigest(), text)                   # a pipe is read once

    def test_the_same_input_gives_the_same_bytes_for_an_archive(self):
        outputs = []
        for folder, zone in (("one", "UTC"), ("two", "America/New_York")):
            os.mkdir(folder)
            shutil.copy(sample("roadworks-selection"), folder)
            run("report", folder + "/roadworks-selection.xml", "--print-date", "2026-11-25T18:00:00", "-o", "out.pdf",
                env={**os.environ, "LC_ALL": "C", "TZ": zone})
            with open("out.pdf", "rb") as file:
                outputs.append(file.read())
            time.sleep(1.1)
        self.assertEqual(outputs[0], outputs[1])
        for mark in (b'pdfaid:part="1" pdfaid:conformance="B"', b"/OutputIntent", b"/Lang (en-GB)",
                     b"/CreationDate (D:20261125180000", b'xmp:CreateDate="2026-11-25T18:00:00"'):
            self.assertIn(mark, outputs[0])
        self.assertNotIn(b"/S /Transparency", outputs[0])

    def test_a_logo_that_is_too_large_is_told_once_and_left_out(self):
        with open("logo.pgm", "wb") as logo:       # 100 million pixels, of which only the head is there
            logo.write(b"P5 10000 10000 255\n")
        with open("settings.ini", "w", encoding="utf-8") as settings:
            settings.write("[Preferences]\nCompanyLogo=logo.pgm\nReportFooter=Fen Acoustics\n")
        status, out, err = run("report", sample("roadworks-selection"), "--with", "exposure,criteria", "-o", "out.pdf")
        self.assertEqual((status, out, err.count("logo.pgm"), len(err.splitlines())), (0, "", 1, 1))

    def test_an_interrupt_is_told_and_leaves_nothing(self):
        words = [CLI, "--settings", "settings.ini", "report", sample("third-octave-2000"), "--form", "intervals", "-o", "out.pdf"]
        run("text", "1")     # the settings are there: the next temporary file is the report's
        with subprocess.Popen(words, stderr=subprocess.PIPE, text=True, env={**os.environ, "LC_ALL": "C"}) as process:
            while process.poll() is None and not any(name.endswith(".tmp") for name in os.listdir(".")):
                time.sleep(0.01)
            process.send_signal(signal.SIGINT)
            self.assertEqual((process.wait(60), process.stderr.read()), (1, "Kestrane: Interrupted before the report was written.\n"))
        self.assertEqual(os.listdir("."), ["settings.ini"])

    def test_refusals(self):
        night = sample("night-environment")
        for words, status in (([night], 2), ([night, "--form", "long", "-o", "out.pdf"], 2), ([night, "--form", "1", "-o", "out.pdf"], 2), ([night, "-o", "none/out.pdf"], 1),
                              ([night, "--log", "L9I9F9", "-o", "out.pdf"], 1), (["none.xml", "-o", "out.pdf"], 1)):
            found, out, err = run("report", *words)
            self.assertEqual((found, out), (status, ""), words)
            self.assertTrue(err)
        for verb, output in (("report", "none/out.pdf"), ("chart", "none/out.png")):
            words = [verb, night, "-o", output] + (["--tab", "0"] if verb == "chart" else [])
            status, _, err = run(*words)
            self.assertEqual(status, 1)
            self.assertRegex(err, rf"2: .*\s+There was an error saving '{os.getcwd()}/{output}'")
        self.assertEqual(os.listdir("."), ["settings.ini"])


if __name__ == "__main__":
    main()
