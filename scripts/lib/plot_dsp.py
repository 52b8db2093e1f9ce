"""Draws what the built plug-in does beside what the formulas say, for docs/dsp.md. Started by plot-dsp.sh."""

import argparse
import io
import pathlib
import sys

sys.dont_write_bytecode = True

import matplotlib  # noqa: E402
import numpy as np  # noqa: E402
from PIL import Image  # noqa: E402

matplotlib.use("Agg")

from matplotlib import pyplot  # noqa: E402
from matplotlib.ticker import FuncFormatter  # noqa: E402

import dsp_formulas as formulas  # noqa: E402
from dsp_measurements import (  # noqa: E402
    RATE,
    Plugin,
    RenderFailure,
    impulse,
    measure_degrade,
    measure_delay,
    measure_ladder,
    measure_limiter,
    measure_lowpass,
)

COLOURS = ["#0b7a75", "#c2410c", "#5b3fa0", "#b8860b", "#1d4ed8"]
FLOOR_DECIBELS = -60.0  # single precision leaves less and less of what a filter takes away
FREQUENCIES = np.fft.rfftfreq(RATE, 1 / RATE)
AUDIBLE = slice(20, 20001)  # of these


def decibels(gain):
    return 20 * np.log10(np.maximum(np.abs(gain), 1e-12))


def new_figure(columns=2, height=3.6, **options):
    pyplot.rcParams.update({"font.size": 8.5, "axes.grid": True, "grid.color": "#e4e4e4", "axes.axisbelow": True})
    figure, axes = pyplot.subplots(1, columns, figsize=(9, height), layout="constrained", squeeze=False, **options)
    return figure, axes[0]


def draw_pair(axis, x, formula, measured, colour, label, every=None):
    """The formula as a broad pale line, what was measured as a thin dark one, or as dots at every so many values."""
    axis.plot(x, formula, color=colour, alpha=0.35, linewidth=4.5, solid_capstyle="butt")

    if every is None:
        axis.plot(x, measured, color=colour, linewidth=1.1, label=label)
    else:
        axis.plot(x[every], measured[every], "o", color=colour, markersize=3.2, label=label)


def explain_lines(figure, text="broad and pale: formula      thin or dots: measured"):
    figure.supxlabel(text, fontsize=8, color="#555555")


def as_frequency_axis(axis, lowest=20):
    axis.set(xscale="log", xlim=(lowest, 20000), xlabel="Hz")
    axis.xaxis.set_major_formatter(FuncFormatter(lambda hz, _: f"{hz:g}" if hz < 1000 else f"{hz / 1000:g}k"))


def spread(count=37):
    """Indices of FREQUENCIES that lie evenly on a logarithmic axis, and that of the resonances' peak."""
    return np.union1d(np.geomspace(20, 20000, count).round().astype(int), [1000])


def compare_responses(axis, expected, measured, colour, label):
    """Draws both, and gives their largest deviation in decibels where the formula is above the floor."""
    expected, measured = decibels(expected), decibels(measured)
    draw_pair(axis, FREQUENCIES, expected, measured, colour, label, spread())
    heard = expected[AUDIBLE] > FLOOR_DECIBELS
    return np.abs(expected - measured)[AUDIBLE][heard].max()


def draw_ladder(plugin):
    figure, (axis,) = new_figure(1)
    deviation = 0

    for cutoff, colour in zip((200, 1000, 5000, 15000), COLOURS):
        expected = formulas.ladder_response(FREQUENCIES, cutoff, RATE)
        deviation = max(
            deviation, compare_responses(axis, expected, measure_ladder(plugin, cutoff), colour, f"Lowpass {cutoff} Hz")
        )

    as_frequency_axis(axis)
    axis.set(ylim=(FLOOR_DECIBELS, 6), ylabel="dB")
    axis.set_title("Feedback ladder: second echo over first one, without the loop gain")
    axis.legend(loc="lower left")
    explain_lines(figure)
    return figure, f"{deviation:.4f} dB where the formula is above {FLOOR_DECIBELS:.0f} dB"


