#!/usr/bin/env bash
# Starts a built tool on the attached sensor, or on what VIRTUAL_KINECT names.
# Usage: start-tool.sh BUILD_FOLDER enroll|record [ARGUMENT]...
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
# shellcheck source=scripts/sensor.sh
source "$root/scripts/sensor.sh"
build=$(readlink -f "$1")
program=$build/$(tool_program "$build" "$2")
shift 2

# Standard output belongs to the tool.
prepare_start() {
    local kinects kinect
    mapfile -t kinects < <(attached_kinects)
    if [ ${#kinects[@]} -eq 0 ]; then
        if [ -n "$(attached_kinect_hubs)" ]; then
            echo "Only the hub of a Kinect v2 answers, so its power supply may be missing."
        fi
    elif [ "$(cat "$build/kinect-driver")" != libfreenect2 ]; then
        echo "A Kinect v2 is attached, but the program was built without libfreenect2."
    else
        for kinect in "${kinects[@]}"; do warn_about "$kinect"; done
        choose_pipeline
    fi
}

if [ -z "${VIRTUAL_KINECT:-}" ] && ! needs_no_sensor "$@"; then prepare_start >&2; fi
exec "$program" "$@"
