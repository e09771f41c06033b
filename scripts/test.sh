#!/usr/bin/env bash
# Installs what is missing, builds Tavi and runs every test in the C locale; then builds again with
# AddressSanitizer and UndefinedBehaviorSanitizer and runs every test once more, in a German locale
# whose decimal separator is a comma; then runs each fuzzer for a minute; then cross-builds the Windows
# surfaces with MinGW-w64 and runs their tests under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

jobs=${TAVI_JOBS:-2}
export QT_QPA_PLATFORM=offscreen

echo "== build"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVI_WERROR=ON >/dev/null
cmake --build build -j"$jobs"
# MathJax (from the npm registry) reads the MathML that the export tests write, in both builds.
bash scripts/install-mathjax.sh build
export TAVI_MATHJAX_DIR=$PWD/build/mathjax
echo "== tests (LC_ALL=C)"
(cd build && LC_ALL=C ctest --output-on-failure -j"$jobs")

echo "== sanitizer build (AddressSanitizer, UndefinedBehaviorSanitizer)"
cmake -S . -B build-sanitize -DCMAKE_BUILD_TYPE=Debug -DTAVI_SANITIZE=ON -DTAVI_WERROR=ON \
  -DTAVI_BUILD_BENCH=OFF >/dev/null
cmake --build build-sanitize -j"$jobs"
echo "== tests under the sanitizers (LC_ALL=de_DE.UTF-8)"
(cd build-sanitize && LC_ALL=de_DE.UTF-8 ctest --output-on-failure -j"$jobs")

echo "== fuzzers, a minute each (clang, libFuzzer)"
bash scripts/fuzz.sh 60

echo "== Windows surfaces (MinGW-w64, Wine)"
bash scripts/windows-test.sh build-mingw
