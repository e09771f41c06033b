#!/usr/bin/env bash
# Makes the README's picture of the editor, docs/images/tavi-edit.png: tavi-edit on a virtual X
# server (Xvfb) with the Gaussian integral of data/examples open, zoomed in, a part of it selected,
# and the Insert menu's template palette beside it.
# Usage: bash docs/make-editor-screenshot.sh [path of tavi-edit]   (default: build/tools/tavi-edit)
# Needs xvfb-run, xdotool and ImageMagick's import (scripts/install-deps.sh installs them).
set -euo pipefail
cd "$(dirname "$0")/.."
edit=$(realpath "${1:-build/tools/tavi-edit}")
out=$PWD/docs/images/tavi-edit.png

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp data/examples/gaussian-integral.xml "$work/gaussian-integral.xml"

cat > "$work/session.sh" <<SESSION
set -euo pipefail
export QT_QPA_PLATFORM=xcb
"$edit" "$work/gaussian-integral.xml" &
editor=\$!
window=\$(timeout 20 xdotool search --sync --onlyvisible --name '^gaussian-integral' | head -n 1)
xdotool windowfocus --sync "\$window"
# 200 %, then shift+space steps into the formula down to the exponent of e, which is selected.
xdotool key --delay 50 ctrl+plus ctrl+plus ctrl+plus
xdotool key --delay 50 shift+space shift+space shift+space
# The status bar's note of the opened file goes after five seconds.
sleep 5.5
import -window "\$window" "$out"
kill "\$editor"
SESSION
xvfb-run -a -s "-screen 0 1280x800x24" bash "$work/session.sh"
echo "make-editor-screenshot: $out"
