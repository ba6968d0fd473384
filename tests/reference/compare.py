#!/usr/bin/env python3
"""Compares the program with the independent reading in reference.py: generated data files, small and odd but valid, go
through kestrane-cli's show, recalc, zoom and cut, and every measured or calculated figure of the output must agree.
Singles are equal to the last bit; energy means may differ by two units in the last place, and what is derived from a
mean is then derived from the program's.

Usage: compare.py CLI [--files N] [--seed N] [--keep FOLDER]
"""
import argparse
import json
import os
import random
import struct
import subprocess
import sys
import tempfile
from concurrent.futures import ProcessPoolExecutor
from itertools import repeat

import reference
from reference import LABELS, f32

# Every family, with and without a second meaning of its model; names that are none.
INSTRUMENTS = ["TR324", "TR 352", "TR310", "TR340", "TR342 B", "Corvane TR340", "TR312E", "TR312", "TR350", "TR360L",
               "TR360", "Brevik SE", "Brevik E", "auravox essential s", "  Brevik S ", "", "Meter / 'X' & \"Y\""]
NOTES = ["", "plain", "5/6 & <b> \"q\" 'a' | bar", "two\nlines\r\nand tab\t", "caf\u00e9 \u20ac 10 \u00b5Pa", "&#39;", "&amp;lt;",
         "  blanks  ", "<cri>77</cri>"]
NUMBERS = ["0", "-1", "1", "72.5", " 85.25 ", "+60.125", "94.123456789", "-3.5", "1E-05", ".5", "7.", "1e2", "12,5",
           "abc", "", "0x10", "1.2.3", "inf", "1e-46", "300"]
INTEGERS = ["0", "85", "90", "80", "3", "5", "4", "6", "2.5", "3.5", "-3", " 87 ", "x", "1e2", ""]
FLAGS = ["-1", "0", "1", "TRUE", "true", "False", "0.0", "x", ""]
DATES = ["29/02/2024", "31/12/1999", "1/2/24", "01/01/1900", "30/02/2024", "0/0/0", "12/2024", "a/b/c", "05/03/30", ""]
TIMES = ["00:00:00", "23:59:59", "7:5:3", "12:60:00", "12:30:75", "-1:00:00", "99:00:00", "noon", ""]


