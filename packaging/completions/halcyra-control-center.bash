# bash completion for the Halcyra Control Center

_halcyra_control_center() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options="--frames --no-camera --smoke --detector-type --detection-style --screen-percent
        --width --height --font-scale --fullscreen --windowed --preset --view --overlay-mode
        --layout-test --samples-dir --cascade --profile-cascade --help"
    local views="rgb ir depth skeletal combo room_overview follow"
    compopt +o default
    case $previous in
        --detector-type | --detection-style)
            options="frontal profile_left profile_right frontal_or_profile"
            ;;
        --preset) options="compact normal large" ;;
        --view | --overlay-mode) options=$views ;;
        --frames | --screen-percent | --width | --height | --font-scale) options= ;;
        --samples-dir)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --cascade | --profile-cascade)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
    esac
    if [ "${COMP_WORDS[0]##*/}" = halcyra ] && [ "$COMP_CWORD" -eq 1 ]; then
        options="--demonstration enroll record $options"
    fi
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
}

complete -o default -F _halcyra_control_center halcyra-control-center halcyra
