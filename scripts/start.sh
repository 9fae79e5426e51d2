#!/usr/bin/env bash
# Starts a built control center: on the attached sensor, on what VIRTUAL_KINECT names, or, without
# either, as a demonstration. Without a display it is drawn on a virtual one.
# Usage: start.sh BUILD_FOLDER [ARGUMENT]...
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
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

# HALCYRA_USB_DEVICES: another folder than the kernel's list of USB devices.
kinect_attached() {
    local device
    for device in "${HALCYRA_USB_DEVICES:-/sys/bus/usb/devices}"/*; do
        case "$(cat "$device/idVendor" "$device/idProduct" 2>/dev/null | tr '\n' ' ')" in
            "045e 02c4 " | "045e 02d8 " | "045e 02d9 ") return 0 ;;
        esac
    done
    return 1
}

demonstrate() {
    echo "$1: starting the demonstration, a rendered room with its people."
    command=("$root/demo/demonstrate" "$build/demonstration")
}

choose_scene() {
    if given --no-camera --layout-test --help -h; then return; fi
    if [ -n "${VIRTUAL_KINECT:-}" ]; then
        command=("$build/demonstration/halcyra-control-center")
    elif ! kinect_attached; then
        demonstrate "No Kinect v2 is attached"
    elif [ "$(cat "$build/kinect-driver")" != libfreenect2 ]; then
        demonstrate "A Kinect v2 is attached, but the program was built without libfreenect2"
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
