#!/usr/bin/env python3
"""What is installed: every file belongs to one package, and a desktop finds the program, its file types and icons.

Usage: installed_files.py CMAKE BUILD VERSION SAMPLE
"""

import configparser
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

CMAKE, BUILD, VERSION, SAMPLE = sys.argv[1:]
ID = "example.ordwyn.Kestrane"
PACKAGES = ("kestrane", "kestrane-cli", "kestrane-sim", "kestrane-common")
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def files_below(folder):
    return {os.path.relpath(os.path.join(path, name), folder) for path, _, names in os.walk(folder) for name in names}


def install(folder, *words):
    subprocess.run([CMAKE, "--install", BUILD, "--prefix", folder, *words], check=True, stdout=subprocess.DEVNULL)
    return files_below(folder)


def answer(*words):
    return subprocess.run(words, capture_output=True, check=False, text=True)


class InstalledFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.parts = {name: install(os.path.join(cls.folder.name, name), "--component", name) for name in PACKAGES}
        cls.share = os.path.join(cls.folder.name, "kestrane", "share")

    def test_every_file_belongs_to_one_package(self):
        with tempfile.TemporaryDirectory() as folder:
            whole = install(folder)
        self.assertEqual(sorted(whole), sorted(name for files in self.parts.values() for name in files))
        for package, name in (("kestrane", "bin/kestrane"), ("kestrane", "share/man/man1/kestrane.1"),
                              ("kestrane-cli", "bin/kestrane-cli"), ("kestrane-cli", "share/man/man1/kestrane-cli-show.1"),
                              ("kestrane-cli", "share/bash-completion/completions/kestrane-cli"),
                              ("kestrane-sim", "bin/kestrane-sim"), ("kestrane-sim", "share/man/man1/kestrane-sim.1"),
                              ("kestrane-common", "share/kestrane/samples/shift-dosimeter.xml"),
                              ("kestrane-common", "share/kestrane/hpd_hml_db.txt"),
                              ("kestrane-common", "share/kestrane/help/help.html"),
                              ("kestrane-common", "share/man/man5/kestrane-xml.5")):
            self.assertIn(name, self.parts[package])

    def test_the_command_line_needs_the_core_of_the_toolkit_alone_and_another_package_to_draw(self):
        alone = os.path.join(self.folder.name, "kestrane-cli", "bin", "kestrane-cli")
        self.assertEqual(set(re.findall(r"lib(?:Qt6|GL|EGL|X11|xcb)\w*", answer("ldd", alone).stdout)), {"libQt6Core"})
        drawing = {"chart": ("--tab", "0", "-o", "x.png"), "report": ("-o", "x.pdf")}
        with tempfile.TemporaryDirectory() as folder:
            install(folder)
            for verb, words in drawing.items():
                output = os.path.join(folder, words[-1])
                call = [verb, SAMPLE, *words[:-1], output]
                result = answer(alone, *call)
                self.assertEqual((result.returncode, os.path.exists(output)), (1, False))
                self.assertIn("package 'kestrane'", result.stderr)
                result = answer(f"{folder}/bin/kestrane-cli", *call)
                self.assertEqual((result.returncode, os.path.exists(output)), (0, True), result.stderr)
        for words in (["show", SAMPLE], ["chart", SAMPLE, "--tab", "0", "--values"], ["ports"]):
            self.assertEqual(answer(alone, *words).returncode, 0, words)

    def test_the_menu_entry_and_the_catalogue_page_are_valid_and_agree(self):
        entry, page = f"{self.share}/applications/{ID}.desktop", f"{self.share}/metainfo/{ID}.metainfo.xml"
        for words in (["desktop-file-validate", "--no-hints", entry], ["appstreamcli", "validate", "--no-net", page]):
            result = answer(*words)
            self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        desktop = configparser.ConfigParser(interpolation=None)
        desktop.optionxform = str
        desktop.read(entry)
        types = desktop["Desktop Entry"]["MimeType"].strip(";").split(";")
        root = xml.etree.ElementTree.parse(page).getroot()
        self.assertEqual(root.findtext("launchable"), ID + ".desktop")
        self.assertEqual([item.text for item in root.iter("mediatype")], types)
        self.assertEqual(root.find("releases/release").get("version"), VERSION)
        self.assertIn(f"bin/{desktop['Desktop Entry']['Exec'].split()[0]}", self.parts["kestrane"])

    def test_file_names_lead_to_the_types(self):
        result = answer("update-mime-database", "-V", f"{self.share}/mime")
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(f"{self.share}/mime/globs2", encoding="utf-8") as file:
            globs = {line.split(":")[2].strip(): line.split(":")[1] for line in file if ":" in line}
        kinds = {"project": ("zdp",), "sound": ("zdf", "zdo", "zd2", "zd4"), "assessment": ("kxa",)}
        self.assertEqual(globs, {"*." + end: "application/x-kestrane-" + kind for kind, ends in kinds.items() for end in ends})

    def test_every_icon_is_there_at_every_size(self):
        kinds = [("apps", ID)] + [("mimetypes", "application-x-kestrane-" + kind) for kind in ("project", "sound", "assessment")]
        for folder, name in kinds:
            self.assertTrue(os.path.exists(f"{self.share}/icons/hicolor/scalable/{folder}/{name}.svg"))
            for size in SIZES:
                with open(f"{self.share}/icons/hicolor/{size}x{size}/{folder}/{name}.png", "rb") as file:
                    head = file.read(24)
                self.assertEqual(struct.unpack(">II", head[16:]), (size, size), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
