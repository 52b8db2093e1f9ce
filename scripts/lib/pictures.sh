# shellcheck shell=bash disable=SC2034,SC2154  # names come from and go to the scripts that source this
#
# Sourced by the scripts that draw what the built plug-in does: the command line that they share.

misused() {
    echo "$command_name: $1 (see --help)" >&2
    exit 2
}

# Reads [--no-install] [--built FOLDER] [OUTPUT] into $install, which is yes or no, $built and $output, which are empty
# where they aren't named. A usage() of the script's own is what --help shows.
read_picture_arguments() {
    install=yes
    built=
    output=

    while [ $# -gt 0 ]; do
        case $1 in
            --no-install) install=no ;;
            --built)
                [ -n "${2:-}" ] || misused "--built needs a FOLDER"
                built=$(realpath -m -- "$2")
                shift ;;
            -h|--help) usage; exit 0 ;;
            -*) misused "unknown option '$1'" ;;
            *)
                [ -z "$output" ] || misused "one OUTPUT at a time"
                output=$(realpath -m -- "$1") ;;
        esac
        shift
    done

    [ -z "$built" ] || [ -x "$built/varlo-render" ] || fail "there is no varlo-render in $built"
    [ -z "$built" ] || [ -d "$built/Varlo.vst3" ] || fail "there is no Varlo.vst3 in $built"
}
