#!/usr/bin/env bash
# Makes the pictures of the README, docs/images/*.png, with tavi-render from data/examples.
# Usage: bash docs/make-images.sh [path of tavi-render]   (default: build/tools/tavi-render)
set -euo pipefail
cd "$(dirname "$0")/.."
render=${1:-build/tools/tavi-render}
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

examples=(
  quadratic-formula          # fraction, root, signs
  fences-at-several-sizes    # fences grown to their contents
  nested-radicals            # roots in roots
  sum-display                # a sum with limits
  gaussian-integral          # an integral with limits, a script on a script
  euler-identity             # Greek letters
  number-sets                # open-face letters
  matrix-3x3-rotation        # a matrix
  magic-square-with-lines    # a table with row, column and frame lines
)
for name in "${examples[@]}"; do
  "$render" "data/examples/$name.xml" --dpi 144 -o "docs/images/$name.png"
done
echo "make-images: ${#examples[@]} pictures in docs/images"
