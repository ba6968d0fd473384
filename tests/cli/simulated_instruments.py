#!/usr/bin/env python3
"""Downloads from kestrane-sim, over pseudo-terminals: every family and every fault, compared with the file it serves.

Usage: simulated_instruments.py CLI SIM SAMPLES

An exchange that ends by silence takes 1.5 s, so all calls run at once and the tests look at what came of them.
"""

import concurrent.futures
import contextlib
import functools
import json
import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree as ElementTree

from harness import check_output

CLI, SIM, SAMPLES = (os.path.abspath(path) for path in sys.argv[1:4])
FOLDER = tempfile.TemporaryDirectory()
PATIENCE = 120  # seconds, for one call on a machine with other work
OCTAVES = ["31.5", "63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"]


def sample(name):
    return os.path.join(SAMPLES, name + ".xml")


def in_folder(name):
    return os.path.join(FOLDER.name, name)


def joined(name, *samples):
    """A data file with the collections of several."""
    root = ElementTree.Element("instruments")
    for part in samples:
        root.extend(ElementTree.parse(sample(part)).getroot())
    ElementTree.ElementTree(root).write(in_folder(name), encoding="ascii", xml_declaration=True)
    return in_folder(name)


class Simulator:
    def __init__(self, *words, speed="0"):
        self.process = subprocess.Popen([SIM, *words, "--speed", speed], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        text=True)
        self.device = self.process.stdout.readline().strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.said = self.process.communicate(timeout=PATIENCE)[1]
        assert self.process.returncode == 0, self.said


