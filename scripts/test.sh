#!/usr/bin/env bash
# Installs what is missing, builds Tavi and runs every test; then builds again with
# AddressSanitizer and UndefinedBehaviorSanitizer and runs every test once more.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

jobs=${TAVI_JOBS:-2}
export QT_QPA_PLATFORM=offscreen

echo "== build"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVI_WERROR=ON >/dev/null
cmake --build build -j"$jobs"
echo "== tests"
(cd build && ctest --output-on-failure -j"$jobs")

echo "== sanitizer build (AddressSanitizer, UndefinedBehaviorSanitizer)"
cmake -S . -B build-sanitize -DCMAKE_BUILD_TYPE=Debug -DTAVI_SANITIZE=ON -DTAVI_WERROR=ON \
  -DTAVI_BUILD_BENCH=OFF >/dev/null
cmake --build build-sanitize -j"$jobs"
echo "== tests under the sanitizers"
(cd build-sanitize && ctest --output-on-failure -j"$jobs")
