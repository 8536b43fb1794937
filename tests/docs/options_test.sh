#!/usr/bin/env bash
# Compares the commands and options that the usage text, the man page, the completions and README.md
# list: each must know the same ones.
#
#   options_test.sh PROGRAM SOURCE_DIRECTORY PAGE_DIRECTORY
#
# A list has one line per command, such as "compare", and one per option, such as "compare -v".
set -euo pipefail
program=$1
source_dir=$2
page_dir=$3
export LC_ALL=C

from_usage() {
    { "$program" || true; } | awk '
        /^  [a-z]+ </    { command = $1; print command }
        /^          -[a-z]/ { sub(/:$/, "", $1); print command, $1 }'
}

from_man_page_lists() {
    awk '
        /^\.Sh /                            { section = $2 }
        section == "DESCRIPTION" && /^\.It Cm / { print $3 }
        section == "OPTIONS" && /^\.Cm /    { command = $2 }
        section == "OPTIONS" && /^\.It Fl / { print command, "-" $3 }' \
        "$page_dir/quillmark.1"
}

from_man_page_synopsis() {
    awk '
        /^\.Sh /                             { section = $2 }
        section == "SYNOPSIS" && /^\.Cm /    { command = $2; print command }
        section == "SYNOPSIS" && /^\.Op Fl / { print command, "-" $3 }' \
        "$page_dir/quillmark.1"
}

from_bash_completion() (
    source "$page_dir/quillmark.bash"
    compopt() { :; } # works only while a command line is completed
    COMP_WORDS=(quillmark "")
    COMP_CWORD=1
    _quillmark
    commands=("${COMPREPLY[@]}")
    for command in "${commands[@]}"; do
        echo "$command"
        COMP_WORDS=(quillmark "$command" -)
        COMP_CWORD=2
        _quillmark
        for option in ${COMPREPLY[@]+"${COMPREPLY[@]}"}; do
            echo "$command $option"
        done
    done
)

from_zsh_completion() {
    awk '
        match($0, /^ +.[a-z]+:[a-z]/)  { split($1, part, ":"); print substr(part[1], 2) }
        /^        [a-z]+\)$/           { command = substr($1, 1, length($1) - 1) }
        match($0, /^ +.[*]?-[a-z-]+\[/) {
            option = substr($0, RSTART, RLENGTH - 1)
            sub(/^[^-]*/, "", option)
            print command, option
        }' "$page_dir/_quillmark"
}

from_readme() {
    awk '
        /^    quillmark [a-z]+ </ {
            print $2
            for (i = 3; i <= NF; ++i) {
                if ($i ~ /^\[-/) {
                    gsub(/[][]/, "", $i)
                    print $2, $i
                }
            }
        }
        /^\*\*[a-z]+\*\*/ { split($0, part, "[*][*]"); command = part[2] }
        /^\| `-/          { gsub(/`/, "", $2); print command, $2 }' \
        "$source_dir/README.md"
}

expected=$(from_usage | sort)
if [[ $(wc -l <<<"$expected") -lt 5 ]]; then
    echo "The usage text lists next to nothing:" "$expected"
    exit 1
fi
status=0
for place in man_page_lists man_page_synopsis bash_completion zsh_completion readme; do
    if ! difference=$(diff <(echo "$expected") <("from_$place" | sort)); then
        echo "usage text (<) and $place (>) differ:"
        echo "$difference"
        status=1
    fi
done
exit $status
