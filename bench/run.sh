#!/usr/bin/env bash
# Makes the two catalogues, measures every search and the part views on them, searches of a file far
# away, figure, printing and updates on catalogues of their own, and writes docs/benchmarks.md's sections.
#
#   bench/run.sh [build folder]     build/release by default; it must be built
#
# The data stay in <build folder>/bench and are made again when they are removed. Run it on a quiet
# machine: the figures are of one thread, and whatever else runs is in them.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/release}
bin=$build/bin
data=$build/bench
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

make_data() {  # name, then the sizes
    local folder=$data/$1
    shift
    [ -f "$folder/Tarvo.mdb" ] || "$bin/tarvo-demo" "$folder" --pictures none "$@"
    # Made anew each time, which also brings the pages into memory.
    "$bin/tarvo-bench-plain" "$folder" "$folder/plain.db"
}

measure() {  # name, repetitions
    local folder=$data/$1
    export BENCH_REPETITIONS=$2
    "$bin/tarvo-bench" "$folder" \
        --benchmark_out="$data/$1-ours.json" --benchmark_out_format=json
    "$bin/tarvo-bench-ordinary" "$folder/plain.db" \
        --benchmark_out="$data/$1-ordinary.json" --benchmark_out_format=json
}

mkdir -p "$data"
make_data small --parts 12000 --components 40000 --kits 8000 --crossrefs 100000
make_data large --parts 150000 --components 950000 --kits 400000 --vehicles 3000 \
    --crossrefs 1000000
measure small 9
measure large 3
"$bin/tarvo-bench-cold" "$data/small" >"$data/cold.md"
BENCH_REPETITIONS=9 "$bin/tarvo-bench-views" "$data/large" \
    --benchmark_out="$data/views.json" --benchmark_out_format=json
for scale in 1 1.8; do
    QT_QPA_PLATFORM="offscreen:configfile=bench/screen-$scale.json" "$bin/tarvo-bench-figure" \
        --benchmark_out="$data/figure-$scale.json" --benchmark_out_format=json
done
BENCH_REPETITIONS=9 "$bin/tarvo-bench-printing" \
    --benchmark_out="$data/printing.json" --benchmark_out_format=json
"$bin/tarvo-bench-update" "$data/update" \
    --benchmark_out="$data/update.json" --benchmark_out_format=json
python3 bench/table.py "$data" docs/benchmarks.md
echo "docs/benchmarks.md written"
