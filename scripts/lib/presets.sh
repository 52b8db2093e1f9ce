# shellcheck shell=bash
#
# Sourced by scripts: the presets of the tree for one user, who may not be allowed to install them for all.

# give_presets SOURCE MACHINE_FOLDER USER_FOLDER
#
# Copies the presets of SOURCE, its folders factory and designers, into Factory and Designers of USER_FOLDER, and
# prints in one line what it did. What is there already stays as it is, whatever it holds. Where MACHINE_FOLDER has
# the presets for all users, none are copied.
give_presets() {
    local source=$1 machine=$2 user=$3 bank file target new=0 same=0 other=0

    if [ -f "$machine/presets/Init.cvpreset" ]; then
        echo "in $machine for all users, so none were copied for you"
        return
    fi

    for bank in Factory Designers; do
        while IFS= read -r -d '' file; do
            target=$user/$bank/${file#"$source"/*/}

            if cmp -s "$file" "$target"; then
                same=$((same + 1))
            elif [ -e "$target" ] || [ -L "$target" ]; then
                other=$((other + 1))
            elif give_preset "$file" "$target"; then
                new=$((new + 1))
            else
                echo "can't be written into $user/$bank"
                return
            fi
        done < <(find "$source/$(bank_source "$bank")" -name '*.cvpreset' -print0)
    done

    printf '%s' "$new copied into $user/Factory and Designers"
    [ "$same" -eq 0 ] || printf ', %s there already' "$same"
    [ "$other" -eq 0 ] || printf ', %s that differ left alone' "$other"
    echo
}

# The copy gets its name when it is whole: half a preset would count as the user's own.
give_preset() {
    mkdir -p "$(dirname "$2")" 2>/dev/null && cp "$1" "$2.new" 2>/dev/null && mv "$2.new" "$2"
}

# take_presets SOURCE USER_FOLDER
#
# Takes away what give_presets copied: files of Factory and Designers that are still the same as in SOURCE, and the
# folders that this leaves empty. Prints in one line what it did.
take_presets() {
    local source=$1 user=$2 bank file target gone=0 left=0

    for bank in Factory Designers; do
        [ -d "$user/$bank" ] || continue

        while IFS= read -r -d '' file; do
            target=$user/$bank/${file#"$source"/*/}

            if cmp -s "$file" "$target" && [ ! -L "$target" ]; then
                rm "$target"
                gone=$((gone + 1))
            fi
        done < <(find "$source/$(bank_source "$bank")" -name '*.cvpreset' -print0)

        find "$user/$bank" -depth -type d -exec rmdir {} + 2>/dev/null || true
        [ ! -d "$user/$bank" ] || left=$((left + $(find "$user/$bank" ! -type d | wc -l)))
    done

    printf '%s' "$gone removed from $user"
    [ "$left" -eq 0 ] || printf ', %s of your own left in Factory and Designers' "$left"
    echo
}

# The folder of the tree that holds a bank.
bank_source() {
    case $1 in
        Factory) echo factory ;;
        Designers) echo designers ;;
    esac
}
