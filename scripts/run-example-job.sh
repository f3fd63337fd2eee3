#!/usr/bin/env bash
# Writes the part files of the example part, and a preview of them, with the built zetlaser-job, and checks the files.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=build/release/bin/zetlaser-job
layup=examples/blade/blade.layup.json
folder=build/job

[ -x "$program" ] || { echo "run-example-job.sh: $program is missing; \`make job\` builds it" >&2; exit 1; }

# Each type: type, extension, and what else is said for it. APT has a stub alone, which says so.
jobs=(
    "virtek ply"
    "lpt XML"
    "faro XML"
    "lap lpd"
    "sl sl"
    "assembly-guidance PRT"
    "aligned-vision PRT"
    "general-scanning PRT"
    "apt APT"
    "apt-2 APT"
    "apt-sl APT"
    "quilmon CPD --output-type nesting"
    "dxf DXF"
    "dxf DXF --output-type nesting --dxf-file-mode per-material"
)

mkdir -p "$folder"
echo "The layup $layup becomes, in $folder:"
for job in "${jobs[@]}"; do
    read -r type extension options <<<"$job"
    use=${options:+-nesting}
    # The options are words without blanks, so they may be split.
    # shellcheck disable=SC2206
    command=("$program" "$layup" --type "$type" --output "$folder/blade-$type$use.$extension" $options)
    echo
    echo "\$ ${command[*]}"
    "${command[@]}"
done

formats=html,png,svg
[ -d /usr/share/javascript/three ] || formats=png,svg # the page is made with Debian's libjs-three
command=("$program" preview "$layup" --output "$folder/preview/blade" --formats "$formats")
mkdir -p "$folder/preview"
echo
echo "\$ ${command[*]}"
"${command[@]}"

# The jobs have compared each file with the model already; this is what is told to who gets the files alone.
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
