#!/usr/bin/env python3
"""The manual pages and completions that the build makes of the parser and the documents.

Usage: pages.py CLI PAGES MAKER SIM SAMPLES
"""

import json
import os
import shlex
import shutil
import subprocess
import sys

from harness import CLI, InAFolder, main, sample

PAGES, MAKER, SIM = map(os.path.abspath, sys.argv[2:5])
DOCS = os.path.dirname(os.path.dirname(MAKER))


def syntax():
    return json.loads(subprocess.run([CLI, "syntax"], capture_output=True, check=True).stdout)


class Pages(InAFolder):
    def test_every_program_verb_and_format_has_a_page_that_can_be_set(self):
        verbs = {"kestrane-cli-" + verb["Name"] + ".1" for verb in syntax()["Verbs"]}
        self.assertEqual(set(os.listdir(os.path.join(PAGES, "man1"))), verbs | {"kestrane.1", "kestrane-cli.1", "kestrane-sim.1"})
        self.assertEqual(set(os.listdir(os.path.join(PAGES, "man5"))), {f"kestrane-{name}.5" for name in ("xml", "zdp", "log", "sound", "assessment")})
        if shutil.which("groff"):
            for folder in ("man1", "man5"):
                for name in os.listdir(os.path.join(PAGES, folder)):
                    words = ["groff", "-man", "-Tutf8", "-ww", "-k", os.path.join(PAGES, folder, name)]
                    result = subprocess.run(words, capture_output=True, check=True)
                    self.assertEqual(result.stderr, b"", name)
                    self.assertFalse(b"`" in result.stdout, name)

    def test_what_the_documents_do_not_tell_fails_the_build(self):
        for line, told in (("| `zoom FILE", "zoom"), (" [--landscape]", "--landscape")):
            shutil.copytree(DOCS, "docs", ignore=shutil.ignore_patterns("screenshots", "help"))
            with open("docs/cli.md", encoding="utf-8") as file:
                text = file.read()
            self.assertIn(line, text)
            with open("docs/cli.md", "w", encoding="utf-8") as file:
                file.write(text.replace(line, ""))
            result = subprocess.run([sys.executable, MAKER, CLI, SIM, "1", "docs", "out"], capture_output=True, check=False, text=True)
            self.assertEqual((result.returncode, told in result.stderr), (1, True), result.stderr)
            shutil.rmtree("docs")

    def complete(self, *words):
        script = (f"source '{PAGES}/completions/kestrane-cli'; COMP_WORDS=({' '.join(map(shlex.quote, words))}); "
                  "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _kestrane_cli; printf '%s\\n' \"${COMPREPLY[@]}\"")
        return subprocess.run(["bash", "-c", script], capture_output=True, check=True, text=True).stdout.split()

    def test_bash_completes_verbs_options_words_and_logs(self):
        shutil.copy(sample("machine-survey-octave"), "a b.xml")
        for words, found in ((["re"], ["recalc", "report"]), (["show", "x", "--int"], ["--intervals"]), (["protectors", "c"], ["compare"]),
                             (["protectors", "compare", "x", "--prot"], ["--protector"]), (["export", "x", "--format", "x"], ["xlsx"]),
                             (["recalc", r"a\ b.xml", "--log", "O1"], ["O1I1F1"]), (["--answer", "yes", "sh"], ["show"]), (["show", "--qui"], ["--quiet"]),
                             (["recalc", "--mode", ""], []), (["zoom", "--to", ""], []), (["chart", "--mode", "n"], ["niosh"]),
                             (["show", ""], []), (["save", "-o", ""], [])):     # nothing: a file
            self.assertEqual(self.complete(CLI, *words), found)


if __name__ == "__main__":
    main()
