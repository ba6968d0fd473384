"""An independent reader and calculator of XML data files, to compare the program with.

It is written from the rules of the format and of the calculations alone and shares no code with the program.
Figures are held as double numbers that are exactly a single; `f32` rounds to single where the rules round.
"""
import copy
import math
import re
import struct
from datetime import date, datetime
from xml.etree import ElementTree

FULL = ["16", "31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]
THIRD = ("12.5 16 20 25 31.5 40 50 63 80 100 125 160 200 250 315 400 500 630 800 1k 1.25k 1.6k 2k 2.5k 3.15k 4k 5k "
         "6.3k 8k 10k 12.5k 16k 20k").split()
LABELS = {0: [""], 1: [""] + FULL, 2: [""] + THIRD}
BREVIK = {"BREVIKSE", "BREVIKE", "BREVIKS", "AURAVOXESSENTIALSE", "AURAVOXESSENTIALE", "AURAVOXESSENTIALS"}


class Fault(Exception):
    """A run-time error in the sense of the rules."""


FAULTS = (Fault, ValueError, OverflowError, ZeroDivisionError)


def f32(x):
    if math.isinf(x) or math.isnan(x):
        raise OverflowError
    return struct.unpack("<f", struct.pack("<f", x))[0]


# ---- XML ----------------------------------------------------------------------------------------------------------

class Node:
    def __init__(self, element):
        self.element, self.attributes = element, element.attrib
        self.text = element.text or ""

    def children(self, tag):
        return [Node(element) for element in self.element.findall(tag)]

    def child(self, tag):
        return next(iter(self.children(tag)), None)

    def lookup(self, tag):
        """The text of the first element of that name without attributes, at any depth, as it is written; else None."""
        return next((escape_text(e.text or "") for e in self.element.iter(tag) if not e.attrib), None)


def parsed(data):
    """The collections of a data file."""
    if b"encoding" not in data[:200]:
        try:
            data.decode("utf-8")
        except UnicodeDecodeError:
            data = data.decode("cp1252").encode("utf-8")
    root = ElementTree.fromstring(data)
    return Node(root).children("instrument-data") if root.tag == "instruments" else []


def escape_text(t):
    return t.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


ESCAPES = [("'", "&#39;"), ('"', "&quot;"), ("&", "&amp;"), ("/", "&#47;"), ("<", "&lt;"), (">", "&gt;"),
           ("|", "&#124;")]


def unescape(t):
    for character, code in ESCAPES:
        t = t.replace(code, character)
    return t


# ---- text to figures ----------------------------------------------------------------------------------------------

NUMERIC = re.compile(r" *[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)? *", re.ASCII)


def numeric(t):
    return t is not None and NUMERIC.fullmatch(t) is not None


def integer(t, bits=16):
    """Rounded half to even; text that is not numeric is 0, a number too large is a fault."""
    if not numeric(t):
        return 0
    x = float(t)
    if math.isinf(x) or not -(1 << bits - 1) <= round(x) < 1 << bits - 1:
        raise Fault("overflow")
    return round(x)


def level(t):
    return f32(float(t)) if numeric(t) else 0.0


def flag(t):
    return float(t) != 0 if numeric(t) else (t or "").upper() == "TRUE"


# ---- dates (day, month, year) and times (hours, minutes, seconds) -------------------------------------------------

NO_DATE = (1, 1, 1900)


def calendar(d):
    """The calendar's day of a date that is one, else None. Two-digit years lie in 1930 to 2029."""
    day, month, year = d
    if day + month + year <= 0 or not (0 <= year <= 99 or 1900 <= year <= 2100):
        return None
    try:
        return date(year + (2000 if year < 30 else 1900) if year < 100 else year, month, day)
    except ValueError:
        return None


def date_text(d):
    day = calendar(d)
    text = f"{day.day:02}/{day.month:02}/{day.year:04}" if day else ""
    return "" if text == "01/01/1900" else text


def set_date(t, present):
    parts = (t or "").split("/", 2)
    if len(parts) < 3 or not all(numeric(p) for p in parts):
        return present
    d = tuple(integer(p) for p in parts)
    return d if calendar(d) else (0, 0, 0)


def set_time(t, present):
    parts = (t or "").split(":", 2)
    if len(parts) < 2:
        return present
    seconds = parts[2] if len(parts) == 3 else ""
    if not numeric(parts[0]) or not numeric(parts[1]) or not (seconds == "" or numeric(seconds)):
        return present
    if seconds == "":
        raise Fault("no seconds")
    return integer(parts[0], 32), integer(parts[1], 32), integer(seconds, 32)


def clock(t):
    hours, minutes, seconds = t
    if not 0 <= seconds < 60:
        return ""
    return ("" if hours < 0 or not 0 <= minutes < 60 else f"{hours:02}:{minutes:02}") + f":{seconds:02}"


def moment(d, t):
    day = calendar(d)
    if not day:
        return datetime(1899, 12, 30)
    text = clock(t)
    if text and not re.fullmatch(r"([01]\d|2[0-3]):\d\d:\d\d", text):
        raise Fault("no time of day")
    return datetime(day.year, day.month, day.day, *((int(p) for p in text.split(":")) if text else ()))


def stored_date(d):
    """A row's date as it comes back from its record."""
    day = calendar(d)
    return (day.day, day.month, day.year) if day else (0, 0, 0)


def stored_time(t):
    s = t[0] * 3600 + t[1] * 60 + t[2]
    return (s // 3600, s // 60 % 60, s % 60) if s >= 0 else (0, 0, s)


# ---- the document -------------------------------------------------------------------------------------------------

class Value:
    __slots__ = ("value", "calc")

    def __init__(self, x=0.0):
        self.value = self.calc = x

    def json(self):
        return {"Value": self.value, "CalcValue": self.calc}


def values(count):
    return [Value() for _ in range(count)]


A_FIGURES = {"peak": "PeakCumA", "dose": "DoseMTCumA", "edose": "DoseETCumA", "lex": "LepdETCumA", "mlex": "LepdMTCumA",
             "le": "SELCumA", "ltm3": "Ltm3CumA", "ltm5": "Ltm5CumA", "dh": "DoseHourA", "pa2h": "Pa2hCumA"}
B_FIGURES = {"leq": "LeqCumB", "lmin": "LminCumB", "lmax": "LmaxCumB", "peak": "PeakCumB", "dose": "DoseMTCumB",
             "edose": "DoseETCumB", "lex": "LepdETCumB", "plex": "LepdMTCumB", "le": "SELCumB", "dh": "DoseHourB",
             "pa2h": "Pa2hCumB"}
FIGURES = list(A_FIGURES.values()) + list(B_FIGURES.values()) + ["LAvgCumA", "TWACumA"]
ROW_A = {"peak": "PeakA", "dose": "DoseA", "lex": "LepdA", "le": "SELA", "ltm3": "Ltm3A", "ltm5": "Ltm5A",
         "pa2h": "Pa2hA"}
ROW_B = {"leq": "LeqB", "lmin": "LminB", "lmax": "LmaxB", "peak": "PeakB", "dose": "DoseB", "lex": "LepdB",
         "le": "SELB", "pa2h": "Pa2hB"}

class Row:
    def __init__(self, node, mode, channel_b):
        text = lambda n, tag: unescape(n.lookup(tag) or "") if n else ""
        self.excluded = False
        self.StartDate = stored_date(set_date(text(node, "date"), NO_DATE))
        self.StartTime = stored_time(set_time(text(node, "time"), (0, 0, 0)))
        a, b = node.child("ca"), node.child("cb") if channel_b else None
        for tag, name in (("leq", "LeqA"), ("lmin", "LminA"), ("lmax", "LmaxA")):
            setattr(self, name, self.bands(a, tag, mode))
        self.LnA = [self.bands(a, f"ln{i}", mode) for i in range(1, 11)]
        for tag, name in (("lmintm", "LminTimeA"), ("lmaxtm", "LmaxTimeA"), ("peaktm", "PeakTimeA")):
            setattr(self, name, stored_time(set_time(text(a, tag), (0, 0, 0))))
        for tag, name in ROW_A.items():
            setattr(self, name, Value(level(text(a, tag))))
        for tag, name in ROW_B.items():
            setattr(self, name, Value(level(text(b, tag))))
        self.OverloadedA, self.OverloadedB = flag(text(a, "ol")), flag(text(b, "ol"))

    @staticmethod
    def bands(parent, tag, mode):
        node = parent.child(tag) if parent else None
        if not node:
            return values(len(LABELS[mode]))
        found = [node.lookup("f" + label.upper()) for label in LABELS[mode]]
        if all(t is None for t in found):                      # the short form: the figure itself
            found[0] = parent.lookup(tag)
        return [Value(level(t)) for t in found]

    def json(self):
        out = {"isExcluded": self.excluded, "mLngInterval": 0, "mIntCriterion": 0, "mIntExchange": 0,
               "StartDate": date_text(self.StartDate), "OverloadedA": self.OverloadedA, "OverloadedB": self.OverloadedB,
               "LnA": [[v.json() for v in ln] for ln in self.LnA]}
        for name in ("StartTime", "LminTimeA", "LmaxTimeA", "PeakTimeA"):
            out[name] = clock(getattr(self, name))
        for name in ("LeqA", "LminA", "LmaxA"):
            out[name] = [v.json() for v in getattr(self, name)]
        for name in list(ROW_A.values()) + list(ROW_B.values()):
            out[name] = getattr(self, name).json()
        return out


class Log:
    def __init__(self, node, instrument, firmware):
        self.InsName, self.FirmwareVersion = instrument, firmware
        self.zoomed = self.parent5 = self.FullyCalculated = False
        self.Criterion, self.Exchange, self.ExposureTime = 90, 3, 8.0
        for name in FIGURES:
            setattr(self, name, Value())
        self.rows = []
        self.read(node)

    @staticmethod
    def settle(name, band, mean):
        """Settles on an energy mean; a comparison puts its own rule here."""
        return mean

    # -- kinds of instrument
    def model(self):
        return self.InsName.replace(" ", "")

    def halcyr(self):
        return self.model()[:5] in ("TR312", "TR350", "TR360")

    def brevik(self):
        return self.model().upper() in BREVIK

    def old_dose_meter(self):
        return "CORVANE" not in self.model().upper() and self.model()[:5] in ("TR340", "TR342")

    def location(self):
        return "" if self.model()[:6] in ("TR360L", "TR312E") else self.location_code

    def test_location(self):
        return self.location_code or {"TR360L": "IND", "TR312E": "ENV"}.get(self.model()[:6], "")

    # -- reading
    def read(self, node):
        text = lambda tag, n=node: unescape(n.lookup(tag) or "")
        self.Name = unescape(node.attributes.get("name", ""))
        self.Mode = integer(text("md"))
        if self.Mode not in LABELS:
            raise Fault("mode")
        labels = LABELS[self.Mode]
        self.location_code = text("lcn") if self.Mode == 0 else ""
        self.FullyCalculated = flag(text("calc"))
        for tag, name, convert in (("sl", "ExposureTime", level), ("cri", "Criterion", integer),
                                   ("ex", "Exchange", integer)):
            if node.lookup(tag) is not None:
                setattr(self, name, convert(text(tag)))
        self.Note = text("note")
        for tag, name in (("fdt", "FactoryCalibDate"), ("cdt", "CalibDate"), ("sdt", "StartDate"), ("edt", "EndDate")):
            setattr(self, name, set_date(text(tag), NO_DATE))
        for tag, name in (("ctm", "CalibTime"), ("stm", "StartTime"), ("etm", "EndTime")):
            setattr(self, name, set_time(text(tag), (0, 0, 0)))
        self.MeasurementTimeFromInstrument, self.Interval = integer(text("mti"), 32), integer(text("interval"), 32)
        self.IsLoggingOverLoaded = flag(text("ol"))
        self.Threshold, self.Range = text("th"), text("rng")
        self.LnNumberA, self.LnCumA = [0] * 10, [values(len(labels)) for _ in range(10)]
        self.LeqCumA, self.LminCumA, self.LmaxCumA = (values(len(labels)) for _ in range(3))
        self.weights = dict.fromkeys(("TimeWeightA", "FreqWeightA", "TimeWeightB", "FreqWeightB"), "")
        for name in ("LminCum", "LmaxCum", "PeakCum"):
            setattr(self, name + "DateA", NO_DATE)
            setattr(self, name + "TimeA", (0, 0, 0))
        a, b = node.child("ca"), node.child("cb")
        if a:
            self.read_a(a, text)
        self.IsLnNumbersOn = any(self.LnNumberA)
        self.IsChannelBOn = b is not None
        if b:
            self.set_weights("B", text("tw", b), text("fw", b))
            for tag, name in B_FIGURES.items():
                setattr(self, name, Value(level(text(tag, b))))
        group = lambda tag: (node.child(tag).children(tag[:-1]) if node.child(tag) else [])
        selection = node.child("cutintvls")
        self.include = flag(unescape(selection.attributes.get("incl", ""))) if selection else False
        self.cut_ranges = [n.text for n in group("cutintvls")]
        self.row_nodes = group("intvls")
        if self.halcyr():
            for name in ("LepdETCumB", "LepdMTCumB", "DoseETCumB", "DoseMTCumB", "DoseHourB"):
                getattr(self, name).calc = 0.0

    def read_a(self, a, text):
        self.set_weights("A", text("tw", a), text("fw", a))
        if a.child("lavg"):
            self.LAvgCumA = Value(level(text("lavg", a)))
        for tag, name in (("leq", "LeqCumA"), ("lmin", "LminCumA"), ("lmax", "LmaxCumA")):
            if a.child(tag):
                setattr(self, name, self.band_values(a.child(tag)))
        for tag, name in A_FIGURES.items():
            setattr(self, name, Value(level(text(tag, a))))
        for tag, name in (("lmin", "LminCum"), ("lmax", "LmaxCum"), ("peak", "PeakCum")):
            setattr(self, name + "DateA", set_date(text(tag + "dt", a), NO_DATE))
            setattr(self, name + "TimeA", set_time(text(tag + "tm", a), (0, 0, 0)))
        for i in range(1, 11):
            node = a.child(f"ln{i}")
            if node:
                self.LnNumberA[i - 1] = integer(unescape(node.attributes.get("no", "")))
                if self.LnNumberA[i - 1]:
                    self.LnCumA[i - 1] = self.band_values(node)

    def band_values(self, node):
        return [Value(level(node.lookup("f" + label.upper()))) for label in LABELS[self.Mode]]

    def set_weights(self, channel, time_weight, frequency_weight):
        self.weights["TimeWeight" + channel] = {"FAST": "Fast", "SLOW": "Slow", "IMPULSE": "Impulse", "IMP": "Impulse",
                                                "10MS": "10ms"}.get(time_weight.upper(), "")
        self.weights["FreqWeight" + channel] = {"A": "A", "C": "C", "Z": "Z", "LIN": "Z",
                                                "LINEAR": "Z"}.get(frequency_weight.upper(), "")

    def load_rows(self):
        """The intervals arrive: rows and flags of the selection."""
        self.rows = [Row(n, self.Mode, self.IsChannelBOn) for n in self.row_nodes]
        if self.rows:
            self.flag_rows()

    def flag_rows(self):
        chosen = set()
        for text in self.cut_ranges:
            first, last = (integer(t, 32) for t in text.split("~"))
            chosen.update(range(first, min(last, len(self.rows)) + 1))
        for i, row in enumerate(self.rows, 1):
            row.excluded = bool(self.cut_ranges) and (i in chosen) != self.include

    # -- time
    def time(self, unit, forced=False, excluded=True):
        if self.MeasurementTimeFromInstrument and not forced:
            s = self.MeasurementTimeFromInstrument
        elif not self.rows or forced:
            s = round((moment(self.EndDate, self.EndTime) - moment(self.StartDate, self.StartTime)).total_seconds())
            excluded = False
        else:
            s = len(self.rows) * self.Interval
        if not -2**31 <= s < 2**31:
            raise Fault("overflow")
        if excluded and self.rows and self.cut_ranges:
            s = round(sum(not r.excluded for r in self.rows) / len(self.rows) * s)
        if unit == "s":
            return f32(s)
        minutes, rest = divmod(s, 60) if s >= 60 else (0, s)
        if unit == "m":
            return f32(rest / 60 + minutes)
        hours, minutes = divmod(minutes, 60)
        return f32(f32(rest / 60 + minutes) / 60 + hours)

    # -- calculation
    def recalc(self, mode):
        """False when the rows make no figures: the figures stay, and so do those derived from them."""
        if mode < 5:
            self.overwrite = mode in (0, 3, 4)
        if mode == 0:
            self.LepdETCumA.calc, self.DoseETCumA.calc = self.lepd("A", True), self.dose("A", True)
            off = self.halcyr()
            self.LepdETCumB.calc = 0.0 if off else self.lepd("B", True)
            self.DoseETCumB.calc = 0.0 if off else self.dose("B", True)
            return True
        if self.rows:
            try:
                self.recalc_rows()
            except FAULTS:
                return False
        elif mode == 1:
            return True
        else:
            for figures in (self.LeqCumA, self.LminCumA, self.LmaxCumA):
                bands = [v.calc for v in figures[1:] if v.calc]
                if bands and (self.overwrite or not figures[0].calc):
                    figures[0].calc = self.energy_sum(bands, figures[0].calc)
        self.complete(mode)
        return True

    @staticmethod
    def energy_sum(levels, present):
        total = 0.0
        try:
            for x in levels:
                total = f32(total + 10 ** (x / 10))
            return f32(10 * math.log10(total))
        except FAULTS:
            return present

    def recalc_rows(self):
        self.flag_rows()
        rows = [r for r in self.rows if not r.excluded]
        returned = []

        def mean(figures):
            found = [v.calc for v in figures if v.calc]          # every row weighs the same: one interval length
            return f32(10 * math.log10(math.fsum(10 ** (x / 10) for x in found) / len(found))) if found else 0

        def pick(choose):
            return lambda figures: choose((v.calc for v in figures if v.calc), default=0)

        def put(figure, x):
            returned.append((figure, x))

        lowest, highest = pick(min), pick(max)
        for b in range(len(self.LeqCumA)):
            put(self.LeqCumA[b], self.settle("LeqCumA", b, mean([r.LeqA[b] for r in rows])))
            put(self.LminCumA[b], lowest([r.LminA[b] for r in rows]))
            put(self.LmaxCumA[b], highest([r.LmaxA[b] for r in rows]))
        put(self.PeakCumA, highest([r.PeakA for r in rows]))
        if self.IsChannelBOn:
            put(self.LeqCumB, self.settle("LeqCumB", None, mean([r.LeqB for r in rows])))
            put(self.LminCumB, lowest([r.LminB for r in rows]))
            put(self.LmaxCumB, highest([r.LmaxB for r in rows]))
            put(self.PeakCumB, highest([r.PeakB for r in rows]))
        for figure, x in returned:
            if x and (self.overwrite or not figure.calc):
                figure.calc = x

    def complete(self, mode):
        self.TWACumA.calc = self.twa(self.TWACumA.calc, lambda: self.DoseETCumA.calc)
        if self.old_dose_meter():
            self.LeqCumA[0].calc = self.leq_from_lepd()
        else:
            self.LepdETCumA.calc = self.lepd("A", True)
        self.LepdMTCumA.calc = self.lepd("A", False)
        self.SELCumA.calc = self.sel("A")
        if self.zoomed or not self.halcyr():
            self.Pa2hCumA.calc = self.pa2h("A")
            self.DoseETCumA.calc = self.dose("A", True)
            self.DoseHourA.calc = self.dose_hour("A")
        self.DoseMTCumA.calc = self.dose("A", False)
        if self.IsChannelBOn:
            off = self.halcyr()
            self.LepdETCumB.calc = 0.0 if off else self.lepd("B", True)
            self.LepdMTCumB.calc = 0.0 if off else self.lepd("B", False)
            self.SELCumB.calc, self.Pa2hCumB.calc = self.sel("B"), self.pa2h("B")
            self.DoseETCumB.calc = 0.0 if off else self.dose("B", True)
            self.DoseMTCumB.calc = self.dose("B", False)
            self.DoseHourB.calc = 0.0 if off else self.dose_hour("B")
        if mode == 4:
            self.FullyCalculated = True

    def leq(self, channel):
        return self.LeqCumA[0].calc if channel == "A" else self.LeqCumB.calc

    def figure(self, name, channel, formula, clamp=False):
        """The figure as it stands when it is to be kept or cannot be computed, else the formula's result."""
        present = getattr(self, name + channel).calc
        if not self.overwrite and present:
            return max(present, 0.0) if clamp else present
        try:
            result = formula()
        except FAULTS:
            return present
        return present if result is None else result

    def lepd(self, channel, exposure):
        def formula():
            t = self.ExposureTime if exposure else self.time("h")
            return max(f32(self.leq(channel) + 10 * math.log10(t / 8)), 0.0) if t else None
        return self.figure("LepdETCum" if exposure else "LepdMTCum", channel, formula, True)

    def leq_from_lepd(self):
        present = self.LeqCumA[0].calc
        if not self.overwrite and present:
            return max(present, 0.0)
        try:
            t = self.time("h")
            return max(f32(self.LepdETCumA.calc - 10 * math.log10(t / 8)), 0.0) if t else present
        except FAULTS:
            return present

    def dose(self, channel, exposure):
        def formula():
            t = self.ExposureTime if exposure else self.time("h")
            q = f32(self.Exchange / math.log10(2))
            if q == 0:
                return self.leq(channel)
            return f32(12.5 * 10 ** f32((self.leq(channel) - self.Criterion) / q) * t)
        return self.figure("DoseETCum" if exposure else "DoseMTCum", channel, formula, True)

    def dose_hour(self, channel):
        def formula():
            t = self.time("h")
            return f32(getattr(self, "DoseMTCum" + channel).calc / t) if t else None
        return self.figure("DoseHour", channel, formula)

    def sel(self, channel):
        def formula():
            t = self.time("s")
            return f32(self.leq(channel) + 10 * math.log10(t)) if t else 0.0
        return self.figure("SELCum", channel, formula)

    def pa2h(self, channel):
        def formula():
            t = self.ExposureTime if self.brevik() else self.time("h")
            return f32(f32(4e-10) * t * 10 ** (self.leq(channel) / 10))
        return self.figure("Pa2hCum", channel, formula)

    def twa(self, present, dose):
        if self.weights["FreqWeightA"] not in ("A", "C"):
            return 0.0
        try:
            d = dose()
            return f32(self.Exchange / math.log(2) * math.log(d / 100) + self.Criterion) if d else 0.0
        except FAULTS:
            return present

    # -- what a user asks for
    def cut(self, include, ranges):
        self.include, self.cut_ranges = include, [f"{a}~{b}" for a, b in ranges]
        return self.recalc(4)

    def zoom(self, first, last):
        """The range as a log, None when its rows make no figures."""
        if (first, last) == (1, len(self.rows)):               # the log itself
            return self if self.recalc(2) else None
        try:
            parent5 = self.time("m", False, False) >= 5
        except FAULTS:
            parent5 = False
        nodes, rows = self.row_nodes, self.rows
        self.row_nodes = self.rows = []
        log = copy.deepcopy(self)
        self.row_nodes, self.rows = nodes, rows
        log.rows = copy.deepcopy(rows[first - 1:last])
        ranges = [[integer(t, 32) for t in text.split("~")] for text in self.cut_ranges]
        moved = [(max(a, first) - first + 1, min(b, last) - first + 1) for a, b in ranges]
        log.cut_ranges = [f"{a}~{b}" for a, b in moved if a <= b]
        if self.include and self.cut_ranges and not log.cut_ranges:
            log.cut_ranges = ["0~0"]                           # an include selection that holds no row
        log.zoomed, log.parent5, log.MeasurementTimeFromInstrument = True, parent5, 0
        log.StartDate, log.StartTime = log.rows[0].StartDate, log.rows[0].StartTime
        log.EndDate, log.EndTime = log.rows[-1].StartDate, log.rows[-1].StartTime
        for v in (log.LeqCumA + log.LminCumA + log.LmaxCumA + [v for ln in log.LnCumA for v in ln]
                  + [getattr(log, name) for name in FIGURES]):
            v.calc = v.value
        return log if log.recalc(2) else None

    # -- as JSON
    def json(self, key, intervals):
        out = {"Key": key, "ModeText": ["Broadband", "Full Octave", "Third Octave"][self.Mode], "OctaveType": "",
               "LocationType": self.location(), "TestLocationType": self.test_location(), "Number": 0, "Region": "",
               "IsErraticIntervals": False, "IsZoomed": self.zoomed, "IsParent5Mins": self.parent5,
               "LnNumberA": self.LnNumberA, "LnCumA": [[v.json() for v in ln] for ln in self.LnCumA], **self.weights}
        for name in ("Name Mode InsName FirmwareVersion Criterion Exchange Threshold Range Note IsChannelBOn "
                     "IsLnNumbersOn IsLoggingOverLoaded Interval FullyCalculated MeasurementTimeFromInstrument "
                     "ExposureTime").split():
            out[name] = getattr(self, name)
        for name in "FactoryCalibDate CalibDate StartDate EndDate LminCumDateA LmaxCumDateA PeakCumDateA".split():
            out[name] = date_text(getattr(self, name))
        for name in "CalibTime StartTime EndTime LminCumTimeA LmaxCumTimeA PeakCumTimeA".split():
            out[name] = clock(getattr(self, name))
        for name in ("LeqCumA", "LminCumA", "LmaxCumA"):
            out[name] = [v.json() for v in getattr(self, name)]
        for name in FIGURES:
            out[name] = getattr(self, name).json()
        out["TWA8CumA"] = self.twa(0.0, lambda: f32(self.DoseMTCumA.calc * (8 / self.time("h", True))))
        out["LogIntervals"] = {"Count": len(self.rows), "CutIntervals": self.cut_ranges,
                               "IntervalsToBeIncluded": self.include}
        if intervals:
            out["LogIntervals"]["Items"] = [r.json() for r in self.rows]
        return out


class InsData:
    def __init__(self, node):
        detail = node.child("instrument-detail")
        get = (lambda name: detail.attributes.get(name, "")) if detail else lambda name: ""
        self.NameX, self.InsName, self.InsSerial = get("name"), get("instrument-name").strip(" "), get("instrument-serial")
        self.InsType, self.FirmwareVersion = integer(get("instrument-type")), level(get("instrument-firmware"))
        logs = node.child("logs")
        self.logs = [Log(n, self.InsName, self.FirmwareVersion) for n in (logs.children("log") if logs else [])]
        self.logs.sort(key=lambda log: log.Mode)


class Document:
    """A data file as it stands when it has opened and its intervals are loaded. Raises when it is declined."""

    def __init__(self, data, name, settles=()):
        """settles: of each log in order, see Log.settle."""
        self.name = name
        self.collections = [c for c in (InsData(n) for n in parsed(data)) if c.logs]
        for log, settle in zip(self.all_logs(), settles):
            log.settle = settle
        for log in self.all_logs():                            # where rows are left out it waits for the rows
            is_waiting = log.row_nodes and log.cut_ranges
            if not is_waiting:
                log.recalc(4)
            log.load_rows()
            if is_waiting:
                log.recalc(4)
        self.changed = False                                   # what rows do to the display options is no change
        self.keys, highest = {}, [0, 0, 0]
        for i, c in enumerate(self.collections, 1):
            for log in c.logs:
                highest[log.Mode] += 1
                self.keys[log] = f"{'LOT'[log.Mode]}{highest[log.Mode]}I{i}F1"

    def all_logs(self):
        return [log for c in self.collections for log in c.logs]

    def json(self, intervals):
        group = lambda c, mode: [log.json(self.keys[log], intervals) for log in c.logs if log.Mode == mode]
        return {"FileName": self.name, "ShortenedFileName": re.split(r"[\\/]", self.name)[-1], "IsOldStyle": False,
                "IsChanged": self.changed, "InstrumentDatas": [
                    {"Key": f"I{i}F1", "NameX": c.NameX, "InsName": c.InsName, "InsSerial": c.InsSerial,
                     "InsType": c.InsType, "FirmwareVersion": c.FirmwareVersion, "Locations": group(c, 0),
                     "Octaves": group(c, 1), "ThirdOctaves": group(c, 2)} for i, c in enumerate(self.collections, 1)]}
