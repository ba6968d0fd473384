#!/usr/bin/env python3
"""The verbs of exposure by the standards, end to end over the samples: what the figures are is tested in the core.

Usage: assessment_verbs.py CLI SAMPLES
"""

import json
import math
import os
import shutil
import subprocess

from harness import SAMPLES, InAFolder, main, run, sample

SHIFT = sample("shift-dosimeter")


class AssessmentVerbs(InAFolder):
    def json(self, *words):
        status, out, err = run(*words)
        self.assertEqual((status, err), (0, ""), words)
        return json.loads(out)

    def test_the_samples_are_computed(self):
        group, = self.json("assess", os.path.join(SAMPLES, "welder-tasks.kxa"))["groups"]
        self.assertEqual((round(group["lex8h"], 1), round(group["U"], 1)), (84.3, 3.2))
        job, = self.json("assess", os.path.join(SAMPLES, "foundry-job.kxa"))["groups"]
        self.assertEqual([w["code"] for w in job["warnings"]], ["no-c-peak", "edition"])
        rows = self.json("show", SHIFT, "--intervals")["InstrumentDatas"][0]["Locations"][0]["LogIntervals"]["Items"][75:150]
        energies = [10 ** (row["LeqA"][0]["CalcValue"] / 10) for row in rows]
        self.assertAlmostEqual(job["sources"][1]["leq"], 10 * math.log10(sum(energies) / len(rows)), 6)

    def test_data_that_has_changed_or_gone_is_told(self):
        shutil.copy(SHIFT, "a.xml")
        shutil.copy(sample("protector-ac"), "b.xml")
        week = os.path.join(SAMPLES, "compressor-week.kxa")
        with open(week, encoding="utf-8") as file:
            assessment = json.load(file)
        samples = assessment["groups"][0]["tasks"][0]["samples"]
        samples[:] = [{"file": "b.xml", "log": "L1I1F1"}, {"file": "a.xml", "sha256": "0"}, {"file": "b.xml", "to": 60}]
        assessment["groups"][0]["protector"] = {"reduction_db": 20, "worn_percent": 50}

        def group():
            with open("a.json", "w", encoding="utf-8") as file:
                json.dump(assessment, file)
            return self.json("assess", "a.json")["groups"][0]

        found = group()
        self.assertIn("file-changed", [w["code"] for w in found["warnings"]])
        self.assertEqual([s["log"] for s in found["sources"]], ["L1I1F1"] * 3)
        self.assertEqual(len(found["week_actions"]), 6)
        os.remove("b.xml")
        gone = group()
        self.assertEqual((gone["lex8h"], gone["lexw"], gone["protected"]["verdict"]), (None, None, "none"))
        self.assertEqual([w["task"] for w in gone["warnings"] if w["code"] == "bad-value"], ["In the hall"])

    def test_the_report_says_what_the_groups_come_to_and_never_lies_over_data(self):
        self.assertEqual(run("assess", os.path.join(SAMPLES, "welder-tasks.kxa"), "--report", "out.pdf"), (0, "", ""))
        text = subprocess.run(["pdftotext", "-layout", "out.pdf", "-"], capture_output=True, check=True).stdout.decode()
        for words in ("Welding shop, day shift", "84.3 dB ± 3.2 dB", "ISO 9612:2009", "Cutting and grinding", "Signature", "Page 1 of 1"):
            self.assertIn(words, text)
        shutil.copy(SHIFT, "shift-dosimeter.xml")
        shutil.copy(os.path.join(SAMPLES, "foundry-job.kxa"), "job.kxa")
        for name in ("job.kxa", "shift-dosimeter.xml"):
            with open(name, "rb") as file:
                before = file.read()
            self.assertEqual(run("assess", "job.kxa", "--report", name)[0], 2)
            with open(name, "rb") as file:
                self.assertEqual(file.read(), before)

    def test_a_file_that_is_no_assessment_is_told_with_its_path(self):
        for text, told in (('{"schema": "kestrane-assessment/1", "groups": [{"name": 1}]}', "$.groups[0].name: "), ("{", "$: "),
                           ('{\n "title": \udcff}', "from line 2, column 11 on"), ('{"schema": 1e400}', "$: a number is too large"),
                           ('{"groups": [{"name": "a", "name": "b"}]}', "$: 'name' stands twice in one object"),
                           (None, "No such file")):
            if text:
                with open("bad.json", "w", encoding="utf-8", errors="surrogateescape") as file:
                    file.write(text)
            status, out, err = run("assess", "bad.json" if text else "none.json")
            self.assertEqual((status, out), (1, ""))
            self.assertIn(told, err)

    def test_criteria_of_several_files(self):
        status, out, _ = run("criteria", SHIFT, "none.xml", sample("machine-survey-octave"), "--own", "85,80,3")
        self.assertEqual(status, 1)
        first, second = map(json.loads, out.splitlines())
        self.assertEqual((first["Key"], second["Key"]), ("L1I1F1", "O1I1F1"))
        own, acgih = (next(c for c in first["Criteria"] if c["Name"] == name) for name in ("own", "acgih"))
        self.assertEqual(own["Dose"], acgih["Dose"])
        self.assertEqual(second["Criteria"][0]["Note"], "LAeq from bands")
        for words in ("85,80", "85,80,0", "0,80,3", "85,x,3", "85,1e400,3"):
            self.assertEqual(run("criteria", SHIFT, "--own", words)[0], 2, words)

    def test_protectors_by_the_standards(self):
        for mode, method in (("hse", "HML"), ("osha", "NRR OSHA 50 %")):
            ranked = self.json("protectors", "rank", sample("protector-ac"), "--mode", mode)
            order = ["good", "acceptable", "over-protected", "insufficient", "none"]
            places = [order.index(p["Verdict"]) for p in ranked]
            self.assertEqual(places, sorted(places))
            best = next(p for p in ranked if p["Method"] == method.split()[0])
            compared = self.json("protectors", "compare", sample("protector-ac"), "--mode", mode, "--protector", best["Name"])
            self.assertEqual((compared["Result"], compared["Verdict"]), (best["Result"], best["Verdict"]))
            self.assertIn((method, best["Standard"]), [(f["Method"], f["Level"]) for f in compared["Standard"]])


if __name__ == "__main__":
    main()
