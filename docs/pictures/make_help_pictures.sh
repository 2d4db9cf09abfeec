#!/bin/sh
# Makes the pictures of the help from the program as it is now, each in two sizes: NAME.png, and
# NAME@2x.png for screens of twice the points. For a developer; needs xvfb, openbox, xdotool,
# ImageMagick and Python.
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/../.." && pwd)"
program="${BRISEL:-$("$root/run" --build | tail -n 1)}"  # BRISEL: another build of it
help="$root/data/help"
private="$(mktemp -d)"
trap 'rm -rf "$private"' EXIT
export HOME="$private" XDG_RUNTIME_DIR="$private" XDG_CONFIG_HOME="$private"
python3 "$here/help_diagrams.py" "$private" "$program"

# small NAME: few colours are enough.
small() { convert "$1" -strip +dither -colors 96 -define png:compression-level=9 "PNG8:$1"; }

# framed FILE: paper ends where the page goes on.
framed() { convert "$1" -bordercolor "#9aa3ad" -border "$2" "$1"; }

# diagram NAME: as it is drawn, without a window.
diagram() {
  for scale in 1 2; do
    target="$help/$1$([ $scale = 2 ] && echo @2x || true).png"
    QT_QPA_PLATFORM=offscreen "$program" convert --scale $scale "$private/$1.dim" "$target"
  done
}

# on_screen NAME SCALE SIZE COMMANDS: the window on a file while a hand does something.
on_screen() {
  QT_SCALE_FACTOR="$2" FILE="$private/$1.dim" PROGRAM="$program" SIZE="$3" SCALE="$2" HAND="$4" \
    PICTURE="$5" xvfb-run --auto-servernum --server-args="-screen 0 2880x1920x24" sh -c '
    openbox 2>/dev/null & manager=$!
    sleep 1
    "$PROGRAM" "$FILE" & program=$!
    window="$(timeout 30 xdotool search --sync --onlyvisible --name "Brisel$" | tail -n 1)"
    xdotool windowactivate "$window"
    xdotool windowsize "$window" $SIZE
    sleep 2
    key() { xdotool key "$@"; sleep 0.4; }
    eval "$HAND"
    sleep 1
    import -window "$window" "$PICTURE"
    kill $program $manager'
}

# The whole window: at 100 % for twice the points, made half as large for others.
on_screen demo 1 "1280 880" "key ctrl+9" "$help/window@2x.png"
convert "$help/window@2x.png" -resize 50% "$help/window.png"

# A class that is edited: the part of the window around it.
for scale in 1 2; do
  target="$help/editing$([ $scale = 2 ] && echo @2x || true).png"
  on_screen editing $scale "$((780 * scale)) $((600 * scale))" "key ctrl+9; key Tab; key Return" "$target"
  convert "$target" -crop "$((640 * scale))x$((400 * scale))+$((114 * scale))+$((104 * scale))" +repage "$target"
done

diagram relationships
for name in order split; do diagram $name; done
for size in "" @2x; do
  scale=1
  [ -z "$size" ] || scale=2
  framed "$help/relationships$size.png" $scale
  montage "$help/order$size.png" "$help/split$size.png" -background white -tile 2x1 \
    -gravity center -geometry "+$((10 * scale))+$((4 * scale))" "$help/refactoring$size.png"
  framed "$help/refactoring$size.png" $scale
  rm "$help/order$size.png" "$help/split$size.png"
done
for picture in "$help"/*.png; do small "$picture"; done
du -ch "$help"/*.png | sort -h
