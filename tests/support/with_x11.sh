#!/bin/sh
# with_x11.sh PROGRAM [ARGUMENT...]: runs it on an X11 display of its own under a window manager.
# Exit code 77, which stands for a skipped test, where the tools for it are missing.
for tool in xvfb-run xauth openbox; do
  command -v $tool >/dev/null || { echo "skipped: $tool is missing"; exit 77; }
done
export QT_QPA_PLATFORM=xcb
export LSAN_OPTIONS="suppressions='$(dirname "$0")/lsan.supp':print_suppressions=0"
exec xvfb-run --auto-servernum --server-args="-screen 0 1600x1000x24" \
  sh -c 'openbox & manager=$!; "$@"; code=$?; kill $manager; exit $code' sh "$@"
