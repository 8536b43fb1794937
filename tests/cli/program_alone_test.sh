#!/usr/bin/env bash
# A program that was copied without its module converts all the same: plain, indented and compressed.
# What takes the module ends with a message that names it.
#
#   program_alone_test.sh PROGRAM EXAMPLES_DIRECTORY
set -euo pipefail
program=$1
examples=$2
place=$(mktemp -d)
trap 'rm -r "$place"' EXIT

fail() {
    echo "A program alone $1" >&2
    exit 1
}

mkdir "$place/bin"
cp "$program" "$place/bin/quillmark"
cp "$examples/first/fan.a2l" "$examples/sigtrakVersions.xml" "$place"
cd "$place"

for form in "" -i -z; do
    # shellcheck disable=SC2086 # no option is none
    bin/quillmark convert fan.a2l fan.cfginclude $form >console || fail "cannot convert $form"
done
bin/quillmark decompress fan.cfginclude fan.plain >console || fail "cannot decompress"
grep -q '^mta=0x70001a40' fan.plain || fail "converts wrongly"

rm fan.cfginclude
status=0
bin/quillmark convert fan.a2l fan.cfginclude -userfiles fan.a2l >console || status=$?
((status == 1)) || fail "ends a package with status $status"
grep -q '^ERROR: Packages .* take a module .*: quillmark-edges\.so: ' console ||
    fail "tells nothing of its module: $(cat console)"
[[ -s fan.cfginclude && ! -e fan.zpki ]] || fail "leaves other files: $(ls)"

echo '<?xml version="1.0" encoding="UTF-8"?><odd attribute="1"/>' >sigtrakVersions.xml
if bin/quillmark convert fan.a2l fan.cfginclude >console 2>&1; then
    fail "reads an unusual version file"
fi
grep -q '^Packages .* take a module .*: quillmark-edges\.so: ' console ||
    fail "tells nothing of its module at a version file: $(cat console)"
