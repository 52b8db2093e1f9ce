"""What each stage of the sound should do, from the formulas of docs/dsp.md alone.

Frequencies and rates are in hertz, levels linear, knobs in the units that they show.
"""

import numpy as np

MAX_LOOP_GAIN = 0.92
LIMITER_THRESHOLD = 10 ** (1 / 20)
LIMITER_RATIO = 100
ATTACK_SECONDS = 0.005
RELEASE_SECONDS = 0.05
GLIDE_SECONDS = 0.5
SLOWEST_REFRESH_HZ = 100


def resonance_to_q(resonance_percent):
    return (resonance_percent / 100) ** 3 * 20 + 0.1


def ladder_coefficients(cutoff, rate):
    t = np.tan(np.pi * min(cutoff, rate / 2) / rate)
    return 2 * t / (2 + 2 * t), (2 * t - 2) / (2 + 2 * t)


def ladder_response(frequencies, cutoff, rate):
    """H of the feedback ladder: its four poles, and the direct part that the estimate leaves."""
    g, a = ladder_coefficients(cutoff, rate)
    delayed = np.exp(-2j * np.pi * frequencies / rate)
    pole = g * (1 + delayed) / (1 + a * delayed)
    return pole**4 + g**3 * (1 - g) / (1 + a * delayed)


def lowpass_response(frequencies, cutoff, resonance_percent, rate):
    """H of the wet low-pass: the analogue one, bilinearly transformed."""
    g = np.tan(np.pi * min(cutoff, rate / 2 - 1) / rate)
    damping = 1 / resonance_to_q(resonance_percent)
    delayed = np.exp(-2j * np.pi * frequencies / rate)
    over, under = g * (1 + delayed), 1 - delayed
    return over**2 / (under**2 + damping * over * under + over**2)


def ladder(samples, cutoff, rate):
    g, a = ladder_coefficients(cutoff, rate)
    s0 = s1 = s2 = s3 = 0.0
    result = np.empty(len(samples))

    for i, x in enumerate(samples):
        y = s3 + g * (s2 + g * (s1 + g * (s0 + x)))
        u0 = g * x
        y0 = s0 + u0
        u1 = g * y0
        y1 = s1 + u1
        u2 = g * y1
        y2 = s2 + u2
        s0, s1, s2, s3 = u0 - a * y0, u1 - a * y1, u2 - a * y2, g * y2 - a * y
        result[i] = y

    return result


def lowpass(samples, cutoff, resonance_percent, rate):
    g = np.tan(np.pi * min(cutoff, rate / 2 - 1) / rate)
    damping = 1 / resonance_to_q(resonance_percent)
    h = 1 / (1 + damping * g + g * g)
    s1 = s2 = 0.0
    result = np.empty(len(samples))

    for i, x in enumerate(samples):
        high = h * (x - s1 * (g + damping) - s2)
        band = g * high + s1
        low = g * band + s2
        s1, s2 = g * high + band, g * band + low
        result[i] = low

    return result


def limiter_gains(samples, rate):
    attack = np.exp(-2 * np.pi / (rate * ATTACK_SECONDS))
    release = np.exp(-2 * np.pi / (rate * RELEASE_SECONDS))
    envelope = 0.0
    gains = np.ones(len(samples))

    for i, level in enumerate(np.abs(samples)):
        envelope = level + (attack if level > envelope else release) * (envelope - level)

        if envelope >= LIMITER_THRESHOLD:
            gains[i] = (envelope / LIMITER_THRESHOLD) ** (1 / LIMITER_RATIO - 1)

    return gains


def limited_level(level):
    """Where a steady level settles behind the limiter."""
    return np.where(level < LIMITER_THRESHOLD, level, LIMITER_THRESHOLD * (level / LIMITER_THRESHOLD) ** (1 / LIMITER_RATIO))


def hold_curve(degrade_percent, rate):
    """Samples per held value, before they are rounded to whole ones."""
    amount = np.asarray(degrade_percent) / 100
    return (rate / SLOWEST_REFRESH_HZ - 1) * amount ** (5 * amount**0.7 + 1) + 1


def delay_glide(changes, rate, length):
    """The delay in samples at each sample. `changes` are pairs of a sample and the delay in seconds that is set
    there; the first one is where the delay rests. Each glides on from where the one before it has come to, in steps
    that are added up in single precision.
    """
    ramp_length = int(GLIDE_SECONDS * rate)
    delays = np.full(length, changes[0][1] * rate, dtype=np.float32)

    for start, seconds in changes[1:]:
        target = np.float32(seconds * rate)
        value = delays[start - 1]
        step = (target - value) / np.float32(ramp_length)

        # The first step is heard at once; the last one lands on the target.
        for i in range(start, min(start + ramp_length - 1, length)):
            value += step
            delays[i] = value

        delays[start + ramp_length - 1 :] = target

    return np.floor(delays)


def delay_line_glide(changes, rate, length):
    """The same without rounding: straight lines."""
    ramp_length = int(GLIDE_SECONDS * rate)
    delays = np.full(length, changes[0][1] * rate, dtype=float)

    for start, seconds in changes[1:]:
        before = delays[start - 1]
        steps = np.minimum(np.arange(1, length - start + 1), ramp_length) / ramp_length
        delays[start:] = before + (seconds * rate - before) * steps

    return delays


def repeats_of_impulse(level, delay, feedback_percent, cutoff, resonance_percent, rate, length):
    """What an impulse of `level` at sample 0 sounds like: each echo is the one before it, through ladder and loop gain,
    and the wet low-pass works on its way out only. `delay` is in samples; a trip through the loop takes one more.
    """
    # Long enough for what the circle of a Fourier transform brings back to have died away.
    size = 1 << int(np.ceil(np.log2(length)) + 1)
    frequencies = np.fft.rfftfreq(size, 1 / rate)
    loop = feedback_percent / 100 * MAX_LOOP_GAIN * ladder_response(frequencies, cutoff, rate)
    echo = level * lowpass_response(frequencies, cutoff, resonance_percent, rate)
    result = np.zeros(length)

    for start in range(delay, length, delay + 1):
        samples = np.fft.irfft(echo, size)[: length - start]
        result[start:] += samples
        echo = echo * loop

    return result
