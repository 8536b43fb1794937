#!/usr/bin/env bash
# Runs the examples of the man page, in order; each has to end with status 0.
#
#   man_examples_test.sh PROGRAM SOURCE_DIRECTORY PAGE
#
# What the page expects to be installed is taken from the sources.
set -euo pipefail
program=$(realpath "$1")
source_dir=$(realpath "$2")
page=$(realpath "$3")
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cd "$place"
cp "$source_dir"/examples/compare-xcp/* .
touch notes.txt plan.pdf
mkdir bin
ln -s "$program" "bin/$(basename "$program")"
PATH=$place/bin:$PATH

examples=0
while IFS= read -r command; do
    command=${command//\/usr\/share\/doc\/quillmark\/examples/$source_dir/examples}
    command=${command//\/usr\/share\/quillmark/$source_dir/examples}
    examples=$((examples + 1))
    if ! eval "$command" >output 2>&1; then
        echo "This fails: $command"
        cat output
        exit 1
    fi
done < <(sed -n -E 's/^(\.Dl )?\$ //p' "$page")
if ((examples == 0)); then
    echo "No example was found."
    exit 1
fi