def draw_lowpass(plugin):
    figure, (by_cutoff, by_resonance) = new_figure(sharey=True)
    deviation = 0
    cutoffs = [(by_cutoff, cutoff, 31, f"Lowpass {cutoff} Hz") for cutoff in (200, 1000, 5000, 20000)]
    resonances = [(by_resonance, 1000, resonance, f"Reso {resonance} %") for resonance in (0, 15, 31, 60, 100)]

    for settings, colours in ((cutoffs, COLOURS), (resonances, COLOURS)):
        for (axis, cutoff, resonance, label), colour in zip(settings, colours):
            expected = formulas.lowpass_response(FREQUENCIES, cutoff, resonance, RATE)
            measured = np.fft.rfft(measure_lowpass(plugin, cutoff, resonance))
            deviation = max(deviation, compare_responses(axis, expected, measured, colour, label))

    for axis, title in ((by_cutoff, "Wet low-pass at Reso 31 %"), (by_resonance, "at Lowpass 1000 Hz")):
        as_frequency_axis(axis)
        axis.set(ylim=(FLOOR_DECIBELS, 30), title=title)
        axis.legend(loc="lower left")

    by_cutoff.set_ylabel("dB")
    explain_lines(figure)
    return figure, f"{deviation:.4f} dB where the formula is above {FLOOR_DECIBELS:.0f} dB"


def draw_degrade(plugin):
    figure, (curve, shares) = new_figure()
    amounts = np.arange(0, 101, 2)
    holds, held = np.transpose([measure_degrade(plugin, amount) for amount in amounts])
    expected = np.maximum(1, np.round(formulas.hold_curve(amounts, RATE)))
    fine = np.linspace(0, 100, 1001)

    curve.plot(fine, formulas.hold_curve(fine, RATE), color=COLOURS[0], alpha=0.35, linewidth=4.5)
    curve.plot(amounts, holds, "o", color=COLOURS[0], markersize=3.2)
    curve.set(yscale="log", xlabel="Degrade in %", ylabel="samples", title="How long a sample is held, at 48 kHz")
    curve.yaxis.set_major_formatter(FuncFormatter(lambda samples, _: f"{samples:g}"))

    shares.plot(fine, fine, color=COLOURS[1], alpha=0.35, linewidth=4.5)
    shares.plot(amounts, held * 100, "o", color=COLOURS[1], markersize=3.2)
    shares.set(xlabel="Degrade in %", ylabel="%", title="How much of what is heard is held", xlim=(-4, 104), ylim=(-4, 104))
    explain_lines(figure)

    length_deviation = np.abs(holds - expected).max()
    share_deviation = np.nanmax(np.abs(held * 100 - amounts))
    return figure, f"{length_deviation:.0f} samples of the rounded curve, {share_deviation:.3f} % of the share"


