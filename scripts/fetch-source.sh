#!/usr/bin/env bash
# Fetches what others wrote and a build needs: one release, exactly that.
#
#   fetch-source.sh juce-8.0.6|vst3sdk-3.7.10 FOLDER
#
# Takes Debian's source package, whose files have the checksums below; JUCE is else taken from upstream's git tag.
# FOLDER is there once all is in it. Where nothing can be had, the last lines on stderr say what was tried.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

if [ $# -ne 2 ]; then
    echo "usage: $0 juce-8.0.6|vst3sdk-3.7.10 FOLDER" >&2
    exit 2
fi

source=$1 folder=$2
download=$folder.download

mkdir -p "$(dirname "$folder")"
rm -rf "$download"
trap 'rm -rf "$download"' EXIT

# from_debian PACKAGE VERSION SHA256:FILE...: downloads the files; says why when it can't.
from_debian() {
    local package=$1 version=$2 output
    shift 2

    output=$(bash "$scripts/fetch-debian-source.sh" trixie "$package" "$version" "$download" "$@" 2>&1 >/dev/null) \
        && return

    # apt's own warnings come first.
    echo "  - Debian's source package: $(tail -n 1 <<< "$output")" >&2
    return 1
}

# Debian's patches are in it. The checksums stand in for the signature, which would need the keyring of Debian's
# maintainers.
juce_from_debian() {
    if ! command -v dpkg-source >/dev/null; then
        echo "  - Debian's source package: dpkg-source is not installed (package dpkg-dev)" >&2
        return 1
    fi

    from_debian juce 8.0.6+ds-2 \
        4126ec8066866a1ccbc9cdd2beac712fd51e55ac7f24d8fdc45077b187a358ef:juce_8.0.6+ds.orig.tar.xz \
        98f781365d85d35639b5c47416b769c3d68ad9858c8559fc6c80bb95710976a1:juce_8.0.6+ds-2.debian.tar.xz \
        875f60aa9810331de2b41dcc3b2d3af86dbcb8bbb4571b30d26e34cc3f96db58:juce_8.0.6+ds-2.dsc \
        && (cd "$download" && dpkg-source --no-check -x juce_8.0.6+ds-2.dsc unpacked >/dev/null) \
        && mv "$download/unpacked" "$folder"
}

juce_from_git() {
    local repository=https://github.com/juce-framework/JUCE.git output
    rm -rf "$download"

    if output=$(git -c advice.detachedHead=false clone --quiet --depth 1 --branch 8.0.6 "$repository" "$download" 2>&1)
    then
        mv "$download" "$folder"
    else
        echo "  - upstream's git tag: $repository can't be reached ($(tail -n 1 <<< "$output"))" >&2
        return 1
    fi
}

# Those parts that the SDK's validator is made of.
vst3sdk_from_debian() {
    local prefix=vst3sdk_3.7.10.14+~4.13.3.orig part

    from_debian vst3sdk 3.7.10.14+~4.13.3-4 \
        "b9eb5c1e57ca2ef6b2560dd0e13822dd5a51e437b8f5a6c421b099d621d2bffb:$prefix-base.tar.gz" \
        "f4699e910a67e585d7d177b2a48f6aa43706b3f073c8e454615f094484374349:$prefix-cmake.tar.gz" \
        "fd426c6b26ef93fdfdc8aef7e9b836c1bf43f25b8a1ef4c0642a41fb9250ab8a:$prefix-pluginterfaces.tar.gz" \
        "ca1f70406b36f0763c799085c67deed5befc69514cc2b9cacb804512e95db335:$prefix-public-sdk.tar.gz" || return 1

    for part in base cmake pluginterfaces public-sdk; do
        mkdir -p "$download/sdk/${part/-/.}"
        tar -xzf "$download/$prefix-$part.tar.gz" --strip-components 1 -C "$download/sdk/${part/-/.}"
    done

    mv "$download/sdk" "$folder"
}

case $source in
    juce-8.0.6) juce_from_debian || juce_from_git ;;
    vst3sdk-3.7.10) vst3sdk_from_debian ;;
    *) echo "$0: unknown source '$source'" >&2; exit 2 ;;
esac
