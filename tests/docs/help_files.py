"""The help files as they are installed: every link and picture leads somewhere, every page can be reached from the first
one, tags are closed, those about a tab or dialog show it, and the manual holds the English pages in whole:
help_files.py HELP_FOLDER MANUAL_TOOL PAGE..."""
import html
import html.parser
import os
import pathlib
import subprocess
import sys
import tempfile

share, tool, printed = pathlib.Path(sys.argv[1]), sys.argv[2], [pathlib.Path(name).name for name in sys.argv[3:]]
VOID = {"meta", "img", "br", "hr", "link"}
ENTITIES = {"lt", "gt", "amp", "quot", "nbsp"}  # those that the search of the help knows
failures = []


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__(convert_charrefs=False)
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
        if tag in ("h1", "h2") and "nav" not in self.open:
            self.headings.append([tag, ""])
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            failures.append(f"{self.path.name}: stray </{tag}> in line {self.getpos()[0]}")

    def handle_data(self, data):
        if self.open and self.open[-1] in ("h1", "h2") and "nav" not in self.open:
            self.headings[-1][1] += data

    def handle_entityref(self, name):
        if name not in ENTITIES:
            failures.append(f"{self.path.name}: write &{name}; as the character itself")
        self.handle_data(html.unescape(f"&{name};"))


pages = {path.name: Page(path) for path in sorted(share.glob("*.html"))}
english = {name for name in pages if name.count(".") == 1}
if english != set(printed):
    failures.append(f"the manual lacks or has too much: {english ^ set(printed)}")
linked = {target.partition("#")[0] for target in pages["help.html"].targets}
failures += [f"no link from the first page to {name}" for name in english - linked - {"help.html"}]
for name in english - {"AcousticTerms.html", "examples.html", "glossary.html", "limits.html"}:
    if not any(target.endswith(".png") for target in pages[name].targets):
        failures.append(f"{name}: a tab or dialog without its picture")
for picture in share.glob("screenshots/*.png"):
    if picture.stat().st_size > 80_000:
        failures.append(f"{picture.name}: too large")
for page in pages.values():
    for target in page.targets:
        name, _, anchor = target.partition("#")
        if name and not (share / name).is_file():
            failures.append(f"{page.path.name}: {name} is not there")
        elif anchor and anchor not in pages[name or page.path.name].anchors:
            failures.append(f"{page.path.name}: no place {target}")

# Whatever the company, a whole manual under the brand's name, the same bytes each time and everywhere.
sources = [pages[name].path for name in printed]
for company, manual in (("Ordwyn Acoustics", "Kestrane.pdf"), ("Brennock", "Velmora.pdf")):
    bytes_of_runs = []
    for zone in ("UTC", "Pacific/Auckland"):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([tool, company, "1.2.3", folder, *sources], check=True, env={**os.environ, "TZ": zone})
            text = subprocess.run(["pdftotext", f"{folder}/{manual}", "-"], check=True, capture_output=True, text=True)
            bytes_of_runs.append(pathlib.Path(folder, manual).read_bytes())
    if bytes_of_runs[0] != bytes_of_runs[1]:
        failures.append(f"{manual}: differs from run to run")
    words = " ".join(text.stdout.split())
    for tag, heading in [("h2", "Manual, version 1.2.3")] + [h for name in printed for h in pages[name].headings]:
        if words.count(heading) < (2 if tag == "h1" else 1):  # a chapter also stands in the contents
            failures.append(f"{manual}: '{heading}' is missing")

print(*failures, sep="\n")
sys.exit(bool(failures))
