#!/usr/bin/env bash
# Looks for mistakes without running anything: layout, C++, shell scripts, workflows.
set -Eeuo pipefail

# shellcheck source=scripts/lib/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/setup.sh"

usage() {
    cat <<EOF
usage: $command_name [--no-install] [--fast]

Checks all files of the repository: how C++ is laid out (clang-format), what clang-tidy finds in the code of the
plug-in and its tools, what shellcheck finds in scripts and, where actionlint is installed, what that finds in
workflows. Changes nothing. Installs the Debian or Ubuntu packages that this lacks.

  --no-install   install no packages: list what lacks and stop
  --fast         without clang-tidy, which takes some minutes
  -h, --help     show this text
EOF
}

install=yes
tidy=yes

for argument in "$@"; do
    case $argument in
        --no-install) install=no ;;
        --fast) tidy=no ;;
        -h|--help) usage; exit 0 ;;
        *) echo "$command_name: unknown option '$argument' (see --help)" >&2; exit 2 ;;
    esac
done

cd "$root"
prepare_machine "$install" "check the code" "$build_packages $lint_packages" "$build_tools clang-format clang-tidy shellcheck"

failures=0

# check NAME COMMAND...: goes on after a failure, so that one run tells all.
check() {
    say "$1"
    shift
    "$@" || failures=$((failures + 1))
}

check_layout() {
    git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror
}

check_scripts() {
    git ls-files -z '*.sh' 'tests/build/fake-bin/*' .ci/run | xargs -0 shellcheck --external-sources
}

# JUCE's headers take clang-tidy ten seconds, ours next to nothing: it reads them once for each folder. The compile
# commands are those of the build's own compiler, whose warnings Clang need not know.
check_code() {
    local joined=$root/build/release/lint
    python3 scripts/lib/join_sources.py build/release "$joined" "$root" pluginCore varlo tools || return
    printf '%s\0' "$joined"/*.cpp | xargs -0 -n 1 -P "$(getconf _NPROCESSORS_ONLN)" \
        clang-tidy -p "$joined" --quiet --warnings-as-errors='*' --header-filter="^$root/(pluginCore|varlo|tools)/" \
            --checks=-bugprone-suspicious-include --extra-arg=-Wno-unknown-warning-option 2>/dev/null
}

check "Layout (clang-format)" check_layout
check "Scripts (shellcheck)" check_scripts

if command -v actionlint >/dev/null && [ -d .github/workflows ]; then
    check "Workflows (actionlint)" actionlint
else
    say "SKIPPED: workflows, because there is no actionlint here"
fi

if [ "$tidy" = yes ]; then
    configure_release
    # What the build makes of the resources is included, too.
    cmake --build --preset release --target cv_pluginCore_resources cv_varlo_resources >/dev/null
    check "Code (clang-tidy)" check_code
fi

[ "$failures" -eq 0 ] || fail "$failures of the checks found something"
say "Nothing found"
