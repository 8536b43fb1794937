#!/usr/bin/env bash
# The shared library shows what its headers name, and nothing else.
#
#   exports_test.sh LIBRARY INCLUDE_DIRECTORY
set -euo pipefail
library=$1
include=$2

[[ $(objdump -p "$library") == *"SONAME "*libquillmark.so.1* ]] || {
    echo "The library has another SONAME."
    exit 1
}
# "0000000000012345 T quillmark::Signal::name() const"
mapfile -t names < <(nm -DC --defined-only "$library" | sed -E 's/^[0-9a-f]+ [A-Za-z] //')
((${#names[@]} > 100))
for name in "${names[@]}"; do
    # The type of a template's function stands before its name.
    if [[ ! $name =~ ^([A-Za-z:]+ )?quillmark::([A-Za-z]+) ]]; then
        echo "Not of the public namespace: $name"
        exit 1
    fi
    if ! grep -rqwF "${BASH_REMATCH[2]}" "$include/quillmark"; then
        echo "Not in the public headers: $name"
        exit 1
    fi
done

# Lists are made in the library: each one that the headers name has to be there, whatever it is a list of.
for item in $(grep -rhoE 'List<[A-Za-z]+>' "$include/quillmark" | sort -u | sed -E 's/List<(.*)>/\1/; /^Item$/d'); do
    for function in "size() const" "operator[](unsigned long) const"; do
        if [[ $'\n'$(printf '%s\n' "${names[@]}") != *"quillmark::List<quillmark::$item>::$function"* ]]; then
            echo "Not to be linked: List<$item>::$function"
            exit 1
        fi
    done
done
