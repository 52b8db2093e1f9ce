#!/usr/bin/env bash
# Builds Varlo, installs it for this user, plays a recording through it and opens it.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"
# shellcheck source=scripts/lib/presets.sh
. "$root/scripts/lib/presets.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--no-presets] [--no-open]
       $command_name --uninstall

Builds the Varlo plug-in, the same as a standalone and the offline host varlo-render into
dist/, installs the plug-in in ~/.vst3 and ~/.lv2 (a Varlo that is there already is replaced) and renders
the demo recording through it into dist/demo.wav. The factory presets go among this user's presets, in folders
of their own; presets that are there already stay as they are. Where there is a display, opens the program
at the end and leaves it open. Installs the Debian or Ubuntu packages that the build lacks.

  --no-install   install no packages: list what lacks and stop
  --no-presets   copy no presets
  --no-open      open no window at the end
  --uninstall    take away the plug-in and the factory presets that this script has installed for you, and
                 nothing else: presets that you changed or saved, settings and states stay
  -h, --help     show this text
EOF
}

install=yes
presets=yes
open=yes
uninstall=

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        --no-presets) presets=no ;;
        --no-open) open=no ;;
        --uninstall) uninstall=yes ;;
        -h|--help) usage; exit 0 ;;
        *) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
    esac
done

[ -n "${HOME:-}" ] || fail "HOME is not set, so there is no folder to install the plug-in in"
user_vst3=$HOME/.vst3
user_lv2=$HOME/.lv2

if [ "$(uname)" = Darwin ]; then
    user_vst3=$HOME/Library/Audio/Plug-Ins/VST3
    user_lv2=$HOME/Library/Audio/Plug-Ins/LV2
fi

machine_data=/usr/share/Corvane/Varlo
user_data=$HOME/.local/share/Corvane/Varlo

if [ "$(uname)" = Darwin ]; then
    machine_data="/Library/Application Support/Corvane/Varlo"
    user_data="$HOME$machine_data"
fi

# install_for_user BUNDLE DESTINATION: the copy is made beside its destination and moved there, so that
# a host that scans meanwhile never loads half a bundle. What is the same already stays as it is.
install_for_user() {
    local folder staging
    diff -rq "$1" "$2" >/dev/null 2>&1 && return

    folder=$(dirname "$2")
    mkdir -p "$folder"
    staging=$(mktemp -d "$folder/.varlo.XXXXXX")
    cp -R "$1" "$staging/new"
    [ ! -e "$2" ] || mv "$2" "$staging/old"
    mv "$staging/new" "$2"
    rm -rf "$staging"
}

# remove_for_user BUNDLE: a host that scans meanwhile never finds half a bundle.
remove_for_user() {
    local staging
    [ -e "$1" ] || [ -L "$1" ] || return 0

    staging=$(mktemp -d "$(dirname "$1")/.varlo.XXXXXX")
    mv "$1" "$staging/old"
    rm -rf "$staging"
    removed="$removed $1"
}

if [ -n "$uninstall" ]; then
    removed=
    remove_for_user "$user_vst3/Varlo.vst3"
    remove_for_user "$user_lv2/Varlo.lv2"

    if [ -n "$removed" ]; then
        say "Removed:$removed"
    else
        say "There was no Varlo in $user_vst3 or $user_lv2"
    fi

    say "Presets: $(take_presets "$root/resources/presets" "$user_data/presets")"

    for kept in "$HOME/.local/share/Corvane/Varlo" "$HOME/Library/Application Support/Corvane/Varlo" \
            "$HOME/Corvane/Varlo" "$HOME/.config/Varlo.settings"; do
        [ ! -e "$kept" ] || say "Left alone: $kept, which holds presets or settings of yours"
    done

    exit 0
fi

cd "$root"
prepare_machine "$install" "build Varlo" "$build_packages" "$build_tools"

configure_release

say "Building"
cmake --build --preset release --target Varlo_VST3 Varlo_LV2 Varlo_Standalone varlo_render

# Anew each time, so that nothing of an older bundle stays.
rm -rf dist/Varlo dist/Varlo.app dist/Varlo.vst3 dist/Varlo.lv2
cmake --install build/release --component varlo --prefix dist >/dev/null

install_for_user dist/Varlo.vst3 "$user_vst3/Varlo.vst3"
install_for_user dist/Varlo.lv2 "$user_lv2/Varlo.lv2"

given_presets="none copied for you"
[ "$presets" = no ] || given_presets=$(give_presets resources/presets "$machine_data" "$user_data/presets")

say "Rendering the demo through the plug-in"
dist/varlo-render resources/demo/guit_e_fifths.flac -o dist/demo.wav --plugin dist/Varlo.vst3 \
    --set Delay=250 --set Feedback=70 --set Mix=50

program=$root/dist/Varlo
[ "$(uname)" != Darwin ] || program=$root/dist/Varlo.app/Contents/MacOS/Varlo

cat <<EOF

Plug-in: $root/dist/Varlo.vst3, installed for you as $user_vst3/Varlo.vst3
         $root/dist/Varlo.lv2, the same for hosts of LV2, as $user_lv2/Varlo.lv2
Demo:    $root/dist/demo.wav, a guitar with an echo every 250 ms, made by $root/dist/varlo-render
Presets: $given_presets
Program: $program, Varlo without a host; its input is muted until you open it under Options
Next:    let your host scan its plug-ins again, then put Varlo (by Corvane) on a track
EOF

[ "$open" = yes ] || exit 0

# Asked before, because the program would run on without a window. Under Wayland too it needs the X server
# that the desktop brings.
if [ "$(uname)" != Darwin ] && ! reason=$(dist/varlo-render --check-display 2>&1); then
    say "Varlo stays closed (${reason#varlo-render: })"
    exit 0
fi

# It outlives this script, as a program does that a desktop opens.
say "Opening Varlo"
nohup "$program" >/dev/null 2>&1 &
opened=$!
sleep 1
kill -0 "$opened" 2>/dev/null || fail "$program has ended at once"
