#!/usr/bin/env bash
# Writes the part files of the example part with the built zetlaser-job.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=build/release/bin/zetlaser-job
layup=examples/blade/blade.layup.json
folder=build/job

[ -x "$program" ] || { echo "run-example-job.sh: $program is missing; \`make job\` builds it" >&2; exit 1; }
mkdir -p "$folder"

# type and extension of each make that the example is written for
jobs=("virtek ply")

echo "The layup $layup becomes, in $folder:"
for job in "${jobs[@]}"; do
    read -r type extension <<<"$job"
    echo
    echo "\$ $program $layup --type $type --output $folder/blade.$extension"
    "$program" "$layup" --type "$type" --output "$folder/blade.$extension"
done
