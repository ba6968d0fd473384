#!/usr/bin/env python3
"""The verbs of kestrane-cli that talk to an instrument, over pseudo-terminals with a dosimeter at the other end.

Usage: download_verbs.py CLI
"""

import contextlib
import json
import os
import re
import select
import signal
import subprocess
import sys
import tempfile
import threading
import time
import tty
import unittest

CLI = os.path.abspath(sys.argv[1])
ASK_BINARY = b"\x02\x01\x00\x03"
BREVIK = b"\x02\x10\x00" + b"".join(n.to_bytes(4, "little") for n in (230, 0, 0, 4711)) + b"\x03"


def frame(payload):
    return b"\x02%04X" % len(payload) + payload + b"00\x03"


# Log 26 has three rows of ten minutes, log 27 is empty.
DOSIMETER = {
    frame(b"00"): frame(b"0042TR340"),
    frame(b"03"): frame(b"T-778"),
    frame(b"01"): frame(b"001A.........001B........."),
    frame(b"02001A00"): frame(b"000301F402BC00FA0258......000A0064............035201.25Z1732001F0C13"),
    frame(b"02001B00"): frame(b"0000"),
    frame(b"02001A01"): frame(b"00C800000064"),
    frame(b"02001A03"): frame(b"035203840000"),
}


class Instrument:
    """Answers questions on a pseudo-terminal; keeps what it was sent."""

    def __init__(self, answers):
        self.near, far = os.openpty()
        self.device = os.ttyname(far)
        tty.setraw(far)
        self.far = far
        self.answers = answers
        self.sent = b""
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.goes_on = True
        self.thread.start()

    def serve(self):
        while self.goes_on:
            if select.select([self.near], [], [], 0.05)[0]:
                question = os.read(self.near, 4096)
                self.sent += question
                os.write(self.near, self.answers.get(question, b""))

    def close(self):
        self.goes_on = False
        self.thread.join()
        os.close(self.near)
        os.close(self.far)


@contextlib.contextmanager
def instrument(answers):
    device = Instrument(answers)
    try:
        yield device
    finally:
        device.close()


def start(*words, **options):
    return subprocess.Popen([CLI, "--settings", "settings.ini", *words], stdout=subprocess.PIPE,
                            stderr=options.pop("stderr", subprocess.PIPE), **options)


def run(*words):
    process = start(*words)
    out, err = process.communicate(timeout=60)
    return process.returncode, out.decode(), err.decode()


