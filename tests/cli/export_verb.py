#!/usr/bin/env python3
"""The verb export: what it writes, read back by readers that are not ours, cell by cell against show --intervals.

Usage: export_verb.py CLI SAMPLES
"""

import csv
import json
import os
import re
import shutil
import xml.etree.ElementTree as ElementTree
import zipfile

from harness import SAMPLES, InAFolder, a_disk_that_fills_up_at, main, run, sample

NAMES = ["shift-dosimeter", "machine-survey-octave", "third-octave-2000", "night-environment"]
BANDS = {"Broadband": [""], "Octave": ["", "16", "31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]}
UNITS = {"DoseA": "percent", "DoseB": "percent", "Pa2hA": "Pa2h", "Pa2hB": "Pa2h"}
SHEET = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
HEAD = ["file", "log", "name", "start", "seconds", "excluded", "overloaded"]


def logs_of(document):
    return [(data, log) for data in document["InstrumentDatas"] for kind in ("Locations", "Octaves", "ThirdOctaves")
            for log in data[kind]]


def iso(date, time):
    return "T".join(filter(None, ["-".join(reversed(date.split("/"))) if date else "", time]))


def figures_of(item, log, bands):
    """The cells of a row behind the head, by column; those that are absent left out."""
    cells = {}

    def put(name, unit, value):
        figure = value["CalcValue"]
        if figure:
            cells[f"{name}_{unit}"] = figure

    for key in ("mIntCriterion", "mIntExchange"):
        if item[key]:
            cells[key + "_dB"] = item[key]
    for key in ("Lmin", "Lmax", "Peak"):
        level = item[key + "A"]
        if (level[0] if isinstance(level, list) else level)["CalcValue"]:
            cells[key + "TimeA"] = item[key + "TimeA"]
    for key, value in item.items():
        if key == "LnA":
            for number, levels in zip(log["LnNumberA"], value):
                for band, level in zip(bands, levels):
                    put(f"LnA_L{number}" + ("_" + band if band else ""), "dB", level)
        elif isinstance(value, list):
            for band, level in zip(bands, value):
                put(key + ("_" + band if band else ""), "dB", level)
        elif isinstance(value, dict):
            put(key, UNITS.get(key, "dB"), value)
    return cells


def read_csv(name):
    with open(name, encoding="utf-8", newline="") as file:
        lines = list(csv.reader(file))
    return lines[0], [[number(cell) for cell in line] for line in lines[1:]]


def number(cell):
    try:
        return float(cell) if cell else None
    except ValueError:
        return cell


def read_ndjson(name):
    with open(name, encoding="utf-8") as file:
        lines = [json.loads(line) for line in file]
    return list(lines[0]), [list(line.values()) for line in lines]


def read_xlsx(name):
    lines = []
    with zipfile.ZipFile(name) as book:
        assert book.testzip() is None
        sheets = [part for part in book.namelist() if part.startswith("xl/worksheets/sheet")]
        for part in sheets:
            for row in ElementTree.fromstring(book.read(part)).iter(SHEET + "row"):
                line = {}
                for cell in row.iter(SHEET + "c"):
                    assert cell.find(SHEET + "f") is None     # no formula anywhere
                    place = 0
                    for letter in re.match("[A-Z]+", cell.get("r")).group():
                        place = place * 26 + ord(letter) - 64
                    is_text = cell.get("t") == "inlineStr"
                    line[place - 1] = "".join(cell.itertext()) if is_text else float(cell.findtext(SHEET + "v"))
                lines.append(line)
    head = list(lines[0].values())
    return head, [[line.get(place) for place in range(len(head))] for line in lines[1:]]


READERS = {"csv": read_csv, "ndjson": read_ndjson, "xlsx": read_xlsx}


class Export(InAFolder):
    def exported(self, *words, form="csv", status=0):
        out = "out." + form
        found, text, err = run("export", *words, "--format", form, "-o", out)
        self.assertEqual((found, text), (status, ""), err)
        return READERS[form](out)

    def bands(self, log):
        if log["ModeText"] != "Third octave" and len(log["LeqCumA"]) == 12:
            return BANDS["Octave"]
        table = run("table", self.file, "--param", log["LeqTextA"], "--log", log["Key"])
        return [""] + [cell.split()[0] for cell in table[1].split("\r\n")[0].split("\t")[2:]] if len(log["LeqCumA"]) > 1 else [""]

    def test_rows_are_what_show_prints_cell_by_cell(self):
        for name in NAMES:
            self.file = sample(name)
            _, log = logs_of(json.loads(run("show", self.file, "--intervals")[1]))[-1]
            bands = self.bands(log)
            self.assertEqual(len(bands), len(log["LeqCumA"]))
            for form in READERS:
                columns, lines = self.exported(self.file, "--log", log["Key"], form=form)
                self.assertEqual(columns[:7], HEAD)
                self.assertEqual(len(set(columns)), len(columns))
                self.assertEqual(len(lines), log["LogIntervals"]["Count"])
                held = set()
                for line, item in zip(lines, log["LogIntervals"]["Items"]):
                    wanted = figures_of(item, log, bands)
                    held |= set(wanted)
                    self.assertEqual(line[:7], [self.file, log["Key"], log["Name"], iso(item["StartDate"], item["StartTime"]),
                                                item["mLngInterval"] or log["Interval"], item["isExcluded"],
                                                item["OverloadedA"] or item["OverloadedB"]])
                    found = {column: cell for column, cell in zip(columns[7:], line[7:]) if cell is not None}
                    self.assertEqual(found, wanted, name)
                self.assertEqual(set(columns[7:]), held, "a column for each member that any row holds, and no other")

    def test_a_summary_is_a_line_for_each_log(self):
        files = [sample(name) for name in NAMES]
        for form in READERS:
            columns, lines = self.exported(*files, "--summary", form=form)
            logs = [(file, *found) for file in files for found in logs_of(json.loads(run("show", file)[1]))]
            self.assertEqual([line[0] for line in lines], [file for file, _, _ in logs])
            for (file, data, log), line in zip(logs, lines):
                cells = dict(zip(columns, line))
                for column, wanted in (("log", log["Key"]), ("InsSerial", data["InsSerial"] or None), ("LeqCumA_dB", log["LeqCumA"][0]["CalcValue"]),
                                       ("Criterion_dB", log["Criterion"]), ("DoseETCumA_percent", log["DoseETCumA"]["CalcValue"] or None),
                                       ("PeakCumA_dB", log["PeakCumA"]["CalcValue"] or None), ("start", iso(log["StartDate"], log["StartTime"]))):
                    self.assertEqual(cells[column], number(wanted) if form == "csv" and column == "InsSerial" else wanted, column)
                if len(log["LeqCumA"]) == 12:
                    self.assertEqual(cells["LeqCumA_1k_dB"], log["LeqCumA"][7]["CalcValue"])

    def test_texts_are_never_computed(self):
        hostile = ["=1+1", "+1", "-1", "@SUM(A1)", "a,b\"c\nd", "é\u20ac", "=HYPERLINK(\"http://x\")", "_x0041_\x7f"]
        for place, text in enumerate(hostile):
            with open(f"={place}.xml", "w", encoding="utf-8") as file:
                escaped = text.replace("&", "&amp;").replace("<", "&lt;").replace("\n", "&#10;")
                file.write(f"<instruments><instrument-data><instrument-detail/><logs><log><md>1</md><name>{escaped}</name><nm>{escaped}</nm>"
                           "<note>%s</note><intvls><intvl><ca><leq><f>80</f></leq></ca></intvl></intvls></log></logs></instrument-data>"
                           "</instruments>" % escaped)
        names = [f"={place}.xml" for place in range(len(hostile))]
        for form, guard in (("csv", "'"), ("ndjson", ""), ("xlsx", "")):
            columns, lines = self.exported(*names, "--summary", form=form)
            cells = [dict(zip(columns, line)) for line in lines]
            self.assertEqual([line["file"] for line in cells], [guard + name for name in names])
            for text, line in zip(hostile[:4] + hostile[6:7], cells[:4] + cells[6:7]):
                self.assertEqual(line["Note"], guard + text)
            self.assertEqual((cells[4]["Note"].replace("_x000A_", "\n"), cells[5]["Note"]), (hostile[4], hostile[5]))

    def test_files_go_together_or_each_to_its_own(self):
        shutil.copy(sample(NAMES[0]), "a.xml")
        shutil.copy(sample(NAMES[1]), "b.xml")
        counts = [sum(log["LogIntervals"]["Count"] for _, log in logs_of(json.loads(run("show", name)[1]))) for name in ("a.xml", "b.xml")]
        columns, lines = self.exported("a.xml", "none.xml", "b.xml", status=1)
        self.assertEqual([sum(line[0] == name for line in lines) for name in ("a.xml", "b.xml")], counts)
        odd = os.fsdecode(b"odd\xff.xml")
        shutil.copy("a.xml", odd)
        self.assertEqual({self.exported(odd, "--summary", form=form)[1][0][0] for form in READERS}, {"odd\ufffd.xml"})
        os.mkdir("out")
        status, out, _ = run("export", "a.xml", "b.xml", "--format", "ndjson", "-O", "out")
        self.assertEqual((status, sorted(os.listdir("out")), out.count("\n")), (0, ["a.ndjson", "b.ndjson"], 2))
        self.assertEqual(len(read_ndjson("out/b.ndjson")[1]), counts[1])
        self.assertEqual(run("export", "a.xml", "--format", "csv", "-o", "-")[1].count("\n"), counts[0] + 1)
        shutil.copy(os.path.join(SAMPLES, "old", sorted(n for n in os.listdir(os.path.join(SAMPLES, "old")) if n.endswith(".csv"))[0]), "m.csv")
        for words, status in ((["m.csv", "--format", "csv", "-O", "."], 2), (["m.csv", "--format", "csv", "-o", "m.csv"], 2),
                              (["none.xml", "--format", "csv", "-o", "x.csv"], 1), (["a.xml", "--format", "csv"], 2),
                              (["a.xml", "--log", "L9I9F9", "--format", "csv", "-o", "x.csv"], 1), (["a.xml", "--format", "odd", "-o", "x"], 2)):
            before = {name: os.path.getmtime(name) for name in os.listdir(".")}
            found, _, err = run("export", *words)
            self.assertEqual((found, {name: os.path.getmtime(name) for name in os.listdir(".")}), (status, before), words)
            self.assertTrue(err)

    def test_a_disk_that_fills_up_leaves_the_old_file(self):
        os.environ["TMPDIR"] = os.getcwd()
        self.addCleanup(os.environ.pop, "TMPDIR")
        for form in READERS:
            out = "out." + form
            with open(out, "w", encoding="utf-8") as file:
                file.write("old")
            run("text", "1")     # the settings are there
            before = sorted(os.listdir("."))
            for size in (3000, 20_000, 60_000):
                status, _, err = run("export", sample("third-octave-2000"), "--format", form, "-o", out, preexec_fn=a_disk_that_fills_up_at(size))
                self.assertEqual((status, sorted(os.listdir("."))), (1, before), (form, size))
                self.assertTrue(err.startswith("Kestrane: "), err)
                with open(out, encoding="utf-8") as file:
                    self.assertEqual(file.read(), "old")


if __name__ == "__main__":
    main()