class Generator:
    def __init__(self, seed):
        self.random = random.Random(seed)
        self.in_row = False

        self.too_large = self.often(0.05)                       # a file that may not open

    def often(self, chance):
        return self.random.random() < chance

    def pick(self, usual, odd, chance=0.12):
        return self.random.choice(odd) if self.often(chance) else usual()

    def level(self):
        digits = self.random.choice([1, 1, 2, 5, 9])
        if self.often(0.001 if self.in_row else 0.01):
            return "4000"                                       # a level that its energy cannot be told of
        if self.too_large and not self.in_row and self.often(0.02):
            return "1e39"
        return self.pick(lambda: f"{self.random.uniform(30, 130):.{digits}f}", NUMBERS, 0.08)

    def integer(self, usual):
        if self.too_large and self.often(0.1):
            return "40000"
        return self.pick(lambda: usual, INTEGERS, 0.1)

    def element(self, tag, text, attributes=""):
        """Often left out when empty; figures of a log's head at times with an attribute, which hides them from look-ups."""
        if text == "":
            return self.random.choice(["", f"<{tag}></{tag}>"])
        if attributes == "" and not self.in_row and "<" not in text and self.often(0.01):
            attributes = ' odd="1"'
        return f"<{tag}{attributes}>{text}</{tag}>"

    def text(self, content):
        escaped = content.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
        return escaped.replace("'", "&#39;") if self.often(0.5) else escaped

    def attribute(self, name, content):
        return f' {name}="{self.text_of_attribute(content)}"'

    @staticmethod
    def text_of_attribute(content):
        return content.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")

    def date(self):
        r = self.random
        text = self.pick(lambda: f"{r.randint(1, 28):02}/{r.randint(1, 12):02}/{r.choice([2023, 2024])}", DATES)
        return text.replace("/", "&#47;") if self.often(0.5) else text

    def clock(self):
        r = self.random
        return self.pick(lambda: f"{r.randint(0, 23):02}:{r.randint(0, 59):02}:{r.randint(0, 59):02}", TIMES)

    def some(self, parts, chance):
        """The parts that are there, in order, or shuffled, with white space and comments between."""
        kept = [p for p in parts if not self.often(chance)]
        if self.often(0.1):
            self.random.shuffle(kept)
        if self.often(0.1):
            kept.insert(self.random.randint(0, len(kept)), self.random.choice(["<!-- odd -->", "<odd>1</odd>",
                                                                               "<ex odd='1'>9</ex>"]))
        return self.random.choice(["", "", "", "\n  "]).join(kept)

    def bands(self, tag, mode, short, attributes=""):
        if short:
            return self.element(tag, self.level(), attributes)
        chance = self.random.choice([0, 0.3, 0.9]) if mode else 0.1
        body = self.some([self.element("f" + label.upper(), self.level()) for label in LABELS[mode]], chance)
        return self.element(tag, body, attributes)

    def row(self, mode, channel_b):
        short = self.often(0.15)
        a = [self.bands(tag, mode, short) for tag in ("leq", "lmin", "lmax")]
        a += [self.element(tag, self.level()) for tag in ("peak", "dose", "lex", "le", "ltm3", "ltm5", "pa2h")]
        a += [self.element(tag, self.clock()) for tag in ("lmintm", "lmaxtm", "peaktm")]
        a += [self.element("ol", self.random.choice(FLAGS))]
        a += [self.bands(f"ln{i}", mode, False) for i in self.random.sample(range(1, 11), 2)]
        b = [self.element(tag, self.level()) for tag in ("leq", "lmin", "lmax", "peak", "dose", "lex", "le", "pa2h")]
        b += [self.element("ol", self.random.choice(FLAGS))]
        parts = [self.element("date", self.date()), self.element("time", self.clock()),
                 self.element("ca", self.some(a, 0.15))]
        return "<intvl>" + self.some(parts + ([self.element("cb", self.some(b, 0.15))] if channel_b else []), 0.05) + "</intvl>"

    def channel_a(self, mode):
        parts = [self.element("tw", self.random.choice(["Fast", "slow", "IMP", "Impulse", "10mS", "F", ""])),
                 self.element("fw", self.random.choice(["a", "A", "C", "lin", "Linear", "Z", "B", ""])),
                 self.element("lavg", self.level()) if self.often(0.3) else ""]
        parts += [self.bands(tag, mode, False) for tag in ("leq", "lmin", "lmax")]
        for tag in ("lmin", "lmax", "peak"):
            parts += [self.element(tag + "dt", self.date()), self.element(tag + "tm", self.clock())]
        parts += [self.element(tag, self.level()) for tag in reference.A_FIGURES]
        parts += [self.bands(f"ln{i}", mode, False, attributes=f' no="{self.random.choice(["10", "90", "0", "x"])}"')
                  for i in self.random.sample(range(1, 11), 3)]
        return self.element("ca", self.some(parts, self.random.choice([0, 0.2, 0.6])))

    def channel_b(self):
        parts = [self.element("tw", self.random.choice(["Fast", "Slow"])), self.element("fw", self.random.choice("ACZ"))]
        parts += [self.element(tag, self.level()) for tag in reference.B_FIGURES]
        return self.element("cb", self.some(parts, self.random.choice([0, 0.3])))

    def selection(self, count):
        ranges = [sorted(self.random.choices(range(1, count + 4), k=2)) for _ in range(self.random.randint(0, 3))]
        incl = self.random.choice(["", ' incl="true"', ' incl="false"', ' incl="-1"'])
        return f"<cutintvls{incl}>" + "".join(f"<cutintvl>{a}~{b}</cutintvl>" for a, b in ranges) + "</cutintvls>"

    def log(self):
        mode = self.random.choice([0, 0, 0, 1, 1, 2])
        count = self.random.choice([0, 0, 1, 2, 5, 12] + ([120, 250] if mode == 0 else [60] if mode == 1 else [35]) * self.often(0.1))
        channel_b = self.often(0.4)
        parts = [self.element("md", str(mode) if mode else ""), self.element("calc", self.random.choice(FLAGS)),
                 self.element("sl", self.pick(lambda: "8", ["4", "0", "12.5", "x", "-2"])),
                 self.element("cri", self.integer("85")), self.element("ex", self.integer("3")),
                 self.element("lcn", self.random.choice(["IND", "ENV", "All", ""])),
                 self.element("note", self.text(self.random.choice(NOTES)))]
        parts += [self.element(tag, self.date()) for tag in ("fdt", "cdt", "sdt", "edt")]
        parts += [self.element(tag, self.clock()) for tag in ("ctm", "stm", "etm")]
        parts += [self.element("mti", self.random.choice(["", "", "", "3600", "299", "300", "-5", "2147483648" if self.too_large else ""])),
                  self.element("ol", self.random.choice(FLAGS)),
                  self.element("interval", self.random.choice(["1", "60", "300", "0", "", "3600", "-60", "1e9"])),
                  self.element("region", "IEC"), self.element("th", self.random.choice(["70", "", "<"]).replace("<", "&lt;")),
                  self.element("rng", self.random.choice(["20-90", "", "1/2"])), self.channel_a(mode)]
        if channel_b:
            parts.append(self.channel_b())
        if count:
            self.in_row = True
            parts.append("<intvls>" + "".join(self.row(mode, channel_b) for _ in range(count)) + "</intvls>")
            self.in_row = False
        parts += [self.selection(count) if self.often(0.3) else ""]
        name = self.random.choice(NOTES)
        return f"<log{self.attribute('name', name) if name else ''}>" + self.some(parts, 0.06) + "</log>"

    def file(self):
        collections = ""
        for _ in range(self.random.choice([1, 1, 1, 2, 3])):
            detail = [self.attribute("name", self.random.choice(NOTES)),
                      self.attribute("instrument-name", self.random.choice(INSTRUMENTS)),
                      self.attribute("instrument-serial", "A1/2"), self.attribute("instrument-type", self.random.choice(["3", "x"])),
                      self.attribute("instrument-firmware", self.random.choice(["1.05", "1.06", "1.3", "", "2"]))]
            logs = "".join(self.log() for _ in range(self.random.choice([0, 1, 1, 1, 2, 3])))
            collections += "<instrument-data>" + self.some([f"<instrument-detail{''.join(detail)}/>"], 0.03)
            collections += self.element("logs", logs) + "</instrument-data>"
        root = self.random.choice(["instruments"] * 9 + ["other"])
        text = f"<{root}>{collections}</{root}>"
        kind = self.random.choice(["plain"] * 4 + ["utf-8", "bom", "single"])
        if kind == "single":
            return ('<?xml version="1.0"?>' + text).encode("cp1252")
        head = {"utf-8": '<?xml version="1.0" encoding="utf-8"?>', "bom": "\ufeff"}.get(kind, '<?xml version="1.0"?>')
        return (head + text).encode("utf-8")


