#!/usr/bin/env bash
# Tests what plot-dsp.sh and manual-pictures.sh say of a wrong call, and that what the first one measures of the built
# bundle is what its formulas say.
#
#   PictureTests.sh SCRIPTS PROGRAM BUNDLE
set -euo pipefail

scripts=$1
program=$2
bundle=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# refuses CODE WORDS ARGUMENT...: $script ends with this code and says one line on stderr, which holds these words.
refuses() {
    local expected=$1 words=$2 code=0
    shift 2
    bash "$scripts/$script" "$@" >"$scratch/out" 2>"$scratch/err" </dev/null || code=$?

    if [ "$code" -ne "$expected" ] || [ "$(wc -l < "$scratch/err")" -ne 1 ] || ! grep -qF -e "$words" "$scratch/err"; then
        printf '%s: exit code %s, expected %s and "%s"; it said:\n' "$script $*" "$code" "$expected" "$words"
        cat "$scratch/out" "$scratch/err"
        exit 1
    fi
}

for script in plot-dsp.sh manual-pictures.sh; do
    bash "$scripts/$script" --help | grep -q "^usage: $script"
    refuses 2 "unknown option '--nonsense'" --nonsense
    refuses 2 "--built needs a FOLDER" --built
    refuses 2 "one OUTPUT at a time" a b
    refuses 1 "there is no varlo-render in $scratch" --built "$scratch"

    touch "$scratch/varlo-render"
    chmod +x "$scratch/varlo-render"
    refuses 1 "there is no Varlo.vst3 in $scratch" --built "$scratch"
    rm "$scratch/varlo-render"
done

for python in python3 /usr/bin/python3; do
    if "$python" -c 'import numpy' 2>/dev/null; then
        exec env HOME="$scratch" VARLO_PROGRAM="$program" VARLO_BUNDLE="$bundle" "$python" "$(dirname "$0")/dsp_test.py"
    fi
done

echo "SKIPPED: no python3 here has numpy"
exit 77
