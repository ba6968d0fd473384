#!/usr/bin/python3
"""What a screen reader hears of the running program, walked over AT-SPI under Xvfb.

    heard.py KESTRANE KESTRANE-CLI KESTRANE-SIM SAMPLES

Opens samples and compares what is heard on every tab, in the dialogs and in the window of an assessment with what
kestrane-cli says. Commands that only popup menus have are given by the keys for them.
Ends with 77 when no display or no accessibility bus can be had here; everything else that goes wrong is a failure.
"""

import json
import os
import pathlib
import re
import select
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
PATIENCE = 60  # seconds, for the program to show something

# Caption and unit of a figure by the name of its label, of channel A without its letter. A caption may be a pattern.
LEVELS = {
    "lblLeq": (r"(L\w?|\w)eq", " dB"),
    "lblLmin": (r"\w?min", " dB"),
    "lblLmax": (r"\w?max", " dB"),
    "lblPeak": (r"\w?peak", " dB"),
    "lblLtm3": ("Ltm 3", " dB"),
    "lblLtm5": ("Ltm 5", " dB"),
    "lblLAvg": ("LAvg", " dB"),
    "lblLn": ("Ln", " dB"),
}
EXPOSURES = {
    "lblLepdET": (r"LEP,d\(ET\)", " dB"),
    "lblLepdMT": (r"LEP,d\(MT\)", " dB"),
    "lblDoseET": (r"Dose %\(ET\)", ""),
    "lblDoseMT": (r"Dose %\(MT\)", ""),
    "lblDoseHour": ("Dose Hr %", ""),
    "lblLE": ("LE", " dB"),
    "lblPA2hr": ("PA2h", ""),
    "lblTWA": ("TWA", " dB"),
    "lblTWA8": ("TWA8", " dB"),
    "lblExposureTime": ("Exposure Time", ""),
}
DETAILS = {
    "lblStartDate": ("Log Start Date", ""),
    "lblStartTime": ("Log Start Time", ""),
    "lblEndDate": ("Log End Date", ""),
    "lblEndTime": ("Log End Time", ""),
    "lblLength": ("Log Length", ""),
    "lblLogInterval": ("Log Interval Length", ""),
    "lblOverloaded": ("Overload Occurred", ""),
    "lblMode": ("Mode", ""),
    "lblFrqWgt": ("Frequency Weighting", ""),
    "lblTimeWgt": ("Time Weighting", ""),
    "lblRange": ("Range", ""),
    "lblThreshold": ("Threshold", ""),
    "lblUserCal": ("Last User Calibration", ""),
    "lblFactoryCal": (r".*\(factory calibration\)", ""),
}
ALL = LEVELS | EXPOSURES | DETAILS
OF_ONE_CHANNEL = {"lblLtm3", "lblLtm5", "lblLAvg", "lblLn", "lblTWA", "lblTWA8"} | DETAILS.keys() | {"lblExposureTime"}
OF_ONE_CHANNEL -= {"lblFrqWgt", "lblTimeWgt"}
PANELS = {"Channels A and B": "LAB", "Full Channel A": "LA", "Advanced": "AB"}  # L: with levels; channels
CHARTS = {
    "Full Log": ["--tab", "0"],
    "Intervals (Graph)": ["--tab", "2", "--interval", "1"],
    "Cumultv (Graph)": ["--tab", "3"],
}
EDITS = ["Criterion level (dB)", "Exchange rate (dB)", "Last user calibration"]
TABLES = {"table", "tree table", "list"}  # of any length
NAMED = {"push button", "radio button", "check box", "text", "spin button", "slider", "tree", "chart", "page tab"}
NAMED |= TABLES
DIALOG_SAMPLE = "protector-ac.xml"
SPECTRUM_SAMPLE = "third-octave-2000.xml"
# Dialogs of the menus that change nothing: the way there, the title, the button that closes it, patterns of what is heard.
MENU_DIALOGS = [
    (["File", "Export"], "Export", "Cancel", ["Columns", "First rows"]),
    (["File", "Export Picture"], "Export Picture", "Cancel", ["Width.*", "Resolution.*"]),
    (["View", "History"], "History of .*", "Close", []),
    (["File", "Print Preview"], "Print Preview", "Close", [r"Page 1 of \d+"]),
    (["View", "Calibration"], "Calibration - .*", "Cancel", []),
    (["View", "Marked Range", "Events"], "Events of .*", "Close", []),
    (["View", "Marked Range", "Distribution"], "Distribution of .*", "Close", [r"L1 [\d.]+ dB, L10 [\d.]+ dB, .*"]),
    (["View", "Marked Range", "Compare Logs"], "Compare Logs", "Close", []),
    (["Help", "Tour"], "A Tour of .*", "Close", ["1 of 4"]),
    (["Help", "Help"], "Help", "Close", []),
    (["Help", "Keyboard Shortcuts"], "Keyboard Shortcuts", "Close", []),
]
KEY_MENU, KEY_UP, KEY_RETURN = 0xFF67, 0xFF52, 0xFF0D
CORRECTIONS = ["None", "2 std devs", "4dB", "1 std dev"]  # in the order of kestrane-cli

