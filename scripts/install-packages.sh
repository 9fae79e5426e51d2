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
#   libfreenect2     to build the Kinect's driver, for processors alone;
#   libfreenect2-opengl, libfreenect2-vaapi
#                    to build it for graphics cards, too
#   debian-root      what makes a Debian of its own: tests/releases/, tests/arm64/
set -euo pipefail
# shellcheck source=scripts/as-root.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/as-root.sh"

run_packages=(
    g++ cmake ninja-build pkg-config
    libopencv-dev libopencv-contrib-dev libre2-dev nlohmann-json3-dev
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
    git                               # repositories that the tests make
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
)
libfreenect2_packages=(
    git ca-certificates               # fetching it
    g++ cmake ninja-build pkg-config
    libusb-1.0-0-dev libturbojpeg0-dev
)
libfreenect2_opengl_packages=(libglfw3-dev libgl-dev)
libfreenect2_vaapi_packages=(libva-dev libjpeg-dev)
debian_root_packages=(mmdebstrap)

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
        debian-root) wanted+=("${debian_root_packages[@]}") ;;
        test) wanted+=("${test_packages[@]}") ;;
        libfreenect2) wanted+=("${libfreenect2_packages[@]}") ;;
        libfreenect2-opengl) wanted+=("${libfreenect2_opengl_packages[@]}") ;;
        libfreenect2-vaapi) wanted+=("${libfreenect2_vaapi_packages[@]}") ;;
        *)
            echo "usage: $0 run|virtual-display|test|bench|sanitize|clang|lint|package|debian-root|" \
                "libfreenect2|libfreenect2-opengl|libfreenect2-vaapi..." >&2
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

if ! can_be_root; then
    echo "These packages are missing and need root to be installed: ${missing[*]}" >&2
    exit 1
fi
echo "Installing: ${missing[*]}"
as_root apt-get update -qq
as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
