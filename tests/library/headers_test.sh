#!/usr/bin/env bash
# Each public header compiles alone, with every compiler that is there, and is told of in docs/library.md.
#
#   headers_test.sh INCLUDE_DIRECTORY COMPILER...
set -euo pipefail
include=$1
shift
for compiler in "$@"; do
    for header in "$include"/quillmark/*.h; do
        printf '#include "quillmark/%s"\n' "$(basename "$header")" |
            "$compiler" -std=c++20 -Wall -Wextra -pedantic -Werror -I "$include" -x c++ \
                -fsyntax-only -
    done
done

# And docs/library.md has every type.
page=$(dirname "$include")/docs/library.md
while read -r type; do
    [[ $type == Kind ]] || grep -qF "\`$type\`" "$page" || {  # within another type
        echo "docs/library.md lacks $type."
        exit 1
    }
done < <(sed -nE 's/^ *(class|struct|enum class) (QUILLMARK_API )?([A-Za-z]+) *(:.*)?\{.*/\3/p; s/^using ([A-Za-z]+) = std.*/\1/p' \
    "$include"/quillmark/*.h)
