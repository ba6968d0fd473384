"""What the tests of kestrane-cli share: its calls, and a folder of its own for each test. What a verb prints is checked
against the verb's schema, whatever else a test asks of it."""

import functools
import json
import os
import resource
import subprocess
import sys
import tempfile
import unittest

from jsonschema import Draft202012Validator

CLI, SAMPLES = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[-1])
ROWS = 3     # of a log that are checked at either end: the checker takes its time


def sample(name):
    return os.path.join(SAMPLES, name + ".xml")


@functools.cache
def validators():
    schemas = json.loads(subprocess.run([CLI, "schema"], capture_output=True, check=True).stdout)
    for schema in schemas.values():
        Draft202012Validator.check_schema(schema)
    return {verb: Draft202012Validator(schema) for verb, schema in schemas.items()}


def with_few_rows(json_object):
    items = json_object.get("Items")
    return {**json_object, "Items": items[:ROWS] + items[-ROWS:]} if items else json_object


def check_output(words, out):
    """Raises when the output of a call with these words is not what the schema of its verb says."""
    names = [os.fsdecode(word) for word in words]
    if "schema" in names:
        return
    for place, name in enumerate(names):
        verb = "-".join(names[place:place + 2]) if name == "protectors" else name
        if verb in validators() and out[:1] in "{[" and "--values" not in names:
            for line in out.splitlines():
                validators()[verb].validate(json.loads(line, object_hook=with_few_rows))
            return


def run(*words, **how):
    """Exit status, output and messages of a call."""
    how = {"env": {**os.environ, "LC_ALL": "C"}, **how}
    result = subprocess.run([CLI, "--settings", "settings.ini", *words], capture_output=True, check=False, **how)
    out = result.stdout.decode()
    check_output(words, out)
    return result.returncode, out, result.stderr.decode(errors="backslashreplace")


def a_disk_that_fills_up_at(size):
    """What a child calls first: no file of it grows beyond so many bytes."""
    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
    return limit


class InAFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)


def main():
    unittest.main(module="__main__", argv=sys.argv[:1])
