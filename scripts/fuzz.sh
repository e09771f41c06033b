#!/usr/bin/env bash
# Builds the fuzzers with clang (in build-fuzz) and runs each for SECONDS (default 60) on a corpus
# seeded from data/: the content reader from the examples, the setup reader from the default setup
# file, character decoding from the examples' texts, the LaTeX importer from the examples' TeX, the
# MathML importer from tests/import/seeds. New inputs found stay in build-fuzz/corpus; a crash leaves
# its input as build-fuzz/crash-<target>-* and makes the script fail. TAVI_JOBS fuzzers (default 2) run
# side by side, each on one core.
#   bash scripts/fuzz.sh [SECONDS] [TARGET...]      targets: content setup charnames latex mathml
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(content setup charnames latex mathml)
jobs=${TAVI_JOBS:-2}

cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DTAVI_FUZZ=ON -DTAVI_BUILD_TESTS=OFF -DTAVI_BUILD_TOOLS=OFF -DTAVI_BUILD_BENCH=OFF -DTAVI_BUILD_SCRIPT=OFF >/dev/null
cmake --build build-fuzz -j"$jobs" --target "${targets[@]/#/fuzz_}"

export QT_QPA_PLATFORM=offscreen

seed() {
  local t=$1 corpus=build-fuzz/corpus/$1
  mkdir -p "$corpus"
  case $t in
    content) cp -n data/examples/*.xml "$corpus"/ ;;
    setup) cp -n data/mathsetup.xml "$corpus"/ ;;
    charnames) for f in data/examples/*.xml; do grep -o '>[^<]*<' "$f" | tr -d '<>' > "$corpus/$(basename "$f" .xml).txt" || true; done ;;
    latex) for f in data/examples/*.xml; do sed -n '2s/^<!-- \(.*\) -->$/\1/p' "$f" > "$corpus/$(basename "$f" .xml).tex"; done ;;
    mathml) cp -n tests/import/seeds/*.mml "$corpus"/ ;;
  esac
}

# The fuzzers' own tolerance: an input may take at most 10 s and 2 GB.
run() {
  build-fuzz/fuzz/fuzz_$1 -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="build-fuzz/crash-$1-" -print_final_stats=1 "build-fuzz/corpus/$1" > "build-fuzz/fuzz-$1.log" 2>&1
}

status=0
for ((i = 0; i < ${#targets[@]}; i += jobs)); do
  batch=("${targets[@]:i:jobs}")
  pids=()
  for t in "${batch[@]}"; do
    seed "$t"
    echo "== fuzz_$t for $seconds s"
    run "$t" &
    pids+=($!)
  done
  for k in "${!batch[@]}"; do
    t=${batch[$k]}
    if wait "${pids[$k]}"; then
      echo "== fuzz_$t: $(grep -o 'Done [0-9]* runs in [0-9]* second(s)' "build-fuzz/fuzz-$t.log")"
    else
      echo "== fuzz_$t FAILED:"
      tail -n 40 "build-fuzz/fuzz-$t.log"
      status=1
    fi
  done
done
exit $status
