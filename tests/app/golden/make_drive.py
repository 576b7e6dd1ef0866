#!/usr/bin/env python3
"""Computes drive.log, the log file of the golden drive, without the program: its own arithmetic from the published
formulas and the default calibration table. Run it in this folder after the drive in golden_drive_test.cpp changes.
"""

import math
import struct
from datetime import datetime, timedelta

POINTS = [
    (0, "S0", "0", "0"), (1, "S1", "0.2", "0.083"), (2, "S2", "0.39", "0.16"), (8, "S3", "0.78", "0.32"),
    (18, "S4", "1.56", "0.65"), (32, "S5", "3.13", "1.30"), (50, "S6", "6.25", "2.59"), (72, "S7", "12.5", "5.19"),
    (98, "S8", "25", "10.4"), (128, "S9", "50", "20.7"), (162, "S9 + 10dB", "158", "65"),
    (180, "S9 + 20dB", "500", "207"), (198, "S9 + 30dB", "1580", "656"), (216, "S9 + 40dB", "5000", "2075"),
    (234, "S9 + 50dB", "15800", "6560"), (255, "S9 + 60dB", "50000", "20750")]


def single(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def plain(x, digits):
    """Shortest plain decimal with at most `digits` significant digits, no zero before the point."""
    text = "%.*f" % (max(0, digits - (len(str(int(abs(x)))) if abs(x) >= 1 else 0)), x)
    if "." in text:
        text = text.rstrip("0").rstrip(".")
    if text.startswith("0."):
        text = text[1:]
    return text or "0"


def half_even(x, decimals):
    scaled = x * 10 ** decimals
    return round(scaled) / 10 ** decimals


def convert(raw):
    for row, s, uv, mv in POINTS:
        if row == raw:
            return s, uv, mv
    lower = max(p for p in POINTS if p[0] < raw)
    upper = min(p for p in POINTS if p[0] > raw)
    if upper[0] == 255:
        return "S?", "???", "???"
    # Row 0 holds 0 uV, which is no lower point of the voltage: below S1 nothing is interpolated (not driven here).
    assert lower[0] > 0

    def between(column):
        low, high = single(float(lower[column])), single(float(upper[column]))
        slope = single(single(high - low) / (upper[0] - lower[0]))
        return single(single((raw - lower[0]) * slope) + low)

    s = lower[1] + "+" if len(lower[1]) == 2 else lower[1]
    return s, plain(single(half_even(between(2), 1)), 7), plain(single(half_even(between(3), 2)), 7)


def degrees(text):
    point = text.index(".")
    value = single(int(text[:point - 2]) + int(text[point - 2:point]) / 60 + int(text[point + 1:point + 3]) / 60 * 0.01)
    return float("%.7g" % value) * (-1 if text[-1] in "SW" else 1)


def distance_bearing(rx, tx):
    factor = 40398736 / 40678884
    lat1, lat2 = (math.atan(factor * math.tan(math.radians(degrees(p[0])))) for p in (rx, tx))
    lon1, lon2 = (math.radians(degrees(p[1])) for p in (rx, tx))
    c = math.cos(lat1) * math.cos(lat2) * math.cos(lon1 - lon2) + math.sin(lat1) * math.sin(lat2)
    d = math.atan(math.sqrt(abs((1 - c * c) / c)))
    y = math.sin(lon2 - lon1) * math.cos(lat2) * math.cos(lat1)
    x = math.sin(lat2) - math.cos(d) * math.sin(lat1)
    theta = math.atan2(y, x) % (2 * math.pi)
    return single(6367 * d), single(half_even(math.degrees(theta), 1))


def drive():
    start = datetime(2026, 5, 17, 14, 3, 9)
    tx = ("5157.00N", "00532.00E")
    records, validity, lines = [], "No GPS", []

    def flush(elapsed_ms):
        now = start + timedelta(seconds=elapsed_ms // 1000)
        header = now.strftime("%d-%m-%Y %H:%M:%S") + ", 5157.00N, 00532.00E, 25 m,  FT840 LSB 3630 kHz, Antenna1, PWR 10W"
        lines.extend(["-" * len(header), header, "-" * len(header)] + records)
        records.clear()

    shown = None
    for k in range(250):
        elapsed_ms = 1050 * (k + 1)
        lat = 5150 + (k * 7 % 1000) / 100
        lon = 528 + (k * 13 % 700) / 100
        texts = ("%07.2fN" % lat, "%08.2fE" % lon)
        knots = 10 + k % 50
        raw = 1 + k * 37 % 254
        if k % 25 != 24:  # every 25th fix is missing: the captions stay
            distance, bearing = distance_bearing(texts, tx)
            height = plain(half_even(knots * 0.3048, 1), 15)
            shown = ("GPS Ok, %s, %s, %s km, %s m, %03d\xb0" %
                     (texts[0], texts[1], plain(half_even(distance, 2), 15), "0" + height if height[0] == "." else height,
                      round(bearing)))
        s, uv, mv = convert(raw)
        now = start + timedelta(seconds=elapsed_ms // 1000)
        records.append("%s, %s, %d, %s, %s uV, %s mV/m" % (now.strftime("%H:%M:%S"), shown, raw, s, uv, mv))
        if len(records) == 100:
            flush(elapsed_ms)
    flush(1050 * 250)
    return lines


with open("drive.log", "wb") as log:
    log.write("".join(line + "\r\n" for line in drive()).encode("cp1252"))
