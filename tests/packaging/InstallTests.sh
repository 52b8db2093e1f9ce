#!/usr/bin/env bash
# Installs all there is into a root of its own, and what users get into a folder, and looks where it lands.
#
#   InstallTests.sh CMAKE BUILD_FOLDER
set -euo pipefail

cmake=$1 build=$2

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

# expect_entries FOLDER NAMES: FOLDER holds these, sorted, and nothing else.
expect_entries() {
    local found
    found=$(find "$1" -mindepth 1 -maxdepth 1 -printf '%f\n' | LC_ALL=C sort | paste -sd ' ')
    [ "$found" = "$2" ] && return
    echo "FAILED: ${1#"$scratch"/} holds '$found' instead of '$2'"
    failures=$((failures + 1))
}

# A prefix such as /usr, which others share.
DESTDIR=$scratch/root "$cmake" --install "$build" --prefix /usr >/dev/null
expect_entries "$scratch/root" usr
expect_entries "$scratch/root/usr" "bin lib share"
expect_entries "$scratch/root/usr/bin" "varlo varlo-render"
expect_entries "$scratch/root/usr/lib" "lv2 vst3"

"$cmake" --install "$build" --component varlo --prefix "$scratch/dist" >/dev/null
expect_entries "$scratch/dist" "Varlo Varlo.lv2 Varlo.vst3 varlo-render"

[ "$failures" -eq 0 ]
