#!/bin/sh
# Makes the pictures of README and docs from the program as it is now, so that they stay true.
# For a developer; needs xvfb, openbox, xdotool, ImageMagick and, for the property editors, the
# window tests.
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/../.." && pwd)"
program="${BRISEL:-$("$root/run" --build | tail -n 1)}"  # BRISEL: another build of it
[ -x "$program" ] || { echo "make_pictures.sh: no program was built" >&2; exit 1; }
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

# drawing PICTURE: the window while a hand draws a relationship between classes that it drew.
# A class that is clicked open has its upper left corner there, and is 200 by 100 pixels large.
drawing() {
  xvfb-run --auto-servernum --server-args="-screen 0 1200x800x24" sh -c '
    openbox 2>/dev/null & manager=$!
    sleep 1
    "$1" & program=$!
    window="$(timeout 30 xdotool search --sync --onlyvisible --name "Brisel$" | tail -n 1)"
    xdotool windowsize "$window" 960 600
    sleep 2
    at() { xdotool mousemove --window "$window" "$1" "$2"; sleep 0.2; }
    class() { at "$1" "$2"; xdotool click 1; sleep 0.3; xdotool type --delay 30 "$3"; xdotool key Return; sleep 0.3; }
    xdotool key ctrl+shift+n
    sleep 0.3
    class 120 130 Order
    class 660 190 OrderLine
    class 250 400 Customer
    xdotool key ctrl+shift+c
    sleep 0.3
    at 320 155
    xdotool mousedown 1
    at 500 260
    at 700 250
    sleep 0.5
    import -window "$window" "$2"
    xdotool mouseup 1
    kill $program $manager' sh "$program" "$here/$1"
}

# editors: the property editors on a light or a dark desktop, as the window tests leave them.
editors() (
  QT_QPA_PLATFORM=offscreen "$tests" --gtest_filter=Looks.ofTheEditors >/dev/null 2>&1
  cd "$(dirname "$(dirname "$tests")")"
  made() { for name; do echo "looks-$name-$shade-1.png"; done; }
  for shade in light dark; do
    montage $(made class attributes member operations parameters relationship source stereotypes) \
      -tile 4x -geometry +12+12 -background "#9aa3ad" "$here/editors-$shade.png"
  done
)

window window.png 1440x960 1
window window-200.png 2880x1920 2
drawing drawing.png
tests="${BRISEL_TESTS:-$root/build/dev/bin/test_qt}"
[ -x "$tests" ] && editors || echo "make_pictures.sh: no window tests were built" >&2
python3 "$here/make_refactoring_pictures.py" "$program"
echo "made in $here"
