#!/usr/bin/env bash
# Tells which lines of our own code the tests run.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

least_percent=95

usage() {
    cat <<EOF
usage: $command_name [--no-install]

Builds pluginCore, varlo and varlo-render so that they count how often each line runs, passes the tests of the
framework, of the product and of the built plug-ins, and tells the share of lines that ran at least once: file by
file in build/coverage/coverage.txt, with the sources in build/coverage/report/index.html. Fails where it is
under $least_percent %. Installs the Debian or Ubuntu packages that this lacks.

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

cd "$root"
prepare_machine "$install" "measure the tests' coverage" "$build_packages $test_packages gcovr" \
    "$build_tools $test_tools gcovr"

say "Building"
build=build/coverage
cmake --preset release -B "$build" -DVARLO_BUILD_TESTS=ON -DVARLO_COVERAGE=ON
cmake --build "$build" --target cv_plugin_core_tests varlo_tests varlo_host_tests varlo_lv2_tests varlo_thread_tests

# Counts of an earlier run would be added to.
find "$build" -name '*.gcda' -delete

say "Testing"
xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -noreset" \
    ctest --test-dir "$build" --output-on-failure --parallel "$(getconf _NPROCESSORS_ONLN)" \
        --label-regex '^(cv_plugin_core|varlo(_host|_lv2|_thread)?)_tests$' \
    || say "Some tests failed: what they would have run further on isn't counted"

say "Counting"
mkdir -p "$build/report"
gcovr --root . --object-directory "$build" --filter pluginCore/ --filter varlo/ --filter tools/ \
    --txt "$build/coverage.txt" --html-details "$build/report/index.html" \
    --fail-under-line "$least_percent" --print-summary
