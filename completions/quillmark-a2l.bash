# Completion of quillmark-a2l(1) for bash. Commands, options and their words are asked of the program
# itself, whose help lists them.

# _quillmark_a2l_commands PROGRAM: the words behind "Commands:".
_quillmark_a2l_commands() {
    "$1" --help 2>/dev/null | awk '/^Commands:/ { on = 1; next } /^[^ ]/ { on = 0 } on && NF { print $1 }'
}

# _quillmark_a2l_options PROGRAM COMMAND...: the long options.
_quillmark_a2l_options() {
    "$@" --help 2>/dev/null | sed -n -E 's/^ +(-[a-z], *)?(--[a-z0-9-]+).*/\2/p'
}

# _quillmark_a2l_words OPTION PROGRAM COMMAND...: what may stand behind the option, if that is limited.
_quillmark_a2l_words() {
    local option=$1
    shift
    "$@" --help 2>/dev/null | sed -n -E "s/^ +(-[a-z], *)?$option [A-Z]+:\\{([^}]*)\\}.*/\\2/p" | tr , ' '
}

_quillmark_a2l() {
    local program=$1 current=${COMP_WORDS[COMP_CWORD]} option="" words
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$(_quillmark_a2l_commands "$program") --help --version" -- "$current")
        return
    fi
    # Bash divides words at "=".
    if [[ $current == "=" ]]; then
        option=${COMP_WORDS[COMP_CWORD - 1]}
        current=""
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == "=" ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --* ]]; then
        option=${COMP_WORDS[COMP_CWORD - 1]}
    fi
    if [[ -n $option ]]; then
        words=$(_quillmark_a2l_words "$option" "$program" "${COMP_WORDS[1]}")
        if [[ -n $words ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
            return
        fi
    fi
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_quillmark_a2l_options "$program" "${COMP_WORDS[1]}")" -- "$current")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -f -X '!*.[aA]2[lL]' -- "$current" && compgen -d -- "$current")
    if ((${#COMPREPLY[@]} == 0)); then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

complete -o filenames -F _quillmark_a2l quillmark-a2l
