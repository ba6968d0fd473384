#!/usr/bin/env python3
"""The verbs table, chart and noise-rating, against the sample files as an XML library reads them.

Usage: view_verbs.py CLI SAMPLES
"""

import json
import math
import os
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

CLI, SAMPLES = sys.argv[1:3]
FOLDER = tempfile.TemporaryDirectory()
OCTAVES = ["16", "31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]
NOTHING = "Sorry, there is no available data to display."


def sample(name):
    return os.path.join(SAMPLES, name + ".xml")


def run(*words, options=()):
    settings = ["--settings", os.path.join(FOLDER.name, "settings.ini"), "--decimal-separator", "."]
    result = subprocess.run([CLI, *settings, *options, *words], capture_output=True, check=False)
    result.stdout, result.stderr = result.stdout.decode(), result.stderr.decode()
    return result


def grid(*words):
    result = run(*words)
    assert result.returncode == 0, result.stderr
    assert result.stdout.endswith("\r\n")
    return [line.split("\t") for line in result.stdout[:-2].split("\r\n")]


def log_of(name):
    return ElementTree.parse(sample(name)).find("instrument-data/logs/log")


def figure(node, quantity, band=None):
    path = "ca/" + quantity
    if band is not None:
        path += "/f" + band.upper()
    return float(node.findtext(path))


def one_decimal(level):
    return f"{math.floor(level * 10 + 0.5 + 1e-6) / 10:.1f}"


class Table(unittest.TestCase):
    def test_one_band(self):
        rows = log_of("machine-survey-octave").findall("intvls/intvl")
        table = grid("table", sample("machine-survey-octave"), "--freq", "1k")
        self.assertEqual(table[0], ["Time", "LZeq 1k Hz", "Zmin 1k Hz", "Zmax 1k Hz", "Zpeak"])
        self.assertEqual(len(table), len(rows) + 1)
        for cells, row in zip(table[1:], rows):
            day, month, year = row.findtext("date").split("/")
            self.assertEqual(cells[0], f"{day}/{month}/{year[2:]} {row.findtext('time')}")
            wanted = [one_decimal(figure(row, quantity, "1k")) for quantity in ("leq", "lmin", "lmax")]
            self.assertEqual(cells[1:], [*wanted, one_decimal(float(row.findtext("ca/peak")))])

    def test_all_bands(self):
        row = log_of("machine-survey-octave").find("intvls/intvl")
        table = grid("table", sample("machine-survey-octave"), "--param", "Zmax")
        self.assertEqual(table[0], ["Time - Zmax:", " AP"] + [band + " Hz" for band in OCTAVES])
        self.assertEqual(table[1][1:], [one_decimal(figure(row, "lmax", band)) for band in ["", *OCTAVES]])

    def test_channel(self):
        table = grid("table", sample("night-environment"), "--channel", "B")
        self.assertEqual(table[0], ["Time", "LCeq (CHB)", "Cmax (CHB)"])
        row = log_of("night-environment").find("intvls/intvl")
        self.assertEqual(table[1][1], one_decimal(float(row.findtext("cb/leq"))))

    def test_wrong_words(self):
        octave = sample("machine-survey-octave")
        for words in (["--freq", "12.5"], ["--param", "Zpeak"], ["--channel", "B"], ["--channel", "C"],
                      ["--freq", "1k", "--param", "LZeq"], ["--freq", "1k", "--channel", "B"]):
            result = run("table", octave, *words)
            self.assertEqual((result.returncode, result.stdout), (2, ""), words)
            self.assertNotEqual(result.stderr, "", words)
        self.assertEqual(run("table", sample("night-environment"), "--freq", "1k").returncode, 2)


class Chart(unittest.TestCase):
    def test_full_log(self):
        rows = log_of("shift-dosimeter").findall("intvls/intvl")
        values = grid("chart", sample("shift-dosimeter"), "--tab", "0", "--values")
        self.assertEqual(values[0], ["", "LAeq", "Apeak", "LEP,d(ET)", "Dose %(ET)"])
        self.assertEqual([cells[0] for cells in values[1:]], [row.findtext("time")[:5] for row in rows])
        self.assertEqual([float(cells[1]) for cells in values[1:]], [figure(row, "leq", "") for row in rows])

    def test_bands_of_an_interval_and_of_the_log(self):
        log = log_of("machine-survey-octave")
        row = log.findall("intvls/intvl")[2]
        for words, node in ((["--tab", "2", "--interval", "3"], row), (["--tab", "3"], log)):
            values = grid("chart", sample("machine-survey-octave"), *words, "--param", "LZeq", "--values")
            self.assertEqual(values[0], ["", "LZeq"])
            self.assertEqual([cells[0] for cells in values[1:]], ["AP"] + [band + " Hz" for band in OCTAVES])
            for cells, band in zip(values[1:], ["", *OCTAVES]):
                self.assertAlmostEqual(float(cells[1]), figure(node, "leq", band), delta=0.005)

    def test_dose_or_levels(self):
        file = sample("protector-ac")
        self.assertEqual(grid("chart", file, "--tab", "2", "--display", "%", "--values")[0], ["", "Dose %(ET) (CHA)"])
        self.assertNotIn("Dose %(ET) (CHA)", grid("chart", file, "--tab", "2", "--values")[0])

    def test_refusals(self):
        octave = sample("machine-survey-octave")
        for words, status, text in ((["--tab", "2", "--display", "%", "--values"], 1, NOTHING),
                                    (["--tab", "2", "--interval", "0", "--values"], 1, "range is invalid"),
                                    (["--tab", "1", "--values"], 2, "--tab"), (["--tab", "0"], 2, "--values"),
                                    (["--tab", "0", "--values", "-o", "a.png"], 2, "--values"),
                                    (["--tab", "0", "-o", "a.jpg"], 2, ".svg"),
                                    (["--tab", "0", "-o", "a.png", "--size", "640"], 2, "1000x650"),
                                    (["--tab", "0", "-o", "/nowhere/a.png"], 1, "No such file")):
            result = run("chart", octave, *words)
            self.assertEqual((result.returncode, result.stdout), (status, ""), words)
            self.assertIn(text, result.stderr)
        self.assertEqual(run("chart", sample("night-environment"), "--tab", "4", "--values").returncode, 1)

    def test_pictures(self):
        for name, tab, log in (("a.png", "0", "shift-dosimeter"), ("b.svg", "3", "machine-survey-octave"),
                               ("c.pdf", "4", "machine-survey-octave"), ("d.PNG", "2", "third-octave-2000")):
            for more in ([], ["--3d"]):
                if log == "shift-dosimeter" and more:
                    continue
                path = os.path.join(FOLDER.name, name)
                result = run("chart", sample(log), "--tab", tab, "-o", path, "--size", "640x400", *more)
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""), name)
                with open(path, "rb") as file:
                    head = file.read(24)
                if name.lower().endswith(".png"):
                    self.assertEqual(struct.unpack(">II", head[16:24]), (640, 400))
                elif name.endswith(".svg"):
                    self.assertTrue(ElementTree.parse(path).getroot().tag.endswith("svg"))
                else:
                    words = subprocess.run(["pdftotext", path, "-"], capture_output=True, check=True).stdout.decode()
                    self.assertIn("Noise Rating Curves", words)
                os.remove(path)

    def test_question_before_3d(self):
        words = ["chart", sample("third-octave-2000"), "--tab", "0", "--3d", "--values"]
        no = run(*words, options=["--answer", "no"])
        self.assertEqual((no.returncode, no.stdout), (1, ""))
        self.assertIn("-> no", no.stderr)
        self.assertEqual(run(*words).returncode, 0)


class NoiseRating(unittest.TestCase):
    def test_rows(self):
        log = log_of("machine-survey-octave")
        rating = json.loads(run("noise-rating", sample("machine-survey-octave")).stdout)
        self.assertEqual([row["Frequency"] for row in rating["Rows"]], OCTAVES[1:10])
        for row in rating["Rows"]:
            level = figure(log, "leq", row["Frequency"])
            self.assertAlmostEqual(row["Leq"], level, places=4)
            self.assertAlmostEqual(row["Rating"], level - row["ConstantNumber"] / row["Multiplier"], places=4)
            self.assertEqual(len(row["Curve"]), 25)
        self.assertAlmostEqual(rating["Rows"][1]["Curve"][20], 114.4, places=4)
        self.assertEqual(rating["Level"], max(math.ceil(row["Rating"]) for row in rating["Rows"]))

    def test_broadband(self):
        result = run("noise-rating", sample("shift-dosimeter"))
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn(NOTHING, result.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
