#!/usr/bin/env python3
"""What a call of kestrane-cli promises whatever its verb: exit status, what goes to which stream, global options, and
that -o writes all or nothing.

Usage: calls.py CLI SAMPLES
"""

import json
import os

from harness import InAFolder, a_disk_that_fills_up_at, main, run, sample

DOSIMETER = sample("shift-dosimeter")
LONG = sample("third-octave-2000")


def write(name, text):
    with open(name, "w", encoding="utf-8") as file:
        file.write(text)


def marked(log):
    """The figures that are said to be the instrument's own."""
    return [name for name, figure in log.items() if isinstance(figure, dict) and figure.get("Reported")]


def read(name):
    with open(name, encoding="utf-8") as file:
        return file.read()


class Calls(InAFolder):
    def test_a_result_is_one_json_document_alone(self):
        for words in (["show", DOSIMETER, "--intervals"], ["tree", DOSIMETER, LONG], ["recalc", DOSIMETER], ["panel", DOSIMETER],
                      ["zoom", DOSIMETER, "--from", "2", "--to", "3"], ["cut", DOSIMETER, "--exclude", "1-2,4"],
                      ["save", DOSIMETER, "-o", "out.xml"], ["merge", DOSIMETER, LONG, "-o", "out.xml"], ["text", "1184", "4557"]):
            status, out, err = run(*words)
            self.assertEqual((status, err), (0, ""), words)
            self.assertTrue(out.endswith("\n") and out.count("\n") == 1, words)
            json.loads(out)
        for words in (["--help"], ["show", "--help"], ["--version"]):
            self.assertEqual(run(*words)[0], 0)

    def test_results_are_english_and_messages_the_users(self):
        in_german = {**os.environ, "LC_ALL": "de_DE.UTF-8"}
        for words in (["panel", DOSIMETER], ["show", DOSIMETER], ["chart", DOSIMETER, "--tab", "3", "--values"], ["table", DOSIMETER],
                      ["text", "4557", "1184"]):
            separators = ["--decimal-separator", ".", "--date-separator", "/"]
            english = run(*separators, *words)
            self.assertEqual(english[0], 0, words)
            self.assertEqual(run(*separators, *words, env=in_german), english, words)
        for locale, message in (("de_DE.UTF-8", "Ung\u00fcltiger Bereich."), ("fr_FR.UTF-8", "Plage non valable."),
                                ("ja_JP.UTF-8", "Invalid range.")):
            status, out, err = run("cut", DOSIMETER, "--include", "5-2", env={**os.environ, "LC_ALL": locale})
            self.assertEqual((status, out), (1, ""))
            self.assertTrue(err.startswith("Kestrane: " + message), err)

    def test_wrong_words_end_with_2_and_write_nothing(self):
        write("a.xml", read(DOSIMETER))
        for words in ([], ["odd"], ["show"], ["show", DOSIMETER, "--odd"], ["save", DOSIMETER], ["text", "abc"], ["merge", DOSIMETER, "-o", "out.xml"], ["merge", DOSIMETER, LONG],
                      ["merge", DOSIMETER, LONG, DOSIMETER, "-o", "out.xml"],
                      ["recalc", DOSIMETER, "--criterion", "loud", "-o", "out.xml"],
                      ["recalc", DOSIMETER, "--criterion", "0x55", "-o", "out.xml"],
                      ["recalc", DOSIMETER, "--exposure", "0"], ["recalc", DOSIMETER, "--exposure", "730"], ["zoom", DOSIMETER, "--from", "1"],
                      ["tree", DOSIMETER, "--files-on-tree", "3"], ["--answer", "maybe", "show", DOSIMETER],
                      ["cut", DOSIMETER, "-o", "out.xml"], ["cut", DOSIMETER, "--include", "1-2;3", "-o", "out.xml"],
                      ["cut", DOSIMETER, "--include", "1", "--exclude", "2"], ["identify"], ["download"],
                      ["download", "--port", "x", "--logs", "0"], ["download", "--port", "x", "--logs", "1,,2"],
                      ["download", "--port", "x", "--logs", "some"],
                      ["sync-clock", "--port", "x", "--now", "2024-02-30T00:00:00"],
                      ["sync-clock", "--port", "x", "--now", "2024-02-03 10:00"],
                      ["--decimal-separator", "1", "show", DOSIMETER], ["--decimal-separator", "-", "show", DOSIMETER],
                      ["--decimal-separator", ".,", "show", DOSIMETER], ["--date-separator", " ", "show", DOSIMETER],
                      ["recalc", DOSIMETER, "-o", ""], ["merge", DOSIMETER, LONG, "-o", ""], ["identify", "--port", ""],
                      ["download", "--resume", ""], ["download", "--resume", DOSIMETER, "--logs", "1"],
                      ["download", "--resume", "a.xml", "-o", "a.xml"], ["identify", "--port", "x", "--transcript", "a.xml"],
                      ["analyse", DOSIMETER, "--ln", ""], ["cut", DOSIMETER, "--include", "1", "--log="],
                      ["show", "--settings=", DOSIMETER, LONG]):
            status, out, err = run(*words)
            self.assertEqual((status, out), (2, ""), words)
            self.assertTrue(err, words)
            self.assertFalse(os.path.exists("out.xml"), words)
        self.assertEqual(read("a.xml"), read(DOSIMETER))

    def test_a_leading_zero_changes_no_number(self):
        self.assertEqual(run("zoom", DOSIMETER, "--from", "010", "--to", " 020"), run("zoom", DOSIMETER, "--from", "10", "--to", "20"))

    def test_a_picture_never_takes_the_place_of_the_file_that_it_shows(self):
        write("a.xml", read(DOSIMETER))
        os.symlink("a.xml", "a.png")
        self.assertEqual(run("chart", "a.xml", "--tab", "0", "-o", "a.png")[0], 2)
        self.assertEqual(read("a.xml"), read(DOSIMETER))

    def test_a_failure_ends_with_1_and_the_programs_own_text(self):
        write("bad.xml", "<instruments>")
        invalid = "Kestrane: The selected interval range is invalid\n"
        for words, text in ((["show", "none.xml"], None), (["show", "bad.xml"], None), (["tree", "none.xml"], None),
                            (["merge", DOSIMETER, "none.xml", "-o", "out.xml"], None),
                            (["recalc", DOSIMETER, "--log", "L9I9F9"], None),
                            (["zoom", DOSIMETER, "--from", "3", "--to", "2"], invalid),
                            (["zoom", DOSIMETER, "--from", "0", "--to", "2"], invalid),
                            (["cut", DOSIMETER, "--include", "1-99999"], invalid),
                            (["cut", DOSIMETER, "--include", "5-2"], "Kestrane: Invalid range.  The 'from' interval is later "
                                                                     "than the 'to' interval.\n")):
            status, out, err = run(*words)
            self.assertEqual((status, out), (1, ""), words)
            self.assertTrue(err.startswith("Kestrane: ") and err.endswith("\n"), words)
            if text:
                self.assertEqual(err, text, words)
        for device in ("none", "/dev/none", os.path.abspath("bad.xml")):
            status, out, err = run("download", "--port", device, "-o", "out.xml")
            self.assertEqual((status, out, os.listdir(".").count("out.xml")), (1, "", 0), device)
            self.assertIn("serial port", err)

    def test_ports_have_the_numbers_of_the_settings(self):
        write("settings.ini", "[SerialPorts]\nCOM7=/dev/none\nCOM200=ttyX\n")
        status, out, err = run("ports")
        self.assertEqual((status, err), (0, ""))
        devices = {port["Number"]: port["Device"] for port in json.loads(out)}
        self.assertEqual((devices[7], devices[200]), ("/dev/none", "/dev/ttyX"))

    def test_a_question_is_printed_with_its_answer(self):
        question = ["chart", LONG, "--tab", "0", "--3d", "--values"]
        for answer, status in (([], 0), (["--answer", "yes"], 0), (["--answer", "no"], 1), (["--answer", "cancel"], 0)):
            found, out, err = run(*answer, *question)
            self.assertEqual(found, status, answer)
            self.assertTrue(err.startswith("Kestrane: "))
            self.assertTrue(err.endswith(" -> no\n" if status else " -> yes\n"), err)
            self.assertEqual(out == "", status == 1)

    def test_the_settings_are_those_of_the_file(self):
        before = json.loads(run("recalc", DOSIMETER)[1])["ExposureTime"]
        self.assertTrue(os.path.exists("settings.ini"), "created when missing")
        write("settings.ini", "[Preferences]\nFilesOnTreeView=2\nSerialPort=first\n")
        status, out, err = run("tree", DOSIMETER)
        self.assertEqual(status, 0)
        self.assertEqual(json.loads(out)[0]["Key"], "I1F1")
        self.assertIn("SerialPort", err)
        self.assertEqual(err.count("Kestrane: "), 1)
        self.assertEqual(before, json.loads(run("recalc", DOSIMETER)[1])["ExposureTime"])
        os.remove("settings.ini")
        os.mkdir("settings.ini")
        self.assertEqual(run("tree", DOSIMETER), (1, "", "Kestrane: 21: Is a directory (settings.ini)\n"))

    def test_company_and_separators(self):
        brands = [run("--company", c, "text", "3003")[1] for c in ("Ordwyn Acoustics", "BRENNOCK Ltd", "Brennock of Ordwyn")]
        self.assertNotEqual(brands[0], brands[1])
        self.assertEqual(brands[0], brands[2])
        levels = [json.loads(run("--decimal-separator", c, "panel", DOSIMETER)[1])["lblLeqA"] for c in ".,"]
        self.assertEqual(levels[0].replace(".", ","), levels[1])
        self.assertNotEqual(*levels)
        same = [run("--decimal-separator", c, "show", DOSIMETER)[1] for c in ".,"]
        self.assertEqual(*same)
        write("dates.xml", "<instruments><instrument-data><instrument-detail/><logs><log><sdt>26.11.2024</sdt></log></logs>"
                           "</instrument-data></instruments>")
        dates = [json.loads(run("--date-separator", c, "recalc", "dates.xml")[1])["StartDate"] for c in "/-\u00b7."]
        self.assertEqual(dates, ["", "", "", "26/11/2024"])

    def test_figures_that_are_the_instrument_s_own_are_marked(self):
        write("halcyr.xml", "<instruments><instrument-data><instrument-detail instrument-name='TR350'/><logs><log><cri>85</cri><ca>"
                            "<leq><f>85</f></leq><edose>70</edose><dh>10</dh></ca></log></logs></instrument-data></instruments>")
        for words, expected in (([], []), (["--criterion", "80"], ["DoseETCumA", "DoseHourA"]),
                                (["--exposure", "12"], ["DoseETCumA"]), (["--exposure", "12", "--mode", "0"], [])):
            self.assertEqual(marked(json.loads(run("recalc", "halcyr.xml", *words)[1])), expected, words)
        for name, expected in (("halcyr.xml", ["DoseETCumA", "DoseHourA"]), (sample("roadworks-selection"), [])):    # its doses are ours
            run("recalc", name, "--criterion", "80", "--history", "-o", "kept.xml")
            self.assertEqual(marked(json.loads(run("show", "kept.xml")[1])["InstrumentDatas"][0]["Locations"][0]), expected)

    def test_merging_adds_every_log_once_and_leaves_the_sources_alone(self):
        write("same.xml", read(DOSIMETER))     # the same instrument: no second collection
        status, out, err = run("merge", DOSIMETER, "same.xml", LONG, "-o", "out.xml")
        self.assertEqual((status, err), (0, ""))

        def collections(document):
            return [(data["InsSerial"], [log["Name"] for kind in ("Locations", "Octaves", "ThirdOctaves") for log in data[kind]])
                    for data in document["InstrumentDatas"]]

        one, long = (collections(json.loads(run("show", name)[1])) for name in (DOSIMETER, LONG))
        self.assertEqual(collections(json.loads(out)), [(serial, names * 2) for serial, names in one] + long)
        saved = json.loads(run("show", "out.xml", "--intervals")[1])
        self.assertEqual(collections(saved), collections(json.loads(out)))
        rows = [log["LogIntervals"]["Items"] for data in saved["InstrumentDatas"] for log in data["Locations"]]
        self.assertEqual(rows[0], rows[1])
        self.assertTrue(rows[0])
        self.assertEqual(read("same.xml"), read(DOSIMETER))

    def test_output_replaces_a_file_whole_or_not_at_all(self):
        write("out.xml", "old")
        self.assertEqual(run("recalc", DOSIMETER, "--criterion", "80", "-o", "out.xml")[0], 0)
        self.assertIn("<cri>80</cri>", read("out.xml"))
        row = "<intvl><ca><peak>1E39</peak></ca></intvl>"     # no single: the rows cannot be read
        write("unread.xml", "<instruments><instrument-data><instrument-detail/><logs><log><intvls>" + row +
              "</intvls></log></logs></instrument-data></instruments>")
        row = "<intvl><ca><leq><f>99999</f></leq></ca></intvl>"     # no mean of them can be told
        write("loud.xml", "<instruments><instrument-data><instrument-detail/><logs><log><intvls>" + row * 2 +
              "</intvls></log></logs></instrument-data></instruments>")
        write("loud-cut.xml", read("loud.xml").replace("<log>", '<log><cutintvls incl="False"><cutintvl>2~2</cutintvl></cutintvls>'))
        os.mkdir("folder")
        for words, target in ((["show", "loud-cut.xml"], None), (["save", "loud-cut.xml"], "out.xml"), (["save", "unread.xml"], "out.xml"), (["recalc", "unread.xml"], None),
                              (["cut", "unread.xml", "--include", "1"], None), (["zoom", "unread.xml", "--from", "1", "--to", "1"], None),
                              (["merge", DOSIMETER, "unread.xml"], "out.xml"),
                              (["save", "none.xml"], "out.xml"), (["save", DOSIMETER], "none/out.xml"),
                              (["save", DOSIMETER], "folder"), (["recalc", "loud.xml"], "out.xml"),
                              (["cut", "loud.xml", "--exclude", "2"], "out.xml"),
                              (["zoom", "loud.xml", "--from", "1", "--to", "1"], None)):
            before = sorted(os.listdir("."))
            status, out, err = run(*words, *(["-o", target] if target else []))
            self.assertEqual((status, out), (1, ""), words)
            self.assertRegex(err, "Kestrane: |6: Overflow")
            self.assertIn("Kestrane: ", err if "unread.xml" in words else "Kestrane: ")
            self.assertIn("<cri>80</cri>", read("out.xml"))
            self.assertEqual(sorted(os.listdir(".")), before)
        self.assertEqual(os.listdir("folder"), [])
        status, _, err = run("save", LONG, "-o", "out.xml", preexec_fn=a_disk_that_fills_up_at(20_000))
        self.assertEqual((status, sorted(os.listdir("."))), (1, before))
        self.assertIn("Kestrane: ", err)
        self.assertIn("<cri>80</cri>", read("out.xml"))

    def test_a_history_is_kept_where_there_is_one_or_it_is_asked_for(self):
        self.assertEqual(run("history", DOSIMETER), (0, "[]\n", ""))
        run("cut", DOSIMETER, "--exclude", "1-2", "-o", "plain.xml")
        self.assertFalse(os.path.exists("plain.xml.history.jsonl"))
        run("cut", DOSIMETER, "--exclude", "1-2", "--reason", "Radio", "--history", "-o", "out.xml")
        run("recalc", "out.xml", "--criterion", "80", "-o", "next.xml")
        lines = json.loads(run("history", "next.xml")[1])
        self.assertEqual([line["What"] for line in lines],
                         ["Interval Selection", "Save", "Calculation Settings", "Save"])
        self.assertEqual((lines[0]["Reason"], lines[0]["After"].split(";")[0]),
                         ("Radio", "Interval Selection: Exclude From Display 1-2"))
        self.assertIn("Criterion Level: 80 dB", lines[2]["After"])
        run("merge", LONG, "out.xml", "-o", "merged.xml")
        self.assertIn('"CutReason":"Radio"', read("merged.xml.history.jsonl"))
        merged = json.loads(run("history", "merged.xml")[1])                # with what was done before
        self.assertEqual([line["What"] for line in merged[-3:]], ["Interval Selection", "Merge", "Save"])
        self.assertEqual(merged[-2]["Before"], f"out.xml (SHA-256 {lines[1]['After']})")
        with open("next.xml", "a", encoding="utf-8") as file:
            file.write("\n")
        status, out, err = run("history", "next.xml")
        self.assertEqual((status, json.loads(out)[-1]["What"]), (0, "Changed by another program"))
        self.assertIn("has been changed by another program", err)
        write("next.xml.history.jsonl", "not ours")
        status, out, err = run("history", "next.xml")
        self.assertEqual((status, out), (1, ""))
        self.assertIn("is not a history of this program", err)
        self.assertEqual(run("save", DOSIMETER, "--history", "-o", "-")[0], 0)
        self.assertEqual(sorted(os.listdir(".")), ["merged.xml", "merged.xml.history.jsonl", "next.xml", "next.xml.history.jsonl", "out.xml",
                                                   "out.xml.history.jsonl", "plain.xml", "settings.ini"])


if __name__ == "__main__":
    main()