failures = []


def check(condition, message):
    if not condition:
        failures.append(message)
        print("FAILED:", message)
    return condition


def skip(why):
    print("skipped:", why)
    sys.exit(SKIPPED)


class Bench:
    """A display and a session bus of their own; what it starts ends with it."""

    def __init__(self, home):
        self.started = []
        runtime = pathlib.Path(home, "run")
        runtime.mkdir(mode=0o700)
        read, write = os.pipe()
        screen = ["-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"]
        self.start(["Xvfb", "-displayfd", str(write), *screen], pass_fds=[write])
        os.close(write)
        if not select.select([read], [], [], 30)[0]:
            skip("no display")
        display = os.read(read, 16).decode().strip()
        if not display:
            skip("no display")
        os.environ.update(HOME=home, XDG_RUNTIME_DIR=str(runtime), DISPLAY=":" + display, QT_QPA_PLATFORM="xcb",
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LC_ALL="C.UTF-8")
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_SESSION_ID", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS"):
            os.environ.pop(name, None)
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE)
        address = bus.stdout.readline().decode().strip()
        if not address:
            skip("no session bus")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = address

    def start(self, command, **options):
        try:
            process = subprocess.Popen(command, stderr=subprocess.DEVNULL, **options)
        except FileNotFoundError as error:
            skip(error)
        self.started.append(process)
        return process

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in reversed(self.started):
            process.terminate()
            process.wait()


def cli(*arguments):
    return subprocess.run([CLI, *arguments], check=True, capture_output=True, text=True).stdout


def showing(node):
    """The nodes in sight, of a table only itself."""
    yield node
    if node.get_role_name() in TABLES:
        return
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None and child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield from showing(child)


def control(root, role, name):
    return next(node for node in showing(root) if node.get_role_name() == role and node.get_name() == name)


def wait_for(what, look):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except GLib.Error:  # what was looked at has just gone
            found = None
        if found:
            return found
        time.sleep(0.1)
    raise SystemExit(f"FAILED: waited in vain for {what}")


def is_in(state, node):
    return node.get_state_set().contains(state)


def captions(node):
    """The names of the labels of a node."""
    return [relation.get_target(i).get_name()
            for relation in node.get_relation_set()
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
            for i in range(relation.get_n_targets())]


def check_heard(nodes, where):
    """Every control has a name, or a caption where its name is its value; no value is heard as the caption before it,
    no letter leads to two controls."""
    before, letters = None, {}
    for node in nodes:
        role, name = node.get_role_name(), node.get_name()
        check(role not in NAMED or name, f"{where}: a {role} is mute")
        check(role != "combo box" or any(captions(node)), f"{where}: the combo box '{name}' has no caption")
        letter = mnemonic(node)
        check(letter is None or letter not in letters, f"{where}: Alt+{letter} is '{letters.get(letter)}' and '{name}'")
        letters[letter] = name
        words = name.strip(" :") if role == "label" else None
        check(not words or words != before, f"{where}: a value is heard as '{words}', its caption")
        before = words


