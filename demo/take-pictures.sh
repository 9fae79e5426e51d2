#!/usr/bin/env bash
# Takes the pictures of the documentation: the demonstration's window in each view, at a moment that
# shows what the view is for. Which frame is met depends on the machine, so no two runs give the
# same pixels.
# Usage: take-pictures.sh [FOLDER], by default docs/pictures; build the program first
set -euo pipefail
root=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/..")
pictures=$(readlink -f "${1:-$root/docs/pictures}")
mkdir -p "$pictures"

# Runs a command for some seconds; the picture is what its window showed last.
picture_after() {
    local seconds=$1 name=$2
    shift 2
    "$root/packaging/on-virtual-display.sh" "$pictures/$name.jpg" \
        timeout "$seconds" "$@" || [ $? -eq 124 ]
}

demonstration() {
    local seconds=$1 name=$2
    shift 2
    picture_after "$seconds" "$name" "$root/demo/demonstrate" "$root/build/demonstration" "$@"
}

demonstration 7 combo
demonstration 7 ir --view ir
demonstration 7 depth --view depth
demonstration 9 rgb --view rgb
demonstration 18 two-people --view combo
demonstration 18 room-overview --view room_overview
demonstration 23 skeletal --view skeletal
demonstration 36 follow --view follow
demonstration 53 three-people --view combo
demonstration 59 scan --view combo
cd "$root/build"
picture_after 4 degraded ./halcyra-control-center --no-camera
