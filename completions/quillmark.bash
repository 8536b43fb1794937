# Completion of quillmark(1) for bash.

# _quillmark_files CURRENT [PATTERN]: offers directories and the files that match, all files if none does.
_quillmark_files() {
    mapfile -t COMPREPLY < <(compgen -f -X "!${2:-*}" -- "$1" && compgen -d -- "$1")
    if ((${#COMPREPLY[@]} == 0)); then
        mapfile -t COMPREPLY < <(compgen -f -- "$1")
    fi
}

# _quillmark_file_list CURRENT: completes the last item of a list with commas, which may go on.
_quillmark_file_list() {
    local before="" file
    [[ $1 == *,* ]] && before=${1%,*},
    while IFS= read -r file; do
        [[ -d $file ]] && file+=/
        COMPREPLY+=("$before$file")
    done < <(compgen -f -- "${1##*,}")
    compopt -o nospace
}

# _quillmark_library CURRENT: offers how a selection begins; its version follows without a blank.
_quillmark_library() {
    [[ $1 == *=* ]] && return
    mapfile -t COMPREPLY < <(compgen -W "sigTrak= sigTrak+" -- "$1")
    compopt +o filenames -o nospace
}

# _quillmark_file_count WORD...: how many of the words behind the command are file names.
_quillmark_file_count() {
    local count=0
    while (($# > 0)); do
        case $1 in
            -n | -p | -l | -zpki | -userfiles) shift ;;
            -*) ;;
            *) ((++count)) ;;
        esac
        shift
    done
    echo "$count"
}

_quillmark() {
    local description='*.[aA]2[lL]' words=() options="" current previous count i
    # Bash divides words at "=", also the value of -l. What stands behind a blank is empty at first.
    for ((i = 0; i <= COMP_CWORD; ++i)); do
        if ((i > 0)) && [[ ${COMP_WORDS[i]} == = ||
            (${COMP_WORDS[i - 1]} == = && -n ${COMP_WORDS[i]}) ]]; then
            words[${#words[@]} - 1]+=${COMP_WORDS[i]}
        else
            words+=("${COMP_WORDS[i]}")
        fi
    done
    current=${words[-1]}
    previous=${words[-2]}
    COMPREPLY=()
    if ((${#words[@]} == 2)); then
        mapfile -t COMPREPLY < <(compgen -W "convert decompress compare" -- "$current")
        return
    fi
    case ${words[1]} in
        convert)
            options="-z -i -n -p -l -userfiles -zpki -epk-file-prefix"
            case $previous in
                -n | -p) return ;;
                -l) _quillmark_library "$current" && return ;;
                -userfiles) _quillmark_file_list "$current" && return ;;
                -zpki) _quillmark_files "$current" '*.zpki' && return ;;
            esac
            ;;
        compare) options="-v" ;;
    esac
    count=$(_quillmark_file_count "${words[@]:2:${#words[@]}-3}")
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [[ ${words[1]} == compare || (${words[1]} == convert && $count == 0) ]]; then
        _quillmark_files "$current" "$description"
    else
        _quillmark_files "$current"
    fi
}

complete -o filenames -F _quillmark quillmark
