"""The one instrument of all of Tirlo's sounds: a soft mallet on a small wooden bar."""

import math
import random

RATE = 48000

# Equal temperament; the sounds share one key, C major, so that any two of them go together.
_STEPS = {"C": -9, "D": -7, "E": -5, "F": -4, "G": -2, "A": 0, "B": 2}


def pitch(name):
    """The frequency in Hz of a note such as "A4" or "Eb5"."""
    step = _STEPS[name[0]] + {"b": -1, "#": 1}.get(name[1], 0) + 12 * (int(name[-1]) - 4)
    return 440.0 * 2 ** (step / 12)


# A bar's partials: multiple of the pitch, level, and how much faster than the ground tone it dies.
_BAR = ((1.0, 1.0, 1.0), (2.0, 0.10, 1.6), (3.93, 0.16, 5.0), (9.2, 0.03, 14.0))


class Score:
    """A stretch of sound to which notes and breaths are added; times are seconds."""

    def __init__(self, length):
        self.samples = [0.0] * round(length * RATE)

    def note(self, start, freq, decay=0.12, level=1.0, attack=0.004, bend=None, hold=0.0,
             vibrato=(0.0, 0.0), partials=_BAR):
        """Strikes one bar.

        `decay` is the time in which it falls to a third, counted after `hold`. `bend` maps the
        time since the stroke to a factor of the pitch. `vibrato` is a depth in semitones and a
        rate in Hz.
        """
        depth, rate = vibrato
        first = round(start * RATE)
        phase = 0.0
        for i in range(first, len(self.samples)):
            t = (i - first) / RATE
            fading = max(0.0, t - hold)
            if fading > 9 * decay:
                break
            factor = bend(t) if bend else 1.0
            factor *= 2 ** (depth * math.sin(math.tau * rate * t) / 12)
            phase += math.tau * freq * factor / RATE
            rise = 0.5 - 0.5 * math.cos(math.pi * min(1.0, t / attack))
            value = sum(amount * math.exp(-fading * speed / decay) * math.sin(phase * multiple)
                        for multiple, amount, speed in partials if freq * multiple < 16000)
            self.samples[i] += level * rise * value
        return self

    def breath(self, start, length, centre, level, width=0.7, sweep=1.0, peak=0.5):
        """Adds air: noise around `centre` Hz that drifts to `centre * sweep`, loudest at `peak`.

        `peak` is a share of `length`; `width` is the band's width as a share of its centre.
        """
        noise = random.Random(round(centre) * 7919 + round(length * 1000))
        first = round(start * RATE)
        count = min(round(length * RATE), len(self.samples) - first)
        low = band = 0.0
        for i in range(count):
            x = i / count
            swell = (x / peak if x < peak else (1 - x) / (1 - peak))
            swell = 0.5 - 0.5 * math.cos(math.pi * swell)
            f = 2 * math.sin(math.pi * centre * sweep ** x / RATE)
            high = noise.uniform(-1, 1) - low - width * band
            band += f * high
            low += f * band
            self.samples[first + i] += level * swell * band
        return self

    def finished(self, peak_db):
        """The samples in the room, faded at both ends; the highest peak is at `peak_db` dBFS."""
        played = _softened(_in_room(self.samples))
        _fade(played)
        loudest = max(abs(s) for s in played)
        gain = 10 ** (peak_db / 20) / loudest
        return [s * gain for s in played]


def glide(ratio, time, curve=1.0):
    """A bend from the pitch to `ratio` times it, over `time` seconds."""
    return lambda t: ratio ** (min(1.0, t / time) ** curve)


def _in_room(dry):
    """A few early reflections, the same for all sounds: they were recorded on one table."""
    wet = list(dry)
    for delay, level in ((0.0113, 0.16), (0.0197, -0.12), (0.0311, 0.08), (0.0439, -0.05)):
        shift = round(delay * RATE)
        for i in range(shift, len(wet)):
            wet[i] += level * dry[i - shift]
    return wet


def _softened(samples, corner=6500.0):
    """Takes the edge off: a gentle low pass, and nothing below what a small speaker plays."""
    smooth = 1 - math.exp(-math.tau * corner / RATE)
    rumble = math.exp(-math.tau * 70 / RATE)
    out = []
    low = before = high = 0.0
    for s in samples:
        low += smooth * (s - low)
        high = rumble * (high + low - before)
        before = low
        out.append(high)
    return out


def _fade(samples, rise=0.002, fall=0.045):
    count = round(rise * RATE)
    for i in range(count):
        samples[i] *= 0.5 - 0.5 * math.cos(math.pi * i / count)
    count = min(round(fall * RATE), len(samples) // 2)
    for i in range(count):
        samples[-1 - i] *= 0.5 - 0.5 * math.cos(math.pi * i / count)
