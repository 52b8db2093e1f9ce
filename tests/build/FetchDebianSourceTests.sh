#!/usr/bin/env bash
# Tests scripts/fetch-debian-source.sh on mirrors that misbehave.
#
#   FetchDebianSourceTests.sh SCRIPT
#
# Ends with 77 (skipped) where Debian's archive keyring, which the script insists on, is not installed.
set -euo pipefail

script=$1
[ -r /usr/share/keyrings/debian-archive-keyring.gpg ] || { echo "no keyring of Debian's archive"; exit 77; }

PATH=$(cd "$(dirname "$0")/fake-bin" && pwd):$PATH
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0

good=$(printf content | sha256sum | cut -d ' ' -f 1)
bad=$(printf other | sha256sum | cut -d ' ' -f 1)

# expect CASE MIRROR PIN MESSAGE: the script fails with MESSAGE, or succeeds when MESSAGE is empty.
expect() {
    local output result=0
    output=$(FAKE_MIRROR=$2 bash "$script" trixie package 1.0 "$folder/$1" "$3" 2>&1) || result=$?

    if [ -z "$4" ] && [ "$result" -eq 0 ] && [ -f "$folder/$1/payload" ] && [ ! -e "$folder/$1/.apt" ]; then
        return
    elif [ -n "$4" ] && [ "$result" -ne 0 ] && grep -qF "$4" <<< "$output"; then
        return
    fi

    echo "$1: ended with $result and said: $output"
    failures=$((failures + 1))
}

expect takes-what-is-pinned-although-apt-fails files "$good:payload" ""
expect refuses-another-content files "$bad:payload" "payload does not have the checksum"
expect names-the-file-that-lacks files "$good:absent" "the mirror lacks absent"
expect tells-an-unreachable-mirror unreachable "$good:payload" "http://mirror.invalid/debian can't be reached"
expect tells-that-no-mirror-is-set-up nothing "$good:payload" "apt uses no mirror"

exit "$failures"
