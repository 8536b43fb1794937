# Completion of quillmark(1) for bash.

_quillmark() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="convert decompress compare"
    local options
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
        return
    fi
    case ${COMP_WORDS[1]} in
        convert) options="-z -i -n -p -l -userfiles -zpki -epk-file-prefix" ;;
        compare) options="-v" ;;
        *) options="" ;;
    esac
    case $previous in
        -n | -p) [[ ${COMP_WORDS[1]} == convert ]] && return ;;
        -l)
            if [[ ${COMP_WORDS[1]} == convert ]]; then
                mapfile -t COMPREPLY < <(compgen -W "sigTrak= sigTrak+" -- "$current")
                return
            fi
            ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

complete -o filenames -F _quillmark quillmark
