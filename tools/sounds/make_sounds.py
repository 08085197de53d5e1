#!/usr/bin/env python3
"""Makes the sounds in resources/sounds; run by hand after changing a sound.

    tools/sounds/make_sounds.py [NAME...]

With names only those are made. The same source gives the same files.
"""

import math
import pathlib
import struct
import sys
import wave

from instrument import RATE, Score, glide, pitch

FOLDER = pathlib.Path(__file__).resolve().parents[2] / "resources" / "sounds"

# A muted bar: the ground tone and a little of its octave.
MUTED = ((1.0, 1.0, 1.0), (2.0, 0.06, 2.0))


def run(length, step, notes, decay=0.11, levels=None):
    """Notes struck one after the other, `step` seconds apart."""
    score = Score(length)
    for i, name in enumerate(notes.split()):
        score.note(i * step, pitch(name), decay, levels[i] if levels else 1.0)
    return score


# The island moves.

def peek():
    """A head round the corner: a small lift, at once over."""
    return Score(0.18).note(0, pitch("G5"), 0.04, bend=glide(pitch("A5") / pitch("G5"), 0.05)), -14


def open_():
    """Unfolds upwards; "close" is the way back."""
    score = run(0.42, 0.048, "C5 E5 G5", levels=(0.7, 0.85, 1.0))
    return score.breath(0, 0.24, 900, 0.16, sweep=2.2), -11


def close():
    score = run(0.40, 0.048, "G5 E5 C5", decay=0.085, levels=(1.0, 0.8, 0.7))
    return score.breath(0, 0.24, 2000, 0.16, sweep=0.45), -13


# The mascot is touched.

def hover():
    return Score(0.24).note(0, pitch("A5"), 0.06, attack=0.022, partials=MUTED), -18


def blip():
    return Score(0.14).note(0, pitch("E6"), 0.028), -13


def slap():
    """A soft pat on something round."""
    score = Score(0.2).note(0, 440, 0.04, attack=0.002, bend=glide(0.5, 0.06, 0.6), partials=MUTED)
    return score.breath(0, 0.035, 1500, 0.5, width=1.2, peak=0.1), -9


def annoyed():
    """Grumbles twice, the second time lower."""
    score = Score(0.34)
    score.note(0, pitch("Eb4"), 0.05, bend=glide(0.94, 0.1), vibrato=(0.5, 26))
    score.note(0.12, pitch("D4"), 0.07, bend=glide(0.88, 0.16), vibrato=(0.5, 24))
    return score, -10


def dizzy():
    """Winds down in circles."""
    return Score(0.6).note(0, pitch("A5"), 0.17, hold=0.14, attack=0.02,
                           bend=glide(0.42, 0.56, 1.2), vibrato=(1.1, 8), partials=MUTED), -12


def love():
    """Two warm heartbeats and a glint."""
    score = Score(0.6)
    for start, level in ((0, 0.8), (0.15, 1.0)):
        score.note(start, pitch("E5"), 0.13, level, attack=0.014, vibrato=(0.08, 6))
        score.note(start, pitch("G4"), 0.13, 0.6 * level, attack=0.014)
    return score.note(0.27, pitch("C6"), 0.1, 0.4, attack=0.01), -11


def wink():
    score = Score(0.26).note(0, pitch("G5"), 0.02, 0.5)
    return score.note(0.045, pitch("E6"), 0.055), -14


def proud():
    """A fanfare for a very small brass band."""
    score = run(0.6, 0.085, "G4 C5 E5", decay=0.07, levels=(0.7, 0.8, 0.9))
    score.note(0.3, pitch("G5"), 0.12)
    return score.note(0.3, pitch("C5"), 0.12, 0.5), -10


def yawn():
    """Opens wide, hangs there and sinks."""
    def arch(t):
        x = min(1.0, t / 0.56)
        return 2 ** ((7 * math.sin(math.pi * x) ** 1.5 - 3 * x) / 12)

    score = Score(0.6).note(0, pitch("A4"), 0.1, attack=0.16, hold=0.33, bend=arch,
                            vibrato=(0.1, 5), partials=MUTED)
    return score.breath(0, 0.58, 1100, 0.1, width=0.5, sweep=0.7), -13


def sleep():
    """Two steps down into the pillow."""
    score = Score(0.6).note(0, pitch("G4"), 0.11, 0.9, attack=0.035, partials=MUTED)
    return score.note(0.2, pitch("C4"), 0.13, attack=0.05, partials=MUTED), -13


def greet():
    """Hello: the key's own chord, opened, with its top note left to ring."""
    score = run(1.05, 0.085, "C5 E5 G5", decay=0.16, levels=(0.7, 0.75, 0.8))
    score.note(0.275, pitch("C6"), 0.24, 0.9)
    return score.note(0.275, pitch("C5"), 0.24, 0.35), -9


