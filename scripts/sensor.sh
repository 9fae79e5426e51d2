# shellcheck shell=bash
# Functions that tell what is known about an attached Kinect v2 before anything opens it, and prepare its
# driver. To be sourced.
# HALCYRA_USB_DEVICES: another folder than the kernel's list of USB devices.
# HALCYRA_SYSTEM: a folder that takes the place of / where device files are looked up.

# needs_no_sensor ARGUMENT...
# Whether a program of the project, given these arguments, looks for no sensor.
needs_no_sensor() {
    local argument
    for argument in "$@"; do
        case $argument in
            --no-camera | --layout-test | --from | --report | --version | --help | -h) return 0 ;;
        esac
    done
    return 1
}

# attached_microsoft_devices PRODUCT...
# Prints the kernel's folder of each attached device of Microsoft's with one of these product numbers.
attached_microsoft_devices() {
    local device product
    for device in "${HALCYRA_USB_DEVICES:-/sys/bus/usb/devices}"/*; do
        [ "$(cat "$device/idVendor" 2>/dev/null)" = 045e ] || continue
        for product in "$@"; do
            [ "$(cat "$device/idProduct" 2>/dev/null)" != "$product" ] || echo "$device"
        done
    done
}

# The products that the driver opens. 02d9 is only the hub in front of them.
attached_kinects() { attached_microsoft_devices 02c4 02d8; }
attached_kinect_hubs() { attached_microsoft_devices 02d9; }

# at_usb_3 DEVICE
# Where the kernel does not tell the speed, the port is given the benefit of the doubt.
at_usb_3() {
    local speed
    speed=$(cat "$1/speed" 2>/dev/null) || return 0
    [ "${speed%%.*}" -ge 5000 ]
}

# device_file DEVICE
# Prints the file through which the device is opened; nothing where the kernel does not tell.
device_file() {
    local bus device
    bus=$(cat "$1/busnum" 2>/dev/null) && device=$(cat "$1/devnum" 2>/dev/null) || return 0
    printf '%s/dev/bus/usb/%03d/%03d\n' "${HALCYRA_SYSTEM:-}" "$bus" "$device"
}

# may_be_opened DEVICE
may_be_opened() {
    local file
    file=$(device_file "$1")
    [ -z "$file" ] || { [ -r "$file" ] && [ -w "$file" ]; }
}

# warn_about DEVICE
# Says what will keep the driver from opening the sensor, as far as it can be known before.
warn_about() {
    if ! at_usb_3 "$1"; then
        echo "The Kinect v2 is connected with $(cat "$1/speed") Mbit/s, as USB 2 is, and will fail to" \
            "open. Use a USB 3 port of the computer itself and the sensor's own cable."
    fi
    if ! may_be_opened "$1"; then
        echo "You may not read and write $(device_file "$1"), so the Kinect v2 will not be detected." \
            "Run $(readlink -f "$(dirname "${BASH_SOURCE[0]}")/install-device-rule.sh"), then unplug the sensor and" \
            "plug it in again."
    fi
}

# Only the CPU pipeline needs nothing that may be missing: OpenGL, which the driver prefers, ends the
# process where it gets no window, and may crash it after the last frame, which costs the exit status.
choose_pipeline() {
    export LIBFREENECT2_PIPELINE=${LIBFREENECT2_PIPELINE:-cpu}
    echo "Kinect driver: libfreenect2 with the pipeline $LIBFREENECT2_PIPELINE"
}

# tool_program BUILD_FOLDER TOOL
# The name of the tool's program that has the driver for what is to be seen.
tool_program() {
    if [ -n "${VIRTUAL_KINECT:-}" ] && [ "$(cat "$1/kinect-driver")" = libfreenect2 ]; then
        echo "halcyra-$2-on-virtual"
    else
        echo "halcyra-$2"
    fi
}
