#!/usr/bin/env bash
# Builds everything and passes all tests.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--warnings-as-errors] [PRESET...]

Builds the plug-in, its tools and its tests and runs the tests, once for each of the presets
release, debug, asan, tsan and fuzz that is named; when none is, for release, and for fuzz where Clang and
its libFuzzer are there. tsan, the thread sanitizer, builds and runs only what several threads take part in;
fuzz builds and runs only the fuzzers, for 20 s each, and is skipped where Clang and its libFuzzer are neither
there nor to be had. Installs the Debian or Ubuntu packages that this lacks.

  --no-install           install no packages: list what lacks and stop
  --warnings-as-errors   a warning in Varlo's own code fails the build; the build folder keeps that
  -h, --help             show this text
EOF
}

install=yes
warnings=
presets=()

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        --warnings-as-errors) warnings=-DVARLO_WARNINGS_AS_ERRORS=ON ;;
        -h|--help) usage; exit 0 ;;
        release|debug|asan|tsan|fuzz) presets+=("$argument") ;;
        -*) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
        *) echo "$command_name: unknown preset '$argument' (release, debug, asan, tsan or fuzz)" >&2; exit 2 ;;
    esac
done

# Fuzzers that nobody asked for aren't worth the installing of a second compiler.
install_clang=$install
[ ${#presets[@]} -gt 0 ] || { presets=(release fuzz); install_clang=no; }

cd "$root"

prepare_machine "$install" "build and test Varlo" "$build_packages $test_packages" "$build_tools $test_tools"

# The tests get a display of their own: they need none to be there and open no window on the user's. A server
# that forgets everything whenever its last client goes may do so while the next test is just connecting.
with_display() {
    if [ -n "$test_tools" ]; then
        xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -noreset" "$@"
    else
        "$@"
    fi
}

for preset in "${presets[@]}"; do
    if [ "$preset" = fuzz ] && ! prepare_fuzzing "$install_clang"; then
        say "SKIPPED: fuzz, because there is no Clang with libFuzzer here"
        continue
    fi

    say "Building $preset"
    tests=ON
    [ "$preset" != fuzz ] || tests=OFF
    cmake --preset "$preset" -DVARLO_BUILD_TESTS=$tests ${warnings:+"$warnings"}
    cmake --build --preset "$preset"

    say "Testing $preset"
    with_display ctest --preset "$preset" --parallel "$(getconf _NPROCESSORS_ONLN)"
done
