#!/usr/bin/env bash
# Tests the packages: makes them, installs the Debian package into a root of its own, plays through what is there,
# removes it again.
#
#   PackageTests.sh BUILD_FOLDER CPACK RENDER BUNDLE RECORDING
#
# RENDER and BUNDLE are what the build folder holds. Ends with 77 (skipped) where dpkg's tools lack.
set -euo pipefail

build=$1 cpack=$2 render=$3 bundle=$4 recording=$5

for tool in dpkg-deb dpkg-shlibdeps fakeroot lv2ls readelf; do
    command -v "$tool" >/dev/null || { echo "SKIPPED: no $tool"; exit 77; }
done

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOME=$scratch/home
failures=0

expect() {
    local what=$1
    shift
    "$@" && return
    echo "FAILED: $what"
    failures=$((failures + 1))
}

# Weakly compressed, which only makes them larger; whoever packs may keep what they make to themselves.
(umask 077 && cd "$build" && "$cpack" -D CPACK_DEBIAN_COMPRESSION_TYPE=gzip -B "$scratch/packages") >"$scratch/cpack.log" 2>&1 \
    || { cat "$scratch/cpack.log"; exit 1; }
deb=$(echo "$scratch"/packages/varlo_*.deb)
archive=$(echo "$scratch"/packages/varlo-*.tar.gz)

# dpkg's own records lie in the root too.
root=$scratch/root
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$HOME"
touch "$root/var/lib/dpkg/status" "$root/var/lib/dpkg/available"

in_root() {
    fakeroot dpkg --root="$root" --log=/dev/null --force-not-root --force-depends --force-bad-path "$@" \
        >>"$scratch/dpkg.log" 2>&1 || { cat "$scratch/dpkg.log"; exit 1; }
}

list_root() { (cd "$root" && find . -path ./var -prune -o -print | sort); }

# What a user has made before.
own=$HOME/.local/share/Corvane/Varlo/presets/Own.cvpreset
mkdir -p "$(dirname "$own")"
echo '<Varlo version="1.0.0"><PARAMS><PARAM id="delay" value="123.0"/></PARAMS></Varlo>' >"$own"
cp "$own" "$scratch/own before"

list_root >"$scratch/before"
in_root --install "$deb"

for file in bin/varlo bin/varlo-render lib/lv2/Varlo.lv2/manifest.ttl lib/vst3/Varlo.vst3/Contents/Resources/moduleinfo.json \
        share/applications/varlo.desktop share/bash-completion/completions/varlo-render share/doc/varlo/changelog.gz \
        share/doc/varlo/copyright share/icons/hicolor/scalable/apps/varlo.svg share/man/man1/varlo.1.gz \
        share/Corvane/Varlo/presets/Init.cvpreset share/man/man1/varlo-render.1.gz share/metainfo/example.corvane.varlo.metainfo.xml; do
    expect "$file is installed" [ -f "$root/usr/$file" ]
done

# The installed host finds the installed plug-in by itself and sounds as what the build folder holds.
"$render" "$recording" -o "$scratch/built.wav" --plugin "$bundle" --preset "$own" --tail 1 --quiet
"$root/usr/bin/varlo-render" "$recording" -o "$scratch/installed.wav" --preset "$own" --tail 1 --quiet
expect "what is installed sounds as what is built" cmp "$scratch/built.wav" "$scratch/installed.wav"
expect "hosts of LV2 find it" [ "$(LV2_PATH=$root/usr/lib/lv2 lv2ls)" = urn:corvane:varlo ]

expect "everybody may look into all folders" \
    [ -z "$(dpkg-deb --contents "$deb" | grep '^d' | grep -v '^drwxr-xr-x')" ]

mapfile -t binaries < <(find "$root/usr/lib" "$root/usr/bin" -type f \( -name '*.so' -o -path '*/bin/*' \))
expect "four binaries are installed" [ ${#binaries[@]} -eq 4 ]

for binary in "${binaries[@]}"; do
    expect "$binary is stripped" [ "$(readelf --section-headers --wide "$binary" | grep -c ' \.symtab ')" -eq 0 ]
done

(cd "$root/usr" && find . -type f | sort) >"$scratch/deb files"
in_root --purge varlo
list_root >"$scratch/after"
expect "nothing stays behind" diff "$scratch/before" "$scratch/after"
expect "the user's own preset is untouched" cmp "$own" "$scratch/own before"

# The archive holds the same below a folder of its own, and works from there.
mkdir "$scratch/unpacked"
tar -C "$scratch/unpacked" -xf "$archive"
unpacked=$(echo "$scratch"/unpacked/varlo-*)
(cd "$unpacked" && find . -type f | sort) >"$scratch/archive files"
expect "both packages hold the same files" diff "$scratch/deb files" "$scratch/archive files"
"$unpacked/bin/varlo-render" "$recording" -o "$scratch/unpacked.wav" --preset "$own" --tail 1 --quiet
expect "what is unpacked sounds as what is built" cmp "$scratch/built.wav" "$scratch/unpacked.wav"

[ "$failures" -eq 0 ]
