#!/usr/bin/env python3
"""Writes the program's sounds into resources/Sounds: soft bell tones, mono, 16 bit, 22050 Hz."""

import math
import struct
import wave
from pathlib import Path

RATE = 22050
PARTIALS = ((1.0, 1.0), (2.0, 0.35), (3.01, 0.12))  # frequency ratio and loudness of a bell's overtones
SOUNDS = {  # file name: seconds, then the notes as start in seconds, frequency in Hz, loudness
    "message1.wav": (0.45, ((0.0, 783.99, 0.5), (0.09, 1046.5, 0.5))),
    "online.wav": (0.75, ((0.0, 523.25, 0.4), (0.12, 659.26, 0.4), (0.24, 783.99, 0.45))),
}


def bell(frequency, age):
    """A struck bell `age` seconds ago: a short attack, then each overtone fades the faster the higher it is."""
    if age < 0:
        return 0.0
    attack = min(1.0, age / 0.006)
    return attack * sum(
        loudness * math.exp(-7.0 * ratio * age) * math.sin(2 * math.pi * frequency * ratio * age)
        for ratio, loudness in PARTIALS
    )


def samples(seconds, notes):
    count = int(seconds * RATE)
    for i in range(count):
        time = i / RATE
        release = min(1.0, (count - i) / (0.06 * RATE))  # no click at the end
        value = release * sum(loudness * bell(frequency, time - start) for start, frequency, loudness in notes)
        yield int(max(-1.0, min(1.0, value * 0.8)) * 32767)


def main():
    folder = Path(__file__).resolve().parent.parent / "Sounds"
    folder.mkdir(exist_ok=True)
    for name, (seconds, notes) in SOUNDS.items():
        with wave.open(str(folder / name), "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes(b"".join(struct.pack("<h", value) for value in samples(seconds, notes)))


if __name__ == "__main__":
    main()
