#!/usr/bin/env bash
# Installs the rule that lets whoever sits at the machine use a Kinect v2, unless it is there already.
# Needs root; ends with status 1 and says what to do if it cannot have that.
# Usage: install-device-rule.sh
# HALCYRA_SYSTEM: a folder that takes the place of /.
set -euo pipefail
root=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/..")
# shellcheck source=scripts/as-root.sh
source "$root/scripts/as-root.sh"
name=60-halcyra-kinect-v2.rules
rule=$root/packaging/udev/$name
target=${HALCYRA_SYSTEM:-}/etc/udev/rules.d/$name

# Of several files of the same name, udev reads that of the first of these folders.
for folder in etc/udev run/udev usr/local/lib/udev usr/lib/udev; do
    file=${HALCYRA_SYSTEM:-}/$folder/rules.d/$name
    if [ -e "$file" ]; then
        if cmp --silent "$rule" "$file"; then exit 0; fi
        break
    fi
done

if ! { can_be_root && as_root install -D --mode=644 "$rule" "$target"; }; then
    echo "The rule that lets you use the Kinect v2 was not installed, as that needs root: as root," \
        "copy $rule to ${target%/*}/, then unplug the sensor and plug it in again." >&2
    exit 1
fi
echo "Installed $target: whoever sits at this machine may use the Kinect v2."

# For a sensor that is plugged in already. Without a running udev, as in a container, the rule counts
# from the next start on.
if command -v udevadm >/dev/null && as_root udevadm control --reload-rules; then
    as_root udevadm trigger --settle --subsystem-match=usb --attr-match=idVendor=045e || true
fi