def mnemonic(node):
    """The letter that, with Alt, goes to a node or presses it. A bar of tabs gives that of its tab in front."""
    if node.get_role_name() == "page tab list":
        return None
    keys = [Atspi.Action.get_key_binding(node, i) for i in range(node.get_n_actions())]
    return next((key[-1].upper() for key in keys if re.fullmatch(r"Alt\+.", key)), None)


def check_words(nodes, where, patterns):
    heard = [node.get_name() for node in nodes]
    for pattern in patterns:
        check(any(re.fullmatch(pattern, name) for name in heard), f"{where}: '{pattern}' is not heard in {heard}")


class Program:
    def __init__(self, bench, sample, is_log=True):
        state = tempfile.mkdtemp(dir=os.environ["HOME"])  # a program that was ended leaves copies of its documents
        self.process = bench.start([KESTRANE, sample], env=dict(os.environ, XDG_STATE_HOME=state))
        desktop = Atspi.get_desktop(0)

        def application():
            desktop.clear_cache()
            for i in range(desktop.get_child_count()):
                child = desktop.get_child_at_index(i)
                if child is not None and child.get_process_id() == self.process.pid:
                    return child
            return None

        self.root = wait_for("the program", application)
        self.root.set_cache_mask(Atspi.Cache.NONE)
        if is_log:
            wait_for("the log", lambda: any(self.find("page tab", "Full Log")) and "Loading Completed" in self.status())
        else:
            wait_for("the assessment", lambda: any("dB" in n.get_name() for n in self.find("label")))
            time.sleep(0.5)  # the files that it names are read

    def find(self, role, name=None):
        return [n for n in showing(self.root) if n.get_role_name() == role and name in (None, n.get_name())]

    def status(self):
        return [node.get_name() for bar in self.find("status bar") for node in showing(bar)]

    def tabs(self):
        """Those that the log has. The toolkit tells of any tab that it is enabled; the description says what is missing."""
        return [n for n in self.find("page tab") if not re.match("This (log|instrument) ", n.get_description())]

    def give(self, *path):
        """Gives the command at the end of a path through the menus."""
        node = self.find("menu bar")[0]
        for caption in path:
            items = [node.get_child_at_index(i) for i in range(node.get_child_count())]
            node = next(item for item in items if item.get_name().rstrip(".") == caption)
            if node.get_child_count():
                node = node.get_child_at_index(0)
        self.act(node)

    def act(self, node):
        try:
            Atspi.Action.do_action(node, 0)
        except GLib.Error:  # the answer comes when the dialog that it opens is closed
            pass

    def pop_up(self, place, *keys):
        """Brings up the popup menu of a place, which AT-SPI does not show, and presses keys in it. No window manager
        makes the window the active one: that takes a click, which does nothing on its status bar."""
        bar = Atspi.Component.get_extents(self.find("status bar")[0], Atspi.CoordType.SCREEN)
        Atspi.generate_mouse_event(bar.x + bar.width // 2, bar.y + bar.height // 2, "b1c")
        wait_for("the active window", lambda: any(is_in(Atspi.StateType.ACTIVE, n) for n in self.find("frame")))
        Atspi.Component.grab_focus(place)
        for key in (KEY_MENU, *keys):
            Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.SYM)

    def dialog(self, title):
        def look():
            return [w for role in ("dialog", "alert") for w in self.find(role) if re.fullmatch(title, w.get_name())]

        return wait_for(f"the dialog {title}", look)[0]

    def close(self, dialog, button):
        role, title = dialog.get_role_name(), dialog.get_name()
        self.act(control(dialog, "push button", button))
        wait_for(f"the end of {title}", lambda: not self.find(role, title))

    def check_dialog(self, title, button, words=()):
        """Hears the dialog that is open, and presses a button to close it."""
        dialog = self.dialog(title)
        nodes = list(showing(dialog))
        check(len(nodes) > 2, f"{title}: nothing is heard")
        check_heard(nodes, title)
        check_words(nodes, title, words)
        self.close(dialog, button)

    def choose(self, node, is_done):
        name = node.get_name()
        Atspi.Action.do_action(node, 0)
        wait_for(f"{name} in front", is_done)
        time.sleep(0.3)  # it is drawn

    def choose_tab(self, tab):
        name = tab.get_name()
        bar = tab.get_parent()
        self.choose(tab, lambda: bar.get_name() == name)

    def choose_panel(self, button):
        self.choose(button, lambda: is_in(Atspi.StateType.CHECKED, button))

    def end(self):
        self.process.terminate()
        self.process.wait()


