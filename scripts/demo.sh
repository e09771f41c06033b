#!/usr/bin/env bash
# The main job: installs what is missing, builds Tavi, tavi-render and tavi-edit, installs them into
# out/prefix, runs the example host against the installed package, and typesets every formula of
# data/examples with the installed tavi-render into out/examples, as SVG and as PNG. Then it tells
# how to start the editor, or starts it on an example when there is a display and TAVI_DEMO_EDIT=1.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
jobs=${TAVI_JOBS:-2}

echo "== build"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs" --target tavi tavi-render tavi-edit
cmake --install build --prefix out/prefix >/dev/null

echo "== the example host, built against the installed package"
cmake -S tests/install/host -B out/host -DCMAKE_PREFIX_PATH="$PWD/out/prefix" >/dev/null
cmake --build out/host
mkdir -p out
(cd out && ./host/tavi-example-host)

echo "== typesetting data/examples into out/examples"
render=out/prefix/bin/tavi-render
mkdir -p out/examples
failed=0
count=0
for xml in data/examples/*.xml; do
  name=$(basename "$xml" .xml)
  count=$((count + 1))
  if ! "$render" "$xml" -o "out/examples/$name.svg" || ! "$render" "$xml" --dpi 144 -o "out/examples/$name.png"; then
    echo "demo: $xml could not be typeset" >&2
    failed=$((failed + 1))
  fi
done
echo "demo: $((count - failed)) of $count formulas typeset into out/examples (SVG and PNG)"
[ "$failed" -eq 0 ]

edit=out/prefix/bin/tavi-edit
mkdir -p out/edit
cp -n data/examples/quadratic-formula.xml out/edit/quadratic-formula.xml
if [ -n "${DISPLAY:-}" ] && [ "${TAVI_DEMO_EDIT:-0}" = 1 ]; then
  echo "== the editor, on out/edit/quadratic-formula.xml"
  QT_QPA_PLATFORM=xcb "$edit" out/edit/quadratic-formula.xml
else
  echo "demo: to edit a formula in a window: $edit out/edit/quadratic-formula.xml"
  echo "      (or run this script with TAVI_DEMO_EDIT=1 on a display)"
fi
