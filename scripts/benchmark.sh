#!/usr/bin/env bash
# Measures what the plug-in costs and prints all of it: docs/performance.md explains the figures.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF2
usage: $command_name [--no-install]

Builds the release and prints what the sound takes in each situation beside the
literal model of the same sound, what instances, jumps and prepares cost, the window's painting, the spectrum,
the loading of the plug-in, and the load at a sound card's pace. Leave the machine alone meanwhile. Installs the
Debian or Ubuntu packages that this lacks.

  --no-install   install no packages: list what lacks and stop
  -h, --help     show this text
EOF2
}

install=yes

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        -h|--help) usage; exit 0 ;;
        *) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
    esac
done

cd "$root"
prepare_machine "$install" "measure Varlo" "$build_packages $test_packages" "$build_tools $test_tools"

say "Building"
cmake --preset release -DVARLO_BUILD_TESTS=ON -DVARLO_BUILD_BENCHMARKS=ON >/dev/null
cmake --build --preset release --target Varlo_VST3 varlo_benchmarks varlo_paced_load varlo_coming_up

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
programs=$root/build/release/benchmarks

# Neither the user's presets nor the user's windows take part.
measure() {
    if [ -n "$test_tools" ]; then
        HOME=$scratch xvfb-run --auto-servernum --server-args="-screen 0 2400x1600x24 -noreset" "$@"
    else
        HOME=$scratch "$@"
    fi
}

# benchmark FILTER: a line for each, with all its counters, for other programs to read.
benchmark() {
    measure "$programs/varlo_benchmarks" --benchmark_filter="$1" --benchmark_format=csv 2>/dev/null
}

say "The sound, ns of CPU time a frame (least of 15): ours, the literal model, ours / model"
benchmark '^sound/' | awk -F , '
    /^name/ { for (i = 1; i <= NF; ++i) { gsub (/"/, "", $i); column[$i] = i } next }
    /^"/ {
        split ($0, quoted, "\""); name = quoted[2]; sub (/^sound\//, "", name); sub (/\/iterations.*/, "", name)
        rest = $0; sub (/^"[^"]*",/, "", rest); n = split (rest, value, ",")
        printf "%-62s %8.2f %8.2f %7.3f\n", name, value[column["ns"] - 1], value[column["model"] - 1], value[column["ratio"] - 1]
    }'

say "Instances, jumps, prepares and memory"
measure "$programs/varlo_benchmarks" --benchmark_filter='^(instances|jump|prepare|memory)/' 2>/dev/null

say "Spectrum and window"
measure "$programs/varlo_benchmarks" --benchmark_filter='^(spectrum|window)/' 2>/dev/null

say "Coming up"
measure "$programs/varlo_coming_up" 20

say "At a sound card's pace, 48 kHz"

for instances in 1 16 64; do
    for block in 64 512; do
        measure "$programs/varlo_paced_load" "$instances" "$block" 5
    done
done
