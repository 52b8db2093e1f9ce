#!/usr/bin/env bash
# Draws docs/images/varlo.png: the built plug-in's editor at the end of the demo recording.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [FILE]

Builds the plug-in, plays the demo recording through it on a display of its own, with its editor open,
and writes what the editor shows in the end to FILE, docs/images/varlo.png when none is named. Installs
the Debian or Ubuntu packages that this lacks.

  --no-install   install no packages: list what lacks and stop
  -h, --help     show this text
EOF
}

install=yes
picture=

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        -h|--help) usage; exit 0 ;;
        -*) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
        *)
            [ -z "$picture" ] || { echo "$command_name: one FILE at a time (see --help)" >&2; exit 2; }
            picture=$(realpath -m -- "$argument") ;;
    esac
done

cd "$root"
prepare_machine "$install" "draw Varlo" "$build_packages xvfb xauth" "$build_tools xvfb-run"

# Neither the user's presets nor the size that the user gave the window belong in the picture.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/home"
build_into "$scratch/built"

# A server that forgets everything whenever its last client goes may do so while the next is just connecting.
say "Playing the demo"
HOME=$scratch/home xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -noreset" \
    "$scratch/built/varlo-render" resources/demo/guit_e_fifths.flac \
    --tail 0 --set Delay=375 --set Feedback=62 --set Degrade=18 --set Lowpass=6500 --set Resonance=35 --set Mix=55 \
    --editor-size 1050x578 --editor-png "${picture:-docs/images/varlo.png}"
