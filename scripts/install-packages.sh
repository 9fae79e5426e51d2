#!/usr/bin/env bash
# Installs the Debian packages that the project needs and that are missing here.
# Usage: install-packages.sh GROUP...
#   run              to build and run the program
#   virtual-display  to run it without a display and keep a picture of its window
#   test             what the tests need beside the first two
#   bench            what the benchmarks need beside the first
#   sanitize         what the sanitized build with its fuzz targets needs beside the first three
#   clang            the second compiler
#   lint             the checker that scripts/lint runs
#   package          to make the Debian package and check it
set -euo pipefail

run_packages=(
    g++ cmake ninja-build pkg-config
    libopencv-dev libopencv-contrib-dev libre2-dev
    opencv-data                       # the face cascades
    x11-xserver-utils x11-utils       # xrandr and xdpyinfo, which tell the screen size
)
virtual_display_packages=(
    xvfb
    x11-utils maim                    # finding the window and taking its picture
)
test_packages=(
    libgtest-dev
    libx11-dev libxtst-dev            # real key presses in the end-to-end tests
    locales                           # sources of a locale with a decimal comma
    clang-format                      # the layout of sources
    openbox                           # closing and resizing windows as a person does
    libusb-1.0-0-dev libturbojpeg0-dev   # a Kinect v2 on USB that is not there
)
bench_packages=(libbenchmark-dev)
clang_packages=(clang)
sanitize_packages=(
    clang
    libclang-rt-dev                   # the sanitizers' and libFuzzer's own libraries
)
lint_packages=(clang-tidy)
package_packages=(
    dpkg-dev file gzip                # making the Debian package
    lintian desktop-file-utils appstream groff zsh fish doxygen   # and having everything judged
    mmdebstrap                        # a Debian of its own to install it in
)

wanted=()
for group in "$@"; do
    case "$group" in
        run) wanted+=("${run_packages[@]}") ;;
        virtual-display) wanted+=("${virtual_display_packages[@]}") ;;
        bench) wanted+=("${bench_packages[@]}") ;;
        clang) wanted+=("${clang_packages[@]}") ;;
        sanitize) wanted+=("${sanitize_packages[@]}") ;;
        lint) wanted+=("${lint_packages[@]}") ;;
        package) wanted+=("${package_packages[@]}") ;;
        test) wanted+=("${test_packages[@]}") ;;
        *)
            echo "usage: $0 run|virtual-display|test|bench|sanitize|clang|lint|package..." >&2
            exit 2
            ;;
    esac
done

missing=()
for package in "${wanted[@]}"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing and need root to be installed: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
