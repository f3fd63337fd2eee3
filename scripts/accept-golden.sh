#!/bin/sh
# accept-golden.sh [build folder]
#
# Copies what the golden tests wrote in their last run over the expected files. Run it when the output was looked at and
# found right; then read the diff as one reads code.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
found=0
for run in "$build"/tests/run/*Golden/; do
    [ -d "$run" ] || continue
    for case in "$run"*/*/; do
        [ -d "$case" ] || continue
        name=${case#"$run"}
        expected=$root/tests/golden/${name%/}
        if [ ! -f "$expected/job.txt" ]; then
            echo "no case of the tree: $name" >&2
            continue
        fi
        find "$expected" -type f ! -name job.txt -delete
        cp "$case"* "$expected/"
        found=$((found + 1))
    done
done
if [ "$found" -eq 0 ]; then
    echo "accept-golden: nothing in $build/tests/run: run the golden tests first" >&2
    exit 1
fi
echo "accept-golden: $found cases copied; now: git diff tests/golden"
