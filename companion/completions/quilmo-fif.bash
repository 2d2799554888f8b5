# Completion of quilmo-fif for bash.
_quilmo_fif() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" word
    COMPREPLY=()
    # The shell takes "--type=4" for three words.
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
        check | convert | tag | info | undo)
            command=$word
            break
            ;;
        esac
    done

    case $previous in
    --type)
        mapfile -t COMPREPLY < <(compgen -W "1 2 3 4 5 6" -- "$current")
        return
        ;;
    --journal)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    --fix-artist | --fix-genre | --artist | --title | --album | --year | --comment | --genre) return ;;
    esac

    local options="--json -h --help --version"
    case $command in
    "") mapfile -t COMPREPLY < <(compgen -W "check convert tag info undo $options" -- "$current") && return ;;
    check) options+=" -0 --from-stdin --type" ;;
    convert) options+=" -0 --from-stdin --type --fix-artist --fix-genre --tags --apply --journal --no-journal" ;;
    tag)
        options+=" -0 --from-stdin --artist --title --album --year --comment --genre --apply --journal --no-journal"
        ;;
    info) options+=" -0 --from-stdin" ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _quilmo_fif quilmo-fif
