#!/usr/bin/env python3
"""What the schema of the XML data file says holds for every file that is written: data_file_schema.py CLI XSD SAMPLES."""

import glob
import os
import subprocess
import sys
import tempfile
import unittest

CLI, XSD, SAMPLES = map(os.path.abspath, sys.argv[1:])


def faults(path):
    result = subprocess.run(["xmllint", "--noout", "--schema", XSD, path], capture_output=True, check=False, text=True)
    return "" if result.returncode == 0 else result.stderr


class DataFileSchema(unittest.TestCase):
    def test_samples_and_what_is_saved_of_them_and_of_older_files_are_valid(self):
        samples = sorted(glob.glob(SAMPLES + "/*.xml"))
        with tempfile.TemporaryDirectory() as folder:
            saved = os.path.join(folder, "saved.xml")
            calls = [["save", name] for name in samples + sorted(glob.glob(SAMPLES + "/old/*.*"))]
            calls += [["cut", samples[0], "--exclude", "2-3,5"], ["--decimal-separator", ",", "save", samples[0]]]
            self.assertGreater(len(calls), 15)
            for path in samples:
                self.assertEqual(faults(path), "", path)
            for words in calls:
                subprocess.run([CLI, *words, "-o", saved], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                self.assertEqual(faults(saved), "", words)

    def test_a_name_or_value_that_is_never_written_is_not(self):
        with open(SAMPLES + "/machine-survey-octave.xml", encoding="utf-8") as file:
            text = file.read()
        with tempfile.TemporaryDirectory() as folder:
            for before, after in (("<cri>85<", "<cri>loud<"), ("<fw>", "<fx>"), ("<f63>", "<f64>"), ("<stm>", "<stm>1")):
                self.assertTrue(before in text, before)
                path = os.path.join(folder, "x.xml")
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text.replace(before, after).replace("</" + before[1:], "</" + after[1:]))
                self.assertIn("element", faults(path).lower(), after)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
