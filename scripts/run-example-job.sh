#!/usr/bin/env bash
# Writes the part files of the example part with the built zetlaser-job.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=build/release/bin/zetlaser-job
layup=examples/blade/blade.layup.json
folder=build/job

[ -x "$program" ] || { echo "run-example-job.sh: $program is missing; \`make job\` builds it" >&2; exit 1; }

# Each make that has a writer: type, extension, and what else is said for it.
jobs=(
    "virtek ply"
    "lap lpd"
    "dxf dxf --output-type nesting --dxf-file-mode per-material"
)

echo "The layup $layup becomes, in $folder:"
for job in "${jobs[@]}"; do
    read -r type extension options <<<"$job"
    # The options are words without blanks, so they may be split.
    # shellcheck disable=SC2206
    command=("$program" "$layup" --type "$type" --output "$folder/$type/blade.$extension" $options)
    mkdir -p "$folder/$type" # of its own, because makes share names of files
    echo
    echo "\$ ${command[*]}"
    "${command[@]}"
done
