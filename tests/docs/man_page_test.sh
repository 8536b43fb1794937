#!/usr/bin/env bash
# Fails if formatting the man page gives warnings. Exit status 77 where nothing can format it.
#
#   man_page_test.sh PAGE
set -euo pipefail
page=$(realpath "$1")
if command -v mandoc >/dev/null; then
    warnings=$(mandoc -Tlint "$page" || true)
elif command -v man >/dev/null; then
    warnings=$(LC_ALL=C.UTF-8 man --warnings -l "$page" 2>&1 >/dev/null || true)
else
    exit 77
fi
echo "$warnings"
[[ -z $warnings ]]
