#!/usr/bin/env -S zsh -f
# completions.zsh BUILD: installs what BUILD holds into a scratch folder, starts each shell as a user does,
# in a terminal, and presses TAB and ENTER. What is then run is a program that writes down its words.
zmodload zsh/zpty
prefix=$(mktemp -d)
trap 'rm -rf $prefix' EXIT
cmake --install $1 --prefix $prefix >/dev/null || exit 1
for name in orskapp orskapp-simulated; do
  printf '#!/bin/sh\necho "${0##*/} $*" >>%s/log\n' $prefix >$prefix/bin/$name
done
print -r "fpath=($prefix/share/zsh/site-functions \$fpath); autoload -Uz compinit; compinit -u -D" >$prefix/.zshrc
start=(exec env -i HOME=$prefix ZDOTDIR=$prefix PATH=$prefix/bin:/usr/bin:/bin TERM=xterm LANG=C.UTF-8
  XDG_DATA_DIRS=$prefix/share:/usr/share)
typeset -A shells=(bash "bash --noprofile --rcfile /usr/share/bash-completion/bash_completion -i" zsh zsh fish fish)

# typed KEYS WORDS: what the keys ran, once they ran it; the first keys again and again until a shell is up.
typed() {
  local tries=0 output
  : >$prefix/log
  zpty -w -n shell $1$'\r'
  until [[ -s $prefix/log ]]; do
    zpty -r -t shell output
    sleep 0.05
    ((++tries % 100)) || [[ $2 != 'orskapp up' ]] || zpty -w -n shell $1$'\r'
    ((tries < 1200)) || { print "$shell: nothing is run after ${(q)1}: $output"; return 1 }
  done
  [[ "$(head -n 1 $prefix/log)" == "$2" ]] || { print "$shell: ${(q)1} runs: $(<$prefix/log)"; return 1 }
}

failed=0
for shell command in ${(kv)shells}; do
  zpty -b shell "$start $command"
  typed 'orskapp up' 'orskapp up' && sleep 1 &&
    typed $'orskapp getA\t' 'orskapp getApiVersion' &&
    typed $'orskapp syncD\tstartV\t--sav\t1 --tim\t9 -q' 'orskapp syncDomain startV2 --saveInitialCoherency 1 --timeout_s 9 -q' &&
    typed $'orskapp-simulated list timesc\t' 'orskapp-simulated list timescales' || failed=1
  zpty -d shell
done
exit $failed
