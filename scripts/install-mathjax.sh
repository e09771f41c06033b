#!/usr/bin/env bash
# Installs MathJax (the npm package mathjax-full, about 50 MB) into BUILD_DIR/mathjax, where the export
# tests find it to read every example's MathML with a MathML reader of its own. Needs node and npm;
# the tests skip that check when MathJax is not there.
#   scripts/install-mathjax.sh BUILD_DIR
set -euo pipefail

build_dir=${1:?usage: install-mathjax.sh BUILD_DIR}
prefix="$build_dir/mathjax"
[ -f "$prefix/node_modules/mathjax-full/js/mathjax.js" ] && exit 0
command -v npm >/dev/null || { echo "install-mathjax: npm is not installed" >&2; exit 1; }
mkdir -p "$prefix"
npm install --prefix "$prefix" --no-audit --no-fund --no-save --omit=dev mathjax-full@3.2.2
