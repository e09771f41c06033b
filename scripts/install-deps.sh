#!/usr/bin/env bash
# Installs, with apt-get, whatever a Debian 12 machine lacks to build, test and run Tavi.
# Does nothing when every package is already there.
set -euo pipefail

packages=(
  # build
  build-essential cmake pkg-config
  qt6-base-dev qt6-svg-dev libexpat1-dev libboost-dev
  qt6-declarative-dev
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev
  # checks of real output: SVG, EPS and PDF renderers, a display server for the editor, and the
  # keyboard and screenshots of the editor's tests there
  librsvg2-bin ghostscript poppler-utils xvfb xauth xdotool imagemagick
  # fonts the formulas and the tests draw with
  fonts-urw-base35 fonts-liberation2 fonts-dejavu-core fontconfig
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "install-deps: run as root to install: ${missing[*]}" >&2; exit 1; }
  sudo=sudo
fi
echo "install-deps: installing ${missing[*]}"
$sudo env DEBIAN_FRONTEND=noninteractive apt-get update -q
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