# ---- what is compared ---------------------------------------------------------------------------------------------

def ordered(x):
    """A single's place among the singles, so that neighbours differ by 1."""
    bits = struct.unpack("<i", struct.pack("<f", x))[0]
    return bits if bits >= 0 else -(bits & 0x7FFFFFFF)


NO_FIGURES = {"Plottable", "IsPlotted", "Peaks", "DoseLogIntervals", "SaveDoseCalc", "IntervalText", "LogLengthText",
              *(quantity + "Text" + channel for quantity in ("Leq", "Lmin", "Lmax", "Peak") for channel in "AB")}


def differences(program, ours, path=""):
    """Where the program's JSON differs, as texts."""
    if isinstance(ours, dict) and isinstance(program, dict):
        program = {k: v for k, v in program.items() if k not in ("Reported", "NotAWeighted")}  # remarks, no figures
        out = [f"{path}/{k}: only {'ours' if k in ours else 'the program'}"
               for k in (ours.keys() ^ program.keys()) - NO_FIGURES]
        return out + [d for k in ours.keys() & program.keys() for d in differences(program[k], ours[k], f"{path}/{k}")]
    if isinstance(ours, list) and isinstance(program, list) and len(ours) == len(program):
        return [d for i, (p, o) in enumerate(zip(program, ours)) for d in differences(p, o, f"{path}/{i}")]
    if type(ours) in (int, float) and type(program) in (int, float):
        return [] if f32(program) == f32(ours) else [f"{path}: {program!r}, ours {ours!r}"]
    return [] if type(ours) == type(program) and ours == program else [f"{path}: {program!r}, ours {ours!r}"]


def settle_by(printed):
    """Takes the program's energy mean for ours when they are neighbours; both are right to the accuracy of a single."""
    def settle(name, band, mean):
        if printed is None:
            return mean
        figure = printed[name][band] if band is not None else printed[name]
        program = f32(figure["CalcValue"])
        return program if abs(ordered(program) - ordered(mean)) <= 2 else mean
    return settle


