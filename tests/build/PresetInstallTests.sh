#!/usr/bin/env bash
# Installs the presets for all users into a root of its own, and looks where the plug-in does.
#
#   PresetInstallTests.sh CMAKE BUILD_FOLDER PRESETS
set -euo pipefail

cmake=$1
build=$2
presets=$3

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

# As careful as some administrators are, in folders that are there before.
mkdir -p "$root/usr/share" "$root/Library/Application Support"
umask 077
DESTDIR=$root "$cmake" --install "$build" --component presets --prefix /usr >/dev/null

case $(uname) in
    Darwin) installed="$root/Library/Application Support/Corvane/Varlo" ;;
    *) installed=$root/usr/share/Corvane/Varlo ;;
esac

diff -r "$presets/factory" "$installed/presets"
diff -r "$presets/designers" "$installed/DesignersPresets"

# Everybody can read them, and nothing else came along.
unreadable=$(find "$root" -mindepth 1 ! -perm -go=r)
[ -z "$unreadable" ] || { echo "not for all users: $unreadable"; exit 1; }

others=$(find "$root" -type f ! -path "$installed/*")
[ -z "$others" ] || { echo "no presets: $others"; exit 1; }
