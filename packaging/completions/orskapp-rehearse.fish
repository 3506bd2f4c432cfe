# fish completion for orskapp-rehearse: a command and its arguments
complete -c orskapp-rehearse -x -a '(__fish_complete_subcommand)'
