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
complete -c veslora -n __fish_is_first_arg -a report -d 'Print what a report of a fault needs'
complete -c veslora -n __fish_is_first_arg -l verbose -d 'Start, and tell what is decided and what fails'
complete -c veslora -n __fish_is_first_arg -l help -d 'Explain the words'
complete -c veslora -n __fish_is_first_arg -l version -d 'Print the version'
complete -c veslora -n '__fish_seen_subcommand_from page; and test (count (commandline -opc)) -eq 2' -a 'next previous'
complete -c veslora -n '__fish_seen_subcommand_from pause; and test (count (commandline -opc)) -eq 2' \
    -a '30m 1h 2h30m tomorrow'
