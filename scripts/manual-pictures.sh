#!/usr/bin/env bash
# Draws the pictures of docs/manual.md: the built plug-in's editor, and parts of it.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"
# shellcheck source=scripts/lib/pictures.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/pictures.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--built FOLDER] [OUTPUT]

Builds the plug-in, plays drums through it on a display of its own, with its editor open, and writes what the
editor shows as the pictures manual-*.png of docs/manual.md into the folder OUTPUT, docs/images when none is
named. Takes a minute. Installs the Debian or Ubuntu packages that this lacks.

  --built FOLDER  build nothing: FOLDER holds varlo-render and Varlo.vst3, as dist/ does after run.sh
  --no-install    install no packages: list what lacks and stop
  -h, --help      show this text
EOF
}

read_picture_arguments "$@"
cd "$root"
output=${output:-docs/images}
packages="xvfb xauth python3 python3-pil"
[ -n "$built" ] || packages="$build_packages $packages"
prepare_machine "$install" "draw the manual's pictures" "$packages" "$build_tools xvfb-run python3"
python=$(find_python PIL) || exit 1

# Neither the user's presets nor the size that the user gave the window belong in the pictures.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/home" "$output"

if [ -z "$built" ]; then
    built=$scratch/built
    build_into "$built"
fi

# shoot NAME OPTION...: the editor at the end of the drums and the three seconds behind them.
shoot() {
    local name=$1
    shift
    HOME=$scratch/home xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -noreset" \
        "$built/varlo-render" tests/sounds/recordings/loop_breakbeat.flac --plugin "$built/Varlo.vst3" --quiet \
        --tail 3 --editor-size 1050x578 --editor-png "$scratch/$name.png" "$@"
}

echoes=(--set Delay=500 --set Feedback=60 --set Mix=50)

say "Playing drums"
shoot window --preset resources/presets/factory/Rhythmic/Quarters.cvpreset
shoot tap --set Delay=50 # at so short a delay the light stays on
shoot plain "${echoes[@]}" --set Lowpass=20000 --set Resonance=31
shoot degrade "${echoes[@]}" --set Lowpass=20000 --set Resonance=31 --set Degrade=60
shoot lowpass "${echoes[@]}" --set Lowpass=2000 --set Resonance=31
shoot reso "${echoes[@]}" --set Lowpass=2000 --set Resonance=80

"$python" - "$scratch" "$output" <<'EOF'
import pathlib
import sys

from PIL import Image

shots, output = map(pathlib.Path, sys.argv[1:])
KNOBS = {"delay": 136, "feedback": 266, "degrade": 428, "lowpass": 590, "resonance": 720, "mix": 882}


def shot(name):
    return Image.open(shots / f"{name}.png").convert("RGB")


def write(picture, name):
    # Half the size with a palette, and no difference that the eye sees.
    picture.quantize(256, dither=Image.Dither.NONE).save(output / f"manual-{name}.png", optimize=True)
    print(f"manual-{name}.png")


def part(picture, left, top, width, height):
    return picture.crop((left, top, left + width, top + height))


window = shot("window")
smaller = window.resize((840, 462), Image.Resampling.LANCZOS)
write(smaller, "window")
write(part(smaller, 0, 0, 840, 55), "bar")
write(part(shot("tap"), 29, 424, 100, 150), "tap")

for knob, left in KNOBS.items():
    write(part(window, left, 427, 130, 145), knob)

for name in ("plain", "degrade", "lowpass", "reso"):
    spectrogram = part(shot(name), 29, 69, 992, 341)
    write(spectrogram.resize((420, 145), Image.Resampling.LANCZOS), f"picture-{name}")
EOF
