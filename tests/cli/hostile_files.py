#!/usr/bin/env python3
"""Opens what is no data file, or means harm. Each must end within seconds, with the exit status and the message told
here, and take at most twice the file plus 64 MB of memory.

Usage: hostile_files.py CLI SAMPLE
"""

import os
import sys
import tempfile

SIZE = 30_000_000
SECONDS = 10
MEGABYTE = 1 << 20
HEAD = b'<?xml version="1.0"?><instruments><instrument-data><instrument-detail name="x"/><logs>'
TAIL = b"</logs></instrument-data></instruments>"
BANDS = ["", "20", "31.5", "63", "125", "250", "500", "1K", "2K", "4K", "8K", "16K"]
OPENS = None  # no message, or only this question
QUESTION = "Recalculating this log"


# Contents are lists of pieces that repeat, for this program must stay small: a child's memory begins with its own.
def many(piece, times=None):
    times = times or SIZE // len(piece)
    block = min(1000, times)
    return [piece * block] * (times // block)


def document(before, middle=(), after=b""):
    return [HEAD, before, *middle, after, TAIL]


def nested(tag, times=1_000_000):
    return many(b"<%s>" % tag, times) + many(b"</%s>" % tag, times)


def row_of_everything():
    figures = "".join(f"<f{band}>1</f{band}>" for band in BANDS)
    names = ["leq", "lmin", "lmax"] + [f"ln{n}" for n in range(1, 11)]
    return ("<intvl><ca>" + "".join(f"<{n}>{figures}</{n}>" for n in names) + "</ca></intvl>").encode()


def attributes(count):
    return [b"<a" + b"".join(b' a%d=""' % n for n in range(count)) + b"/>"]


# name, content, message (OPENS: it is a document after all)
CONTENTS = [
    ("empty", [], "no root element"),
    ("garbage", many(os.urandom(1000)), "not well formed"),
    ("zeros", many(b"\0"), "not well formed"),
    ("blanks", many(b" "), "no root element"),
    ("brackets", many(b"<"), "a name is missing"),
    ("open tags", many(b"<a>"), "nested too deeply"),
    ("UTF-16", [b"\xff\xfe", *many("<a>\u4e2d".encode("utf-16-le"))], "not closed"),
    ("many attributes", attributes(200_000), "too many attributes"),
    ("more attributes", [b"<a", *many(b' a=""'), b"/>"], "too many attributes"),
    ("attribute without end", [b'<a b="', *many(b"x")], "does not end"),
    ("deep", document(b"", nested(b"a")), OPENS),
    ("deep logs", document(b"", nested(b"log")), OPENS),
    ("deep rows", document(b"<log>", nested(b"intvls"), b"</log>"), OPENS),
    ("deep figures", document(b"<log><ca>", nested(b"leq"), b"</ca></log>"), OPENS),
    ("deep text", document(b"<log><note>", nested(b"a"), b"</note></log>"), "Unable to open"),
    ("long name", document(b'<log name="', many(b"x"), b'"/>'), "Unable to open"),
    ("quotes", document(b"<log><note>", many(b'"'), b"</note></log>"), "Unable to open"),
    ("note of quotes", document(b"<log><note>", many(b'"', 1_000_000), b"</note></log>"), OPENS),
    ("logs", document(b"", many(b"<log/>")), "Unable to open"),
    ("rowless logs", document(b"<log>", many(b"<intvls/>"), b"</log>"), "Unable to open"),
    ("peaks", document(b"<log><peak-intvls>", many(b"<peak-intvl/>"), b"</peak-intvls></log>"), "Unable to open"),
    ("cuts", document(b"<log><cutintvls>", many(b"<cutintvl/>"), b"</cutintvls></log>"), "Unable to open"),
    ("percentiles", document(b"<log><ca>", many(b'<ln1 no="10"><f>1</f></ln1>'), b"</ca></log>"), OPENS),
    ("empty rows", document(b"<log><intvls>", many(b"<intvl/>"), b"</intvls></log>"), OPENS),
    ("one full row", document(b"<log><md>2</md><intvls>" + row_of_everything(), many(b"<intvl/>"),
                              b"</intvls></log>"), OPENS),
    ("full rows here and there", document(b"<log><md>1</md><intvls>", many(row_of_everything() + b"<intvl/>" * 100_000),
                                          b"</intvls></log>"), OPENS),
    ("full rows far apart", document(b"<log><md>2</md><intvls>", many(row_of_everything() + b"<intvl/>" * 511),
                                     b"</intvls></log>"), "Out of memory"),
]

ROW = b"<LOGSAMPLE></>"


def project(*content):
    return [b"<INSDATA><LOG>", *content, b"</LOG></INSDATA>"]


def full_project_row():
    levels = "".join(f"<{name}A_{band}>1</>" for name in ("LEQ", "LMIN", "LMAX") for band in range(34))
    return f"<MODE>2</><LOGSAMPLE>{levels}</LOGSAMPLE>".encode()


def report(row):
    head = [b"\n"] * 51
    head[2], head[4], head[6], head[12] = b"TR32230417\n", b"Exchange : 3\n", b"Criterion:85\n", b'"Mode: IND"\n'
    head[16] = head[18] = b"Start: 23:58 on 28/02/2004\n"
    return [*head, *many(row)]


# The same of older formats. name, extension, content, message
OLDER = [
    ("commas", "csv", many(b","), "Unable to open"),
    ("quotes", "csv", many(b'"a"b,'), "Unable to open"),
    ("line without end", "csv", many(b"TR"), "Unable to open"),
    ("lines of models", "zdf", many(b"TR\n"), "Unable to open"),
    ("headings", "zd2", many(b"31.5,"), "Unable to open"),
    ("rows", "csv", report(b"2358,1,,1,,,\n"), OPENS),
    ("garbage", "zd4", many(os.urandom(1000)), "Unable to open"),
    ("garbage", "log", many(os.urandom(1000)), "not compatible"),
    ("blocks", "zdp", many(b"<INSDATA>"), "Unable to open"),
    ("logs", "zdp", [b"<INSDATA>", *many(b"<LOG></LOG>"), b"</INSDATA>"], "Unable to open"),
    ("names", "zdp", project(*many(b"<NAME>")), "Unable to open"),
    ("brackets", "zdp", project(b"<NAME>", *many(b"</"), b"</>"), "Unable to open"),
    ("long name", "zdp", project(b"<NAME>", *many(b"'"), b"</>"), "Unable to open"),
    ("empty rows", "zdp", project(*many(ROW)), OPENS),
    ("one full row", "zdp", project(full_project_row(), *many(ROW)), OPENS),
    ("full row at the end", "zdp", project(*many(ROW), full_project_row()), OPENS),
    ("full rows far apart", "zdp", project(*many(full_project_row() + ROW * 511)), "Out of memory"),
    ("peaks", "zdp", project(*many(b"<PEAKSAMPLE></PEAKSAMPLE>")), "Unable to open"),
    ("display", "zdp", project(b"<DISPLAY>", *many(b"<PLOT-LEQ-1-1>True</>"), b"</DISPLAY>"), OPENS),
]


def run(cli, path, folder, settle=lambda: None, verb=("show",)):
    """Exit status, message, seconds of processor time (others may load the machine) and megabytes of a call."""
    with open(os.path.join(folder, "message"), "w+b") as message:
        child = os.fork()
        if child == 0:
            try:
                os.dup2(os.open(os.devnull, os.O_WRONLY), 1)
                os.dup2(message.fileno(), 2)
                settle()
                os.execv(cli, [cli, "--settings", os.path.join(folder, "settings.ini"), *verb, path])
            finally:
                os._exit(127)
        _, status, usage = os.wait4(child, 0)
        message.seek(0)
        text = message.read().decode(errors="replace")
    seconds = usage.ru_utime + usage.ru_stime
    return os.waitstatus_to_exitcode(status), text, seconds, usage.ru_maxrss * 1024 / MEGABYTE


class Check:
    def __init__(self, cli, folder):
        self.cli = cli
        self.folder = folder
        with open(cli, "rb") as program:
            self.is_sanitized = b"__asan_init" in program.read()
        self.failures = 0
        self.idle = run(cli, os.path.join(folder, "none"), folder)[3]

    def case(self, name, path, size, message, status=1, **how):
        got, text, seconds, memory = run(self.cli, path, self.folder, **how)
        bound = self.idle + 2 * size / MEGABYTE + 64
        faults = []
        if got != status:
            faults.append(f"exit {got}")
        if (message or "") not in text or (message is OPENS and text and QUESTION not in text):
            faults.append(f"message {text[:200]!r}")
        if not self.is_sanitized and memory > bound:
            faults.append(f"{memory:.0f} MB of {bound:.0f}")
        if not self.is_sanitized and seconds > SECONDS:
            faults.append(f"{seconds:.1f} s")
        if faults:
            print(f"{name}: {', '.join(faults)}")
            self.failures += 1


def is_reachable(path):
    """Whether any user may run it."""
    return path == "/" or (os.stat(path).st_mode & 1 and is_reachable(os.path.dirname(path)))


def paths(check, sample, folder):
    check.case("missing", os.path.join(folder, "none.xml"), 0, "none.xml: No such file or directory")
    check.case("folder", folder, 0, "Is a directory")
    check.case("device", "/dev/zero", 0, "no root element")
    check.case("long path", folder + "/" + "x" * 300, 0, "File name too long")
    with open(sample, "rb") as file:
        content = file.read()
    for name in (b"new\nline.xml", b"\xff\xfe.xml", b' a  b".xml', b"%s^%n.xml"):
        path = os.path.join(os.fsencode(folder), name)
        with open(path, "wb") as file:
            file.write(content)
        check.case(repr(name), path, len(content), OPENS, status=0)
    cut = os.path.join(folder, "cut.xml")
    with open(cut, "wb") as file:
        file.write(content[: len(content) // 2])
    check.case("truncated", cut, len(content), "not well formed")
    if os.getuid() == 0 and is_reachable(check.cli):
        os.chmod(folder, 0o755)
        os.chmod(cut, 0)
        check.case("no permission", cut, len(content), "Permission denied", settle=lambda: os.setuid(65534))


def small_logs(check, path):
    """As many logs as a file may be worth: the text of each takes hardly more than the log does."""
    row = b"<intvl><ca><leq>80</leq><peak>100</peak></ca></intvl>"
    log = b"<log><interval>60</interval><ca><leq><f>80</f></leq></ca><intvls>" + row * 35 + b"</intvls></log>"
    with open(path, "wb") as file:
        file.writelines(document(b"", many(log, 100_000)))
    check.case("small logs", path, os.path.getsize(path), OPENS, status=0, verb=("panel", "--log", "L100000I1F1"))


def main():
    cli, sample = map(os.path.abspath, sys.argv[1:])
    with tempfile.TemporaryDirectory() as folder:
        check = Check(cli, folder)
        path = os.path.join(folder, "data.xml")
        for name, content, message in CONTENTS:
            with open(path, "wb") as file:
                file.writelines(content)
            size = os.path.getsize(path)
            is_late = message == "Out of memory"  # of rows: the header figures stand
            check.case(name, path, size, message, status=0 if message is OPENS or is_late else 1)
        for name, extension, content, message in OLDER:
            path = os.path.join(folder, "data." + extension)
            with open(path, "wb") as file:
                file.writelines(content)
            size = os.path.getsize(path)
            check.case(f"{name}.{extension}", path, size, message, status=0 if message is OPENS else 1)
            os.remove(path)
        paths(check, sample, folder)
        small_logs(check, path)
    return 1 if check.failures else 0


sys.exit(main())
