# bash completion for the recorder of the Halcyra Control Center

_halcyra_record() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options="--seconds --sets --streams --color --jpeg-quality --anonymous --help --version"
    compopt +o default
    case $previous in
        --streams) options="color ir depth color,ir,depth" ;;
        --color) options="jpeg png" ;;
        --seconds | --sets | --jpeg-quality) options= ;;
        *)
            if [[ $current != -* ]]; then
                compopt -o filenames
                mapfile -t COMPREPLY < <(compgen -d -- "$current")
                return
            fi
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
}

complete -o default -F _halcyra_record halcyra-record
