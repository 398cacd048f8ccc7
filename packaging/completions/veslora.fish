# SPDX-License-Identifier: MIT
# Completion of veslora's words for fish.
complete -c veslora -f
complete -c veslora -n __fish_is_first_arg -a settings -d 'Open the settings window'
complete -c veslora -n __fish_is_first_arg -a toggle -d 'Open the island, or close it'
complete -c veslora -n __fish_is_first_arg -a page -d 'Turn the page of widgets'
complete -c veslora -n __fish_is_first_arg -a edit -d 'Edit the widgets, or end that'
complete -c veslora -n __fish_is_first_arg -a pause -d 'Pause alerts'
complete -c veslora -n __fish_is_first_arg -a resume -d 'End the pause of alerts'
complete -c veslora -n __fish_is_first_arg -a quit -d 'End Veslora'
complete -c veslora -n __fish_is_first_arg -a status -d 'Print what it does as JSON'
complete -c veslora -n __fish_is_first_arg -a get -d 'Print a setting'
complete -c veslora -n __fish_is_first_arg -a set -d 'Change a setting'
complete -c veslora -n __fish_is_first_arg -a export -d 'Print the settings as JSON'
complete -c veslora -n __fish_is_first_arg -a import -d 'Take over settings'
complete -c veslora -n __fish_is_first_arg -a hooks -d "Put in or take out agents' hooks"
complete -c veslora -n __fish_is_first_arg -a report -d 'Print what a report of a fault needs'
complete -c veslora -n __fish_is_first_arg -l verbose -d 'Start, and tell what is decided and what fails'
complete -c veslora -n __fish_is_first_arg -l help -d 'Explain the words'
complete -c veslora -n __fish_is_first_arg -l version -d 'Print the version'
complete -c veslora -n '__fish_seen_subcommand_from page; and test (count (commandline -opc)) -eq 2' -a 'next previous'
complete -c veslora -n '__fish_seen_subcommand_from pause; and test (count (commandline -opc)) -eq 2' \
    -a '30m 1h 2h30m tomorrow'
complete -c veslora -n '__fish_seen_subcommand_from get set; and test (count (commandline -opc)) -eq 2' \
    -a 'hideInFullscreen hoverDelay displayChoice displayOutput accent timerSound timerNotifications
        widgetLayout widgetSpacingAutomatic widgetSpacing liveActivityPriority musicShowOtherApps
        musicLiveActivity metronomeBPM metronomeSignature metronomeSound metronomeVolume metronomeAccent
        claudeApprovalAlerts claudeApprovalSound claudeFinishedActivity claudeWorkingActivity
        claudeAnswerFromIsland checkForUpdates followDoNotDisturb keepAwakeDisplay keepAwakeWhileClaude
        keepAwakeLiveActivity'
complete -c veslora -n '__fish_seen_subcommand_from export; and test (count (commandline -opc)) -eq 2' \
    -l all -d 'Also those that are as they are by default'
complete -c veslora -n '__fish_seen_subcommand_from import; and test (count (commandline -opc)) -eq 2' -F
complete -c veslora -n '__fish_seen_subcommand_from hooks; and test (count (commandline -opc)) -eq 2' \
    -a 'install remove status'
complete -c veslora -n '__fish_seen_subcommand_from hooks; and test (count (commandline -opc)) -eq 3' -a 'claude codex'
