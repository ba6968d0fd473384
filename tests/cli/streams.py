#!/usr/bin/env python3
"""Files and streams of kestrane-cli: standard input and output, pipes, several files, outputs in a folder, messages as
JSON, and what becomes of words that are nearly right.

Usage: streams.py CLI KESTRANE SIM SAMPLES
"""

import json
import os
import shutil
import subprocess
import sys

from harness import CLI, SAMPLES, InAFolder, main, run, sample

DOSIMETER = sample("shift-dosimeter")
LONG = sample("third-octave-2000")
PROGRAMS = sys.argv[2:-1]


def read(name):
    with open(name, "rb") as file:
        return file.read()


def in_a_shell(line):
    result = subprocess.run(["bash", "-c", line], capture_output=True, check=False,
                            env={**os.environ, "K": CLI + " --settings settings.ini", "F": DOSIMETER, "LC_ALL": "C"})
    return result.returncode, result.stdout, result.stderr.decode()


class Streams(InAFolder):
    def test_a_document_comes_from_any_stream(self):
        shown = json.loads(run("show", DOSIMETER, "--intervals")[1])
        for line in ("cat $F | $K show - --intervals", "$K show - --intervals < $F", "cat $F | $K show /dev/stdin --intervals",
                     "$K show <(cat $F) --intervals", "mkfifo p; cat $F > p & $K show p --intervals",
                     "(sleep 0.3; head -c 5000 $F; sleep 0.3; tail -c +5001 $F) | $K show - --intervals"):
            status, out, err = in_a_shell(line)
            self.assertEqual((status, err), (0, ""), line)
            found = json.loads(out)
            for key in ("FileName", "ShortenedFileName"):
                found[key] = shown[key]
            self.assertEqual(found, shown, line)
        old = os.path.join(SAMPLES, "old")
        for name in os.listdir(old):     # read once, by whichever loader
            result = subprocess.run(["bash", "-c", f"cat '{os.path.join(old, name)}' | '{CLI}' show -"], capture_output=True,
                                    check=False)
            self.assertEqual(result.returncode, 0, name)
        for line in ("$K show - </dev/null", "echo '<a' | $K show -", "$K show - <&-"):
            status, out, err = in_a_shell(line)
            self.assertEqual((status, out), (1, b""), line)
            self.assertTrue(err.startswith("Kestrane: "), line)

    def test_an_output_goes_to_any_stream_and_alone(self):
        self.assertEqual(run("save", DOSIMETER, "-o", "out.xml")[0], 0)
        saved = read("out.xml")
        for line in ("$K save $F -o -", "$K save - -o - < $F | cat", "$K recalc $F --mode 1 -o - | cat", "$K save $F -o /dev/stdout",
                     "$K save $F -o >(cat > c) > /dev/null; wait $!; cat c", "$K save $F -o /dev/fd/3 3>&1 >/dev/null", "$K save $F -o - > a; cat a",
                     "echo -n > b; $K save $F -o - >> b; cat b", "mkfifo q; cat q & $K save $F -o q > /dev/null; wait"):
            status, out, err = in_a_shell(line)
            self.assertEqual((status, err), (0, ""), line)
            if "recalc" in line:
                self.assertTrue(out.startswith(b"<?xml") and out.endswith(b">\n"), line)
            else:
                self.assertEqual(out, saved, line)
        self.assertTrue(in_a_shell("$K report $F -o -")[1].startswith(b"%PDF-"))
        self.assertTrue(in_a_shell("$K chart $F --tab 0 -o - | cat")[1].startswith(b"\x89PNG"))
        self.assertEqual(in_a_shell("test -p q && rm q && mkfifo q && (cat q > /dev/null & $K save $F -o q > a; test -p q)")[0], 0)

    def test_an_assessment_that_is_piped_in_is_relative_to_the_folder(self):
        shutil.copy(DOSIMETER, "a.xml")
        assessment = {"schema": "kestrane-assessment/1", "groups": [
            {"name": "g", "strategy": "full-day", "instrument": "class1", "samples": [{"file": "a.xml"}] * 3}]}
        with open("a.json", "w", encoding="utf-8") as file:
            json.dump(assessment, file)
        known = run("assess", "a.json")[1]
        self.assertIsNotNone(json.loads(known)["groups"][0]["lex8h"])
        for line in ("$K assess - < a.json", "cat a.json | $K assess -", "$K assess <(cat a.json)"):
            self.assertEqual(in_a_shell(line)[1].decode(), known, line)

    def test_a_reader_that_goes_and_a_full_disk_are_told(self):
        for line, told in (("$K show $F --intervals | true; exit ${PIPESTATUS[0]}", "Broken pipe"),
                           ("$K show $F > /dev/full", "No space left"), ("$K table $F > /dev/full", "No space left"),
                           ("$K --help > /dev/full", "No space left"), ("$K save $F -o /dev/full", "No space left"),
                           ("$K save $F -o - > /dev/full", "No space left"), ("$K report $F -o /dev/full", "No space left"),
                           ("$K show $F >&-", "Bad file descriptor"), ("$K save $F -o - >&-", "Bad file descriptor")):
            status, _, err = in_a_shell(line)
            self.assertEqual(status, 1, line)
            self.assertIn(told, err, line)

    def test_several_files_are_a_line_each(self):
        shutil.copy(DOSIMETER, "a.xml")
        shutil.copy(LONG, "b.xml")
        for words in (["show"], ["panel"], ["criteria"], ["show", "--intervals"]):
            status, out, err = run(*words, "a.xml", "none.xml", "b.xml")
            self.assertEqual((status, err.count("\n"), "none.xml" in err), (1, 1, True), words)
            lines = [json.loads(line) for line in out.splitlines()]
            self.assertEqual([os.path.basename(line["FileName"]) for line in lines], ["a.xml", "b.xml"], words)
            for name, line in zip(("a.xml", "b.xml"), lines):     # as if it were alone
                alone = json.loads(run(*words, name)[1])
                self.assertEqual({**alone, "FileName": line["FileName"]}, line)
        with open("torn.xml", "wb") as file:
            file.write(b"<instruments>")
        status, out, err = run("tree", "a.xml", "torn.xml", "b.xml")
        self.assertEqual((status, len(json.loads(out)), err.splitlines()[1:]), (1, 2, ["torn.xml"]))
        self.assertEqual([json.loads(line)["Key"] for line in run("criteria", "a.xml", "a.xml", "--log", "L1I1F1")[1].splitlines()],
                         ["L1I1F1"] * 2)

    def test_outputs_go_to_a_folder(self):
        os.mkdir("in")
        os.mkdir("out")
        for name in ("a.xml", "b.xml"):
            shutil.copy(DOSIMETER, os.path.join("in", name))
        status, out, err = run("report", "in/a.xml", "none.xml", "in/b.xml", "-O", "out")
        self.assertEqual((status, "none.xml" in err, sorted(os.listdir("out"))), (1, True, ["a.pdf", "b.pdf"]))
        self.assertEqual([json.loads(line)["Output"] for line in out.splitlines()], ["out/a.pdf", "out/b.pdf"])
        self.assertEqual(run("save", "in/a.xml", "in/b.xml", "-O", "out")[0], 0)
        self.assertEqual(sorted(os.listdir("out")), ["a.pdf", "a.xml", "b.pdf", "b.xml"])
        shutil.copy(DOSIMETER, "a.zdp")
        for words in (["report", "in/a.xml", "in/b.xml", "-o", "x.pdf"], ["save", "in/a.xml", "a.zdp", "-O", "."],
                      ["report", "in/a.xml", "-O", "none"], ["report", "in/a.xml", "-O", "out", "-o", "x.pdf"],
                      ["report", "in/a.xml", "-o", "in/a.xml"], ["report", "in/a.xml"]):
            before = sorted(os.listdir("."))
            self.assertEqual(run(*words)[:2], (2, ""), words)
            self.assertEqual(sorted(os.listdir(".")), before)
        self.assertEqual(read("in/a.xml"), read(DOSIMETER))
        names = [b"line\nend.xml", b"\xff\xfe.xml", b"-o.xml", b"^*%s.xml"]     # whatever a file is called
        for name in names:
            shutil.copy(os.fsencode(DOSIMETER), name)
        status, out, err = run("report", "-O", "out", "--", *names)
        self.assertEqual((status, err, out.count("\n")), (0, "", len(names)))
        for name in names:
            self.assertIn(name[:-4] + b".pdf", os.listdir(b"out"))
        status, _, err = run("save", "no\nfile.xml", b"\xff.xml", "-O", "out")
        self.assertEqual((status, err.count("No such file")), (1, 2))

    def test_merging_over_a_source_is_refused(self):
        shutil.copy(DOSIMETER, "a.xml")
        shutil.copy(LONG, "b.xml")
        status, out, err = run("merge", "a.xml", "b.xml", "-o", "b.xml", timeout=30)
        self.assertEqual((status, out, read("b.xml") == read(LONG)), (1, "", True))
        self.assertIn("b.xml", err)


