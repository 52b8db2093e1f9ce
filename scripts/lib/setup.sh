# shellcheck shell=bash disable=SC2034  # what looks unused is used by the scripts that source this
#
# Sourced by the scripts of the folder above: messages, and the packages that a build needs.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
command_name=$(basename "$0")

say() { printf '==> %s\n' "$*"; }

fail() {
    printf '%s: %s\n' "$command_name" "$*" >&2
    exit 1
}

trap 'printf "%s: stopped at line %s: the command there failed\n" "$command_name" "$LINENO" >&2' ERR

build_packages="g++ cmake ninja-build ccache pkg-config
    libfreetype-dev libfontconfig1-dev libcurl4-openssl-dev libasound2-dev
    libx11-dev libxcomposite-dev libxcursor-dev libxext-dev libxinerama-dev libxrandr-dev libxrender-dev
    libjack-jackd2-dev libpng-dev libjpeg-dev zlib1g-dev libflac-dev libogg-dev libsamplerate0-dev"
test_packages="libgtest-dev libgmock-dev libbenchmark-dev libebur128-dev libxtst-dev liblilv-dev lilv-utils sordi fakeroot
    locales python3-numpy valgrind xvfb xauth"

# The sound is also built for arm64 and compared, if there is an x86-64 to compare it with.
[ "$(uname -m)" != x86_64 ] || test_packages="$test_packages g++-aarch64-linux-gnu qemu-user"

package_packages="dpkg-dev lintian desktop-file-utils appstream"
fuzz_packages="clang libclang-rt-dev"
lint_packages="clang-format clang-tidy shellcheck"
plot_packages="python3 python3-matplotlib python3-numpy"

build_tools="c++ cmake ninja pkg-config"
test_tools=

[ "$(uname)" != Linux ] || test_tools=xvfb-run

# JUCE comes from Debian's source package on Debian, from upstream's git elsewhere.
if grep -qsx 'ID=debian' /etc/os-release; then
    build_packages="$build_packages dpkg-dev"
else
    build_packages="$build_packages git ca-certificates"
    build_tools="$build_tools git"
fi

# Sets the release build's folder up. It is the one that test.sh tests. Set up by that script it also has
# tests, which need more packages than are installed for a build alone.
configure_release() {
    [ ! -f "$root/build/release/build.ninja" ] || return 0
    say "Configuring (the first time this fetches JUCE and builds its helper program)"
    cmake --preset release -DVARLO_BUILD_TESTS=OFF -DVARLO_BUILD_BENCHMARKS=OFF
}

# build_into FOLDER: builds what users get and leaves it there, without touching dist/.
build_into() {
    configure_release
    say "Building"
    cmake --build --preset release --target Varlo_VST3 Varlo_LV2 Varlo_Standalone varlo_render
    cmake --install build/release --component varlo --prefix "$1" >/dev/null
}

# find_python MODULES: prints a python3 that has these modules, given as "a, b". The first one on the path need not be
# the one that the system's packages belong to.
find_python() {
    local python

    for python in python3 /usr/bin/python3; do
        if "$python" -c "import $1" 2>/dev/null; then
            echo "$python"
            return
        fi
    done

    fail "no python3 here has the modules $1"
}

# prepare_machine INSTALL PURPOSE PACKAGES TOOLS
#
# Leaves the packages installed, or stops with a list of what lacks; INSTALL is yes or no. Where there
# is no apt it checks for the tools and leaves the rest to the machine's owner.
prepare_machine() {
    local install=$1 purpose=$2 packages=$3 tools=$4 missing as_root=

    if ! command -v apt-get >/dev/null; then
        missing=$(missing_tools "$tools")
        [ -z "$missing" ] || fail "no apt on this system; to $purpose, install these tools by hand:$missing"
        say "No apt on this system: its tools are used, and missing libraries are yours to install"
        return
    fi

    missing=$(missing_packages "$packages")
    [ -n "$missing" ] || return 0
    [ "$install" = yes ] || fail "to $purpose, these packages are needed:$missing"

    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "to $purpose, install these packages as root:$missing"
        as_root=sudo
    fi

    say "To $purpose, these packages are installed${as_root:+ with sudo}:$missing"
    $as_root apt-get -qq update || say "apt's lists could not all be updated, those at hand have to do"

    # --no-remove: no package of the user's goes to make room for ours.
    # shellcheck disable=SC2086  # a list of words
    $as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install --yes --no-remove --no-install-recommends $missing </dev/null >/dev/null
}

# prepare_fuzzing INSTALL
#
# Succeeds if the fuzzers can be built here: Clang is there, or could be installed, and brings libFuzzer.
prepare_fuzzing() {
    # In a shell of its own: what can't be installed isn't the end.
    (prepare_machine "$1" "build the fuzzers" "$fuzz_packages" clang++) || return 1

    echo 'extern "C" int LLVMFuzzerTestOneInput (const unsigned char*, unsigned long) { return 0; }' \
        | clang++ -x c++ -fsanitize=fuzzer,address,undefined -o /dev/null - 2>/dev/null
}

missing_tools() {
    local tool

    for tool in $1; do
        command -v "$tool" >/dev/null || printf ' %s' "$tool"
    done
}

missing_packages() {
    local package

    for package in $1; do
        # shellcheck disable=SC2016  # the format is dpkg-query's, not the shell's
        [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] \
            || printf ' %s' "$package"
    done
}
