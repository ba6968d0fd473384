"""The figures of the page of worked examples are those that kestrane-cli gives for the samples: worked_examples.py CLI
SHARE_FOLDER. A cell with data-figure names a value of the JSON that the command above it prints."""
import html.parser
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

cli, share = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
failures, checked = [], 0


def value_of(document, path):
    for step in path.split("."):
        document = document[int(step) if isinstance(document, list) else step]
    return document


def agrees(shown, value):
    if isinstance(value, str):  # of a time the page has the minutes, of a text its unit, too
        return shown in value or shown.split(" ")[0] == value
    number = re.match(r"[\d.]+", shown).group()
    return number == f"{value:.{len(number.partition('.')[2])}f}"


class Examples(html.parser.HTMLParser):
    text, path, result = "", None, None

    def handle_starttag(self, tag, attrs):
        self.text, self.path = "", dict(attrs).get("data-figure")

    def handle_data(self, data):
        self.text += data

    def handle_endtag(self, tag):
        global checked
        if tag == "pre":
            words = self.text.split()
            with tempfile.TemporaryDirectory() as home:  # no settings of the user
                result = subprocess.run([cli, *words[1:]], cwd=share, check=True, capture_output=True, text=True,
                                        env={**os.environ, "HOME": home, "XDG_CONFIG_HOME": home, "LC_ALL": "C.UTF-8"})
            self.result = json.loads(result.stdout)
        elif tag == "td" and self.path:
            checked += 1
            value = value_of(self.result, self.path)
            if not agrees(self.text, value):
                failures.append(f"{self.path}: the page says {self.text}, the program {value}")


Examples().feed((share / "help" / "examples.html").read_text(encoding="utf-8"))
if checked < 20:
    failures.append(f"only {checked} figures found")
print(*failures, sep="\n")
sys.exit(bool(failures))