# The agents work.

def work():
    """Sleeves up: two even, muffled knocks."""
    score = Score(0.3)
    score.note(0, pitch("C5"), 0.04, partials=MUTED)
    return score.note(0.1, pitch("D5"), 0.05, partials=MUTED), -14


def think():
    """To and fro, without getting anywhere."""
    score = Score(0.5)
    for start, name in ((0, "E5"), (0.13, "A4"), (0.26, "E5")):
        score.note(start, pitch(name), 0.055, 0.9, attack=0.016, partials=MUTED)
    return score, -16


def search():
    """Looks here, there, and there."""
    return run(0.42, 0.085, "D5 A5 E5 B5", decay=0.035, levels=(0.8, 0.9, 0.8, 1.0)), -14


def finish():
    """Home: the fifth steps down to the full chord of the key, which rings."""
    score = Score(0.6).note(0, pitch("G5"), 0.08, 0.75)
    for name, level in (("C6", 0.85), ("E5", 0.45), ("C5", 0.6)):
        score.note(0.11, pitch(name), 0.14, level)
    return score, -8


def error():
    """Falls, each step softer than the last; a pity, no alarm."""
    score = Score(0.6).note(0, pitch("F5"), 0.06, 0.9)
    score.note(0.12, pitch("D5"), 0.07, 0.9)
    return score.note(0.24, pitch("B4"), 0.11, bend=glide(0.955, 0.26)), -9


def rate():
    """Hold on: the same low note, again and again."""
    score = Score(0.58)
    for i, level in enumerate((1.0, 0.8, 0.6)):
        score.note(0.15 * i, pitch("A4"), 0.045, level, partials=MUTED)
    return score, -12


# Something is asked or answered.

def approval():
    """Asks, politely twice, and ends on the leading note: "approve" takes it home."""
    score = Score(0.6)
    for start, low, high in ((0, "D5", "G5"), (0.22, "G5", "B5")):
        score.note(start, pitch(low), 0.07, 0.75)
        score.note(start + 0.085, pitch(high), 0.11)
    return score, -7


def question():
    """One lifted eyebrow."""
    lift = glide(pitch("B5") / pitch("G5"), 0.16, 1.6)
    score = Score(0.45).note(0, pitch("E5"), 0.055, 0.7)
    return score.note(0.1, pitch("G5"), 0.085, hold=0.05, bend=lift), -10


def approve():
    score = Score(0.42).note(0, pitch("B5"), 0.035, 0.6)
    score.note(0.07, pitch("C6"), 0.09)
    return score.note(0.07, pitch("E5"), 0.1, 0.5), -10


def send():
    """Off it flies."""
    score = Score(0.34).note(0, pitch("G4"), 0.06, attack=0.02, hold=0.1,
                             bend=glide(4.0, 0.22, 1.5), partials=MUTED)
    return score.breath(0, 0.3, 800, 0.28, sweep=5, peak=0.65), -13


# Files.

def gulp():
    """Down it goes, and a bubble comes up."""
    score = Score(0.34)
    score.note(0, 520, 0.07, attack=0.008, hold=0.03, bend=glide(0.42, 0.11), partials=MUTED)
    return score.note(0.15, 270, 0.04, 0.8, attack=0.01, hold=0.03, bend=glide(2.1, 0.09),
                      partials=MUTED), -9


def tick():
    """Nearly nothing."""
    return Score(0.06).note(0, pitch("C7"), 0.007, partials=MUTED), -24


def pop():
    return Score(0.13).note(0, 330, 0.022, attack=0.003, hold=0.025, bend=glide(2.9, 0.055),
                            partials=MUTED), -10


def attach():
    """Snaps on: a knock, and the note that says it holds."""
    score = Score(0.3).note(0, 260, 0.018, 0.9, attack=0.002, partials=MUTED)
    score.breath(0, 0.02, 2600, 0.25, width=1.2, peak=0.15)
    return score.note(0.055, pitch("G5"), 0.055, 0.8), -11


SOUNDS = {f.__name__.rstrip("_"): f for f in (
    peek, open_, close, hover, blip, slap, annoyed, dizzy, greet, work, finish, error, approval,
    question, approve, gulp, tick, send, love, pop, proud, wink, yawn, attach, think, search, rate,
    sleep)}


def write(name):
    score, peak_db = SOUNDS[name]()
    samples = [round(s * 32767) for s in score.finished(peak_db)]
    with wave.open(str(FOLDER / f"{name}.wav"), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(struct.pack(f"<{len(samples)}h", *samples))


if __name__ == "__main__":
    unknown = [name for name in sys.argv[1:] if name not in SOUNDS]
    if unknown:
        sys.exit(f"no such sound: {' '.join(unknown)}")
    for sound in sys.argv[1:] or SOUNDS:
        write(sound)
