#!/usr/bin/env bash
# Makes the packages that users download.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install]

Builds the release and leaves a Debian package (.deb) and an archive for other distributions (.tar.gz) of the
plug-in, the standalone and varlo-render in dist/. They run on this machine's kind of processor and need
its C library or a later one: build them on the oldest distribution that they are to run on. Has lintian,
desktop-file-validate and appstreamcli look at them. Installs the Debian or Ubuntu packages that this lacks.

  --no-install   install no packages: list what lacks and stop
  -h, --help     show this text
EOF
}

install=yes

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        -h|--help) usage; exit 0 ;;
        *) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
    esac
done

[ "$(uname)" = Linux ] || fail "packages are made on Linux"
command -v dpkg-shlibdeps >/dev/null || command -v apt-get >/dev/null || fail "a Debian package needs dpkg's tools"

cd "$root"
prepare_machine "$install" "make packages of Varlo" "$build_packages $package_packages" "$build_tools"
configure_release

say "Building"
cmake --build --preset release --target Varlo_VST3 Varlo_LV2 Varlo_Standalone varlo_render

say "Packing"
packages=$root/build/release/packages
rm -rf "$packages"
(cd build/release && cpack >"$root/build/release/cpack.log") || fail "cpack failed; build/release/cpack.log tells why"
mkdir -p dist

say "Looking at them"
deb=$(echo "$packages"/varlo_*.deb)
contents=$(mktemp -d)
trap 'rm -rf "$contents"' EXIT
dpkg-deb --extract "$deb" "$contents"
lintian --fail-on error,warning "$deb" || fail "lintian has objections"
desktop-file-validate "$contents/usr/share/applications/varlo.desktop"
appstreamcli validate --no-net "$contents/usr/share/metainfo/example.corvane.varlo.metainfo.xml"

for package in "$packages"/varlo[-_]*; do
    cp "$package" dist/
    say "dist/$(basename "$package"), $(($(stat -c %s "$package") / 1000000)) MB"
done
