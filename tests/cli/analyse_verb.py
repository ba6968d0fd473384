#!/usr/bin/env python3
"""The verbs analyse and schema. What the figures are is tested in the core: here they are counted again from the rows
that show prints.

Usage: analyse_verb.py CLI SAMPLES
"""

import datetime
import json
import math
import os
import shutil

from harness import InAFolder, main, run, sample, validators

SHIFT = sample("shift-dosimeter")
OCTAVE = sample("machine-survey-octave")


def level(energies, seconds):
    return 10 * math.log10(sum(energies) / seconds)


class Analyse(InAFolder):
    def ask(self, *words, file=SHIFT, status=0):
        found, out, err = run("analyse", file, *words)
        self.assertEqual(found, status, err)
        return json.loads(out) if status == 0 else (out, err)

    def setUp(self):
        super().setUp()
        self.log, = json.loads(run("show", SHIFT, "--intervals")[1])["InstrumentDatas"][0]["Locations"]
        self.rows = self.log["LogIntervals"]["Items"]
        self.length = self.log["Interval"]
        self.energies = [10 ** (row["LeqA"][0]["CalcValue"] / 10) * self.length for row in self.rows]

    def begin(self, row):
        return datetime.datetime.strptime(row["StartDate"] + row["StartTime"], "%d/%m/%Y%H:%M:%S")

    def test_a_range_and_the_rest(self):
        found = self.ask("--range", "11-30")
        inside, outside = self.energies[10:30], self.energies[:10] + self.energies[30:]
        self.assertEqual((found["From"], found["To"], found["Seconds"]), (11, 30, 20 * self.length))
        self.assertEqual(found["Start"], self.begin(self.rows[10]).isoformat())
        self.assertEqual(found["End"], (self.begin(self.rows[29]) + datetime.timedelta(seconds=self.length)).isoformat())
        self.assertAlmostEqual(found["LAeq"], level(inside, found["Seconds"]), 5)
        self.assertAlmostEqual(found["LE"], 10 * math.log10(sum(inside)), 5)
        self.assertAlmostEqual(found["Rest"]["LAeq"], level(outside, found["Rest"]["Seconds"]), 5)
        self.assertEqual(found["Lmax"], max(row["LmaxA"][0]["CalcValue"] for row in self.rows[10:30]) or None)
        self.assertEqual(found["Peak"], max(row["PeakA"]["CalcValue"] for row in self.rows[10:30]) or None)
        dose = sum(100 / 8 / 3600 * self.length * 2 ** ((10 * math.log10(energy / self.length) - self.log["Criterion"]) /
                                                       self.log["Exchange"]) for energy in inside)
        self.assertAlmostEqual(found["Dose"], dose, 5)
        whole = self.ask("--range", f"1-{len(self.rows)}")
        self.assertEqual(whole["Rest"], {"Seconds": 0, "LAeq": None, "LE": None, "Dose": None})
        self.assertAlmostEqual(whole["Dose"], found["Dose"] + found["Rest"]["Dose"], 6)

    def test_the_worst_stretch_events_percentiles_and_classes(self):
        count = 10
        found = self.ask("--worst", str(count * self.length / 60))
        means = [level(self.energies[i:i + count], count * self.length) for i in range(len(self.rows) - count + 1)]
        for name, choose in (("Loudest", max), ("Quietest", min)):
            self.assertAlmostEqual(found[name]["LAeq"], choose(means), 5)
        self.assertEqual(self.ask("--worst", "100000")["Loudest"], {"From": None, "To": None, "Start": None, "LAeq": None})

        levels = [row["LeqA"][0]["CalcValue"] for row in self.rows]
        limit = sorted(levels)[len(levels) // 2]
        events = self.ask("--events", f"{limit},{2 * self.length}")
        self.assertTrue(events)
        for event in events:
            within = levels[event["From"] - 1:event["To"]]
            self.assertTrue(min(within) >= limit and len(within) >= 2)
            self.assertAlmostEqual(event["Share"], sum(self.energies[event["From"] - 1:event["To"]]) / sum(self.energies), 6)

        found = self.ask("--ln", "0,10,50.5,100")
        self.assertEqual(list(found), ["0", "10", "50.5", "100"])
        self.assertEqual((round(found["0"], 4), round(found["100"], 4)), (round(max(levels), 4), round(min(levels), 4)))

        classes = self.ask("--distribution", "0.5")
        self.assertAlmostEqual(sum(item["Share"] for item in classes), 1, 9)
        for item in classes:
            self.assertEqual(item["Above"], sum(value >= item["Level"] for value in levels) * self.length)

    def test_logs_beside_each_other(self):
        shutil.copy(OCTAVE, "a:b.xml")
        found = self.ask("--compare", SHIFT + ":L1I1F1", "a:b.xml", "a:b.xml:O1I1F1")
        first, same, octave, named = found["Logs"]
        self.assertEqual((first["Difference"], same, octave), (0, first, named))
        self.assertEqual((octave["Weighting"], "Weighting" in first), ("Z", False))
        self.assertEqual((octave["Difference"], found["Mean"]), (None, None), "an LZeq is no louder LAeq")
        found = self.ask("--compare", sample("protector-ac"))
        first, other = found["Logs"]
        self.assertAlmostEqual(other["Difference"], other["LAeq"] - first["LAeq"], 9)
        energy = sum(log["Seconds"] * 10 ** (log["LAeq"] / 10) for log in found["Logs"])
        self.assertAlmostEqual(found["Mean"], level([energy], sum(log["Seconds"] for log in found["Logs"])), 5)
        self.assertEqual(self.ask("--ln", "50", file=OCTAVE)["Weighting"], "Z")
        whole = self.ask("--range", "1-2", file=OCTAVE)
        self.assertLess(whole["LAeqFromBands"], whole["LAeq"], "there is more below 1 kHz than at 2 kHz")
        with open(OCTAVE, encoding="utf-8") as file:
            head, rows = file.read().split("<intvls>", 1)
        for level_of_row in ("", "<f>1E30</f>"):
            with open("odd.xml", "w", encoding="utf-8") as file:
                file.write(head + "<intvls>" + rows.replace("<f>78.4</f>", level_of_row, 1))
            odd = self.ask("--range", "1-2", file="odd.xml")
            self.assertEqual(odd["LAeqFromBands"], whole["LAeqFromBands"], "its bands count without the level over all")
            self.assertTrue(self.ask("--distribution", "1", file="odd.xml"))
        for words in (["--compare", "none.xml"], ["--compare", SHIFT + ":L9I9F9"], ["--log", "L9I9F9", "--ln", "5"]):
            self.ask(*words, status=1)

    def test_questions_that_cannot_be(self):
        for words in (["--range", "2-1"], ["--range", "0-1"], ["--range", f"1-{len(self.rows) + 1}"], ["--worst", "0"],
                      ["--worst", "-1"], ["--worst", "nan"], ["--events", "loud"], ["--events", "85,-1"], ["--events", "1e400"], ["--events", "1,2,3"],
                      ["--ln", "101"], ["--ln", "10,,20"], ["--distribution", "0"], ["--distribution", "1e-9"], [],
                      ["--ln", "10", "--worst", "5"]):
            out, err = self.ask(*words, status=2)
            self.assertTrue(out == "" and err, words)
        with open("none.xml", "w", encoding="utf-8") as file:
            file.write("<instruments><instrument-data><instrument-detail/><logs><log/></logs></instrument-data></instruments>")
        self.assertEqual(self.ask("--ln", "10", file="none.xml")["10"], None)
        self.assertEqual((self.ask("--events", "1", file="none.xml"), self.ask("--distribution", "1", file="none.xml")), ([], []))


class Schema(InAFolder):
    def test_every_verb_that_prints_json_has_one(self):
        for verb in validators():
            words = ["protectors", verb[11:]] if verb.startswith("protectors-") else [verb]
            alone = json.loads(run("schema", *words)[1])
            self.assertEqual(alone, validators()[verb].schema)
            self.assertEqual(run(*words, "--help")[0], 0)
        self.assertEqual(run("schema", "table")[0], 2)

    def test_a_schema_refuses_what_is_not_so(self):
        log = json.loads(run("recalc", SHIFT)[1])
        self.assertTrue(validators()["recalc"].is_valid(log))
        for wrong in ({**log, "New": 1}, {key: log[key] for key in log if key != "Name"}, {**log, "StartDate": "2024-11-26"},
                      {**log, "LeqCumA": [80.1]}):
            self.assertFalse(validators()["recalc"].is_valid(wrong))


if __name__ == "__main__":
    main()
