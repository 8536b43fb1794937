#!/usr/bin/env bash
# Compares the commands and long options that the help of quillmark-a2l, its man page and its
# completion for bash list: each must know the same ones.
#
#   a2l_options_test.sh PROGRAM SOURCE_DIRECTORY
#
# A list has one line per command, such as "diff", and one per option, such as "diff --ignore".
set -euo pipefail
program=$1
source_dir=$2
export LC_ALL=C

commands() {
    "$program" --help | awk '/^Commands:/ { on = 1; next } /^[^ ]/ { on = 0 } on && NF { print $1 }'
}

from_help() {
    local command
    for command in $(commands); do
        echo "$command"
        "$program" "$command" --help | grep -oE '^ +(-[a-z], *)?--[a-z0-9-]+' | grep -oE -- '--[a-z0-9-]+' |
            grep -vx -- --help | sed "s/^/$command /"
    done
}

from_man_page() {
    awk '
        /^\.Sh /                             { section = $2 }
        section == "DESCRIPTION" && /^\.It Cm / { print $3 }
        section == "OPTIONS" && /^\.Cm [a-z]+ :/ { command = $2 }
        section == "OPTIONS" && match($0, /^\.It Fl ([a-z] , )?-[a-z0-9-]+/) {
            option = substr($0, RSTART, RLENGTH)
            sub(/.* /, "", option)
            print command, "-" option
        }' "$source_dir/docs/quillmark-a2l.1"
}

from_bash_completion() (
    source "$source_dir/completions/quillmark-a2l.bash"
    COMP_WORDS=(quillmark-a2l "")
    COMP_CWORD=1
    _quillmark_a2l "$program"
    for command in "${COMPREPLY[@]}"; do
        [[ $command != -* ]] || continue
        echo "$command"
        COMP_WORDS=(quillmark-a2l "$command" -)
        COMP_CWORD=2
        _quillmark_a2l "$program"
        for option in "${COMPREPLY[@]}"; do
            [[ $option == --help ]] || echo "$command $option"
        done
    done
)

expected=$(from_help | sort)
if [[ $(wc -l <<<"$expected") -lt 10 ]]; then
    echo "The help lists next to nothing:" "$expected"
    exit 1
fi
status=0
for place in man_page bash_completion; do
    if ! difference=$(diff <(echo "$expected") <("from_$place" | sort)); then
        echo "help (<) and $place (>) differ:"
        echo "$difference"
        status=1
    fi
done
exit $status
