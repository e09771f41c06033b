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
  libxml2-utils w3c-sgml-lib  # the MathML export checked against the MathML 3 DTD
  # fonts the formulas and the tests draw with
  fonts-urw-base35 fonts-liberation2 fonts-dejavu-core fontconfig
  # a decimal-comma locale for the tests, and clang's libFuzzer for the fuzzers
  locales clang libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo=sudo
fi
need_root() {
  [ -z "$sudo" ] || command -v sudo >/dev/null || { echo "install-deps: run as root to $1" >&2; exit 1; }
}

if [ ${#missing[@]} -gt 0 ]; then
  need_root "install: ${missing[*]}"
  echo "install-deps: installing ${missing[*]}"
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -q
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# The tests run once more with a decimal comma: the German locale, made if it is not there yet.
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf8'; then
  need_root "generate the de_DE.UTF-8 locale"
  echo "install-deps: generating the de_DE.UTF-8 locale"
  $sudo sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | $sudo tee -a /etc/locale.gen >/dev/null
  $sudo locale-gen >/dev/null
fi