def expected(labels, panel):
    """What is to be heard of the labels in a frame of the panel, as patterns."""
    has_b = "lblFrqWgtB" in labels
    for name, value in labels.items():
        of_b = name not in ALL and name.endswith("B")
        base = name if name in ALL else name[:-1]
        if (base in LEVELS and "L" not in panel) or (of_b and "B" not in panel):
            continue
        caption, unit = ALL[base]
        channel = f", Channel {'B' if of_b else 'A'}" if has_b and base not in OF_ONE_CHANNEL else ""
        has_note = unit and base != "lblLn"
        figure, note = re.match(r"(\S+)(.*)" if has_note else "(.*)()", value).groups()
        yield name, caption + channel + re.escape(f", {figure}{unit}{note}")


def check_panel(program, sample):
    labels = json.loads(cli("panel", sample))
    check(len(labels) > 15, f"{sample}: kestrane-cli knows {labels}")
    frames = program.find("radio button")
    check((len(frames) == 3) == ("lblFrqWgtB" in labels), f"{sample}: frames {[f.get_name() for f in frames]}")
    for frame in frames or [None]:
        name = frame.get_name() if frame else "Channels A and B"
        if frame:
            program.choose_panel(frame)
        nodes = list(showing(program.root))
        heard = [n.get_name() for n in nodes if n.get_role_name() == "label"]
        patterns = dict(expected(labels, PANELS[name]))
        for label, pattern in patterns.items():
            count = sum(re.fullmatch(pattern, text) is not None for text in heard)
            check(count == 1, f"{sample}, {name}: {label} is heard {count} times as '{pattern}' in {heard}")
        channels_b = sum(", Channel B, " in text for text in heard)
        check(channels_b == sum(", Channel B" in p for p in patterns.values()), f"{sample}, {name}: {channels_b} of B")
    entries = [n.get_name() for n in nodes if n.get_role_name() == "text"]
    for label in EDITS:
        check(label in entries, f"{sample}: no entry '{label}' in {entries}")


def check_chart(nodes, sample, tab):
    charts = [n for n in nodes if n.get_role_name() == "chart"]
    if not check(len(charts) == 1, f"{sample}, {tab}: {len(charts)} charts"):
        return
    check(charts[0].get_child_count() == 0, f"{sample}, {tab}: parts of a chart are heard")
    summary = charts[0].get_description()
    lines = [line.split("\t") for line in cli("chart", sample, *CHARTS[tab], "--values").splitlines()]
    check(summary.splitlines()[0] == charts[0].get_name(), f"{sample}, {tab}: no title in '{summary}'")
    check("Excluded" not in summary, f"{sample}: excluded rows, which this does not work out")
    for column, label in enumerate(lines[0][1:], 1):
        values = [float(line[column]) for line in lines[1:] if line[column]]
        figures = [min(values), sum(values) / len(values), max(values)] if len(values) > 1 else values
        said = re.search("^" + re.escape(label) + r": (.*)\.$", summary, re.MULTILINE)
        numbers = [float(n) for n in re.findall(r"-?\d+(?:\.\d+)?", said[1])] if said else None
        near = numbers is not None and len(numbers) == len(figures) and all(
            abs(n - f) <= 0.051 for n, f in zip(numbers, figures))
        check(near, f"{sample}, {tab}: {label} is {figures}, heard is '{said and said[0]}'")