class DownloadVerbs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)

    def test_ports_have_the_numbers_of_the_settings(self):
        with open("settings.ini", "w", encoding="utf-8") as settings:
            settings.write("[SerialPorts]\nCOM7=/dev/none\nCOM200=ttyX\n")
        status, out, err = run("ports")
        self.assertEqual((status, err), (0, ""))
        devices = {port["Number"]: port["Device"] for port in json.loads(out)}
        self.assertEqual((devices[7], devices[200]), ("/dev/none", "/dev/ttyX"))

    def test_identify_prints_what_answers(self):
        with instrument({ASK_BINARY: BREVIK}) as meter:
            status, out, err = run("identify", "--port", meter.device)
            self.assertEqual((status, err), (0, ""))
            self.assertEqual(json.loads(out), {"InsName": "Brevik SE", "InsSerial": "4711", "FirmwareVersion": 2.3,
                                               "InsType": 0, "Family": "Brevik"})
            status, out, err = run("sync-clock", "--port", meter.device)
            self.assertEqual((status, out), (1, ""))
            self.assertIn("TALLIX", err)
            self.assertEqual(meter.sent, ASK_BINARY * 2)

    def test_sync_clock_sends_the_time_given(self):
        with instrument(DOSIMETER) as meter:
            status, out, err = run("sync-clock", "--port", meter.device, "--now", "2024-11-26T16:18:53")
            self.assertEqual((status, out, err), (0, "", ""))
            time.sleep(0.2)
            self.assertTrue(meter.sent.endswith(b"\x02000E0416185326112400\x03"), meter.sent)

    def test_download_prints_and_saves_the_logs_chosen(self):
        with instrument(DOSIMETER) as meter:
            status, out, err = run("download", "--port", meter.device, "--logs", "1", "-o", "out.xml", "--intervals",
                                   "--transcript", "line.txt")
        self.assertEqual((status, err), (0, ""))
        data = json.loads(out)["InstrumentDatas"][0]
        self.assertEqual((data["InsName"], data["InsSerial"]), ("TR340", "T-778"))
        self.assertEqual([log["LogIntervals"]["Count"] for log in data["Locations"]], [3])
        shown = json.loads(run("show", "out.xml")[1])["InstrumentDatas"][0]
        self.assertEqual([log["Name"] for log in shown["Locations"]], ["Broadband 26"])
        self.assertNotIn(frame(b"02001B00"), meter.sent)
        with open("line.txt", encoding="ascii") as transcript:
            lines = transcript.read().splitlines()
        self.assertTrue(all(re.fullmatch(r"# .*|\+\d+\.\d{3} [<>] ([0-9A-F]{2})+", line) for line in lines), lines)
        sent = "".join(line.split()[2] for line in lines if " > " in line)
        self.assertEqual(bytes.fromhex(sent), meter.sent)

    def test_a_failure_writes_nothing(self):
        with instrument(DOSIMETER) as meter:
            status, out, err = run("download", "--port", meter.device, "--logs", "1,3", "-o", "out.xml")
        self.assertEqual((status, out), (1, ""))
        self.assertIn("no log 3", err)
        with open("file", "w", encoding="utf-8"):
            pass
        for device in ("none", "/dev/none", os.path.abspath("file")):
            status, out, err = run("download", "--port", device, "-o", "out.xml")
            self.assertEqual((status, out), (1, ""), device)
            self.assertIn("serial port", err)
        self.assertFalse(os.path.exists("out.xml"))

    def test_silence_behind_the_identification_asks_and_is_answered_cancel(self):
        with instrument({frame(b"00"): DOSIMETER[frame(b"00")]}) as meter:
            status, out, err = run("download", "--port", meter.device, "-o", "out.xml")
        self.assertEqual((status, out), (1, ""))
        self.assertEqual(err.count(" -> cancel\n"), 1)
        self.assertTrue(err.endswith("Download function aborted\n"), err)
        self.assertFalse(os.path.exists("out.xml"))

    def test_an_interrupt_is_cancel(self):
        with instrument({}) as meter:
            process = start("download", "--port", meter.device, "-o", "out.xml")
            time.sleep(1)
            process.send_signal(signal.SIGINT)
            begin = time.monotonic()
            out, err = process.communicate(timeout=10)
            self.assertLess(time.monotonic() - begin, 1.5)
            self.assertEqual((process.returncode, out), (1, b""))
            self.assertIn(b"Download function aborted", err)

    def test_progress_shows_on_a_terminal_alone(self):
        for words, shows in ((), True), (("--quiet",), False):
            with instrument({ASK_BINARY: BREVIK}) as meter:
                near, far = os.openpty()
                process = start(*words, "identify", "--port", meter.device, stderr=far)
                process.communicate(timeout=20)
                os.close(far)
                shown = b""
                with contextlib.suppress(OSError):  # the end of a terminal
                    while chunk := os.read(near, 4096):
                        shown += chunk
                os.close(near)
                self.assertEqual(b"Identifying Instrument..." in shown, shows, words)

    def test_wrong_words_end_with_2(self):
        for words in (["identify"], ["download"], ["download", "--port", "x", "--logs", "0"],
                      ["download", "--port", "x", "--logs", "1,,2"], ["download", "--port", "x", "--logs", "some"],
                      ["sync-clock", "--port", "x", "--now", "2024-02-30T00:00:00"],
                      ["sync-clock", "--port", "x", "--now", "2024-02-03 10:00"]):
            status, out, err = run(*words)
            self.assertEqual((status, out), (2, ""), words)
            self.assertTrue(err, words)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