class Comparison:
    def __init__(self, cli, folder, seed):
        self.cli, self.folder, self.data = cli, folder, Generator(seed).file()
        self.random = random.Random(seed)
        self.name = os.path.join(folder, f"file{seed}.xml")
        self.failures, self.runs, self.declined = [], 0, False

    def run(self, *words):
        self.runs += 1
        command = [self.cli, "--settings", os.path.join(self.folder, "none.ini"), *words]
        done = subprocess.run(command, capture_output=True, check=False, env={**os.environ, "LC_ALL": "C"})
        self.words = " ".join(words)
        if done.returncode != 0:
            return None
        return json.loads(done.stdout)

    def expect(self, program, ours):
        if program is None or ours is None:
            found = [] if program is ours else [f"{'the program' if program is None else 'we'} alone decline"]
        else:
            found = differences(program, ours)
        self.failures += [f"{self.words}\n    {d}" for d in found[:5]]

    def document(self):
        shown = self.shown["InstrumentDatas"] if self.shown else []
        logs = [log for data in shown for kind in ("Locations", "Octaves", "ThirdOctaves") for log in data[kind]]
        try:
            return reference.Document(self.data, self.name, [settle_by(log) for log in logs])
        except reference.FAULTS:
            return None

    def compare(self):
        with open(self.name, "wb") as file:
            file.write(self.data)
        self.shown = self.run("show", self.name, "--intervals")
        ours = self.document()
        self.expect(self.shown, ours and ours.json(True))
        if ours is None or self.failures:
            self.declined = ours is None
            return self
        if ours.keys:
            self.compare_log(self.document(), self.recalc)
            self.compare_log(self.document(), self.cut)
            self.compare_log(self.document(), self.zoom)
        return self

    def compare_log(self, ours, verb):
        log = self.random.choice(list(ours.keys))
        words = ["--log", ours.keys[log]] if log is not next(iter(ours.keys)) or self.random.random() < 0.5 else []
        verb(ours, log, words)

    def recalc(self, ours, log, words):
        mode = self.random.randint(0, 4)
        words = ["recalc", self.name, "--mode", str(mode), *words]
        for option, name, choices in (("--criterion", "Criterion", [80, 85, 1, 140]), ("--exchange", "Exchange", [3, 4, 5, 10]),
                                      ("--exposure", "ExposureTime", [4.0, 8.0, 0.5, 24.0])):
            if self.random.random() < 0.4:
                setattr(log, name, self.random.choice(choices))
                words += [option, str(getattr(log, name))]
        printed = self.run(*words)
        log.settle = settle_by(printed)
        done = log.recalc(mode)
        self.expect(printed, log.json(ours.keys[log], False) if done else None)

    def some_range(self, count):
        return sorted((self.random.randint(1, count), self.random.randint(1, count)))

    def cut(self, ours, log, words):
        if not log.rows:
            return
        include = self.random.random() < 0.5
        ranges = [self.some_range(len(log.rows)) for _ in range(self.random.randint(1, 3))]
        printed = self.run("cut", self.name, "--include" if include else "--exclude",
                           ",".join(f"{a}-{b}" for a, b in ranges), *words)
        log.settle = settle_by(printed)
        done = log.cut(include, ranges)
        self.expect(printed, log.json(ours.keys[log], False) if done else None)

    def zoom(self, ours, log, words):
        if not log.rows:
            return
        first, last = self.some_range(len(log.rows))
        printed = self.run("zoom", self.name, "--from", str(first), "--to", str(last), *words)
        log.settle = settle_by(printed)
        zoomed = log.zoom(first, last)
        self.expect(printed, zoomed and zoomed.json(ours.keys[log], False))


def compare_file(seed, place):
    return Comparison(*place, seed).compare()


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("cli")
    parser.add_argument("--files", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", help="write the files here and leave them")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as temporary, ProcessPoolExecutor() as pool:
        folder = options.keep or temporary
        os.makedirs(folder, exist_ok=True)
        seeds = range(options.seed, options.seed + options.files)
        done = list(pool.map(compare_file, seeds, repeat((options.cli, folder))))
    failures = [f for comparison in done for f in comparison.failures]
    print(*failures[:40], sep="\n")
    declined = sum(c.declined for c in done)
    print(f"{len(done)} files, {declined} declined, {sum(c.runs for c in done)} runs, {len(failures)} differences")
    return 1 if failures or declined > len(done) / 4 else 0


if __name__ == "__main__":
    sys.exit(main())
