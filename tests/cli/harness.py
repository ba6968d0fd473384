"""What the tests of kestrane-cli share: its calls, and a folder of its own for each test."""

import os
import subprocess
import sys
import tempfile
import unittest

CLI, SAMPLES = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[-1])


def sample(name):
    return os.path.join(SAMPLES, name + ".xml")


def run(*words, **how):
    """Exit status, output and messages of a call."""
    result = subprocess.run([CLI, "--settings", "settings.ini", *words], capture_output=True, check=False,
                            env={**os.environ, "LC_ALL": "C"}, **how)
    return result.returncode, result.stdout.decode(), result.stderr.decode()


class InAFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)


def main():
    unittest.main(module="__main__", argv=sys.argv[:1])
