#!/usr/bin/env python3
"""Prints a recorded drive: 300 positions, five a second, as RMC and GGA sentences."""


def sentence(text):
    checksum = 0
    for character in text:
        checksum ^= ord(character)
    return f"${text}*{checksum:02X}\r"


def main():
    for k in range(300):
        seconds = 36000 + k / 5
        time = f"{int(seconds // 3600):02d}{int(seconds // 60 % 60):02d}{seconds % 60:05.2f}"
        latitude = f"{5150 + k * 7 % 1000 / 100:09.4f},N"
        longitude = f"{528 + k * 13 % 700 / 100:010.4f},E"
        print(sentence(f"GPRMC,{time},A,{latitude},{longitude},{10 + k % 50}.0,{k % 360}.0,010524,,,A"))
        print(sentence(f"GPGGA,{time},{latitude},{longitude},1,08,1.0,{20 + k % 30}.0,M,47.0,M,,"))


if __name__ == "__main__":
    main()
