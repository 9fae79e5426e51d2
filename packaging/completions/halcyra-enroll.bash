# bash completion for halcyra-enroll

_halcyra_enroll() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options="--from --report --json --sheet --per-pose --samples-dir --cascade
        --profile-cascade --fullscreen --help --version"
    compopt +o default
    case $previous in
        --per-pose) options= ;;
        --samples-dir)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --from | --sheet | --cascade | --profile-cascade)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
    esac
    if [[ $current != -* && " ${COMP_WORDS[*]} " == *" --from "* ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
}

complete -o default -F _halcyra_enroll halcyra-enroll
