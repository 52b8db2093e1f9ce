#!/usr/bin/env bash
# Tests scripts/lib/presets.sh on homes with and without presets.
#
#   UserPresetsTests.sh SCRIPTS
set -euo pipefail

# shellcheck source=scripts/lib/presets.sh
. "$1/lib/presets.sh"

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0

source=$folder/source
machine=$folder/machine
user=$folder/home/presets
mkdir -p "$source/factory/Slap" "$source/designers" "$machine"
echo init > "$source/factory/Init.cvpreset"
echo vocal > "$source/factory/Slap/Slapback Vocal.cvpreset"
echo rain > "$source/designers/Rain.cvpreset"
echo words > "$source/README.md"

# expect CASE ACTUAL EXPECTED
expect() {
    [ "$2" = "$3" ] && return
    printf '%s: expected "%s", but got "%s"\n' "$1" "$3" "$2"
    failures=$((failures + 1))
}

give() { give_presets "$source" "$machine" "$user"; }

contents() { (cd "$user" && find . -type f | LC_ALL=C sort | tr '\n' ' '); }

all="./Designers/Rain.cvpreset ./Factory/Init.cvpreset ./Factory/Slap/Slapback Vocal.cvpreset "

expect new-home "$(give)" "3 copied into $user/Factory and Designers"
expect new-home-has-them "$(contents)" "$all"
expect with-their-content "$(cat "$user/Factory/Slap/Slapback Vocal.cvpreset")" vocal
expect again "$(give)" "0 copied into $user/Factory and Designers, 3 there already"

echo mine > "$user/Factory/Slap/Slapback Vocal.cvpreset"
echo own > "$user/Factory/Own.cvpreset"
rm "$user/Designers/Rain.cvpreset"
expect changed "$(give)" "1 copied into $user/Factory and Designers, 1 there already, 1 that differ left alone"
expect changed-stays "$(cat "$user/Factory/Slap/Slapback Vocal.cvpreset")" mine
expect own-stays "$(cat "$user/Factory/Own.cvpreset")" own

ln -sf "$folder/nowhere" "$user/Factory/Init.cvpreset"
give >/dev/null
expect link-stays "$(readlink "$user/Factory/Init.cvpreset")" "$folder/nowhere"
expect nothing-written-through-it "$(find "$folder/nowhere" 2>/dev/null)" ""

take() { take_presets "$source" "$user"; }

expect taken "$(take)" "1 removed from $user, 3 of your own left in Factory and Designers"
expect own-left "$(contents)" "./Factory/Own.cvpreset ./Factory/Slap/Slapback Vocal.cvpreset "
expect link-left "$(readlink "$user/Factory/Init.cvpreset")" "$folder/nowhere"
expect nothing-to-take "$(take)" "0 removed from $user, 3 of your own left in Factory and Designers"

rm -r "$user"
give >/dev/null
mkdir "$user/Own"
expect all-taken "$(take)" "3 removed from $user"
expect nothing-but-own-left "$(ls -A "$user")" Own
expect never-given "$(take)" "0 removed from $user"

rm -r "$user"
mkdir -p "$user"
echo a file > "$user/Factory"
expect no-folder "$(give)" "can't be written into $user/Factory"
expect no-folder-stays "$(cat "$user/Factory")" "a file"

rm -r "$user"
mkdir -p "$machine/presets"
touch "$machine/presets/Init.cvpreset"
expect for-all-users "$(give)" "in $machine for all users, so none were copied for you"
expect none-copied "$(find "$folder/home" -type f)" ""

exit "$failures"
