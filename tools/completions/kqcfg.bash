# Completion of kqcfg for bash.

_kqcfg_files() {
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    COMPREPLY=($(compgen -f -- "$1"))
}

_kqcfg() {
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    local translation="--dmf --language --modules --json --help"
    local options

    if [[ $COMP_CWORD -eq 1 ]]; then
        options="check format channels dmf set add remove session template eval match scan tokens inspect drive --help --version"
        COMPREPLY=($(compgen -W "$options" -- "$current"))
        return
    fi
    case $previous in
        --language)
            COMPREPLY=($(compgen -W "CZ EN GE JP" -- "$current"))
            return ;;
        --modules)
            compopt -o filenames 2>/dev/null
            local IFS=$'\n'
            COMPREPLY=($(compgen -d -- "$current"))
            return ;;
        --dmf | --dmf-out | --output | -o)
            _kqcfg_files "$current"
            return ;;
        --var | --name | --instance | --read | --write | --rounds | --interval)
            return ;;
    esac
    case ${COMP_WORDS[1]} in
        check | channels | template) options=$translation ;;
        format) options="$translation --output --check" ;;
        dmf) options="$translation --output" ;;
        set | add | remove) options="$translation --output --dmf-out" ;;
        eval) options="--var --json --help" ;;
        match | scan | inspect | session) options="--json --help" ;;
        tokens) options="--raw --json --help" ;;
        drive) options="--name --instance --read --write --rounds --interval --json --help" ;;
        *) return ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    else
        _kqcfg_files "$current"
    fi
}

complete -F _kqcfg kqcfg
