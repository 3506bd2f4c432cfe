# bash completion for orskapp-rehearse: a command and its arguments
if declare -F _comp_command >/dev/null; then
  complete -F _comp_command orskapp-rehearse
else
  complete -F _command orskapp-rehearse
fi
