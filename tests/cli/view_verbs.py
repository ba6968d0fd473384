#!/usr/bin/env python3
"""The verbs table, chart and noise-rating, against the sample files as an XML library reads them.

Usage: view_verbs.py CLI SAMPLES
"""

import json
import math
import os
import struct
import subprocess
import xml.etree.ElementTree as ElementTree

from harness import InAFolder, main, run, sample

OCTAVES = ["16", "31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]
NOTHING = "Sorry, there is no available data to display."


def grid(*words):
    status, out, err = run(*words)
    assert status == 0, err
    assert out.endswith("\r\n")
    return [line.split("\t") for line in out[:-2].split("\r\n")]


def log_of(name):
    return ElementTree.parse(sample(name)).find("instrument-data/logs/log")


def figure(node, quantity, band=None):
    path = "ca/" + quantity
    if band is not None:
        path += "/f" + band.upper()
    return float(node.findtext(path))


def one_decimal(level):
    return f"{math.floor(level * 10 + 0.5 + 1e-6) / 10:.1f}"


class Table(InAFolder):
    def test_captions_and_first_row_of_what_is_chosen(self):
        row = log_of("machine-survey-octave").find("intvls/intvl")
        bands = [one_decimal(figure(row, "lmax", band)) for band in ["", *OCTAVES]]
        of_band = [one_decimal(figure(row, quantity, "1k")) for quantity in ("leq", "lmin", "lmax")]
        night = log_of("night-environment").find("intvls/intvl")
        for name, words, captions, cells in (
                ("machine-survey-octave", ["--freq", "1k"], ["Time", "LZeq 1k Hz", "Zmin 1k Hz", "Zmax 1k Hz", "Zpeak"], of_band),
                ("machine-survey-octave", ["--param", "Zmax"], ["Time - Zmax:", " AP", *(f"{b} Hz" for b in OCTAVES)], bands),
                ("night-environment", ["--channel", "B"], ["Time", "LCeq (CHB)", "Cmax (CHB)"],
                 [one_decimal(float(night.findtext("cb/leq")))])):
            table = grid("table", sample(name), *words)
            self.assertEqual(table[0], captions)
            self.assertEqual(table[1][1:1 + len(cells)], cells)
            self.assertEqual(len(table), len(log_of(name).findall("intvls/intvl")) + 1)

    def test_wrong_words(self):
        octave = sample("machine-survey-octave")
        for words in (["--freq", "12.5"], ["--param", "Zpeak"], ["--channel", "B"], ["--channel", "C"],
                      ["--freq", "1k", "--param", "LZeq"], ["--freq", "1k", "--channel", "B"]):
            status, out, err = run("table", octave, *words)
            self.assertEqual((status, out), (2, ""), words)
            self.assertNotEqual(err, "", words)
        self.assertEqual(run("table", sample("night-environment"), "--freq", "1k")[0], 2)


class Chart(InAFolder):
    def test_bands_of_an_interval_and_of_the_log(self):
        log = log_of("machine-survey-octave")
        row = log.findall("intvls/intvl")[2]
        for words, node in ((["--tab", "2", "--interval", "3"], row), (["--tab", "3"], log)):
            values = grid("chart", sample("machine-survey-octave"), *words, "--param", "LZeq", "--values")
            self.assertEqual([cells[0] for cells in values], ["", "AP"] + [band + " Hz" for band in OCTAVES])
            for cells, band in zip(values[1:], ["", *OCTAVES]):
                self.assertAlmostEqual(float(cells[1]), figure(node, "leq", band), delta=0.005)

    def test_refusals(self):
        octave = sample("machine-survey-octave")
        for words, status, text in ((["--tab", "2", "--display", "%", "--values"], 1, NOTHING),
                                    (["--tab", "2", "--interval", "0", "--values"], 1, "range is invalid"),
                                    (["--tab", "1", "--values"], 2, "--tab"), (["--tab", "0"], 2, "--values"),
                                    (["--tab", "0", "--values", "-o", "a.png"], 2, "--values"),
                                    (["--tab", "0", "-o", "a.jpg"], 2, ".svg"),
                                    (["--tab", "0", "-o", "a.png", "--size", "640"], 2, "1000x650"),
                                    (["--tab", "0", "-o", "/nowhere/a.png"], 1, "No such file")):
            found, out, err = run("chart", octave, *words)
            self.assertEqual((found, out), (status, ""), words)
            self.assertIn(text, err)
        self.assertEqual(run("chart", sample("night-environment"), "--tab", "4", "--values")[0], 1)

    def test_pictures(self):
        for name, tab, log in (("a.png", "0", "shift-dosimeter"), ("b.svg", "3", "machine-survey-octave"),
                               ("c.pdf", "4", "machine-survey-octave"), ("d.PNG", "2", "third-octave-2000")):
            for more in ([], ["--3d"]):
                if log == "shift-dosimeter" and more:
                    continue
                result = run("chart", sample(log), "--tab", tab, "-o", name, "--size", "640x400", *more)
                self.assertEqual(result, (0, "", ""), name)
                with open(name, "rb") as file:
                    head = file.read(24)
                if name.lower().endswith(".png"):
                    self.assertEqual(struct.unpack(">II", head[16:24]), (640, 400))
                elif name.endswith(".svg"):
                    self.assertTrue(ElementTree.parse(name).getroot().tag.endswith("svg"))
                else:
                    words = subprocess.run(["pdftotext", name, "-"], capture_output=True, check=True).stdout.decode()
                    self.assertIn("Noise Rating Curves", words)
                os.remove(name)
        result = run("chart", sample("shift-dosimeter"), "--tab", "0", "-o", "e.png", "--size", "16cmx9cm", "--dpi", "300")
        self.assertEqual(result, (0, "", ""))
        with open("e.png", "rb") as file:
            self.assertEqual(struct.unpack(">II", file.read(24)[16:24]), (1890, 1063))

    def test_a_name_stays_the_words_that_it_is(self):
        tree = ElementTree.parse(sample("shift-dosimeter"))
        tree.find(".//log").set("name", "<b>Mill & press</b>")
        tree.write("named.xml")
        for picture in ("a.svg", "a.pdf"):
            self.assertEqual(run("chart", "named.xml", "--tab", "0", "-o", picture), (0, "", ""))
        words = [text.text.strip() for text in ElementTree.parse("a.svg").iter() if text.tag.endswith("text")]
        self.assertIn("<b>Mill & press</b>", words)
        words = subprocess.run(["pdftotext", "a.pdf", "-"], capture_output=True, check=True).stdout.decode()
        self.assertIn("<b>Mill & press</b>", words)


class NoiseRating(InAFolder):
    def test_its_level_is_the_highest_rating_of_the_bands(self):
        log = log_of("machine-survey-octave")
        rating = json.loads(run("noise-rating", sample("machine-survey-octave"))[1])
        self.assertEqual([row["Frequency"] for row in rating["Rows"]], OCTAVES[1:10])
        for row in rating["Rows"]:
            self.assertAlmostEqual(row["Leq"], figure(log, "leq", row["Frequency"]), places=4)
        self.assertEqual(rating["Level"], max(math.ceil(row["Rating"]) for row in rating["Rows"]))
        status, out, err = run("noise-rating", sample("shift-dosimeter"))  # without bands
        self.assertEqual((status, out), (1, ""))
        self.assertIn(NOTHING, err)


if __name__ == "__main__":
    main()
