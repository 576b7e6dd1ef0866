#!/usr/bin/env python3
"""Compares two logs of the same recorded drive with the meter going through all its values.

Times, and which reading falls on which position, must differ. Everything that is made of a position or of a reading
has to be the same text, and so has everything around the records: compare_logs.py ONE OTHER"""

import re
import sys

RECORD = re.compile(rb"\d\d:\d\d:\d\d, ")
STAMP = re.compile(rb"\d\d-\d\d-\d{4} \d\d:\d\d:\d\d")


def read(path):
    """Lines that are no record, with the stamp masked; what is made of positions, and of readings."""
    around, positions, readings, count = [], {}, {}, 0
    with open(path, "rb") as file:
        content = file.read()
    assert content.endswith(b"\r\n"), f"{path}: the last line has no end"
    assert content.count(b"\n") == content.count(b"\r\n"), f"{path}: a line end without CR"
    for line in content.split(b"\r\n")[:-1]:
        if not RECORD.match(line):
            around.append(STAMP.sub(b"dd-mm-yyyy hh:mm:ss", line))
            continue
        count += 1
        fields = line.split(b", ")
        assert len(fields) == 11, line
        if fields[1] == b"GPS Ok":
            place = fields[4] + b", " + fields[6]
            assert positions.setdefault(fields[2] + b", " + fields[3], place) == place, line
        reading = readings.setdefault(fields[7], b", ".join(fields[8:]))
        assert reading == b", ".join(fields[8:]), line
    return around, positions, readings, count


def same(name, one, other, least):
    shared = one.keys() & other.keys()
    for key in sorted(shared):
        assert one[key] == other[key], f"{name} {key!r}: {one[key]!r} and {other[key]!r}"
    assert len(shared) >= least, f"only {len(shared)} {name} in both"
    return len(shared)


def main():
    one, other = read(sys.argv[1]), read(sys.argv[2])
    assert one[3] >= 250 and other[3] >= 250, (one[3], other[3])
    assert one[0][:9] == other[0][:9], "heads of blocks differ"
    print(f"   {one[3]} and {other[3]} records; equal: {same('positions', one[1], other[1], 100)} positions, "
          f"{same('readings', one[2], other[2], 60)} readings, heads of blocks")


if __name__ == "__main__":
    main()
