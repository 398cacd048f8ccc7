# SPDX-License-Identifier: MIT
# Completion of veslora's words for bash.
_veslora() {
    local first='settings toggle page edit pause resume quit status get set export import hooks report
        --verbose --help --version'
    local agents='claude codex'
    local keys='hideInFullscreen hoverDelay displayChoice displayOutput accent timerSound timerNotifications
        widgetLayout widgetSpacingAutomatic widgetSpacing liveActivityPriority musicShowOtherApps
        musicLiveActivity metronomeBPM metronomeSignature metronomeSound metronomeVolume metronomeAccent
        claudeApprovalAlerts claudeApprovalSound claudeFinishedActivity claudeWorkingActivity
        claudeAnswerFromIsland checkForUpdates followDoNotDisturb keepAwakeDisplay keepAwakeWhileClaude keepAwakeLiveActivity'
    COMPREPLY=()
    case $COMP_CWORD in
    1) mapfile -t COMPREPLY < <(compgen -W "$first" -- "${COMP_WORDS[1]}") ;;
    2)
        case ${COMP_WORDS[1]} in
        page) mapfile -t COMPREPLY < <(compgen -W 'next previous' -- "${COMP_WORDS[2]}") ;;
        pause) mapfile -t COMPREPLY < <(compgen -W '30m 1h 2h30m tomorrow' -- "${COMP_WORDS[2]}") ;;
        get | set) mapfile -t COMPREPLY < <(compgen -W "$keys" -- "${COMP_WORDS[2]}") ;;
        export) mapfile -t COMPREPLY < <(compgen -W '--all' -- "${COMP_WORDS[2]}") ;;
        # As bash itself completes files: with blanks quoted and a slash behind a folder.
        import) compopt -o default ;;
        hooks) mapfile -t COMPREPLY < <(compgen -W 'install remove status' -- "${COMP_WORDS[2]}") ;;
        esac
        ;;
    3)
        case ${COMP_WORDS[1]} in
        hooks) mapfile -t COMPREPLY < <(compgen -W "$agents" -- "${COMP_WORDS[3]}") ;;
        esac
        ;;
    esac
}
complete -F _veslora veslora
