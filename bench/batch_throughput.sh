#!/bin/sh
# Formulas per second of tavi-render over the examples repeated REPEATS times (100: 4,700 formulas),
# to PNG and to SVG: one process per formula, then one batch on one thread and on every core.
# Usage: bench/batch_throughput.sh BUILD_DIR [REPEATS] [PROCESS_REPEATS]
# One process per formula takes long (some 20 ms each), so it runs the examples PROCESS_REPEATS
# times (default 10); its rate does not depend on how many there are. Measure on an idle machine
# (see uptime): the rate on every core is only as good as the cores that are free.
set -eu

build=${1:?usage: $0 BUILD_DIR [REPEATS] [PROCESS_REPEATS]}
repeats=${2:-100}
process_repeats=${3:-10}
render="$build/tools/tavi-render"
examples=$(cd "$(dirname "$0")/../data/examples" && pwd)
cores=$(nproc)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen

list() {
    i=0
    while [ "$i" -lt "$1" ]; do
        ls "$examples"/*.xml
        i=$((i + 1))
    done
}
list "$repeats" > "$work/batch.txt"
list "$process_repeats" > "$work/processes.txt"
n_batch=$(wc -l < "$work/batch.txt")
n_processes=$(wc -l < "$work/processes.txt")

now() { date +%s.%N; }
rate() { echo "$1 $2 $3" | awk '{ printf "%.0f", $1 / ($3 - $2) }'; }

echo "load: $(uptime | sed 's/.*load average: //')   cores: $cores"
printf '%-6s %22s %22s %22s\n' format "process per formula" "batch, 1 thread" "batch, $cores threads"
# Every run writes into a folder of its own: files deleted just before in the same place cost the
# file system more to make again than new ones.
for format in png svg; do
    mkdir -p "$work/$format-processes"
    start=$(now)
    i=0
    while read -r path; do
        i=$((i + 1))
        "$render" "$path" -f "$format" -o "$work/$format-processes/$i.$format"
    done < "$work/processes.txt"
    processes=$(rate "$n_processes" "$start" "$(now)")
    rates=""
    for jobs in 1 "$cores"; do
        start=$(now)
        "$render" --quiet --output-dir "$work/$format-$jobs" --name "{index}{ext}" -f "$format" -j "$jobs" \
            --files-from "$work/batch.txt"
        rates="$rates $(rate "$n_batch" "$start" "$(now)")"
    done
    set -- $rates
    printf '%-6s %18s f/s %18s f/s %18s f/s\n' "$format" "$processes" "$1" "$2"
done
echo "load: $(uptime | sed 's/.*load average: //')"
