"""The help files as they are installed: every link and picture leads somewhere, tags are closed, and the manual holds
the English pages in whole: help_files.py SHARE_FOLDER MANUAL_TOOL."""
import html.parser
import os
import pathlib
import subprocess
import sys
import tempfile

share, tool = pathlib.Path(sys.argv[1]), sys.argv[2]
VOID = {"meta", "img", "br", "hr"}
failures = []


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.path, self.open, self.anchors, self.targets, self.headings = path, [], set(), [], []
        self.feed(path.read_text(encoding="utf-8"))
        if self.open:
            failures.append(f"{path.name}: not closed: {self.open}")

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        self.anchors.add(attrs.get("id"))
        self.targets += [attrs[name] for name in ("href", "src") if name in attrs]
        if tag == "script" or any(name.startswith("on") for name in attrs):
            failures.append(f"{self.path.name}: holds a script")
        if tag == "h2":
            self.headings.append("")
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            failures.append(f"{self.path.name}: stray </{tag}> in line {self.getpos()[0]}")

    def handle_data(self, data):
        if self.open and self.open[-1] == "h2":
            self.headings[-1] += data


PRINTED = ("help.html", "AcousticTerms.html")
pages = {name: Page(share / name) for name in (*PRINTED, "help.de.html", "help.fr.html")}
for page in pages.values():
    for target in page.targets:
        name, _, anchor = target.partition("#")
        if name and not (share / name).is_file():
            failures.append(f"{page.path.name}: {name} is not there")
        elif anchor and anchor not in pages[name or page.path.name].anchors:
            failures.append(f"{page.path.name}: no place {target}")

# Whatever the company, a whole manual under the brand's name, the same bytes each time and everywhere.
sources = [pages[name].path for name in PRINTED]
for company, manual in (("Ordwyn Acoustics", "Kestrane.pdf"), ("Brennock", "Velmora.pdf")):
    bytes_of_runs = []
    for zone in ("UTC", "Pacific/Auckland"):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([tool, company, "1.2.3", folder, *sources], check=True, env={**os.environ, "TZ": zone})
            text = subprocess.run(["pdftotext", f"{folder}/{manual}", "-"], check=True, capture_output=True, text=True)
            bytes_of_runs.append(pathlib.Path(folder, manual).read_bytes())
    if bytes_of_runs[0] != bytes_of_runs[1]:
        failures.append(f"{manual}: differs from run to run")
    for expected in ["Manual, version 1.2.3", *(heading for name in PRINTED for heading in pages[name].headings)]:
        if text.stdout.count(expected) < (1 if expected.startswith("Manual") else 2):  # in the contents and in its place
            failures.append(f"{manual}: '{expected}' is missing")

print(*failures, sep="\n")
sys.exit(bool(failures))
