#!/usr/bin/env bash
# Takes the pictures of the documentation: the demonstration's window in each view, at a moment that
# shows what the view is for, and the enrolment of its owner. It depends on the machine which frame is on the screen at that moment, so
# no two runs give the same pixels.
# Usage: take-pictures.sh [FOLDER], by default docs/pictures; build the program first
set -euo pipefail
here=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")")
root=$(dirname "$here")
demonstration=$root/build/demonstration

# Runs the demonstration and ends it the given number of seconds after its first picture.
play_for() {
    local seconds=$1
    shift
    local first_picture=$demonstration/home/.local/state/sonmere/first_picture
    rm -f "$first_picture"
    "$here/demonstrate" "$demonstration" "$@" &
    until [ -e "$first_picture" ]; do
        kill -0 $!
        sleep 0.1
    done
    sleep "$seconds"
    kill $!
}

# Enrols the room's owner into the folder, and ends in the middle of the second pose.
enrol_into() {
    VIRTUAL_KINECT=room "$root/build/halcyra-enroll" --per-pose 4 --samples-dir "$1" &
    until [ "$(find "$1" -path '*/left/*.png' | wc -l)" -ge 2 ]; do
        kill -0 $!
        sleep 0.1
    done
    sleep 0.5
    kill $!
}

case ${1:-} in
    --play-for)
        play_for "${@:2}"
        exit
        ;;
    --enrol-into)
        enrol_into "$2"
        exit
        ;;
esac

pictures=$(readlink -f "${1:-$root/docs/pictures}")
mkdir -p "$pictures"

# The picture is what the window showed last.
take() {
    local name=$1
    shift
    "$root/scripts/on-virtual-display.sh" "$pictures/$name.jpg" "$@"
}

take_at() {
    local seconds=$1 name=$2
    shift 2
    take "$name" "$here/take-pictures.sh" --play-for "$seconds" "$@"
}

take_enrolment() {
    local samples
    samples=$(mktemp -d)
    take enrolment "$here/take-pictures.sh" --enrol-into "$samples"
    rm -r "$samples"
}

take_at 4 combo
take_at 4 ir --view ir
take_at 4 depth --view depth
take_at 8.5 rgb --view rgb
take_at 14.6 two-people --view combo
take_at 14.6 room-overview --view room_overview
take_at 20.5 skeletal --view skeletal
take_at 32.5 follow --view follow
take_at 50 three-people --view combo
take_at 56 scan --view combo
take degraded "$root/build/halcyra-control-center" --no-camera --frames 60
take_enrolment
