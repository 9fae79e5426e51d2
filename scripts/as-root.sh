# shellcheck shell=bash
# Functions that run commands as root. To be sourced.

can_be_root() {
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null
}

# as_root COMMAND...
as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}