class Call:
    """What came of one call of the program against one simulated instrument."""

    def __init__(self, verb, words, more=(), interrupt_after=None, settings="settings.ini"):
        with Simulator(*words) as simulator:
            self.began = time.monotonic()
            process = subprocess.Popen([CLI, "--settings", in_folder(settings), "--decimal-separator", ".", *verb,
                                        "--port", simulator.device, *more],
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            try:
                if interrupt_after is not None:
                    time.sleep(interrupt_after)
                    process.send_signal(signal.SIGINT)
                    self.began = time.monotonic()
                self.output, self.errors = process.communicate(timeout=PATIENCE)
            finally:
                process.kill()
            self.seconds = time.monotonic() - self.began
            self.status = process.returncode
        self.told = simulator.said
        check_output(verb, self.output)

    @functools.cached_property
    def document(self):
        assert self.status == 0, (self.status, self.errors)
        return json.loads(self.output)


def family(name, file, *more):
    return ["--family", name, "--from", file, *more]


BOTH_KINDS = joined("both.xml", "roadworks-selection", "shift-dosimeter", "machine-survey-octave")
SPECTRA = joined("spectra.xml", "protector-ac", "machine-survey-octave", "third-octave-2000")
with open(in_folder("empty.xml"), "w", encoding="ascii") as empty_file:
    empty_file.write("<?xml version=\"1.0\"?><instruments></instruments>")

INSTRUMENTS = {
    "brevik": family("brevik", sample("brevik-short-form")),
    "brevik-early": family("brevik-early", sample("brevik-short-form")),
    "halcyr": family("halcyr", sample("shift-dosimeter")),
    "halcyr-early": family("halcyr-early", sample("night-environment"), "--model", "TR312E"),
    "merrowan": family("merrowan", BOTH_KINDS),
    "tallix": family("tallix", sample("shift-dosimeter")),
    "tallix-meter": family("tallix", sample("shift-dosimeter"), "--model", "TR310"),
    "corvane": family("corvane", SPECTRA),
}
DOWNLOAD = ["download", "--intervals"]
BREVIK, TALLIX, CORVANE = (INSTRUMENTS[name] for name in ("brevik", "tallix", "corvane"))
FAULTS = {
    "silence": (BREVIK, "silence"),
    "silence behind the list": (TALLIX, "silence=3"),
    "error in a log": (INSTRUMENTS["merrowan"], "error=4"),
    "echo": (TALLIX, "echo"),
    "split": (BREVIK, "split"),
    "split text": (CORVANE, "split"),
    "cut": (CORVANE, "cut=500"),
    "cut in a frame": (TALLIX, "cut=90"),
}

TWO_LOGS = family("brevik", joined("two.xml", "brevik-short-form", "brevik-short-form"))


def plugged_in_again():
    """Downloads from an instrument that hangs up in its second log; another one takes its place on the line."""
    line = in_folder("line")
    with Simulator(*TWO_LOGS, "--fault", "hangup=12000") as first:
        os.symlink(first.device, line)
        process = subprocess.Popen([CLI, "--settings", in_folder("line.ini"), "--decimal-separator", ".", "--answer", "retry",
                                    *DOWNLOAD, "--port", line], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        told = process.stderr.readline()
    with Simulator(*TWO_LOGS) as second:
        os.remove(line)
        os.symlink(second.device, line)
        return told, process.communicate(timeout=PATIENCE)[0]


CALLS = {}
with concurrent.futures.ThreadPoolExecutor(max_workers=64) as pool:
    for key, instrument in INSTRUMENTS.items():
        CALLS["download", key] = pool.submit(Call, DOWNLOAD, instrument, more=["-o", in_folder(key + ".xml")])
    for key, (instrument, fault) in FAULTS.items():
        CALLS["fault", key] = pool.submit(Call, DOWNLOAD, [*instrument, "--fault", fault])
    CALLS["interrupt"] = pool.submit(Call, DOWNLOAD, [*BREVIK, "--fault", "cut=1000"], interrupt_after=6)
    CALLS["identify"] = pool.submit(Call, ["identify"], CORVANE)
    CALLS["empty"] = pool.submit(Call, ["identify"], family("corvane", in_folder("empty.xml")))
    CALLS["two logs"] = pool.submit(Call, DOWNLOAD, TWO_LOGS)
    CALLS["plugged in again"] = pool.submit(plugged_in_again)
    CALLS["clock"] = pool.submit(Call, ["sync-clock"], TALLIX, more=["--now", "2024-11-26T13:05:07"])
    CALLS["no clock"] = pool.submit(Call, ["sync-clock"], BREVIK)
    CALLS["rows"] = pool.submit(Call, ["download"], CORVANE, more=["--logs", "2,4", "-o", in_folder("rows.xml")])
    CALLS["no such log"] = pool.submit(Call, ["download"], CORVANE, more=["--logs", "1,99", "-o", in_folder("none.xml")])
    CALLS["recorded text"] = pool.submit(Call, DOWNLOAD, CORVANE, more=["--transcript", in_folder("text transcript")])
    CALLS["recorded"] = pool.submit(Call, DOWNLOAD, BREVIK, more=["--transcript", in_folder("transcript")])
CALLS = {key: future.result() for key, future in CALLS.items()}


@functools.cache
def parsed(file):
    return ElementTree.parse(file)


def logs_of(node, mode):
    return [log for log in node.iter("log") if int(log.findtext("md") or 0) == mode]


def figure(node, path):
    """A figure of the source, 0 when it has none; bands under "f", or the overall figure alone in the short form."""
    for way in (path + "/f", path):
        text = (node.findtext(way) or "").strip()
        if text:
            return float(text)
    return 0.0


class Comparison(unittest.TestCase):
    maxDiff = None

    def same(self, pairs, tolerance, what):
        for name, (found, expected) in pairs.items():
            self.assertAlmostEqual(found, expected, delta=tolerance, msg=f"{what}: {name}")

    def header(self, log, node, *names):
        texts = {"StartDate": "sdt", "StartTime": "stm", "EndDate": "edt", "EndTime": "etm", "CalibDate": "cdt",
                 "CalibTime": "ctm", "FactoryCalibDate": "fdt"}
        for name in names or texts:
            self.assertEqual(log[name], node.findtext(texts[name]), name)

    def rows(self, log, node, figures, tolerance):
        """figures: the member of a downloaded row and the path of the same figure in the source."""
        rows, expected = log["LogIntervals"]["Items"], node.findall("intvls/intvl")
        self.assertEqual(len(rows), len(expected))
        for number, (row, source) in enumerate(zip(rows, expected), 1):
            self.assertEqual((row["StartDate"], row["StartTime"]),
                             (source.findtext("date"), source.findtext("time") or "00:00:00"), f"row {number}")
            self.same({name: (first(member(row, name))["Value"], figure(source, path)) for name, path in
                       figures.items()}, tolerance, f"row {number}")

    def cumulative(self, log, node, figures, tolerance):
        self.same({name: (first(member(log, name))["Value"], figure(node, path)) for name, path in figures.items()},
                  tolerance, "log")


def member(holder, name):
    """"LnA1" is the first of the array "LnA"."""
    return holder[name[:-1]][int(name[-1]) - 1] if name[-1].isdigit() else holder[name]


def first(value):
    return value[0] if isinstance(value, list) else value


def leaves(value, path=()):
    """Each single value and the path to it; of a figure the one that is shown, since a file keeps no other."""
    if isinstance(value, dict):
        value = value.get("CalcValue", value.items())
    elif isinstance(value, list):
        value = enumerate(value)
    if isinstance(value, (int, float, str)):
        yield path, value
    else:
        for name, part in value:
            yield from leaves(part, (*path, name))


def member_of(path):
    """The member of a log, or the parameter of a display flag; of a collection the member itself."""
    return path[4] if "Plottable" in path or "IsPlotted" in path else path[min(3, len(path) - 1)]


# What a data file has no place for: instruments, members and parameters, and why.
NOT_HELD = [
    (" ".join(INSTRUMENTS), "TWACumA eTWA", "has no element: the next recalculation derives it from the exposure dose"),
    ("brevik", "LepdMTCumA DoseETCumA LepdETCumB LepdMTCumB DoseETCumB DoseMTCumB DoseHourB SELCumB Pa2hCumB "
               "eLepdET eLepdMT eDoseET eDoseMT eDoseHour eLe_Sel ePa2Hr", "the short form has no elements for them"),
    ("merrowan tallix tallix-meter", "Number", "has no element: it is for the instrument's own list"),
    ("merrowan", "OctaveType", "has no element"),
    ("halcyr", "LnNumberA IsLnNumbersOn", "the number is an attribute of levels, and there are none"),
    ("halcyr merrowan", "eLn1 eLn2", "an Ln without a number is not shown"),
    ("merrowan", "eLn3 eLn4 eLn5 eLn6 eLn7 eLn8 eLn9 eLn10", "an Ln without a number is not shown"),
    ("halcyr", "FreqWeightB", "stands among the figures of channel B, which is off"),
    ("halcyr-early", "DoseMTCumB eDoseMT", "the reader gives no exposure to channel B of the family"),
    ("corvane", "SaveDoseCalc", "told by the rows of the exposure calculator, and there are none"),
]


class Downloads(Comparison):
    def downloaded(self, key, count, collection="Locations"):
        document = CALLS["download", key].document
        self.assertEqual(len(document["InstrumentDatas"]), 1)
        logs = document["InstrumentDatas"][0][collection]
        self.assertEqual(len(logs), count)
        return logs

    def source(self, key, mode=0):
        return logs_of(parsed(INSTRUMENTS[key][3]), mode)

    def test_binary_families(self):
        for key in ("brevik", "brevik-early", "halcyr", "halcyr-early"):
            log, node = self.downloaded(key, 1)[0], self.source(key)[0]
            self.rows(log, node, {"LeqA": "ca/leq", "LmaxA": "ca/lmax", "SELA": "ca/le", "LepdA": "ca/lex"}, 0.0051)
            self.header(log, node)
            self.cumulative(log, node, {"LeqCumA": "ca/leq"}, 0.0051)

    def test_a_saved_download_opens_as_it_was(self):
        with open(in_folder("as-saved.ini"), "w", encoding="ascii") as settings:
            settings.write("[Preferences]\nCalcFileOpen=False\n")
        for key in INSTRUMENTS:
            shown = subprocess.run([CLI, "--settings", in_folder("as-saved.ini"), "show", in_folder(key + ".xml"), "--intervals"],
                                   capture_output=True, check=True, timeout=PATIENCE)
            saved, opened = (dict(leaves(document["InstrumentDatas"])) for document in
                             (CALLS["download", key].document, json.loads(shown.stdout)))
            different = {member_of(path) for path in saved.keys() | opened.keys() if saved.get(path) != opened.get(path)}
            self.assertEqual(different, {name for keys, names, _ in NOT_HELD if key in keys.split() for name in names.split()}, key)

    TENTH = 0.0501

    def test_merrowan(self):
        road, shift = self.downloaded("merrowan", 2)
        road_node, shift_node = self.source("merrowan")
        self.rows(road, road_node, {"LeqA": "ca/leq", "LmaxA": "ca/lmax", "LminA": "ca/lmin", "LnA1": "ca/ln1",
                                    "LnA2": "ca/ln2"}, self.TENTH)
        self.cumulative(road, road_node, {"LeqCumA": "ca/leq", "LmaxCumA": "ca/lmax", "LminCumA": "ca/lmin",
                                          "LnCumA1": "ca/ln1", "LnCumA2": "ca/ln2", "SELCumA": "ca/le"}, self.TENTH)
        self.assertEqual((road["LocationType"], road["Criterion"], road["Exchange"]), ("ENV", 90, 5))
        self.rows(shift, shift_node, {"LeqA": "ca/leq", "LmaxA": "ca/lmax", "DoseA": "ca/dose", "PeakA": "ca/peak"},
                  self.TENTH)
        self.cumulative(shift, shift_node, {"LeqCumA": "ca/leq", "LmaxCumA": "ca/lmax", "PeakCumA": "ca/peak",
                                            "DoseETCumA": "ca/edose", "SELCumA": "ca/le"}, self.TENTH)
        self.assertEqual((shift["LocationType"], shift["Criterion"], shift["Exchange"], shift["TimeWeightA"]),
                         ("IND", 85, 3, "Slow"))
        for log, node in ((road, road_node), (shift, shift_node)):
            self.header(log, node, "StartDate", "StartTime", "EndDate", "EndTime")
            self.assertEqual(log["LmaxCumTimeA"], node.findtext("ca/lmaxtm"))
        row, source = shift["LogIntervals"]["Items"][7], shift_node.findall("intvls/intvl")[7]
        self.assertEqual((row["LmaxTimeA"], row["PeakTimeA"]),
                         (source.findtext("ca/lmaxtm"), source.findtext("ca/peaktm")))

    def test_merrowan_octaves(self):
        for log, node in zip(self.downloaded("merrowan", 5, "Octaves"), self.source("merrowan", 1)):
            self.same({band: (log["LeqCumA"][2 + i]["Value"], float(node.findtext("ca/leq/f" + band.upper())))
                       for i, band in enumerate(OCTAVES)}, self.TENTH, node.get("name"))
            self.header(log, node, "StartDate", "StartTime")
            self.assertEqual((log["FreqWeightA"], log["TimeWeightA"]), ("Z", "Fast"))

    def test_tallix(self):
        for key in ("tallix", "tallix-meter"):
            log, node = self.downloaded(key, 1)[0], self.source(key)[0]
            rows = {"DoseA": "ca/dose"} if key == "tallix" else {"DoseA": "ca/dose", "LeqA": "ca/leq"}
            self.rows(log, node, rows, self.TENTH)
            self.header(log, node, "StartDate", "StartTime")
            self.cumulative(log, node, {"LeqCumA": "ca/leq", "DoseETCumA": "ca/edose", "LepdETCumA": "ca/lex",
                                        "DoseMTCumA": "ca/dose", "DoseHourA": "ca/dh"}, self.TENTH)
            self.assertEqual((log["Criterion"], log["Interval"], log["FreqWeightA"]), (85, 60, "A"))
            self.assertTrue(log["IsLoggingOverLoaded"])

    def test_corvane(self):
        for collection, mode, count in (("Locations", 0, 1), ("Octaves", 1, 5), ("ThirdOctaves", 2, 1)):
            for log, node in zip(self.downloaded("corvane", count, collection), self.source("corvane", mode)):
                self.assertEqual(log["Name"], node.get("name"))
                self.rows(log, node, {"LeqA": "ca/leq", "LminA": "ca/lmin", "LmaxA": "ca/lmax", "PeakA": "ca/peak"},
                          1e-4)
                self.cumulative(log, node, {"LeqCumA": "ca/leq", "PeakCumA": "ca/peak"}, 1e-4)
                self.header(log, node)
        band = self.downloaded("corvane", 1, "ThirdOctaves")[0]["LogIntervals"]["Items"][1999]["LmaxA"][33]["Value"]
        self.assertAlmostEqual(band, float(self.source("corvane", 2)[0].findall("intvls/intvl")[1999]
                                           .findtext("ca/lmax/f20K")), delta=1e-4)
        log, node = self.downloaded("corvane", 1)[0], self.source("corvane")[0]
        self.rows(log, node, {"DoseA": "ca/dose", "LepdA": "ca/lex", "SELA": "ca/le"}, 1e-4)
        self.cumulative(log, node, {"DoseETCumA": "ca/edose", "DoseMTCumA": "ca/dose", "LepdETCumA": "ca/lex",
                                    "LepdMTCumA": "ca/mlex", "SELCumA": "ca/le"}, 1e-4)
        b = self.downloaded("corvane", 1)[0]["LogIntervals"]["Items"][5]["PeakB"]["Value"]
        self.assertAlmostEqual(b, float(self.source("corvane")[0].findall("intvls/intvl")[5].findtext("cb/peak")),
                               delta=1e-4)

    def test_rows_chosen(self):
        document = CALLS["rows"].document
        names = [log["Name"] for kind in ("Locations", "Octaves", "ThirdOctaves")
                 for log in document["InstrumentDatas"][0][kind]]
        expected = [log.get("name") for mode in (0, 1, 2) for log in logs_of(ElementTree.parse(SPECTRA), mode)]
        self.assertEqual(names, [expected[1], expected[3]])
        self.assertEqual(len(list(ElementTree.parse(in_folder("rows.xml")).iter("log"))), 2)

    def test_identity(self):
        answer = CALLS["identify"].document
        self.assertEqual((answer["InsName"], answer["InsSerial"], answer["Family"]), ("Corvane 5", "A4471", "Corvane"))


NO_ANSWER, ERROR, ABORTED, NO_LOGS = ("is not responding", "Error Downloading Data", "Download function aborted",
                                      "No log files exist on this instrument")


class Faults(unittest.TestCase):
    def ends(self, key, text, status=1):
        call = CALLS["fault", key]
        self.assertEqual((call.status, call.output), (status, ""), key + ": " + call.errors)
        self.assertIn(text, call.errors, key)

    def test_no_answer(self):
        self.ends("silence", NO_ANSWER)
        self.ends("echo", NO_ANSWER)

    def test_error(self):
        self.ends("error in a log", ERROR)

    def test_silence_later(self):
        for key in ("silence behind the list", "cut"):
            self.assertIn("Try again?", CALLS["fault", key].errors, key)
            self.ends(key, ABORTED)
        self.ends("cut in a frame", ERROR)  # what came of the frame is a reply

    def test_split(self):
        for key, plain in (("split", "brevik"), ("split text", "corvane")):
            self.assertEqual(CALLS["fault", key].document["InstrumentDatas"],
                             CALLS["download", plain].document["InstrumentDatas"])

    def test_plugged_in_again(self):
        told, output = CALLS["plugged in again"]
        self.assertIn("went away: it was unplugged, or the other end hung up. -> retry", told)
        self.assertEqual(json.loads(output)["InstrumentDatas"], CALLS["two logs"].document["InstrumentDatas"])

    def test_interrupt(self):
        call = CALLS["interrupt"]
        self.assertEqual((call.status, call.output), (1, ""))
        self.assertIn(ABORTED, call.errors)
        self.assertLess(call.seconds, 5)

    def test_no_logs(self):
        self.assertEqual(CALLS["empty"].status, 1)
        self.assertIn(NO_LOGS, CALLS["empty"].errors)

    def test_a_log_that_is_not_there(self):
        call = CALLS["no such log"]
        self.assertEqual((call.status, call.output, os.path.exists(in_folder("none.xml"))), (1, "", False))
        self.assertIn("no log 99", call.errors)

    def test_clock(self):
        self.assertEqual(CALLS["clock"].status, 0, CALLS["clock"].errors)
        self.assertEqual(CALLS["clock"].told, "clock 130507261124\n")
        self.assertEqual(CALLS["no clock"].status, 1)
        self.assertIn("can only synchronize the clock", CALLS["no clock"].errors)

    def test_a_transcript_is_an_instrument(self):
        again = Call(DOWNLOAD, ["--replay", in_folder("transcript")])
        self.assertEqual(again.document["InstrumentDatas"], CALLS["recorded"].document["InstrumentDatas"])

    def test_logs_that_are_whole_are_read_out_of_a_transcript(self):
        for transcript, key in (("transcript", "recorded"), ("text transcript", "recorded text")):
            resumed = subprocess.run([CLI, "--settings", in_folder("settings.ini"), "--decimal-separator", ".", *DOWNLOAD,
                                      "--resume", in_folder(transcript)], capture_output=True, check=True, timeout=PATIENCE)
            self.assertEqual(json.loads(resumed.stdout)["InstrumentDatas"], CALLS[key].document["InstrumentDatas"])


class Progress(unittest.TestCase):
    def test_shows_on_a_terminal_unless_it_is_to_be_quiet(self):
        for words, shows in ((), True), (("--quiet",), False):
            with Simulator(*TALLIX, speed="2400") as simulator:
                near, far = os.openpty()
                subprocess.run([CLI, "--settings", in_folder("settings.ini"), *words, "identify", "--port", simulator.device],
                               stdout=subprocess.DEVNULL, stderr=far, check=True, timeout=PATIENCE)
            os.close(far)
            shown = b""
            with contextlib.suppress(OSError):  # the end of a terminal
                while chunk := os.read(near, 4096):
                    shown += chunk
            os.close(near)
            self.assertEqual(b"Identifying Instrument..." in shown, shows, words)


class TheSimulator(unittest.TestCase):
    def test_words(self):
        for words, status in ((["--family", "brevik"], 2), (["--family", "none", "--from", "a"], 2), ([], 2),
                              (["--family", "tallix", "--from", in_folder("none.xml")], 1),
                              (["--family", "tallix", "--from", sample("shift-dosimeter"), "--model", "TR999"], 2),
                              (["--replay", in_folder("none")], 1),
                              (["--family", "tallix", "--from", sample("shift-dosimeter"), "--fault", "cut="], 2)):
            result = subprocess.run([SIM, *words], capture_output=True, check=False, timeout=PATIENCE)
            self.assertEqual((result.returncode, result.stdout), (status, b""), words)
            self.assertTrue(result.stderr, words)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
