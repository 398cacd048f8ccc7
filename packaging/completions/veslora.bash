# SPDX-License-Identifier: MIT
# Completion of veslora's words for bash.
_veslora() {
    local first='settings toggle page edit pause resume quit status report --verbose --help --version'
    COMPREPLY=()
    case $COMP_CWORD in
    1) mapfile -t COMPREPLY < <(compgen -W "$first" -- "${COMP_WORDS[1]}") ;;
    2)
        case ${COMP_WORDS[1]} in
        page) mapfile -t COMPREPLY < <(compgen -W 'next previous' -- "${COMP_WORDS[2]}") ;;
        pause) mapfile -t COMPREPLY < <(compgen -W '30m 1h 2h30m tomorrow' -- "${COMP_WORDS[2]}") ;;
        esac
        ;;
    esac
}
complete -F _veslora veslora
