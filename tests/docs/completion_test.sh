#!/usr/bin/env bash
# Drives the completions in a real shell. Exit status 77 where the shell or expect is missing.
#
#   completion_test.sh PROGRAM SHELL PAGE_DIRECTORY
set -euo pipefail
program=$(realpath "$1")
shell=$2
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
page_dir=$(realpath "$3")
for needed in expect "$shell"; do
    if ! command -v "$needed" >/dev/null; then
        echo "Skipped: $needed is not installed."
        exit 77
    fi
done

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cd "$place"
mkdir sub
touch fan.a2l fan.cfginclude notes.txt plan.pdf old.zpki sub/engine.a2l 'TWO words.A2L'
expect "$here/completion_test.exp" "$shell" "$page_dir" "$program"
