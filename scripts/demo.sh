#!/usr/bin/env bash
# The main job: installs what is missing, builds Tavi, installs it into out/prefix and runs the
# example host, which finds the library through find_package(Tavi) and draws a formula.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"${TAVI_JOBS:-2}" --target tavi
cmake --install build --prefix out/prefix >/dev/null
cmake -S tests/install/host -B out/host -DCMAKE_PREFIX_PATH="$PWD/out/prefix" >/dev/null
cmake --build out/host
mkdir -p out
(cd out && ./host/tavi-example-host)