def draw_limiter(plugin):
    cutoff = 1000
    figure, (levels_axis, attack_axis, release_axis) = new_figure(3)
    steady_gain = formulas.ladder_response(np.zeros(1), cutoff, RATE)[0].real
    levels = np.concatenate([np.linspace(0.1, 1, 7), np.linspace(1.05, 1.25, 5), np.linspace(1.5, 4, 6)])
    measured = np.array([measure_limiter(plugin, np.full(RATE // 2, level), cutoff)[1][-1] for level in levels])
    measured /= formulas.MAX_LOOP_GAIN
    fine = np.linspace(0, 4.2, 500)

    levels_axis.plot(fine, formulas.limited_level(fine), color=COLOURS[0], alpha=0.35, linewidth=4.5)
    levels_axis.plot(levels * steady_gain, measured, "o", color=COLOURS[0], markersize=3.2)
    levels_axis.set(xlabel="level behind the ladder", ylabel="level behind the limiter", ylim=(0, 1.3))
    levels_axis.set_title("Steady levels")
    deviation = np.abs(measured - formulas.limited_level(levels * steady_gain)).max()

    signal = np.concatenate([np.full(RATE * 3 // 10, 2.0), np.full(RATE * 3 // 10, 1.0)])
    seen = measure_limiter(plugin, signal, cutoff)[1] / formulas.MAX_LOOP_GAIN
    darkened = formulas.ladder(signal, cutoff, RATE)
    limited = darkened * formulas.limiter_gains(darkened, RATE)
    expected = formulas.lowpass(limited, cutoff, 31, RATE)
    milliseconds = np.arange(len(signal)) / RATE * 1000

    for axis, start, end, title in ((attack_axis, 0, 30, "Level 2 begins"), (release_axis, 295, 345, "Level 2 falls to 1")):
        shown = slice(start * RATE // 1000, end * RATE // 1000)
        draw_pair(axis, milliseconds[shown], expected[shown], seen[shown], COLOURS[1], "")
        axis.set(xlabel="ms", title=title)

    attack_axis.set_ylabel("heard of it in the second echo")
    explain_lines(figure)
    moving = np.abs(expected - seen).max()
    return figure, f"{deviation:.1e} of a steady level, {moving:.1e} while it moves"


def draw_glide(plugin):
    block = 64
    length = 5 * RATE
    changes = [(start // block * block, seconds) for start, seconds in
               ((0, 0.5), (1.5 * RATE, 0.1), (2.5 * RATE, 1.0), (2.75 * RATE, 0.3), (3.6 * RATE, 0.31))]
    changes = [(int(start), seconds) for start, seconds in changes]
    positions = np.arange(length)
    exact = formulas.delay_glide(changes, RATE, length)
    straight = formulas.delay_line_glide(changes, RATE, length)
    line = np.maximum(positions - exact, 0) / length
    shown = slice(int(1.3 * RATE), length)
    seconds = positions[shown] / RATE

    # Both as the delay that is heard, the low-pass's own with it.
    expected = (positions - length * formulas.lowpass(line, 20000, 31, RATE))[shown]
    measured = (positions - length * measure_delay(plugin, changes, length, block))[shown]

    figure, (whole, close) = new_figure(width_ratios=(2, 1))
    draw_pair(whole, seconds, straight[shown] / RATE * 1000, measured / RATE * 1000, COLOURS[0], "")
    whole.set(xlabel="s", ylabel="ms", title="Delay: 500, 100, 1000 (left halfway), 300, 310 ms")

    near = slice(int((3.6 - 1.3) * RATE) - 60, int((3.6 - 1.3) * RATE) + 240)
    first = changes[-1][0] / RATE
    close.plot((seconds[near] - first) * 1000, expected[near], color=COLOURS[1], alpha=0.35, linewidth=4.5)
    close.plot((seconds[near] - first) * 1000, measured[near], color=COLOURS[1], linewidth=1.1)
    close.set(xlabel="ms from the last change", ylabel="samples", title="It moves in whole samples")
    close.ticklabel_format(useOffset=False)
    explain_lines(figure)

    deviation = np.abs(measured - expected).max()
    rounding = np.abs(exact - straight)[shown].max()
    return figure, f"{deviation:.2f} samples; rounding takes it up to {rounding:.0f} samples off the straight lines"


def draw_repeats(plugin):
    milliseconds, cutoff, resonance, length = 50, 5000, 31, RATE
    delay = milliseconds * RATE // 1000
    measured = plugin.play_after_lead(impulse(length), Delay=milliseconds, Feedback=100, Lowpass=cutoff, Resonance=resonance)
    expected = formulas.repeats_of_impulse(1, delay, 100, cutoff, resonance, RATE, length)

    figure, (whole, close) = new_figure()
    shown = np.arange(int(0.62 * RATE))
    draw_pair(whole, shown / RATE * 1000, expected[shown], measured[shown], COLOURS[0], "")
    whole.set(xlabel="ms", title="Delay 50 ms, Feedback 100 %, Lowpass 5 kHz")

    for number, colour in zip((1, 2, 4, 12), COLOURS):
        start = number * delay + number - 1
        window = slice(start - 10, start + 70)
        draw_pair(close, np.arange(-10, 70), expected[window], measured[window], colour, f"repeat {number}")

    close.set(xlabel="samples from the repeat's start", title="Each trip darkens and widens it")
    close.legend()
    explain_lines(figure)
    return figure, f"{np.abs(measured - expected).max():.1e} of the impulse's level"


FIGURES = {
    "ladder": draw_ladder,
    "limiter": draw_limiter,
    "repeats": draw_repeats,
    "glide": draw_glide,
    "degrade": draw_degrade,
    "wet-lowpass": draw_lowpass,
}


def write(figure, path):
    """A small PNG: few colours are in it."""
    drawn = io.BytesIO()
    figure.savefig(drawn, format="png", dpi=100)
    pyplot.close(figure)
    Image.open(drawn).convert("RGB").quantize(200, dither=Image.Dither.NONE).save(path, optimize=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--bundle", required=True)
    parser.add_argument("--output", required=True, type=pathlib.Path)
    arguments = parser.parse_args()
    plugin = Plugin(arguments.program, arguments.bundle)

    try:
        arguments.output.mkdir(parents=True, exist_ok=True)

        for name, draw in FIGURES.items():
            figure, deviation = draw(plugin)
            write(figure, arguments.output / f"{name}.png")
            print(f"{name}.png: largest deviation {deviation}", flush=True)
    except (OSError, RenderFailure) as error:
        sys.exit(f"plot-dsp.sh: {error}")


if __name__ == "__main__":
    main()
