#!/usr/bin/env python3
"""A made-up archive to try things on: COUNT data files of an hour each in OUT, a folder for each of 20 sites.

    make_archive.py OUT COUNT

The same call always makes the same files.
"""
import math
import pathlib
import random
import sys

HEAD = ('<?xml version="1.0"?><instruments><instrument-data><instrument-detail name="{site}" instrument-name="TR360L" '
        'instrument-serial="{serial}"/><logs>')
TAIL = "</logs></instrument-data></instruments>"


def log(chance, number):
    """A broadband log of 60 rows of a minute, A-weighted, about a level between 70 and 95 dB."""
    middle = chance.uniform(70, 95)
    rows = [round(min(max(chance.gauss(middle, 4), 40), 120), 1) for _ in range(60)]
    leq = 10 * math.log10(sum(10 ** (level / 10) for level in rows) / len(rows))
    day = f"{chance.randint(1, 28):02}&#47;{chance.randint(1, 12):02}&#47;{chance.randint(2015, 2024)}"
    body = "".join(f"<intvl><date>{day}</date><time>08:{minute:02}:00</time><ca><leq><f>{level}</f></leq></ca></intvl>"
                   for minute, level in enumerate(rows))
    return (f'<log name="Shift {number}"><sl>8</sl><cri>85</cri><ex>3</ex><sdt>{day}</sdt><stm>08:00:00</stm>'
            f"<edt>{day}</edt><etm>09:00:00</etm><interval>60</interval>"
            f"<ca><tw>Slow</tw><fw>A</fw><leq><f>{leq:.1f}</f></leq></ca><intvls>{body}</intvls></log>")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    out, count = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    for number in range(count):
        chance = random.Random(number)
        site = f"site-{number % 20:02}"
        (out / site).mkdir(parents=True, exist_ok=True)
        text = HEAD.format(site=site, serial=100 + number % 7) + log(chance, number) + TAIL
        (out / site / f"{number:06}.xml").write_text(text)


if __name__ == "__main__":
    main()
