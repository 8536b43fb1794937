#!/usr/bin/env bash
# Drives the completions in a real shell. Exit status 77 where the shell or expect is missing.
#
#   completion_test.sh SHELL PAGE_DIRECTORY
set -euo pipefail
shell=$1
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
page_dir=$(realpath "$2")
for program in expect "$shell"; do
    if ! command -v "$program" >/dev/null; then
        echo "Skipped: $program is not installed."
        exit 77
    fi
done

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cd "$place"
mkdir sub
touch fan.a2l fan.cfginclude notes.txt plan.pdf old.zpki sub/engine.a2l 'TWO words.A2L'
expect "$here/completion_test.exp" "$shell" "$page_dir"
