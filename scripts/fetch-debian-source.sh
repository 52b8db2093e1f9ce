#!/usr/bin/env bash
# Downloads one of Debian's source packages and leaves the system's apt set-up untouched.
#
#   fetch-debian-source.sh SUITE PACKAGE VERSION FOLDER SHA256:FILE...
#
# Takes the mirror that this machine already uses, with a package list and a cache of its own inside
# FOLDER. Succeeds when every named file is there with its checksum, whatever else the mirror lacks.
set -euo pipefail

if [ $# -lt 5 ]; then
    echo "usage: $0 SUITE PACKAGE VERSION FOLDER SHA256:FILE..." >&2
    exit 2
fi

suite=$1 package=$2 version=$3 folder=$4
shift 4

fail() { echo "fetch-debian-source: $*" >&2; exit 1; }

command -v apt-get >/dev/null || fail "this system has no apt-get"
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
[ -r "$keyring" ] || fail "Debian's archive keyring is not installed ($keyring)"

# The main archive, not the security one, which keeps no other suite's sources.
# shellcheck disable=SC2016  # the format is apt's, not the shell's
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 2>/dev/null \
         | grep -E '/debian/?$' | head -n 1 || true)
[ -n "$mirror" ] || fail "apt uses no mirror of Debian's archive here"

mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
private=$folder/.apt
mkdir -p "$private/lists/partial" "$private/cache/archives/partial"
trap 'rm -rf "$private"' EXIT

echo "deb-src [signed-by=$keyring] $mirror $suite main" > "$private/sources.list"

apt=(apt-get -qq
     -o "Dir::Etc::sourcelist=$private/sources.list" -o Dir::Etc::sourceparts=-
     -o "Dir::State::Lists=$private/lists" -o "Dir::Cache=$private/cache"
     -o APT::Sandbox::User="$(id -un)" -o Acquire::Retries=3)

# apt-get ends well when a mirror can't be reached; the list that it should have fetched tells.
"${apt[@]}" update || true
compgen -G "$private/lists/*Sources*" >/dev/null \
    || fail "$mirror can't be reached or does not serve the sources of $suite"

# A mirror may lack one file of a package; which ones are needed is decided below.
(cd "$folder" && "${apt[@]}" source --download-only "$package=$version") || true

for pin in "$@"; do
    file=$folder/${pin#*:}
    [ -f "$file" ] || fail "the mirror lacks ${pin#*:}"
    echo "${pin%%:*}  $file" | sha256sum --quiet --check - >/dev/null 2>&1 \
        || fail "${pin#*:} does not have the checksum that it should"
done
