#!/usr/bin/python3
"""Two running programs open, change and save one file in each of the 6 possible orders.

    two_programs.py BIN SAMPLES

BIN is the folder of one_program. The two are of one user, who sees that the file is open elsewhere, or of two users, who do
not. What one has saved may only be replaced by the other when the other had opened it or its user was asked. Prints a
line for the table of docs/reliability.md.
"""

import datetime
import itertools
import pathlib
import shutil
import sys
import tempfile

import steps

ORDERS = [order for order in sorted(set(itertools.permutations("AABB")))]


def lost_updates(folder, bin_folder, sample, order, is_one_user):
    """Runs one order: at its first letter a program opens the file, at its second it saves. Returns how many updates were
    lost without a question, and how many questions were asked."""
    path = folder / ("a" + sample.suffix)
    shutil.copy(sample, path)
    programs = {who: steps.Program(bin_folder, path, folder / ("state" if is_one_user else "state " + who)) for who in "AB"}
    seen = {who: set() for who in "AB"}  # whose updates were in the file as it was opened
    inside, is_open, asked, lost = set(), set(), 0, 0
    for who in order:
        if who not in is_open:
            is_open.add(who)
            answers = [programs[who].step("open"), programs[who].step("name " + who)]
            seen[who] = set(inside)
        else:
            answers = [programs[who].step("save")]
            assert answers[0].startswith("done"), answers
        is_asked = any("asked" in answer for answer in answers)
        asked += is_asked
        if answers[0].startswith("done") and len(answers) == 1 and steps.name_in(path) == who:
            lost += bool(inside - seen[who]) and not is_asked
            inside = seen[who] | {who}
    for who, program in programs.items():
        program.end()
        found = [steps.name_in(path), steps.name_in(path.with_name(path.name + ".mine"))]
        if who not in inside and who not in found and not asked:
            lost += 1
    return lost, asked


def main():
    bin_folder, samples = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    lost = asked = runs = 0
    for sample in (samples / "roadworks-selection.xml", samples / "welder-tasks.kxa"):
        for order, is_one_user in itertools.product(ORDERS, (True, False)):
            with tempfile.TemporaryDirectory() as folder:
                one = lost_updates(pathlib.Path(folder), bin_folder, sample, order, is_one_user)
            if one[0]:
                print(f"lost: {sample.name}, {''.join(order)}, {'one user' if is_one_user else 'two users'}")
            lost, asked, runs = lost + one[0], asked + one[1], runs + 1
    print(f"| {datetime.date.today()} | {len(ORDERS)} orders, {runs} runs | {asked} | {lost} |")
    return 1 if lost or not asked else 0


if __name__ == "__main__":
    sys.exit(main())