def cells(table):
    """The rows of a table, as the names of their cells."""
    table = table.get_table_iface() or table
    rows, columns = Atspi.Table.get_n_rows(table), Atspi.Table.get_n_columns(table)
    return [[Atspi.Table.get_accessible_at(table, row, column).get_name() for column in range(columns)]
            for row in range(rows)]


def check_criteria(program, sample):
    """The figures of each criterion, in its row."""
    tables = [n for n in program.find("table") if n.get_name() == "Criteria"]
    if not check(len(tables) == 1, f"{sample}: {len(tables)} tables of criteria"):
        return
    table = tables[0].get_table_iface() or tables[0]
    heads = [Atspi.Table.get_column_header(table, i).get_name() for i in range(Atspi.Table.get_n_columns(table))]
    check(all(heads), f"{sample}, Criteria: the columns are heard as {heads}")
    rows = cells(tables[0])
    for criterion in json.loads(cli("criteria", sample))["Criteria"]:
        row = next((row for row in rows if row[0] == criterion["Title"]), None)
        if not check(row, f"{sample}: {criterion['Title']} is not heard in {[row[0] for row in rows]}"):
            continue
        for figure in ("LEX8h", "Dose", "TWA"):
            value = criterion[figure]
            said = value is None or any(re.fullmatch(rf"{value:.1f}(\D.*)?", cell) for cell in row)
            check(said, f"{sample}, {criterion['Title']}: {figure} is {value}, heard is {row}")


def check_sample(bench, sample):
    program = Program(bench, sample)
    tabs = {tab.get_name(): tab for tab in program.tabs()}
    check("Full Log" in tabs and "Cumultv (Data)" in tabs, f"{sample}: tabs {list(tabs)}")
    for tab, node in tabs.items():
        if tab == "Compare HPD":
            continue  # it asks for a protector: see check_comparison
        program.choose_tab(node)
        nodes = list(showing(program.root))
        check_heard(nodes, f"{sample}, {tab}")
        if tab in CHARTS:
            check_chart(nodes, sample, tab)
        if tab == "Cumultv (Data)":
            check_panel(program, sample)
        if tab == "Criteria":
            check_criteria(program, sample)
    check(not {"Status", "Process", "Error"} & set(program.status()), f"{sample}: status bar {program.status()}")
    print(f"{sample}: {len(tabs)} tabs")
    program.end()


def check_settings(program):
    """The three pages, and that a choice made by a toggle is followed."""
    program.give("Tools", "Settings")
    dialog = program.dialog("Settings")
    for page in ("System", "Explorer", "Logs"):
        program.choose_tab(control(dialog, "page tab", page))
        nodes = list(showing(dialog))
        check_heard(nodes, f"Settings, {page}")
        if page == "Explorer":
            methods = next(n for n in nodes if n.get_role_name() == "combo box")
            program.act(control(dialog, "radio button", "OSHA"))
            wait_for("the methods of OSHA", lambda: methods.get_child_at_index(0).get_child_count() == 2)
        if page == "Logs":
            check_words(nodes, "Settings, Logs", ["= 8 hours"])
            of_measured_time = control(dialog, "check box", "LEP,d(MT)")
            program.act(control(dialog, "radio button", "Interval figures"))
            wait_for("the figures of intervals", lambda: not is_in(Atspi.StateType.ENABLED, of_measured_time))
    program.close(dialog, "Cancel")


def check_database(program):
    program.give("View", "Hearing Protector Database")
    search = control(program.dialog("Hearing Protector Database"), "text", "Search")
    Atspi.EditableText.set_text_contents(search, "plug")  # brings up the button that clears it
    wait_for("the text", lambda: search.get_child_count() > 0)
    program.check_dialog("Hearing Protector Database", "Close", ["Mean 63 Hz", "Std Dev 8k Hz", "SNR"])