class Messages(InAFolder):
    def test_messages_are_json_lines_when_asked_for(self):
        for words, status, file in ((["show", DOSIMETER, "none.xml"], 1, "none.xml"), (["shwo"], 2, None),
                                    (["tree", "none.xml", DOSIMETER], 1, "none.xml"), (["merge", DOSIMETER, "none.xml", "-o", "x"], 1, "none.xml"),
                                    (["save", DOSIMETER, "-o", "/dev/full"], 1, DOSIMETER),
                                    (["recalc", DOSIMETER, "--log", "L9I9F9"], 1, DOSIMETER),
                                    (["chart", LONG, "--tab", "0", "--3d", "--values"], 0, LONG)):
            for errors in (["--errors", "json"], ["--errors=json"]):
                found, _, err = run(*words, *errors)
                self.assertEqual((found, err.count("\n")), (status, 1), err)
                error = json.loads(err)["error"]
                self.assertEqual((list(error), error["file"]), (["number", "text", "file"], file))
                self.assertTrue(error["text"])
        with open("bad\n.xml", "wb") as file:
            file.write(b"\xff")
        self.assertEqual(len(run("show", "bad\n.xml", "--errors", "json")[2].splitlines()), 1)
        self.assertEqual(json.loads(run("show", DOSIMETER, "--errors", "json", preexec_fn=lambda: os.close(1))[2])["error"]["number"], 9)

    def test_the_nearest_word_is_named(self):
        for words, told in ((["shwo", "x"], "no verb 'shwo'; did you mean 'show'?"), (["recal"], "'recalc'"), (["schema", "shw"], "'show'"), (["protectors", "lsit"], "'list'"),
                            (["show", "x", "--interval"], "no option '--interval'; did you mean '--intervals'?"),
                            (["show", "x", "--setings=y"], "'--settings'"), (["report", "x", "--landscap", "-o", "y"], "'--landscape'"),
                            (["chart", "x", "--tab", "0", "--value"], "'--values'"), (["frobnicate"], "no verb 'frobnicate'\n")):
            status, out, err = run(*words)
            self.assertEqual((status, out), (2, ""), words)
            self.assertIn(told, err)

    def test_values_out_of_range_are_refused_with_the_range(self):
        for option, wrong, told in (("--criterion", ("0", "141"), "1 to 140"), ("--exchange", ("0", "11"), "1 to 10"),
                                    ("--mode", ("-1", "5"), "0 to 4")):
            for value in wrong:
                status, _, err = run("recalc", DOSIMETER, option, value, "-o", "out.xml")
                self.assertEqual((status, told in err, os.listdir(".")), (2, True, []), err)
        self.assertEqual(run("recalc", DOSIMETER, "--criterion", "140", "--exchange", "10", "--mode", "0")[0], 0)

    def test_version_and_help_need_no_display(self):
        nowhere = {"PATH": os.environ["PATH"], "HOME": os.getcwd()}
        for program in [CLI, *PROGRAMS]:
            for word in ("--version", "--help"):
                result = subprocess.run([program, word], env=nowhere, capture_output=True, check=False)
                self.assertEqual((result.returncode, result.stderr), (0, b""), program)
                self.assertIn(b"kestrane", result.stdout.lower())
        self.assertEqual(os.listdir("."), [])
        for program in (program for program in PROGRAMS if os.path.basename(program) == "kestrane"):
            for words, status, told in ((["-h"], 2, "Usage: kestrane "), (["x.xml", "--verion"], 2, "no option '--verion'"),
                                        (["--", "--help"], 1, "display")):
                environment = nowhere if status == 1 else nowhere | {"QT_QPA_PLATFORM": "offscreen"}
                result = subprocess.run([program, *words], env=environment, capture_output=True, check=False, text=True, timeout=60)
                self.assertEqual((result.returncode, result.stdout, told in result.stderr), (status, "", True), result.stderr)


if __name__ == "__main__":
    main()
