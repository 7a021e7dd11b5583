# SPDX-License-Identifier: MIT
# Completion of kqx for bash: commands, options, values of options, and captures.
_kqx() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local IFS=$' \t\n'
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        COMPREPLY=($(compgen -W "convert fetch info measure open page ports screen table --help --version" -- "$current"))
        return
    fi
    local list="--files-from --null --jobs" write="--files-from --null --jobs --out-dir --to --no-clobber" options
    case $command in
    convert) options="--help --channels $write" ;;
    fetch) options="--help --serial --usb --output -o --every --count --timeout --force" ;;
    info) options="--help --json $list" ;;
    measure) options="--help --json --csv --channels --all $list" ;;
    open) options="--help" ;;
    page) options="--help --paper --landscape --margins $write" ;;
    ports) options="--help --json" ;;
    screen) options="--help --points --cross --scale --thumbnail $write" ;;
    table) options="--help --columns --language --time --volts $write" ;;
    *) return ;;
    esac
    case $previous in
    --to)
        case $command in
        convert) COMPREPLY=($(compgen -W "csv npz sr" -- "$current")) ;;
        page) COMPREPLY=($(compgen -W "pdf" -- "$current")) ;;
        screen) COMPREPLY=($(compgen -W "png" -- "$current")) ;;
        table) COMPREPLY=($(compgen -W "csv txt xls xlsx" -- "$current")) ;;
        esac
        return
        ;;
    --channels)
        # Behind a comma the next label is completed.
        local before=
        [[ $current == *,* ]] && before=${current%,*},
        COMPREPLY=($(compgen -P "$before" -W "ch1 ch2 A B C D" -- "${current##*,}"))
        return
        ;;
    --language) COMPREPLY=($(compgen -W "0 1" -- "$current")); return ;;
    --paper) COMPREPLY=($(compgen -W "A3 A4 A5 Letter Legal" -- "$current")); return ;;
    --serial)
        local ports=(/dev/ttyUSB* /dev/ttyACM* /dev/serial/by-id/*) port
        for port in "${ports[@]}"; do
            [[ -e $port && $port == "$current"* ]] && COMPREPLY+=("$port")
        done
        COMPREPLY+=($(compgen -W "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16" -- "$current"))
        ((${#COMPREPLY[@]})) || COMPREPLY=($(compgen -f -- "$current"))
        return
        ;;
    --out-dir) IFS=$'\n' COMPREPLY=($(compgen -d -- "$current")); compopt -o filenames 2>/dev/null; return ;;
    --jobs | --scale | --thumbnail | --margins | --columns | --every | --count | --timeout) return ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    else
        IFS=$'\n' COMPREPLY=($(compgen -f -- "$current"))
        compopt -o filenames 2>/dev/null
    fi
}
complete -F _kqx kqx
