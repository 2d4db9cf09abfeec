#!/bin/sh
# Makes the pictures of the README from the program as it is now, so that they stay true.
# For a developer; needs xvfb, openbox and ImageMagick's import.
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/../.." && pwd)"
program="$("$root/run" --build | tail -n 1)"
sample="$(ls "$root"/examples/*.dim | head -n 1)"
private="$(mktemp -d)"
trap 'rm -rf "$private"' EXIT
export HOME="$private" XDG_RUNTIME_DIR="$private" XDG_CONFIG_HOME="$private"

# window PICTURE SCREEN SCALE: the window on the sample, on a screen of that size.
window() {
  QT_SCALE_FACTOR="$3" xvfb-run --auto-servernum --server-args="-screen 0 $2x24" sh -c '
    openbox 2>/dev/null & manager=$!
    sleep 1
    "$1" "$2" & window=$!
    sleep 5
    import -window "$(basename "$2") - Brisel" "$3"
    kill $window $manager' sh "$program" "$sample" "$here/$1"
}

window window.png 1440x960 1
window window-200.png 2880x1920 2
echo "$here/window.png and window-200.png"
