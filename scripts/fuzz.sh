#!/usr/bin/env bash
# Runs the fuzzers for as long as one likes.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--seconds N] [NAME...]

Builds the fuzzers with Clang and runs each that is named, such as StateChunk, or all of them, for N
seconds, 600 when nothing is said, as many at a time as there are processors. Says for each how many
inputs it tried. An input that the plug-in doesn't stand is kept in build/fuzz/fuzz/findings; given to the
program build/fuzz/fuzz/varlo_fuzz_NAME it shows again. What the fuzzers learn is kept as well, and the next
run starts from it. Installs the Debian or Ubuntu packages that this lacks.

  --seconds N    run each for N seconds
  --no-install   install no packages: list what lacks and stop
  -h, --help     show this text
EOF
}

install=yes
seconds=600
names=()

while [ $# -gt 0 ]; do
    case $1 in
        --no-install) install=no ;;
        --seconds)
            [[ ${2-} =~ ^[1-9][0-9]*$ ]] || { echo "$command_name: --seconds needs a number (see --help)" >&2; exit 2; }
            seconds=$2
            shift ;;
        -h|--help) usage; exit 0 ;;
        -*) echo "$command_name: unknown option '$1' (see --help)" >&2; exit 2 ;;
        *) names+=("$1") ;;
    esac
    shift
done

cd "$root"
[ ${#names[@]} -gt 0 ] || mapfile -t names < <(sed -n 's/^varlo_add_fuzzer(\([A-Za-z]*\).*/\1/p' fuzz/CMakeLists.txt)

for name in "${names[@]}"; do
    [ -f "fuzz/$name.cpp" ] || fail "there is no fuzzer '$name'"
done

prepare_machine "$install" "build the fuzzers" "$build_packages" "$build_tools"
prepare_fuzzing "$install" || fail "the fuzzers need Clang with libFuzzer, which is not here"

say "Building"
cmake --preset fuzz
cmake --build --preset fuzz

say "Running ${names[*]} for $seconds s each"
log=build/fuzz/fuzz/log.txt
result=0
VARLO_FUZZ_SECONDS=$seconds ctest --preset fuzz --verbose --timeout $((seconds + 300)) \
    --parallel "$(getconf _NPROCESSORS_ONLN)" --tests-regex "^Fuzz\.($(IFS='|'; echo "${names[*]}"))\$" \
    >"$log" 2>&1 || result=$?

# CTest puts the test's number before each line, and the name beside the number when it starts.
awk '
    /^ +Start +[0-9]+: Fuzz/ { split ($2, number, ":"); name[number[1]] = $3 }
    /^[0-9]+: stat::number_of_executed_units:/ { split ($1, number, ":"); printf "%-24s %s inputs\n", name[number[1]], $3 }
    /(ERROR|SUMMARY|not as it must be|runtime error|Test unit written)/ { print }
' "$log"
[ "$result" -eq 0 ] || fail "something was found; build/fuzz/fuzz/findings holds the inputs, $log all that was said"