def check_wizard(program):
    program.give("View", "Add/Remove Intervals")
    wizard = program.dialog("Interval Selection Wizard")
    check_heard(showing(wizard), "wizard")
    program.act(control(wizard, "push button", "> Next"))
    wait_for("the second page", lambda: any(n.get_role_name() == "list" for n in showing(wizard)))
    program.check_dialog("Interval Selection Wizard", "Cancel")


def check_zoom(program):
    program.give("View", "Zoom")
    by_time = wait_for("the zoom panel", lambda: program.find("radio button", "Time"))[0]
    check_heard(showing(program.root), "zoom")
    lists = [n for n in program.find("combo box") if "From" in captions(n)[0] or "To" in captions(n)[0]]
    check(len(lists) == 2 and not is_in(Atspi.StateType.ENABLED, lists[0]), "zoom: the lists are not off")
    program.act(by_time)
    wait_for("the lists of the zoom panel", lambda: all(is_in(Atspi.StateType.ENABLED, n) for n in lists))


def check_comparison(program, sample):
    """Chooses the protector that the dialog proposes."""
    program.act(program.find("page tab", "Compare HPD")[0])
    factor = next(n for n in showing(program.dialog("Select a Hearing Protector")) if n.get_role_name() == "combo box")
    correction = str(CORRECTIONS.index(factor.get_name()))
    program.check_dialog("Select a Hearing Protector", "OK", ["Correction factor:"])
    chart = wait_for("the comparison", lambda: program.find("chart"))[0]
    title = chart.get_name()
    compared = json.loads(cli("protectors", "compare", sample, "--protector", title.split(" / ")[1],
                              "--correction", correction))
    check(title == compared["ChartTitle"], f"comparison: {title}")
    check_heard(showing(program.root), "comparison")
    figures = r"\s+".join(re.escape(f"{caption} {value}").replace(r"\ ", r"\s") for caption, value in compared["Panel"])
    check_words(program.find("label"), "comparison", [figures])
    for bar in compared["Bars"]:
        said = re.search("^" + bar["Label"] + r": (.*)\.$", chart.get_description(), re.MULTILINE)
        check(said and abs(float(said[1]) - bar["Level"]) <= 0.051, f"comparison: {bar}, {chart.get_description()}")


def check_note(program):
    program.give("Edit", "Edit Note")
    program.check_dialog("Chart Note", "Cancel")


def check_popups(program, sample):
    """The values of a chart are those that kestrane-cli says. The display options are had of a log and of the tree."""
    program.choose_tab(program.find("page tab", "Cumultv (Graph)")[0])
    program.pop_up(program.find("chart")[0], ord("t"))
    table = next(n for n in showing(program.dialog("Values of .*")) if n.get_role_name() == "table")
    lines = cli("chart", sample, *CHARTS["Cumultv (Graph)"], "--values").splitlines()
    heard = [[float(cell) for cell in row[1:]] for row in cells(table)]
    said = [[float(cell) for cell in line.split("\t")[1:]] for line in lines[1:]]
    check(heard == said, f"{sample}: the values of the chart are {said}, heard is {heard}")
    program.check_dialog("Values of .*", "Close")
    for place in (program.find("chart")[0], program.find("tree")[0]):
        program.pop_up(place, KEY_UP, KEY_RETURN)  # the last one
        program.check_dialog("Display Options", "Cancel")


def check_toggle(program):
    """The button of the tool bar shows and hides the panel of the zoom, whoever presses it."""
    bar = program.find("tool bar")[0]
    zoom = next(n for n in showing(bar) if n.get_name().startswith("Zoom"))
    for is_shown in (True, False):
        program.act(zoom)
        wait_for(f"the zoom panel: {is_shown}", lambda: any(program.find("radio button", "Time")) == is_shown)


def is_behind(node):
    """Whether it is in the explorer window behind the assessment, whose letters do not count."""
    while node is not None and node.get_role_name() != "frame":
        node = node.get_parent()
    return node is not None and node.get_name() == "Kestrane Explorer"


