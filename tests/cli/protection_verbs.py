#!/usr/bin/env python3
"""The verbs of exposure, weighting and hearing protectors, the update against a server on the loopback.

Usage: protection_verbs.py CLI SAMPLES
"""

import http.server
import json
import os
import subprocess
import threading

from harness import CLI, InAFolder, main, run, sample

COMPRESSOR = sample("protector-ac")  # A and C at once
OCTAVES = sample("machine-survey-octave")


def record(name, snr=0, hml=None, octave=0):
    bands = ",".join([f"{octave},2"] * 8) if octave else ",".join(["0,0"] * 8)
    flagged = lambda values: ",".join(["1", *map(str, values)]) if any(values) else ",".join(["0"] * (len(values) + 1))
    return f"{name},1,{bands},{flagged(hml or [0, 0, 0])},{flagged([snr])},{','.join(['0,0'] * 8)},0,0\r\n"


DATABASE = record("Muff, large", snr=30, hml=[32, 25, 17]) + record("Octave", octave=20)


class Server(http.server.BaseHTTPRequestHandler):
    body = "".join(record(f"New {i}", snr=20 + i) for i in range(20)).encode()

    def do_GET(self):
        self.send_response(200 if self.path == "/db" else 404)
        self.send_header("Content-Length", str(len(self.body)))
        self.end_headers()
        self.wfile.write(self.body)

    def log_message(self, *_):
        pass


class ProtectionVerbs(InAFolder):
    def setUp(self):
        super().setUp()
        with open("db.txt", "w", encoding="utf-8", newline="") as file:
            file.write(DATABASE)

    def json(self, *words):
        status, out, err = run(*words)
        self.assertEqual(status, 0, err)
        return json.loads(out)

    def database(self, name="db.txt"):
        with open(name, encoding="utf-8", newline="") as file:
            return file.read()

    def serve(self):
        server = http.server.HTTPServer(("127.0.0.1", 0), Server)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}"

    def test_looking_protectors_up_creates_nothing_and_an_update_writes_to_the_users_folder(self):
        def run_at_home(*words):
            env = {**os.environ, "HOME": os.path.abspath("home"), "XDG_CONFIG_HOME": "relative", "XDG_DATA_HOME": "./relative"}
            return subprocess.run([CLI, "--answer", "ok", *words], capture_output=True, check=True, env=env).stdout

        os.mkdir("home")
        before = sorted(os.listdir("."))
        self.assertGreater(len(json.loads(run_at_home("protectors", "list"))), 2)
        run_at_home("protectors", "rank", COMPRESSOR)
        self.assertEqual((os.listdir("home"), sorted(os.listdir("."))), ([], before))
        run_at_home("protectors", "update", "--url", self.serve() + "/db")
        self.assertEqual(len(json.loads(run_at_home("protectors", "list"))), 20)
        self.assertTrue(os.path.exists("home/.local/share/kestrane/hpd_hml_db.txt"))

    def test_a_database_is_listed_and_saved_as_it_was(self):
        records = self.json("protectors", "list", "--database", "db.txt")
        self.assertEqual([(r["HPDId"], r["Name"], r["SNR"]) for r in records], [(1, "Muff, large", 30), (2, "Octave", 0)])
        self.assertEqual(run("protectors", "save", "--database", "db.txt", "-o", "out.txt")[0], 0)
        self.assertEqual(self.database("out.txt"), DATABASE)
        with open("db.txt", "a", encoding="utf-8", newline="") as file:
            file.write("\r\n" + DATABASE)
        damaged = self.database()
        for name, status in (("./db.txt", 1), ("out.txt", 0)):  # it has rows that are not read
            self.assertEqual(run("protectors", "save", "--database", "db.txt", "-o", name)[0], status)
        self.assertEqual((self.database(), self.database("out.txt")), (damaged, DATABASE))
        status, _, err = run("protectors", "list", "--database", "none.txt")
        self.assertEqual((status, err), (1, "Kestrane: File none.txt not found\n"))

    def test_a_log_is_compared_and_drawn(self):
        call = ["--protector", "Muff, large", "--database", "db.txt"]
        compared = self.json("protectors", "compare", COMPRESSOR, *call)
        self.assertEqual((compared["Method"], compared["LevelName"]), ("HML", "APL"))
        status, out, _ = run("chart", COMPRESSOR, "--tab", "5", "--values", *call)
        self.assertEqual((status, out.split("\r\n")[0]), (0, "\tLAeq\tLCeq\tAPL"))
        self.assertAlmostEqual(compared["Result"], float(out.split("\r\n")[1].split("\t")[-1]), 2)
        self.assertEqual(run("chart", OCTAVES, "--tab", "5", "-o", "out.png", "--log", "O1I1F1", "--protector",
                                      "Octave", "--database", "db.txt")[0], 0)
        with open("out.png", "rb") as file:
            self.assertEqual(file.read(4), b"\x89PNG")
        self.assertEqual(run("chart", COMPRESSOR, "--tab", "5", "--values")[0], 2)
        self.assertEqual(run("chart", COMPRESSOR, "--tab", "5", "--values", "--protector", "none",
                                      "--database", "db.txt")[0], 1)

    def test_an_update_replaces_the_database_or_leaves_it(self):
        address = self.serve()
        update = ["protectors", "update", "--database", "db.txt", "--url"]
        for words in ([*update, f"{address}/db"], ["--answer", "ok", *update, f"{address}/none"]):
            self.assertEqual(run(*words)[0], 1, words)
            self.assertEqual(self.database(), DATABASE)
        status, _, err = run("--answer", "ok", *update, f"{address}/db")
        self.assertEqual(status, 0, err)
        self.assertEqual(self.database().encode() + b"\r\n", Server.body)
        self.assertEqual(self.database("db.txt.bak"), DATABASE)

    def test_weighting_and_exposure(self):
        before = self.json("show", OCTAVES)["InstrumentDatas"][0]["Octaves"][0]
        after = self.json("weight", OCTAVES, "--to", "Z", "--log", "O1I1F1")
        self.assertEqual(after["FreqWeightA"], "Z")
        offset = {"A": 26.2, "C": 0.8, "Z": 0}[before["FreqWeightA"]]
        self.assertAlmostEqual(after["LeqCumA"][3]["CalcValue"] - before["LeqCumA"][3]["CalcValue"], offset, 3)  # 63 Hz
        day = self.json("exposure", COMPRESSOR)
        self.assertEqual(day["TotalDuration"], day["Rows"][0]["Duration"])
        self.assertEqual(day["TotalDose"], day["Rows"][0]["Dose"])


if __name__ == "__main__":
    main()
