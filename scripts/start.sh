#!/usr/bin/env bash
# Starts a built control center: on the attached sensor, on what VIRTUAL_KINECT names, or, without
# either, as a demonstration. Without a display it is drawn on a virtual one.
# Usage: start.sh BUILD_FOLDER [ARGUMENT]...
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
# shellcheck source=scripts/sensor.sh
source "$root/scripts/sensor.sh"
build=$(readlink -f "$1")
shift
arguments=("$@")
command=("$build/halcyra-control-center")

given() {
    local wanted argument
    for wanted in "$@"; do
        for argument in "${arguments[@]}"; do
            [ "$argument" != "$wanted" ] || return 0
        done
    done
    return 1
}

demonstrate() {
    echo "$1: starting the demonstration, a rendered room with its people."
    command=("$root/demo/demonstrate" "$build/demonstration")
}

choose_scene() {
    local kinects kinect
    if needs_no_sensor "${arguments[@]}"; then return; fi
    mapfile -t kinects < <(attached_kinects)
    if [ -n "${VIRTUAL_KINECT:-}" ]; then
        command=("$build/demonstration/halcyra-control-center")
    elif [ ${#kinects[@]} -eq 0 ] && [ -n "$(attached_kinect_hubs)" ]; then
        demonstrate "Only the hub of a Kinect v2 answers, so its power supply may be missing"
    elif [ ${#kinects[@]} -eq 0 ]; then
        demonstrate "No Kinect v2 is attached"
    elif [ "$(cat "$build/kinect-driver")" != libfreenect2 ]; then
        demonstrate "A Kinect v2 is attached, but the program was built without libfreenect2"
    else
        for kinect in "${kinects[@]}"; do warn_about "$kinect" >&2; done
        choose_pipeline
    fi
}

choose_display() {
    if [ -n "${DISPLAY:-}" ] || [ -n "${QT_QPA_PLATFORM:-}" ] || given --help -h; then return; fi
    if ! given --frames --smoke --layout-test; then arguments+=(--frames 90); fi
    command=("$root/scripts/on-virtual-display.sh" "$build/dashboard.png" "${command[@]}")
}

choose_scene
choose_display
exec "${command[@]}" "${arguments[@]}"
