"""Plays test signals through the built plug-in with varlo-render, and gives what came out."""

import pathlib
import struct
import subprocess
import tempfile

import numpy as np

from dsp_formulas import MAX_LOOP_GAIN

RATE = 48000

# A new instance stands at its defaults when the first block comes, and its ramps take up to a second from there.
LEAD_SAMPLES = int(1.5 * RATE)


class RenderFailure(Exception):
    """varlo-render could not do it; the text is for the user."""


def write_wav(path, samples):
    """A mono file of 32-bit floats."""
    data = np.asarray(samples, dtype="<f4").tobytes()
    form = struct.pack("<HHIIHH", 3, 1, RATE, RATE * 4, 4, 32)
    chunks = b"WAVE" + b"fmt " + struct.pack("<I", len(form)) + form + b"data" + struct.pack("<I", len(data)) + data
    path.write_bytes(b"RIFF" + struct.pack("<I", len(chunks)) + chunks)


def read_wav(path):
    """The samples of a mono file of 32-bit floats, as varlo-render writes it."""
    content = path.read_bytes()
    position = 12

    while position + 8 <= len(content):
        name, size = struct.unpack_from("<4sI", content, position)

        if name == b"data":
            return np.frombuffer(content, "<f4", size // 4, position + 8).astype(float)

        position += 8 + size + size % 2

    raise RenderFailure(f"{path} holds no samples")


class Plugin:
    """The bundle under test. The knobs of a call are those of --set; what isn't named has its default."""

    def __init__(self, program, bundle):
        self.program = program
        self.bundle = bundle

    def play(self, samples, block=512, automate=None, **knobs):
        """What the plug-in makes of a mono signal, in as many samples. Mix is 100 % unless it is named."""
        settings = {"Mix": 100, **knobs}

        with tempfile.TemporaryDirectory() as folder:
            source, result = pathlib.Path(folder, "in.wav"), pathlib.Path(folder, "out.wav")
            write_wav(source, samples)
            command = [self.program, source, "-o", result, "--plugin", self.bundle, "--tail", "0", "--bits", "32f"]
            command += ["--quiet", "--block", str(block)]

            for name, value in settings.items():
                command += ["--set", f"{name}={value}"]

            for name, points in (automate or {}).items():
                command += ["--automate", f"{name}={points}"]

            done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)

            if done.returncode != 0:
                raise RenderFailure(done.stderr.strip() or f"{self.program} ended with {done.returncode}")

            return read_wav(result)

    def play_after_lead(self, samples, **settings):
        """The same once all ramps have arrived; what is heard meanwhile is left out."""
        return self.play(np.concatenate([np.zeros(LEAD_SAMPLES), samples]), **settings)[LEAD_SAMPLES:]


def impulse(length, level=1.0):
    samples = np.zeros(length)
    samples[0] = level
    return samples


def measure_lowpass(plugin, cutoff, resonance_percent):
    """The wet low-pass's impulse response: the first echo of an impulse, one second long."""
    output = plugin.play_after_lead(impulse(2 * RATE), Delay=1000, Feedback=0, Lowpass=cutoff, Resonance=resonance_percent)
    return output[RATE:]


def measure_ladder(plugin, cutoff, flat_resonance_percent=31):
    """H of the ladder at each hertz from 0 to half the rate: the second echo of an impulse over the first one, both of
    which have gone through the wet low-pass.
    """
    output = plugin.play_after_lead(
        impulse(3 * RATE + 1), Delay=1000, Feedback=100, Lowpass=cutoff, Resonance=flat_resonance_percent
    )
    first, second = output[RATE : 2 * RATE], output[2 * RATE + 1 : 3 * RATE + 1]
    return np.fft.rfft(second) / np.fft.rfft(first) / MAX_LOOP_GAIN


def measure_limiter(plugin, samples, cutoff):
    """What comes back of a signal of at most one second after one trip through the loop, and what went into it."""
    padded = np.concatenate([samples, np.zeros(3 * RATE + 1 - len(samples))])
    output = plugin.play_after_lead(padded, Delay=1000, Feedback=100, Lowpass=cutoff, Resonance=31)
    return output[RATE : RATE + len(samples)], output[2 * RATE + 1 : 2 * RATE + 1 + len(samples)]


def measure_degrade(plugin, degrade_percent):
    """Samples per held value, and which share of what is heard is held: a rising line becomes a staircase."""
    line = np.linspace(-1, 1, RATE // 2)
    slope = line[1] - line[0]
    output = plugin.play_after_lead(line, Delay=1, Feedback=0, Degrade=degrade_percent, Lowpass=20000, Resonance=31)
    rises = np.diff(output[RATE // 20 :]) / slope
    hold = find_period(rises - 1)

    if hold < 24:
        return hold, np.nan  # the low-pass still rings from one step when the next one comes

    # Before the next capture only what isn't held rises. Mean values of many steps are free of a float's rounding.
    steps = rises[: len(rises) // hold * hold].reshape(-1, hold).mean(axis=0)
    calm = np.roll(steps, -np.argmax(steps))[-hold // 4 - 2 : -2]
    return hold, 1 - calm.mean()


def find_period(samples, longest=1000):
    """The shortest period in samples; 1 when nothing repeats but a constant."""
    samples = samples - samples.mean()

    if np.abs(samples).max() < 0.005:
        return 1

    power = np.abs(np.fft.rfft(samples, 2 * len(samples))) ** 2
    likeness = np.fft.irfft(power)[: longest + 1] / np.arange(len(samples), len(samples) - longest - 1, -1)
    return 1 + int(np.argmax(likeness[1:] > 0.98 * likeness[1:].max()))


def measure_delay(plugin, changes, length, block):
    """A line that rises from 0 to 1, heard while the delay is changed: what comes out tells when it went in. `changes`
    are pairs of a sample, a multiple of `block`, and the delay in seconds that is set there. The wet low-pass stands
    at 20000 Hz and 31 %.
    """
    points = []

    for (start, seconds), (_, before) in zip(changes[1:], changes):
        for blocks, value in ((0.5, before), (0.25, seconds)):
            points.append(f"{(start - blocks * block) / RATE:.9f}:{value * 1000:g}")

    line = np.arange(length) / length
    return plugin.play(line, block=block, automate={"Delay": ",".join(points)}, Feedback=0, Lowpass=20000, Resonance=31)
