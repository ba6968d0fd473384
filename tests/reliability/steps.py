"""one_program, step by step, and what its files say."""

import json
import subprocess
import xml.etree.ElementTree

PATIENCE = 60  # seconds


class Program:
    """A running program that has not opened its file yet. A step gives its answer as one_program prints it."""

    def __init__(self, folder, path, state, **more):
        self.process = subprocess.Popen([str(folder / "one_program"), "steps", str(path), str(state) + "/"], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, **more)

    def step(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().strip()

    def end(self):
        self.process.stdin.close()
        assert self.process.wait(PATIENCE) == 0, "it has ended with a fault"


def name_in(path):
    """The name of the first collection of a data file, or the title of an assessment; None when there is no file."""
    if not path.exists():
        return None
    if ".kxa" in path.name:
        return json.loads(path.read_text())["title"]
    return xml.etree.ElementTree.parse(path).find(".//instrument-detail").get("name")
