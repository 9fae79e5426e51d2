# shellcheck shell=bash
# Functions that make a minimal Debian in a folder and run commands in it. To be sourced.

# make_debian_root RELEASE FOLDER PACKAGES [OPTION...]
# Makes a minimal Debian of that release, with these packages (comma-separated) besides; options go to
# mmdebstrap. Fails with a sentence where that takes something which this machine does not give.
make_debian_root() {
    local release=$1 folder=$2 packages=$3
    shift 3
    if [ "$(id -u)" -ne 0 ]; then
        echo "skipped, as making a Debian of its own needs root"
        return 1
    fi
    if ! unshare --mount --pid --fork --mount-proc true 2>/dev/null; then
        echo "skipped, as a Debian of its own cannot be entered here: no namespaces"
        return 1
    fi
    local file settings=()
    for file in /etc/apt/apt.conf.d/99*; do
        [ ! -e "$file" ] || settings+=("--aptopt=$file")
    done
    if ! mmdebstrap --quiet --variant=minbase "${settings[@]}" --include="$packages" "$@" \
        "$release" "$folder" "deb $(debian_mirror) $release main"; then
        echo "skipped, as no Debian $release could be fetched"
        return 1
    fi
}

# The mirror that this machine uses.
debian_mirror() {
    local mirror
    mirror=$(sed --quiet 's/^URIs: *\([^ ]*debian\)\/\?$/\1/p; s/^deb .*\(http[^ ]*debian\)\/\? .*/\1/p' \
        /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list 2>/dev/null | head -1)
    echo "${mirror:-http://deb.debian.org/debian}"
}

# in_debian_root FOLDER USER COMMAND
# Runs a shell command there as that user. Whatever it leaves running ends with it.
in_debian_root() {
    unshare --mount --pid --fork --kill-child --mount-proc="$1/proc" \
        chroot "$1" su - "$2" -c "$3"
}
