#!/usr/bin/env bash
# Draws docs/images/dsp: what the built plug-in's stages do, beside what the formulas say.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"
# shellcheck source=scripts/lib/pictures.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/pictures.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--built FOLDER] [OUTPUT]

Builds the plug-in, plays test signals through it with varlo-render, and draws what comes out beside the
formulas of docs/dsp.md: ladder, limiter, repeats, glide, Degrade and wet low-pass, each as a PNG picture in
the folder OUTPUT, docs/images/dsp when none is named. Prints how far the two are apart at most; docs/dsp.md
states these figures. Takes a minute. Installs the Debian or Ubuntu packages that this lacks.

  --built FOLDER  build nothing: FOLDER holds varlo-render and Varlo.vst3, as dist/ does after run.sh
  --no-install    install no packages: list what lacks and stop
  -h, --help      show this text
EOF
}

read_picture_arguments "$@"
cd "$root"

if [ -n "$built" ]; then
    prepare_machine "$install" "draw the plots" "$plot_packages" python3
else
    prepare_machine "$install" "draw the plots" "$build_packages $plot_packages" "$build_tools python3"
fi

python=$(find_python "matplotlib, numpy, PIL") || exit 1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

if [ -z "$built" ]; then
    built=$scratch/built
    build_into "$built"
fi

# Neither the user's presets nor a cache of matplotlib's have a part in this.
mkdir "$scratch/home"
say "Measuring and drawing"
HOME=$scratch/home "$python" scripts/lib/plot_dsp.py --program "$built/varlo-render" --bundle "$built/Varlo.vst3" \
    --output "${output:-docs/images/dsp}" || exit 1 # it has said why
