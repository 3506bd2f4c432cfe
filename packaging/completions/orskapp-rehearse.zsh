#compdef orskapp-rehearse
_arguments '(-)1:command: _command_names -e' '*::argument: _normal'
