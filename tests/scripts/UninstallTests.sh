#!/usr/bin/env bash
# Tests that run.sh takes away what it has installed for a user, and nothing else.
#
#   UninstallTests.sh RUN_SCRIPT
set -euo pipefail

run=$1
HOME=$(mktemp -d)
export HOME
trap 'rm -rf "$HOME"' EXIT

vst3=$HOME/.vst3
lv2=$HOME/.lv2

if [ "$(uname)" = Darwin ]; then
    vst3=$HOME/Library/Audio/Plug-Ins/VST3
    lv2=$HOME/Library/Audio/Plug-Ins/LV2
fi

presets=$HOME/.local/share/Corvane/Varlo/presets
mkdir -p "$vst3/Varlo.vst3/Contents" "$vst3/Other.vst3" "$lv2/Varlo.lv2" "$lv2/Other.lv2" "$presets"
echo kept | tee "$vst3/Varlo.vst3/Contents/file" "$vst3/Other.vst3/file" "$lv2/Varlo.lv2/file" "$lv2/Other.lv2/file" \
    "$presets/Own.cvpreset" >/dev/null

# One of ours that is still as it came, and one that the user has changed.
delivered=$(dirname "$run")/../resources/presets/factory/Dub
mkdir -p "$presets/Factory/Dub"
cp "$delivered/Deep Cave.cvpreset" "$presets/Factory/Dub"
echo changed > "$presets/Factory/Dub/Worn Tape.cvpreset"

expected=$(printf '%s\n' "$presets/Factory/Dub/Worn Tape.cvpreset" "$presets/Own.cvpreset" "$lv2/Other.lv2/file" "$vst3/Other.vst3/file" | sort)

# The second time there is nothing left to take away.
for words in "Removed: $vst3/Varlo.vst3 $lv2/Varlo.lv2" "There was no Varlo"; do
    said=$(bash "$run" --uninstall)
    left=$(find "$HOME" -type f | sort)

    if [ "$left" != "$expected" ] || [[ $said != *"$words"* ]] || [[ $said != *"Left alone: $HOME/.local/share"* ]]; then
        printf 'It said:\n%s\nand left:\n%s\n' "$said" "$left"
        exit 1
    fi
done

[ -z "$(find "$HOME" -name '.varlo*')" ]
