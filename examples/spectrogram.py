#!/usr/bin/env python3
"""The spectrogram of an octave or third-octave log as a PNG picture: time to the right, frequency upwards, grey by level.

    spectrogram.py FILE OUT.png [LOG]

A row is a column of pixels, a band 8 pixels high; black is the lowest level of the log, white the highest.
"""
import json
import os
import struct
import subprocess
import sys
import zlib

HEIGHT = 8  # pixels of a band


def levels_of(file, log):
    """For each row the levels of its bands in dB, from the lowest band up; a level that is missing is None."""
    cli = os.environ.get("KESTRANE_CLI", "kestrane-cli")
    call = [cli, "export", "--format", "ndjson", "-o", "-", file] + (["--log", log] if log else [])
    rows = [json.loads(line) for line in subprocess.run(call, check=True, capture_output=True).stdout.splitlines()]
    bands = [key for key in rows[0] if key.startswith("LeqA_") and key != "LeqA_dB"]
    if not bands:
        sys.exit("This log has no bands.")
    return [[row.get(band) for band in bands] for row in rows]


def png(rows):
    """A grey picture of 8 bits out of rows of bytes."""
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    head = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 0, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + row for row in rows))
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    columns = levels_of(sys.argv[1], sys.argv[3] if len(sys.argv) > 3 else None)
    present = [level for column in columns for level in column if level is not None]
    low, span = min(present), max(max(present) - min(present), 1)
    grey = [[0 if level is None else round((level - low) / span * 255) for level in column] for column in columns]
    lines = [bytes(line) for line in zip(*grey) for _ in range(HEIGHT)]
    with open(sys.argv[2], "wb") as out:
        out.write(png(lines[::-1]))


if __name__ == "__main__":
    main()
