#!/usr/bin/env bash
# The Windows half of the tests: cross-builds the library without Qt and the Win_* canvases for
# 64-bit Windows with MinGW-w64, and runs their tests and tavi-emf under Wine.
#
#   scripts/windows-test.sh [BUILD_DIR]        (default: build-mingw)
#
# It installs what it needs with apt-get (MinGW-w64 and Wine, over 1 GB, the first time), builds a
# static expat for Windows from Debian's source of it (Debian has no MinGW build of expat), makes a
# Wine prefix with the formula fonts of fonts/ installed, and prints how long each step took.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath -m "${1:-$root/build-mingw}")
jobs=${TAVI_JOBS:-$(nproc)}
start=$SECONDS
step_start=$SECONDS
step() {
  echo "windows-test: $1 ($((SECONDS - step_start)) s)"
  step_start=$SECONDS
}

# --- Packages -------------------------------------------------------------------------------------
packages=(g++-mingw-w64-x86-64 wine64 fonts-wine fonts-liberation2 dpkg-dev libgtest-dev cmake)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
sudo=""
[ "$(id -u)" -eq 0 ] || sudo=sudo
if [ ${#missing[@]} -gt 0 ]; then
  echo "windows-test: installing ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
step "packages"

mkdir -p "$build"
toolchain=$root/cmake/mingw-w64-x86_64.cmake

# --- expat for Windows ----------------------------------------------------------------------------
# Debian's source package, fetched through a source list of our own (the machine's lists stay as
# they are), built static with the cross compiler.
expat=$build/expat
if [ ! -f "$expat/lib/libexpat.a" ]; then
  apt_dir=$build/apt
  mkdir -p "$apt_dir/lists/partial" "$apt_dir/cache/archives/partial" "$build/expat-source"
  cat > "$apt_dir/sources.list" <<EOF
deb-src http://deb.debian.org/debian bookworm main
EOF
  apt_options=(-o "Dir::Etc::SourceList=$apt_dir/sources.list" -o "Dir::Etc::SourceParts=$apt_dir/none"
    -o "Dir::State::Lists=$apt_dir/lists" -o "Dir::Cache=$apt_dir/cache")
  apt-get "${apt_options[@]}" update -qq
  (cd "$build/expat-source" && apt-get "${apt_options[@]}" source -qq expat/bookworm >/dev/null 2>&1)
  source_dir=$(find "$build/expat-source" -maxdepth 2 -type d -name expat -path '*/expat-*/expat' | head -1)
  [ -n "$source_dir" ] || { echo "windows-test: Debian's expat source could not be fetched" >&2; exit 1; }
  cmake -S "$source_dir" -B "$build/expat-build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF \
    -DEXPAT_BUILD_DOCS=OFF -DCMAKE_INSTALL_PREFIX="$expat" >/dev/null
  # Debian's security patches test XML_DTD and XML_NS for 1, which expat's own CMake defines empty.
  sed -i 's/^#define XML_DTD$/#define XML_DTD 1/; s/^#define XML_NS$/#define XML_NS 1/' "$build/expat-build/expat_config.h"
  cmake --build "$build/expat-build" -j "$jobs" >/dev/null
  cmake --install "$build/expat-build" >/dev/null
fi
step "expat for Windows"

# --- The library, tavi-emf and the tests ----------------------------------------------------------
cmake -S "$root/win" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_FIND_ROOT_PATH="$expat" \
  -DTAVI_WERROR=ON >/dev/null
cmake --build "$build" -j "$jobs" 2>&1 | grep -E 'warning:|error:' || true
[ -f "$build/tavi_tests_windows.exe" ] && [ -f "$build/tavi-emf.exe" ] || { echo "windows-test: the build failed" >&2; exit 1; }
step "cross build"

# --- Wine -----------------------------------------------------------------------------------------
# A prefix of our own, with the bundled formula fonts, Liberation Serif standing for Times New Roman
# and Wine's Symbol.
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)
export WINEPREFIX=$build/wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
if [ ! -f "$WINEPREFIX/.tavi-fonts" ]; then
  "$wine" wineboot --init >/dev/null 2>&1
  fonts=$WINEPREFIX/drive_c/windows/Fonts
  mkdir -p "$fonts"
  cp "$root"/fonts/*.ttf /usr/share/fonts/truetype/liberation2/LiberationSerif-*.ttf /usr/share/wine/fonts/symbol.ttf "$fonts/"
  "$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Times New Roman' /d 'Liberation Serif' /f >/dev/null 2>&1
  touch "$WINEPREFIX/.tavi-fonts"
fi
step "Wine prefix"

status=0
(cd "$build" && "$wine" ./tavi_tests_windows.exe --gtest_brief=1) || status=1
step "tests under Wine"

out=$build/tavi-emf-output
mkdir -p "$out"
(cd "$root" && "$wine" "$build/tavi-emf.exe" data/examples/quadratic-formula.xml \
  "$out/quadratic-formula.emf" "$out/quadratic-formula.bmp") || status=1
for f in "$out/quadratic-formula.emf" "$out/quadratic-formula.bmp"; do
  [ -s "$f" ] || { echo "windows-test: $f was not written" >&2; status=1; }
done
step "tavi-emf under Wine"
"$wineserver" -k 2>/dev/null || true

echo "windows-test: $([ $status -eq 0 ] && echo passed || echo FAILED) in $((SECONDS - start)) s"
exit $status