def check_assessment(bench, assessment):
    """The result of each group: its level with the uncertainty, and what is to be done."""
    program = Program(bench, assessment, is_log=False)
    nodes = [node for node in showing(program.root) if not is_behind(node)]
    check_heard(nodes, assessment)
    heard = "\n".join(text for n in nodes for text in (n.get_name(), n.get_description()) if text)
    group = json.loads(cli("assess", assessment))["groups"][0]
    for what in (group["name"], f"{group['lex8h']:.1f} dB", f"{group['upper']:.1f} dB"):
        check(what in heard, f"{assessment}: '{what}' is not heard in {heard}")
    for action in group["actions"]:
        check(action["name"] in heard, f"{assessment}: '{action['name']}' is not heard")
    print("assessment")
    program.end()


def check_dialogs(bench, home, sample):
    simulator = bench.start([SIM, "--family", "brevik", "--from", str(pathlib.Path(SAMPLES, "brevik-short-form.xml")),
                             "--speed", "0"], stdout=subprocess.PIPE)
    device = simulator.stdout.readline().decode().strip()
    instrument = json.loads(cli("identify", "--port", device))
    settings = pathlib.Path(home, ".config", "Velmora.ini")
    settings.parent.mkdir(exist_ok=True)
    with settings.open("a") as file:
        file.write(f"\n[SerialPorts]\nCOM3={device}\n")
    program = Program(bench, sample)
    check_settings(program)
    check_database(program)
    contacts = [re.escape(text) for text in json.loads(cli("text", "10008", "10010")).values()]
    about = program.find("menu item", "Help")[0].get_child_at_index(0)
    program.act(about.get_child_at_index(about.get_child_count() - 1))
    program.check_dialog("About .*", "OK", ["Kestrane .*Version .*", *contacts])
    program.give("View", "Exposure Time")
    program.check_dialog("Exposure Time", "Cancel", ["= 8 hours"])
    check_wizard(program)
    program.give("File", "Print Preview")
    program.check_dialog("Print Preview", "Close", ["Page"])
    program.give("Edit", "Find")
    program.check_dialog("Find", "Close")
    program.give("File", "Download")
    values = [f".*, {instrument[key]}" for key in ("InsName", "InsSerial")]
    program.check_dialog("Download Options", "Cancel", values)
    program.check_dialog("Download function aborted", "OK")
    check_note(program)
    for path, title, button, words in MENU_DIALOGS:
        program.give(*path)
        program.check_dialog(title, button, words)
    check_popups(program, sample)
    check_toggle(program)
    check_zoom(program)
    check_comparison(program, sample)
    program.act(control(program.root, "push button", "Rank"))
    program.check_dialog("Protectors by What They Leave", "Cancel", ["Worn.*"])
    program.end()
    program = Program(bench, str(pathlib.Path(SAMPLES, SPECTRUM_SAMPLE)))
    program.give("View", "Marked Range", "Spectrogram")
    program.check_dialog("Spectrogram - .*", "Close", [])
    print("dialogs")
    program.end()


if __name__ == "__main__":
    KESTRANE, CLI, SIM, SAMPLES = sys.argv[1:]
    with tempfile.TemporaryDirectory() as home, Bench(home) as bench:
        import gi

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, Gio, GLib

        try:
            session = Gio.bus_get_sync(Gio.BusType.SESSION)
            session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, 30000)
        except GLib.Error as error:
            skip(error.message)
        if Atspi.init() not in (0, 1):
            skip("no accessibility bus")
        for sample in ("protector-ac.xml", "night-environment.xml", "brevik-short-form.xml", "shift-dosimeter.xml"):
            check_sample(bench, str(pathlib.Path(SAMPLES, sample)))
        check_assessment(bench, str(pathlib.Path(SAMPLES, "foundry-job.kxa")))
        check_dialogs(bench, home, str(pathlib.Path(SAMPLES, DIALOG_SAMPLE)))
    print(f"{len(failures)} failures")
    sys.exit(1 if failures else 0)
