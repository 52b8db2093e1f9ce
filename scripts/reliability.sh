#!/usr/bin/env bash
# Repeats the long trials that docs/reliability.md tells of.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOT
usage: $command_name [--no-install] [--short] [TRIAL...]

Builds what they need and runs the trials that are named, or all of them:

  habits     what hosts do out of order, with the processor and through the bundle
  storm      64 instances and 8 editors of the bundle at random, 600 s
  soak       one instance and its user, 300 s
  blocks     the times of single blocks, alone and under load, 300 s each
  silence    an hour of silence behind a burst against the burst
  memcheck   the bundle and its editor under valgrind
  threads    12 instances and 2 editors in the storm under the thread sanitizer, 120 s, and the tests of threads
  fuzz       all fuzzers, 600 s each

One after the other they take about an hour and a half, the builds aside, fuzzers less on more processors.
Each goes on when another fails. Installs the Debian or Ubuntu packages that this lacks.

  --short        run each for a few seconds, for two to three minutes in all
  --no-install   install no packages: list what lacks and stop
  -h, --help     show this text
EOT
}

all=(habits storm soak blocks silence memcheck threads fuzz)
install=yes
short=
trials=()

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        --short) short=yes ;;
        -h|--help) usage; exit 0 ;;
        -*) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
        *)
            [[ " ${all[*]} " == *" $argument "* ]] \
                || { echo "$command_name: unknown trial '$argument' (see --help)" >&2; exit 2; }
            trials+=("$argument") ;;
    esac
done

[ ${#trials[@]} -gt 0 ] || trials=("${all[@]}")
cd "$root"
prepare_machine "$install" "try Varlo's reliability" "$build_packages $test_packages valgrind" \
    "$build_tools $test_tools valgrind"

# seconds LONG SHORT
seconds() { if [ -n "$short" ]; then echo "$2"; else echo "$1"; fi; }

# Nothing of the trials lands in the user's home.
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT

with_display() {
    HOME=$home xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -noreset" "$@"
}

# build PRESET TARGETS...
build() {
    cmake --preset "$1" -DVARLO_BUILD_TESTS=ON >/dev/null
    cmake --build --preset "$1" --target "${@:2}"
}

try_habits() {
    build release varlo_tests varlo_host_tests Varlo_VST3
    with_display build/release/tests/varlo_tests --gtest_filter='HostHabits.*'
    with_display build/release/tests/host/varlo_host_tests --gtest_filter='BundleHabits.*'
}

try_storm() {
    build release varlo_storm Varlo_VST3
    with_display build/release/tests/storm/varlo_storm --seconds "$(seconds 600 20)" --seed "$RANDOM"
}

try_soak() {
    build release varlo_soak Varlo_VST3
    with_display build/release/tests/soak/varlo_soak --seconds "$(seconds 300 20)" --seed "$RANDOM"
}

try_blocks() {
    build release varlo_block_times
    with_display build/release/benchmarks/varlo_block_times alone "$(seconds 300 5)"
    with_display build/release/benchmarks/varlo_block_times load "$(seconds 300 5)"
}

try_silence() {
    build release varlo_block_times
    HOME=$home build/release/benchmarks/varlo_block_times silence "$(seconds 3600 600)"
}

try_memcheck() {
    build release varlo_host_tests varlo_render Varlo_VST3
    local memcheck=(valgrind --quiet --error-exitcode=1 --num-callers=30 --leak-check=full
        --show-leak-kinds=definite --errors-for-leak-kinds=definite --suppressions=tests/host/valgrind.supp)

    with_display "${memcheck[@]}" build/release/tests/host/varlo_host_tests \
        --gtest_filter='BundleAutomation.*:BundleFactory.*:BundleHabits.*:BundleResources.*:BundleState.*:UnloadTest.*'
    with_display "${memcheck[@]}" build/release/tools/render/varlo_render_artefacts/Release/varlo-render \
        --plugin build/release/varlo/Varlo_artefacts/Release/VST3/Varlo.vst3 resources/demo/guit_e_fifths.flac \
        -o "$home/out.wav" --editor-png "$home/editor.png" --save-state "$home/state"
}

# Painting takes the sanitizer so long that eight editors leave the message thread no time for anything else.
try_threads() {
    build tsan varlo_storm varlo_thread_tests Varlo_VST3
    TSAN_OPTIONS="halt_on_error=1:detect_deadlocks=0:suppressions=$root/tests/threads/tsan.supp" \
        with_display build/tsan/tests/storm/varlo_storm --seconds "$(seconds 120 20)" --instances 12 --editors 2
    with_display ctest --preset tsan
}

try_fuzz() { scripts/fuzz.sh --no-install --seconds "$(seconds 600 5)"; }

trap - ERR
failed=()

for trial in "${trials[@]}"; do
    say "Trying $trial"
    start=$SECONDS

    # In a shell of its own, where a failure ends this trial and not the others. In a condition bash would go on.
    set +e
    (set -e; "try_$trial")
    result=$?
    set -e

    [ "$result" -eq 0 ] || failed+=("$trial")
    say "$trial: $([ "$result" -eq 0 ] && echo passed || echo FAILED), $((SECONDS - start)) s with the build"
done

[ ${#failed[@]} -eq 0 ] || fail "failed: ${failed[*]}"
