#!/usr/bin/env bash
# Writes the part files of the example part, and a preview of them, with the built zetlaser-job, and checks the files.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=build/release/bin/zetlaser-job
layup=examples/blade/blade.layup.json
folder=build/job

[ -x "$program" ] || { echo "run-example-job.sh: $program is missing; \`make job\` builds it" >&2; exit 1; }

run() {
    echo
    echo "\$ $*"
    "$@"
}

mkdir -p "$folder/preview"
echo "The layup $layup becomes, in $folder, a file for each make, and a summary of what was read, thinned and written:"
run "$program" "$layup" --settings examples/blade/makes.settings.json

formats=html,png,svg
[ -d /usr/share/javascript/three ] || formats=png,svg # the page is made with Debian's libjs-three
run "$program" preview "$layup" --output "$folder/preview/blade" --formats "$formats"

# The job has compared each file with the model already; this is what is told to who gets the files alone.
files=()
stubs=()
for file in "$folder"/blade-*; do
    case $file in
        *-apt*) stubs+=("$file") ;;
        *) files+=("$file") ;;
    esac
done
echo
echo "\$ $program check --quiet $folder/blade-*"
"$program" check --quiet "${files[@]}"
echo "Nothing was found in the ${#files[@]} files, reports included, but for the stubs of APT, which hold no ply:"
# So something is found (1), but each of them can be read (2).
"$program" check --quiet "${stubs[@]}" || [ $? -eq 1 ]
