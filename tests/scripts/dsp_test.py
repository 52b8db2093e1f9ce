"""What the formulas of scripts/lib/dsp_formulas.py give, and that the built plug-in gives the same."""

import os
import pathlib
import sys
import unittest

import numpy as np

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts/lib"))

import dsp_formulas as formulas  # noqa: E402
from dsp_measurements import (  # noqa: E402
    RATE,
    Plugin,
    RenderFailure,
    find_period,
    impulse,
    measure_degrade,
    measure_ladder,
    measure_limiter,
    measure_lowpass,
)

FREQUENCIES = np.fft.rfftfreq(RATE, 1 / RATE)


def decibels(gain):
    return 20 * np.log10(np.abs(gain))


class FormulasTest(unittest.TestCase):
    def test_ladder_at_44100_hz(self):
        self.assertAlmostEqual(formulas.ladder_coefficients(5000, 44100)[0], 0.2712, delta=5e-5)
        self.assertAlmostEqual(formulas.ladder_coefficients(5000, 44100)[1], -0.4577, delta=5e-5)
        at_cutoff = formulas.ladder_response(np.array([0.0, 5000.0]), 5000, 44100)
        self.assertAlmostEqual(at_cutoff[0].real, 1.027, delta=5e-4)
        self.assertAlmostEqual(decibels(at_cutoff[1]), -12.7, delta=0.05)
        bright = formulas.ladder_response(np.array([0.0, 20000.0]), 15000, 44100)
        self.assertAlmostEqual(bright[0].real, 1.074, delta=5e-4)
        self.assertAlmostEqual(decibels(bright[1]), -17.5, delta=0.05)

    def test_responses_are_those_of_the_difference_equations(self):
        frequencies = np.fft.rfftfreq(8192, 1 / RATE)
        short = np.fft.rfft(formulas.ladder(impulse(8192), 1000, RATE))
        np.testing.assert_allclose(short, formulas.ladder_response(frequencies, 1000, RATE), atol=1e-12)
        short = np.fft.rfft(formulas.lowpass(impulse(8192), 1000, 50, RATE))
        np.testing.assert_allclose(short, formulas.lowpass_response(frequencies, 1000, 50, RATE), atol=1e-10)

    def test_limiter_settles_at_its_steady_level(self):
        self.assertAlmostEqual(float(formulas.limited_level(2.0)), 1.1285, delta=5e-5)
        gains = formulas.limiter_gains(np.full(RATE, 2.0), RATE)
        self.assertAlmostEqual(2.0 * gains[-1], float(formulas.limited_level(2.0)), delta=1e-9)
        self.assertEqual(formulas.limiter_gains(np.full(RATE, 1.12), RATE)[-1], 1.0)

    def test_hold_curve(self):
        holds = np.round(formulas.hold_curve(np.array([0, 10, 25, 50, 75, 90, 100]), 48000))
        self.assertEqual(holds.tolist(), [1, 6, 10, 29, 112, 265, 480])

    def test_glide_takes_half_a_second_and_lands(self):
        last = 100 + RATE // 2 - 1

        for glide in (formulas.delay_glide, formulas.delay_line_glide):
            delays = glide([(0, 0.5), (100, 0.1)], RATE, RATE)
            self.assertEqual(delays[99], 24000)
            self.assertLess(delays[100], 24000)
            self.assertNotEqual(delays[last - 1], 4800)
            self.assertAlmostEqual(delays[last - 1], 4800, delta=10)
            self.assertEqual(delays[last], 4800)


class PeriodTest(unittest.TestCase):
    def test_is_the_shortest_one(self):
        for period in (1, 2, 3, 17, 480):
            self.assertEqual(find_period(np.tile(np.eye(1, period)[0], 12000 // period)), period)


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.plugin = Plugin(os.environ["VARLO_PROGRAM"], os.environ["VARLO_BUNDLE"])

    def assert_responses_agree(self, measured, expected):
        heard = (np.abs(expected) > 1e-2) & (FREQUENCIES >= 20) & (FREQUENCIES <= 20000)
        np.testing.assert_allclose(decibels(measured)[heard], decibels(expected)[heard], atol=0.01)

    def test_ladder(self):
        self.assert_responses_agree(measure_ladder(self.plugin, 5000), formulas.ladder_response(FREQUENCIES, 5000, RATE))

    def test_lowpass(self):
        measured = np.fft.rfft(measure_lowpass(self.plugin, 1000, 60))
        self.assert_responses_agree(measured, formulas.lowpass_response(FREQUENCIES, 1000, 60, RATE))

    def test_limiter_while_it_moves(self):
        signal = np.repeat([2.0, 1.0], RATE // 10)
        darkened = formulas.ladder(signal, 1000, RATE)
        limited = darkened * formulas.limiter_gains(darkened, RATE)
        measured = measure_limiter(self.plugin, signal, 1000)[1] / formulas.MAX_LOOP_GAIN
        np.testing.assert_allclose(measured, formulas.lowpass(limited, 1000, 31, RATE), atol=2e-5)

    def test_steady_limiter(self):
        measured = measure_limiter(self.plugin, np.full(RATE // 2, 2.0), 1000)[1][-1] / formulas.MAX_LOOP_GAIN
        behind_ladder = 2.0 * formulas.ladder_response(np.zeros(1), 1000, RATE)[0].real
        self.assertAlmostEqual(measured, float(formulas.limited_level(behind_ladder)), delta=2e-5)

    def test_degrade(self):
        hold, share = measure_degrade(self.plugin, 60)
        self.assertEqual(hold, round(float(formulas.hold_curve(60, RATE))))
        self.assertAlmostEqual(share, 0.6, delta=0.002)

    def test_repeats(self):
        measured = self.plugin.play_after_lead(impulse(RATE), Delay=50, Feedback=100, Lowpass=5000, Resonance=31)
        expected = formulas.repeats_of_impulse(1, RATE // 20, 100, 5000, 31, RATE, RATE)
        np.testing.assert_allclose(measured, expected, atol=1e-6)

    def test_failure_is_told_in_the_programs_words(self):
        with self.assertRaisesRegex(RenderFailure, "varlo-render: .*nowhere.vst3"):
            Plugin(os.environ["VARLO_PROGRAM"], "/nowhere.vst3").play(impulse(10))


if __name__ == "__main__":
    unittest.main()
