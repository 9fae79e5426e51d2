#!/usr/bin/env bash
# Runs a command on an X server without a monitor and keeps a picture of the window of the dashboard
# or of the enrolment as it last was. Ends with the command's status.
# Usage: on-virtual-display.sh PICTURE COMMAND [ARGUMENT]...
#   PICTURE  a .png or .jpg file
set -euo pipefail
picture=$1
shift

scratch=$(mktemp -d)
server=
clean_up() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    rm -rf "$scratch"
}
trap clean_up EXIT

# Without -noreset the server begins anew when its last client leaves, and refuses whoever comes just
# then: looking for the window, before the program has connected, would do that.
start_server() {
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset \
        3>"$scratch/display" >/dev/null 2>"$scratch/complaints" &
    server=$!
    until [ -s "$scratch/display" ]; do
        if ! kill -0 "$server" 2>/dev/null; then
            echo "No virtual display: $(cat "$scratch/complaints")" >&2
            exit 1
        fi
        sleep 0.1
    done
    export DISPLAY
    DISPLAY=:$(cat "$scratch/display")
}

# The window's number while it is on the screen. A closed window can exist for a moment longer, black.
shown_window() {
    local title
    for title in "Halcyra Control Center" "Halcyra Enrolment"; do
        xwininfo -name "$title" 2>/dev/null |
            awk '/Window id/ {id = $4} /Map State: IsViewable/ {print id}'
    done
}

# Fails while there is no window, at the start and at the end of a run; an older picture is kept.
take_picture() {
    local window
    window=$(shown_window)
    [ -n "$window" ] && maim --hidecursor --window=$((window)) --format="${picture##*.}" \
        "$scratch/picture" 2>/dev/null && [ "$(shown_window)" = "$window" ] &&
        mv "$scratch/picture" "$scratch/last-picture"
}

# The first picture that a machine takes can last for seconds, as the tool comes from the disk. Some
# frames are shown in less.
warm_up() {
    maim --format="${picture##*.}" "$scratch/picture" 2>"$scratch/complaints" ||
        echo "No pictures can be taken: $(cat "$scratch/complaints")" >&2
}

start_server
warm_up
"$@" &
program=$!
pause=0.05
while kill -0 "$program" 2>/dev/null; do
    if take_picture; then pause=0.3; fi
    sleep "$pause"
done
status=0
wait "$program" || status=$?
if [ -e "$scratch/last-picture" ]; then
    mv "$scratch/last-picture" "$picture"
    echo "Picture of the window: $picture"
else
    echo "No picture of the window: it was not on the screen, or only for a moment." >&2
fi
exit "$status"
