#!/usr/bin/env python3
"""Writes the sample data files beside this script. Always the same bytes: the seed is fixed.

Levels come from a simulation of short-term levels (an autoregressive walk round a task's level), so that
Lmin <= Leq <= Lmax <= Peak, percentiles and cumulative figures agree with each other and with the rows.
"""
import math
import os
import random
import struct
from datetime import datetime, timedelta

OCTAVES = ["16", "31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]
THIRDS = ("12.5 16 20 25 31.5 40 50 63 80 100 125 160 200 250 315 400 500 630 800 1k 1.25k 1.6k 2k 2.5k 3.15k 4k 5k "
          "6.3k 8k 10k 12.5k 16k 20k").split()
BANDS = {0: [], 1: OCTAVES, 2: THIRDS}
HERE = os.path.dirname(os.path.abspath(__file__))


# ---- text ---------------------------------------------------------------------------------------------------------

def single(x):
    return struct.unpack("<f", struct.pack("<f", x))[0]


def level(x):
    """The fewest digits that read back to the same single; empty for 0."""
    x = single(x)
    if x == 0:
        return ""
    for digits in range(1, 10):
        mantissa, exponent = f"{x:.{digits - 1}e}".split("e")
        if single(float(f"{mantissa}e{exponent}")) == x:
            break
    power = int(exponent)
    if -4 <= power <= 6:
        return f"{x:.{max(0, digits - 1 - power)}f}"
    return f"{mantissa}E{'-' if power < 0 else '+'}{abs(power):02}"


def raw(x):
    return level(x) or "0"


def escape(text):
    for old, new in (("'", "&#39;"), ('"', "&quot;"), ("&", "&amp;"), ("/", "&#47;"), ("<", "&lt;"), (">", "&gt;"),
                     ("|", "&#124;"), ("\r\n", " "), ("\n", " ")):
        text = text.replace(old, new)
    return "".join(c if ord(c) < 128 else f"&#{ord(c)};" for c in text)


def element(name, content):
    return f"<{name}>{content}</{name}>" if content != "" else ""


def date(name, when):
    return element(name, escape(when.strftime("%d/%m/%Y")))


def clock(name, when):
    text = when.strftime("%H:%M:%S")
    return "" if name == "time" and text == "00:00:00" else element(name, text)


def flag(name, on):
    return element(name, "-1" if on else "")


def bands(name, levels, mode, attribute=""):
    labels = [""] + BANDS[mode]
    body = "".join(element("f" + label.upper(), level(x)) for label, x in zip(labels, levels))
    return f"<{name}{attribute}>{body}</{name}>" if body else ""


# ---- levels -------------------------------------------------------------------------------------------------------

def energy_mean(levels):
    return 10 * math.log10(sum(10 ** (x / 10) for x in levels) / len(levels))


def energy_sum(levels):
    return 10 * math.log10(sum(10 ** (x / 10) for x in levels))


def walk(rng, base, spread, count, smooth=0.8, floor=18.0):
    """Short-term levels round a base level, in dB, none below the floor."""
    step = spread * math.sqrt(1 - smooth * smooth)
    x = rng.gauss(0, spread)
    out = []
    for _ in range(count):
        x = smooth * x + rng.gauss(0, step)
        out.append(max(base + x, floor))
    return out


def figures(short):
    """Leq, Lmin, Lmax of short-term levels, to 0.1 dB as an instrument gives them."""
    return round(energy_mean(short), 1), round(min(short), 1), round(max(short), 1)


def percentile(short, n):
    """The level exceeded in n percent of the time."""
    ordered = sorted(short, reverse=True)
    return round(ordered[min(len(ordered) - 1, int(n / 100 * len(ordered)))], 1)


def broadband_row(rng, start, seconds, short, crest, lns=()):
    leq, lmin, lmax = figures(short)
    row = {"start": start, "leq": [leq], "lmin": [lmin], "lmax": [lmax], "peak": round(lmax + rng.uniform(*crest), 1)}
    for key, at in (("lmintm", short.index(min(short))), ("lmaxtm", short.index(max(short)))):
        row[key] = start + timedelta(seconds=int(at * seconds / len(short)))
    row["peaktm"] = row["lmaxtm"]
    row["ln"] = [[percentile(short, n)] for n in lns]
    return row


def second_channel(rng, row, shift, spread):
    """Channel B beside a row of channel A: the same sound under another weighting."""
    d = rng.gauss(shift, spread)
    row["b"] = {"leq": round(row["leq"][0] + d, 1), "lmin": round(row["lmin"][0] + d - 0.2, 1),
                "lmax": round(row["lmax"][0] + d + 0.2, 1), "peak": round(row["peak"] + abs(d) / 2 + 0.5, 1)}


def dose(leq, hours, log):
    return 12.5 * hours * 10 ** single((leq - log["criterion"]) / single(log["exchange"] / math.log10(2)))


def exposure(leq, hours):
    return max(leq + 10 * math.log10(hours / 8), 0)


def add_row_exposure(log):
    for row in log["rows"]:
        hours, leq = log["interval"] / 3600, row["leq"][0]
        row.update(dose=round(dose(leq, hours, log), 3), lex=round(exposure(leq, hours), 1),
                   le=round(leq + 10 * math.log10(log["interval"]), 1), pa2h=single(4e-10 * hours * 10 ** (leq / 10)))


# ---- elements of a log --------------------------------------------------------------------------------------------

def channel_a_row(row, mode):
    out = bands("leq", row["leq"], mode) + bands("lmin", row["lmin"], mode) + bands("lmax", row["lmax"], mode)
    out += element("peak", level(row.get("peak", 0)))
    for key in ("lmintm", "lmaxtm", "peaktm"):
        out += element(key, row[key].strftime("%H:%M:%S") if key in row else "00:00:00")
    for key in ("dose", "lex", "le", "ltm3", "ltm5", "pa2h"):
        out += element(key, level(row.get(key, 0)))
    out += flag("ol", row.get("ol", False))
    return out + "".join(bands(f"ln{i}", values, mode) for i, values in enumerate(row.get("ln", []), 1))


def row_element(row, log):
    out = date("date", row["start"]) + clock("time", row["start"])
    if log["short"]:
        out += "<ca>" + "".join(element(k, raw(row[k][0])) for k in ("leq", "lmin", "lmax"))
        out += element("lex", level(row.get("lex", 0))) + element("le", level(row.get("le", 0)))
        out += flag("ol", row.get("ol", False))
        out += "".join(f"<ln{i + 1}><f>{raw(row['ln'][i][0])}</f></ln{i + 1}>" for i in range(3)) + "</ca>"
    else:
        out += "<ca>" + channel_a_row(row, log["mode"]) + "</ca>"
    if "b" in row:
        out += "<cb>" + "".join(element(k, level(row["b"][k])) for k in ("leq", "lmin", "lmax", "peak"))
        out += flag("ol", row["b"].get("ol", False)) + "</cb>"
    return element("intvl", out)


def extreme(rows, key, time_key, pick):
    row = pick(rows, key=lambda r: r[key][0] if isinstance(r[key], list) else r[key])
    value = row[key][0] if isinstance(row[key], list) else row[key]
    return value, row.get(time_key, row["start"])


def derived(leq, log, hours, old_names):
    """Dose and exposure figures of a channel from its Leq; the third name is that of exposure by measured time."""
    measured = single(dose(leq, hours, log))
    return (element("dose", level(measured)) + element("edose", level(dose(leq, log["shift"], log)))
            + element("lex", level(exposure(leq, log["shift"]))) + element(old_names, level(exposure(leq, hours)))
            + element("le", level(leq + 10 * math.log10(hours * 3600)))), \
        element("dh", level(measured / hours)) + element("pa2h", level(4e-10 * hours * 10 ** (leq / 10)))


def channel_a(log, hours):
    rows, mode = log["rows"], log["mode"]
    count = len(BANDS[mode]) + 1
    mean = [single(energy_mean([r["leq"][b] for r in rows])) for b in range(count)]
    low = [min(r["lmin"][b] for r in rows) for b in range(count)]
    high = [max(r["lmax"][b] for r in rows) for b in range(count)]
    out = element("tw", log["tw"]) + element("fw", log["fw"])
    out += bands("leq", mean, mode) + bands("lmin", low, mode) + bands("lmax", high, mode)
    lns = "".join(bands(f"ln{i}", values, mode, f' no="{n}"')
                  for i, (n, values) in enumerate(zip(log["lns"], log["ln_figures"]), 1))
    if log["short"]:
        per_hour = single(dose(mean[0], 1, log))
        out += element("lavg", raw(log["lavg"])) + element("le", level(mean[0] + 10 * math.log10(hours * 3600)))
        out += element("lex", level(exposure(mean[0], log["shift"]))) + element("dose", raw(per_hour))
        out += element("dh", raw(per_hour)) + element("pa2h", raw(4e-10 * log["shift"] * 10 ** (mean[0] / 10)))
        return out + lns
    peak, peak_at = extreme(rows, "peak", "peaktm", max) if "peak" in rows[0] else (0, None)
    out += element("peak", level(peak))
    marks = (("lmin", extreme(rows, "lmin", "lmintm", min)[1]), ("lmax", extreme(rows, "lmax", "lmaxtm", max)[1]),
             ("peak", peak_at))
    for name, when in marks:
        out += date(name + "dt", when) + clock(name + "tm", when) if when else element(name + "tm", "00:00:00")
    first, last = derived(mean[0], log, hours, "mlex")
    return out + first + "".join(element(k, level(log.get(k, 0))) for k in ("ltm3", "ltm5")) + last + lns


def channel_b(log, hours):
    rows = [r["b"] for r in log["rows"]]
    mean = single(energy_mean([r["leq"] for r in rows]))
    out = element("tw", log["twb"]) + element("fw", log["fwb"]) + element("leq", level(mean))
    out += element("lmin", level(min(r["lmin"] for r in rows))) + element("lmax", level(max(r["lmax"] for r in rows)))
    out += element("peak", level(max(r["peak"] for r in rows)))
    if not log["short"]:
        out += "".join(derived(mean, log, hours, "plex"))
    return out


def log_element(log):
    rows, interval = log["rows"], log["interval"]
    start, end = rows[0]["start"], rows[-1]["start"] + timedelta(seconds=interval)
    hours = (end - start).total_seconds() / 3600
    out = f'<log name="{escape(log["name"])}">'
    out += element("md", str(log["mode"] or "")) + flag("calc", True) + element("sl", level(log["shift"]))
    out += element("cri", str(log["criterion"])) + element("ex", str(log["exchange"]))
    out += element("lcn", log["location"] if log["mode"] == 0 else "") + element("note", escape(log["note"]))
    out += date("fdt", log["factory"]) + date("cdt", log["calibrated"]) + clock("ctm", log["calibrated"])
    out += date("sdt", start) + clock("stm", start) + date("edt", end) + clock("etm", end)
    out += element("mti", str(log.get("mti", "")))
    out += flag("ol", any(r.get("ol") for r in rows)) + element("interval", str(interval))
    out += element("region", log.get("region", "")) if log["short"] else ""
    out += element("th", log.get("threshold", "")) + element("rng", log.get("range", ""))
    out += "<ca>" + channel_a(log, hours) + "</ca>"
    if "b" in rows[0]:
        out += "<cb>" + channel_b(log, hours) + "</cb>"
    out += element("intvls", "".join(row_element(r, log) for r in rows))
    if log.get("cut"):
        include, ranges = log["cut"]
        out += f'<cutintvls incl="{"true" if include else "false"}">'
        out += "".join(element("cutintvl", r) for r in ranges) + "</cutintvls>"
    out += element("peak-intvls", "".join(
        element("peak-intvl", clock("peaktm", when) + element("duration", level(seconds)))
        for when, seconds in log.get("peaks", [])))
    out += element("dl-intvls", "".join(exposure_row(*r) for r in log.get("table", [])))
    shown = "".join(flag(f"{name}-{a}-{b}", name in log["shown"][a, b])
                    for a in (1, 2) for b in (1, 2) for name in log["shown"][a, b])
    return out + f"<disp>{shown}</disp></log>"


def exposure_row(criterion, exchange, when, note, leq, duration, included):
    return element("dl-intvl", element("cri", str(criterion)) + element("ex", str(exchange)) + date("date", when)
                   + clock("time", when) + element("note", escape(note)) + element("leq", level(leq))
                   + element("duration", duration) + flag("is-included", included))


def new_log(name, start, interval, **more):
    log = {"name": name, "mode": 0, "shift": 8, "criterion": 85, "exchange": 3, "location": "IND", "note": "",
           "factory": datetime(start.year - 1, 11, 4), "calibrated": start - timedelta(minutes=12), "interval": interval,
           "tw": "Fast", "fw": "A", "short": False, "lns": [], "ln_figures": [], "rows": [],
           "shown": {(a, b): [] for a in (1, 2) for b in (1, 2)}}
    log.update(more)
    return log


LEVELS = ["leq", "lmin", "lmax", "peak"]


def write(name, collections):
    text = '<?xml version="1.0"?><instruments>'
    for title, instrument, serial, kind, firmware, logs in collections:
        text += f'<instrument-data><instrument-detail name="{escape(title)}" instrument-name="{escape(instrument)}"'
        text += f' instrument-serial="{escape(serial)}" instrument-type="{kind}"'
        text += f' instrument-firmware="{level(firmware)}"/><logs>'
        text += "".join(log_element(log) for log in sorted(logs, key=lambda log: log["mode"]))
        text += "</logs></instrument-data>"
    with open(os.path.join(HERE, name), "w", encoding="ascii", newline="") as f:
        f.write(text + "</instruments>\n")


# ---- the files ----------------------------------------------------------------------------------------------------

def shift_dosimeter(rng):
    start = datetime(2024, 9, 17, 7, 0)
    # task, minutes, level, spread, crest (dB between Lmax and Peak)
    tasks = [("set up", 20, 76, 3, (10, 14)), ("grinding", 85, 92, 2.5, (9, 13)), ("walking", 10, 78, 3, (9, 12)),
             ("break", 20, 60, 4, (12, 18)), ("welding", 95, 87, 3, (9, 14)), ("fork-lift", 25, 82, 2.5, (9, 12)),
             ("lunch", 30, 63, 4, (12, 18)), ("grinding", 60, 93, 2.5, (9, 13)), ("hammering", 35, 95, 4.5, (20, 32)),
             ("break", 15, 61, 4, (12, 18)), ("press", 65, 89, 1.5, (10, 14)), ("cleaning", 20, 77, 3, (10, 14))]
    log = new_log("Broadband 1", start, 60, location="", tw="Slow", threshold="70", range="70-140", mti=28800,
                  note="Fettler, cell 4. Microphone on the left shoulder; breaks in the canteen.")
    for task, minutes, base, spread, crest in tasks:
        for _ in range(minutes):
            at = start + timedelta(minutes=len(log["rows"]))
            row = broadband_row(rng, at, 60, walk(rng, base, spread, 60), crest)
            row["ol"] = row["peak"] > 135
            log["rows"].append(row)
    add_row_exposure(log)
    # this family's tables show no Lmin
    log["shown"][1, 1] = ["leq", "lmax", "peak", "lex", "dose", "dose-hour", "overload"]
    log["shown"][1, 2] = ["leq", "lmax", "peak", "lex", "dose", "overload"]
    write("shift-dosimeter.xml", [("Foundry, day shift", "TR360L", "360417", 0, 2.1, [log])])


def night_environment(rng):
    start = datetime(2024, 6, 11, 22, 0)
    lns = [5, 10, 50, 90, 95]
    log = new_log("Broadband 1", start, 900, location="ENV", criterion=90, lns=lns, fwb="C", twb="Fast", range="20-90",
                  note="Garden of 12 Mill Lane, 1.5 m above the lawn. Wind below 2 m/s, dry.")
    whole = []
    for i in range(36):
        at = start + timedelta(minutes=15 * i)
        hour = (at.hour + at.minute / 60 - 3) % 24
        base = 34 + 7 * min(hour, 24 - hour, 5) / 5
        short = walk(rng, base, 2.2, 900, 0.95)
        for _ in range(rng.randint(1, 2) if 1 <= at.hour < 4 else rng.randint(4, 11)):     # cars going by
            top, centre = rng.uniform(50, 66), rng.randrange(900)
            for k in range(max(0, centre - 25), min(900, centre + 25)):
                short[k] = energy_sum([short[k], top - ((k - centre) / 5) ** 2])
        if at.hour in (23, 4):                                                               # a goods train
            for k in range(300, 380):
                short[k] = energy_sum([short[k], 68 + rng.gauss(0, 1)])
        whole += short
        row = broadband_row(rng, at, 900, short, (11, 16), lns)
        second_channel(rng, row, 11, 1.5)
        log["rows"].append(row)
    log["ln_figures"] = [[percentile(whole, n)] for n in lns]
    log["shown"] = {(1, 1): LEVELS + ["lex", "dose", "ln1", "ln2", "ln3", "ln4"],
                    (1, 2): LEVELS + ["ln1", "ln2", "ln3", "ln4"], (2, 1): ["leq", "lmax"], (2, 2): ["leq", "lmax"]}
    write("night-environment.xml", [("Mill Lane", "TR352", "B8107", 0, 1.4, [log])])


def spectrum_log(rng, name, mode, start, seconds, count, shape, spread, **more):
    """Rows of a band log under Z: every band walks on its own about a level that all share."""
    log = new_log(name, start, seconds, mode=mode, fw="Z", criterion=85, **more)
    steps = 6
    common = walk(rng, 0, spread, count * steps, 0.9, -99)
    for i in range(count):
        at = start + timedelta(seconds=i * seconds)
        samples = [[max(shape(b, i) + common[i * steps + k] + rng.gauss(0, 0.6), 8) for k in range(steps)]
                   for b in range(len(BANDS[mode]))]
        samples.insert(0, [energy_sum([s[k] for s in samples]) for k in range(steps)])
        row = {"start": at, "ln": []}
        row["leq"], row["lmin"], row["lmax"] = (list(v) for v in zip(*(figures(s) for s in samples)))
        row["peak"] = round(row["lmax"][0] + rng.uniform(8, 12), 1)
        row["lmintm"] = row["lmaxtm"] = row["peaktm"] = at + timedelta(seconds=rng.randrange(seconds))
        log["rows"].append(row)
    log["shown"] = {(1, 1): LEVELS + ["lex", "dose", "dose-hour"], (1, 2): LEVELS, (2, 1): [], (2, 2): []}
    return log


def machine_survey(rng):
    start = datetime(2025, 2, 5, 9, 15)
    # name, spectrum 16 Hz to 16 kHz, spread
    machines = [("Compressor, idle", [58, 62, 68, 72, 74, 73, 70, 66, 61, 54, 45], 0.8),
                ("Compressor, loaded", [64, 70, 79, 86, 85, 84, 82, 78, 73, 66, 56], 1.0),
                ("Circular saw", [52, 55, 60, 66, 74, 82, 90, 97, 99, 94, 85], 3.0),
                ("Planer", [50, 54, 61, 72, 84, 92, 94, 92, 88, 82, 74], 2.0),
                ("Extract fan", [70, 74, 80, 79, 76, 72, 68, 63, 57, 50, 41], 0.6)]
    logs = []
    for i, (name, levels, spread) in enumerate(machines):
        at = start + timedelta(minutes=17 * i)
        logs.append(spectrum_log(rng, name, 1, at, 10, 36 + 6 * i, lambda b, _, v=levels: v[b], spread,
                                 range="40-110", note=f"{name}: 1 m from the casing, at ear height."))
    write("machine-survey-octave.xml", [("Joinery, plant room", "Corvane 5", "C50311", 1, 1.2, logs[:2] + logs[4:]),
                                        ("Joinery, workshop", "Corvane 5", "C50311", 1, 1.2, logs[2:4])])


def third_octave(rng):
    start = datetime(2025, 3, 20, 6, 30)
    centres = [float(t[:-1]) * 1000 if t.endswith("k") else float(t) for t in THIRDS]

    def shape(b, i):
        x = math.log2(centres[b] / 500)
        traffic = 66 - 1.6 * x * x + (5 if 45 <= centres[b] <= 85 else 0)
        return traffic + 4 * math.sin(i / 150) + (14 if 700 <= i < 820 and THIRDS[b] == "1k" else 0)

    log = spectrum_log(rng, "Third Octave 1", 2, start, 5, 2000, shape, 2.5, range="30-120",
                       note="Kerb of the ring road; a reversing alarm (1 kHz) shortly before half past seven.")
    write("third-octave-2000.xml", [("Ring road", "Corvane 5", "C50298", 1, 1.2, [log])])


def brevik_short_form(rng):
    start = datetime(2024, 11, 26, 13, 5)
    log = new_log("Broadband 1", start, 60, short=True, region="UK", lns=[10, 50, 90], fwb="C", twb="Fast",
                  threshold="0", note="Packing line 2, beside the operator.", lavg=0)
    whole = []
    for i in range(60):
        base = 70 if 25 <= i < 32 else 83                                                    # the line stands still
        short = walk(rng, base, 2, 60)
        whole += short
        row = broadband_row(rng, start + timedelta(minutes=i), 60, short, (10, 14), log["lns"])
        row["lex"] = round(exposure(row["leq"][0], 1 / 60), 1)
        row["le"] = round(row["leq"][0] + 10 * math.log10(60), 1)
        row["ol"] = i == 47
        second_channel(rng, row, 3, 0.4)
        log["rows"].append(row)
    log["lavg"] = single(energy_mean([r["leq"][0] for r in log["rows"]]) - 0.6)
    log["ln_figures"] = [[percentile(whole, n)] for n in log["lns"]]
    log["shown"] = {(1, 1): LEVELS[:3] + ["lex", "dose", "dose-hour", "ln1", "ln2", "ln3"],
                    (1, 2): LEVELS[:3] + ["lex", "ln1", "ln2", "ln3"], (2, 1): LEVELS, (2, 2): LEVELS}
    write("brevik-short-form.xml", [("Packing hall", "Brevik SE", "901226", 3, 1.2, [log])])


def protector_ac(rng):
    start = datetime(2025, 1, 14, 8, 30)
    log = new_log("Broadband 1", start, 30, fwb="C", twb="Fast", range="60-130",
                  note="Rotary screw compressor hall: low frequencies, C well above A.")
    for i in range(120):
        base = 96 if i % 40 < 28 else 90
        row = broadband_row(rng, start + timedelta(seconds=30 * i), 30, walk(rng, base, 1.2, 60), (9, 12))
        second_channel(rng, row, 6.5, 0.5)
        log["rows"].append(row)
    add_row_exposure(log)
    log["shown"] = {(1, 1): LEVELS + ["lex", "dose", "dose-hour"], (1, 2): LEVELS + ["lex", "dose"],
                    (2, 1): LEVELS + ["lex", "dose"], (2, 2): LEVELS}
    write("protector-ac.xml", [("Compressor hall", "TR326", "A4471", 0, 1.3, [log])])


def roadworks_selection(rng):
    start = datetime(2024, 5, 8, 10, 0)
    log = new_log("Ca\u00f1ada Road / east", start, 300, location="ENV", criterion=90, exchange=5, lns=[10, 90],
                  note="Breaker at 10 m; the generator of the site runs all day. Rows 13 to 16: ice-cream van, left out.")
    whole = []
    for i in range(48):
        base = 88 if 12 <= i < 16 else 76 if i % 6 < 4 else 65
        short = walk(rng, base, 3, 150)
        whole += short
        log["rows"].append(broadband_row(rng, start + timedelta(minutes=5 * i), 300, short, (10, 16), log["lns"]))
    add_row_exposure(log)
    log["ln_figures"] = [[percentile(whole, n)] for n in log["lns"]]
    log["cut"] = (False, ["13~16"])
    loud = sorted(log["rows"], key=lambda r: -r["peak"])[:4]
    log["peaks"] = [(r["peaktm"], single(rng.uniform(0.1, 0.9))) for r in sorted(loud, key=lambda r: r["peaktm"])]
    log["table"] = [(85, 3, start, "breaking the surface", 91.4, "02:30:00", True),
                    (85, 3, start + timedelta(hours=3), "loading the lorry", 84.2, "03:15:00", True),
                    (85, 3, start + timedelta(hours=7), "cab of the lorry, on the road", 72.8, "01:45:00", True),
                    (90, 5, start + timedelta(hours=9), "overtime (trial)", 88, "01:00:00", False)]
    log["shown"] = {(1, 1): LEVELS + ["lex", "dose", "dose-hour", "ln1", "ln2"], (2, 1): [], (2, 2): [],
                    (1, 2): LEVELS + ["lex", "dose", "ln1", "ln2"]}
    write("roadworks-selection.xml", [("Road works", "TR324", "A3902", 0, 1.3, [log])])


# ---- machine logs -------------------------------------------------------------------------------------------------

def machine_log(name, log):
    """The text in which a Corvane instrument keeps a measurement: fields, each ended by a comma."""
    rows, interval = log["rows"], log["interval"]
    start, end = rows[0]["start"], rows[-1]["start"] + timedelta(seconds=interval)
    has_b = "b" in rows[0]
    lns = log["lns"] + [0] * (7 - len(log["lns"]))
    lines = [["Corvane 5 [C5T]", "C50331", log["factory"].strftime("%d/%m/%Y"), log["calibrated"].strftime("%d/%m/%Y"),
              log["calibrated"].strftime("%H:%M:%S"), log["criterion"], log["exchange"],
              ("SLM", "FULL", "THIRD")[log["mode"]], log["tw"], log["fw"], "ON" if has_b else "OFF",
              log.get("twb", ""), log.get("fwb", ""), log.get("threshold", "0.0"), interval, 0,
              "ON" if log["lns"] else "OFF", *lns, start.strftime("%d/%m/%Y"), start.strftime("%H:%M:%S")]]
    for row in rows:
        fields = [row["start"].strftime("%H:%M:%S"), *row["leq"], *row["lmin"], *row["lmax"], row["peak"]]
        if log["mode"] == 0:
            row_lns = [v[0] for v in row["ln"]]
            fields += [row["dose"], row["lex"], row["le"], 0, 0, *row_lns, *[0] * (7 - len(row_lns))]
        if has_b:
            fields += [row["b"][k] for k in ("leq", "lmin", "lmax", "peak")]
        lines.append(fields + [int(row.get("ol", False))])
    count = len(BANDS[log["mode"]]) + 1
    leq = [energy_mean([r["leq"][b] for r in rows]) for b in range(count)]
    closing = ["stoplog", int(any(r.get("ol") for r in rows)), end.strftime("%d/%m/%Y"), end.strftime("%H:%M:%S"),
               *(round(x, 1) for x in leq), *(min(r["lmin"][b] for r in rows) for b in range(count)),
               *(max(r["lmax"][b] for r in rows) for b in range(count)), max(r["peak"] for r in rows)]
    if log["mode"] == 0:
        hours = len(rows) * interval / 3600
        figures_lns = [v[0] for v in log["ln_figures"]]
        closing += [round(dose(leq[0], 8, log), 1), round(dose(leq[0], hours, log), 1), round(exposure(leq[0], 8), 1),
                    round(exposure(leq[0], hours), 1), round(leq[0] + 10 * math.log10(hours * 3600), 1), 0, 0,
                    *figures_lns, *[0] * (7 - len(figures_lns))]
    os.makedirs(os.path.join(HERE, "old"), exist_ok=True)
    with open(os.path.join(HERE, "old", name), "w", encoding="ascii", newline="") as f:
        f.write("".join(",".join(map(str, line)) + ",\r\n" for line in [*lines, closing]))


def bottling_machine_log(rng):
    start = datetime(2019, 3, 7, 23, 40)
    lns = [10, 50, 90]
    log = new_log("bottling", start, 60, fwb="C", twb="Fast", threshold="70.0", lns=lns)
    whole = []
    for i in range(45):                                                         # the line starts up before midnight
        short = walk(rng, 72 if i < 8 else 88, 2, 60)
        whole += short
        row = broadband_row(rng, start + timedelta(minutes=i), 60, short, (11, 16), lns)
        second_channel(rng, row, 2.5, 0.4)
        row["ol"] = i == 21
        log["rows"].append(row)
    add_row_exposure(log)
    log["ln_figures"] = [[percentile(whole, n)] for n in lns]
    machine_log("bottling-night.log", log)


def fan_machine_log(rng):
    levels = [70, 74, 80, 79, 76, 72, 68, 63, 57, 50, 41]
    machine_log("extract-fan-octave.log", spectrum_log(rng, "fan", 1, datetime(2019, 5, 14, 10, 5), 10, 30,
                                                       lambda b, _: levels[b], 0.8))


# ---- project files and sound files ------------------------------------------------------------------------------

def write_old(name, text):
    os.makedirs(os.path.join(HERE, "old"), exist_ok=True)
    with open(os.path.join(HERE, "old", name), "w", encoding="cp1252", newline="") as f:
        f.write(text)


def tag(name, content):
    return f"<{name}>{content}</>\r\n"


def block(name, *content):
    return f"<{name}>\r\n{''.join(content)}</{name}>\r\n"


def day(when):
    return when.strftime("%d/%m/%Y")


def clock_text(when):
    return when.strftime("%H:%M:%S")


def word(on):
    return "True" if on else "False"


def band_tags(name, levels):
    if len(levels) == 1:
        return tag(name, level(levels[0]))
    return "".join(tag(f"{name}_{band}", level(x)) for band, x in enumerate(levels))


def project_row(row):
    out = tag("STARTDATE", day(row["start"])) + tag("STARTTIME", clock_text(row["start"]))
    out += band_tags("LEQA", row["leq"]) + band_tags("LMINA", row["lmin"]) + band_tags("LMAXA", row["lmax"])
    out += tag("PEAKA", level(row["peak"]))
    out += "".join(tag(f"LNA_{i}", level(v[0])) for i, v in enumerate(row["ln"], 1))
    for key, name in (("dose", "DOSEA"), ("lex", "LEXA"), ("le", "LEA"), ("pa2h", "PA2HA")):
        out += tag(name, level(row[key])) if key in row else ""
    out += tag("OVERA", word(row["ol"])) if "ol" in row else ""
    if "b" in row:
        out += "".join(tag(f"{k.upper()}B", level(row["b"][k])) for k in ("leq", "lmin", "lmax", "peak"))
    return block("LOGSAMPLE", out)


def project_log(log):
    rows = log["rows"]
    start, end = rows[0]["start"], rows[-1]["start"] + timedelta(seconds=log["interval"])
    hours = (end - start).total_seconds() / 3600
    count = len(BANDS[log["mode"]]) + 1
    mean = [single(energy_mean([r["leq"][b] for r in rows])) for b in range(count)]
    peak, peak_at = extreme(rows, "peak", "peaktm", max)
    low_at, high_at = extreme(rows, "lmin", "lmintm", min)[1], extreme(rows, "lmax", "lmaxtm", max)[1]
    out = tag("NAME", log["name"]) + tag("MODE", log["mode"])
    out += tag("LocationType", log["location"]) if log["mode"] == 0 else ""
    out += tag("SHIFTLENGTH", log["shift"]) + tag("CRITERION", log["criterion"]) + tag("EXCHANGE", log["exchange"])
    out += tag("LOGNOTE", log["note"]) + tag("FACTORYDATE", day(log["factory"]))
    out += tag("CALIBDATE", day(log["calibrated"])) + tag("CALIBTIME", clock_text(log["calibrated"]))
    out += tag("STARTDATE", day(start)) + tag("STARTTIME", clock_text(start))
    out += tag("ENDDATE", day(end)) + tag("ENDTIME", clock_text(end))
    out += tag("ISCHANNELBON", word("b" in rows[0])) + tag("ISLNNUMBERSON", word(log["lns"]))
    out += tag("ISLOGOVERLOADED", word(any(r.get("ol") for r in rows))) + tag("INTERVAL", log["interval"])
    out += tag("TIMEWEIGHTA", log["tw"]) + tag("FREQWEIGHTA", log["fw"]) + band_tags("LEQCUMA", mean)
    out += band_tags("LMINCUMA", [min(r["lmin"][b] for r in rows) for b in range(count)])
    out += band_tags("LMAXCUMA", [max(r["lmax"][b] for r in rows) for b in range(count)])
    out += tag("PEAKCUMA", level(peak))
    for name, when in (("LMIN", low_at), ("LMAX", high_at), ("PEAK", peak_at)):
        out += tag(f"{name}CUMDATEA", day(when)) + tag(f"{name}CUMTIMEA", clock_text(when))
    measured = dose(mean[0], hours, log)
    out += tag("DOSECUMA", level(measured)) + tag("LEXCUMA", level(exposure(mean[0], log["shift"])))
    out += tag("LECUMA", level(mean[0] + 10 * math.log10(hours * 3600)))
    out += tag("DOSEHOURA", level(measured / hours)) + tag("PA2HA", level(4e-10 * hours * 10 ** (mean[0] / 10)))
    out += "".join(tag(f"LNNUMBERA_{i}", n) for i, n in enumerate(log["lns"], 1))
    out += "".join(tag(f"LNCUMA_{i}", level(v[0])) for i, v in enumerate(log["ln_figures"], 1))
    if "b" in rows[0]:
        others = [r["b"] for r in rows]
        out += tag("TIMEWEIGHTB", log["twb"]) + tag("FREQWEIGHTB", log["fwb"])
        out += tag("LEQCUMB", level(energy_mean([r["leq"] for r in others])))
        out += tag("LMINCUMB", level(min(r["lmin"] for r in others)))
        out += tag("LMAXCUMB", level(max(r["lmax"] for r in others)))
        out += tag("PEAKCUMB", level(max(r["peak"] for r in others)))
    out += "".join(project_row(r) for r in rows)
    for criterion, exchange, when, note, leq, duration, included in log.get("table", []):
        out += block("DOSELOGSAMPLE", tag("DOSECRITERION", criterion), tag("DOSEEXCHANGE", exchange),
                     tag("DOSESAMPLEDATE", day(when)), tag("DOSESAMPLETIME", clock_text(when)), tag("DOSENOTE", note),
                     tag("DOSELEQ", level(leq)), tag("DOSEDURN", duration), tag("DOSEINC", word(included)))
    for when, seconds in log.get("peaks", []):
        out += block("PEAKSAMPLE", tag("PEAKTIME", clock_text(when)), tag("DURATION", level(seconds)))
    words = {"dose-hour": "DOSEHR", "overload": "NNO"}
    shown = [tag(f"PLOT-{words.get(name, name.upper())}-{a}-{b}", "True")
             for a in (1, 2) for b in (1, 2) for name in log["shown"][a, b]]
    return block("LOG", out, block("DISPLAY", *shown))


def stamping_project(rng):
    start = datetime(2003, 10, 14, 22, 30)
    lns = [10, 50, 90]
    log = new_log("Stamping, night", start, 60, fwb="C", twb="Fast", lns=lns, exchange=5, criterion=90,
                  note="Press 4, 630 t. Operator's right ear; <1 m from the die.")
    whole = []
    for i in range(120):
        short = walk(rng, 78 if 40 <= i < 55 else 93, 2.5, 60)
        whole += short
        row = broadband_row(rng, start + timedelta(minutes=i), 60, short, (14, 26), lns)
        second_channel(rng, row, 2.5, 0.4)
        row["ol"] = i == 97
        log["rows"].append(row)
    add_row_exposure(log)
    log["ln_figures"] = [[percentile(whole, n)] for n in lns]
    loud = sorted(log["rows"], key=lambda r: -r["peak"])[:3]
    log["peaks"] = [(r["peaktm"], single(rng.uniform(0.1, 0.9))) for r in sorted(loud, key=lambda r: r["peaktm"])]
    log["table"] = [(90, 5, start, "press", 93.2, "05:30:00", True),
                    (90, 5, start + timedelta(hours=6), "setting up", 81.5, "01:45:00", True)]
    log["shown"] = {(1, 1): LEVELS + ["lex", "dose", "dose-hour", "ln1", "ln2"], (1, 2): LEVELS + ["overload"],
                    (2, 1): ["leq"], (2, 2): ["leq"]}
    levels = [66, 72, 80, 85, 88, 90, 91, 89, 86, 81, 74]
    octave = spectrum_log(rng, "Press 4, die closed", 1, datetime(2003, 10, 15, 1, 10), 10, 40, lambda b, _: levels[b],
                          1.2)
    text = "".join(block("INSDATA", tag("NAME", "Body shop"), tag("INSNAME", name), tag("INSSERIAL", serial),
                         tag("INSTYPE", 0), project_log(log))
                   for name, serial, log in (("TR326", "A2207", log), ("Corvane 3", "C30118", octave)))
    write_old("stamping-night.zdp", text)


def report(lines):
    """Delimited text; a line of one text has an empty token behind it."""
    return "".join(",".join(f'"{x}"' if isinstance(x, str) and x else str(x) for x in line) + "\r\n"
                   for line in ([line, ""] if isinstance(line, str) else line for line in lines))


def report_head(log, mode, instrument, *figures):
    rows = log["rows"]
    start, end = rows[0]["start"], rows[-1]["start"] + timedelta(seconds=log["interval"])
    return ["Logged measurement", instrument, f"Exchange : {log['exchange']}", f"Criterion:{log['criterion']}",
            "Title:", log["name"], f"Mode: {mode}", f"Rows: {len(rows)}", start.strftime("Start: %H:%M on %d/%m/%Y"),
            end.strftime("End  : %H:%M on %d/%m/%Y"), "Channel: 1", f"Frequency weighting:{log['fw']}",
            f"Time weighting:{log['tw']}", "Whole measurement:", *figures]


def overall(log):
    rows = log["rows"]
    leq = energy_mean([r["leq"][0] for r in rows])
    return leq, leq + 10 * math.log10(len(rows) * log["interval"]), max(r["lmax"][0] for r in rows)


def sawmill_report(rng):
    start = datetime(1998, 4, 21, 23, 40)
    log = new_log("Edger, late shift", start, 60, tw="Slow")
    for i in range(60):
        row = broadband_row(rng, start + timedelta(minutes=i), 60, walk(rng, 91 if i % 15 < 11 else 79, 2, 60), (12, 18))
        log["rows"].append(row)
    leq, energy, high = overall(log)
    percent = dose(leq, 8, log)
    head = report_head(log, "IND", "TR32230417", f"Leq:{leq:.1f}", f"LAE:{energy:.1f}", f"Dose:{percent:.1f}%",
                       "Overload: no", f"Lmax:{high:.1f}",
                       ["at 00:12", f"Peak:{max(r['peak'] for r in log['rows']):.1f}"], "Rows:", "Levels in dB",
                       ["Time", "Leq", "LE", "Lmax", "Peak", "Over", ""])
    rows = [[r["start"].strftime("%H:%M"), r["leq"][0], round(r["leq"][0] + 17.8, 1), r["lmax"][0], r["peak"], 0, ""]
            for r in log["rows"]]
    write_old("sawmill-edger.csv", report(head + rows))


def quarry_report(rng):
    start = datetime(1999, 7, 2, 6, 0)
    log = new_log("Quarry, house 3", start, 300, location="ENV")
    whole = []
    for i in range(36):
        short = walk(rng, 58 if i in (20, 21) else 44, 3, 150)
        whole += short
        log["rows"].append(broadband_row(rng, start + timedelta(minutes=5 * i), 300, short, (10, 15), [10, 90]))
    leq, energy, high = overall(log)
    head = report_head(log, "ENV", "TR32418802", f"Leq:{leq:.1f}", f"LAE:{energy:.1f}", f"L10:{percentile(whole, 10)}",
                       "Overload: no", f"L90:{percentile(whole, 90)}", f"LAmax:{high:.1f}", "at 07:42",
                       f"LAmin:{min(r['lmin'][0] for r in log['rows']):.1f}", "at 06:21", ["Levels in dB"],
                       ["Time", "Leq", "LE", "Lmax", "Lmin", "L10", "L90", ""])
    rows = [[r["start"].strftime("%H:%M"), r["leq"][0], round(r["leq"][0] + 24.8, 1), r["lmax"][0], r["lmin"][0],
             r["ln"][0][0], r["ln"][1][0], ""] for r in log["rows"]]
    write_old("quarry-house.zdf", report(head + rows))


def octave_levels(rng, base):
    return [(label, round(x + rng.gauss(0, 1), 1)) for label, x in zip(OCTAVES[1:], base)]


def kiln_octave_report(rng):
    levels = octave_levels(rng, [78, 81, 84, 86, 85, 82, 78, 71, 63, 52])
    write_old("kiln-octave.zdo", report([["Instrument: TR352"], ["Octave bands", "Leq"], ["Time and date not set"],
                                         ["Burner, full load", "1 m", "Z"],
                                         *([f"{label} Hz: {x}"] for label, x in levels)]))


def old_meter_report(_):
    write_old("old-meter.csv", report([["TR340"], ["Time and date not set"]]))


def duct_sound_files(rng):
    for name, base in (("supply-duct.zd2", [71, 70, 66, 62, 57, 52, 46, 40, 33, 25]),
                       ("return-duct.zd4", [68, 69, 66, 60, 56, 50, 45, 38, 30, 22])):
        labels, levels = zip(*octave_levels(rng, base))
        write_old(name, report([["Octave bands"], list(labels), list(levels)]))


if __name__ == "__main__":
    for number, make in enumerate((shift_dosimeter, night_environment, machine_survey, third_octave,
                                   brevik_short_form, protector_ac, roadworks_selection,
                                   bottling_machine_log, fan_machine_log, stamping_project, sawmill_report,
                                   quarry_report, kiln_octave_report, old_meter_report, duct_sound_files)):
        make(random.Random(1000 + number))
