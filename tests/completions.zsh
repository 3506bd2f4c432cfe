#!/usr/bin/env -S zsh -f
# completions.zsh BUILD: installs what BUILD contains into a scratch folder, starts each shell in a terminal, as a
# user does, and presses TAB and ENTER. What then runs is a program that writes down its arguments.
zmodload zsh/zpty
fish=$(fish --version)
prefix=$(mktemp -d) || exit
TRAPEXIT() { rm -rf -- $prefix }
for signal in HUP INT TERM; do functions[TRAP$signal]='exit 130'; done
bash -c 'source "$1/../scripts/lib.sh"; install_build "$2" "$3"' bash ${0:a:h} ${1:a} $prefix || exit
for name in orskapp orskapp-simulated orskapp-rehearse; do
  printf '#!/bin/sh\necho "${0##*/} $*" >>"${0%%/*}/../log"\n' >$prefix/bin/$name
done
touch $prefix/file-name
print -r "fpath=(${(q)prefix}/share/zsh/site-functions \$fpath); autoload -Uz compinit; compinit -u -D" >$prefix/.zshrc
# Otherwise fish reads all manual pages, in the background.
mkdir -p $prefix/.local/share/fish/generated_completions
environment=(HOME=$prefix ZDOTDIR=$prefix TMPDIR=$prefix XDG_RUNTIME_DIR=$prefix PATH=$prefix/bin:/usr/bin:/bin TERM=xterm LANG=C.UTF-8
  XDG_DATA_DIRS=$prefix/share:/usr/share)
start="exec env -i ${(j: :)${(@q)environment}}"
typeset -A shells=(bash "bash --noprofile --rcfile /usr/share/bash-completion/bash_completion -i" zsh zsh fish fish)

# typed KEYS WORDS: checks what the keys ran, once they ran it; repeats the first keys until a shell is up. Sets shown.
typed() {
  local tries=0 output
  shown=
  : >$prefix/log
  zpty -w -n shell $1$'\r'
  until [[ -s $prefix/log ]]; do
    zpty -r -t shell output && shown+=$output
    sleep 0.05
    ((++tries % 100)) || [[ $2 != 'orskapp up' ]] || zpty -w -n shell $1$'\r'
    ((tries < 1200)) || { print "$shell: nothing runs after ${(q)1}: $output"; return 1 }
  done
  while zpty -r -t shell output; do shown+=$output; done
  [[ "$(head -n 1 $prefix/log)" == "$2" ]] || { print "$shell: ${(q)1} runs: $(<$prefix/log)"; return 1 }
}

# before WORDS KEYS RESULT: the same with the cursor before words.
before() { typed "$1"$'\001'"$2" "$3" }

failed=0
for shell command in ${(kv)shells}; do
  zpty -b shell "$start $command"
  typed 'orskapp up' 'orskapp up' && sleep 1 &&
    typed $'orskapp getA\t' 'orskapp getApiVersion' &&
    typed $'orskapp syncD\tstartV\t--sav\t1 --tim\t9 -q' 'orskapp syncDomain startV2 --saveInitialCoherency 1 --timeout_s 9 -q' &&
    typed $'orskapp-simulated list timesc\t' 'orskapp-simulated list timescales' &&
    typed $'orskapp-rehearse basena\tx' 'orskapp-rehearse basename x' &&
    before ' --uri u' $'orskapp syncDomain isCoherentS\t' 'orskapp syncDomain isCoherentSinceLastChecked --uri u' &&
    before ' --uri u' $'orskapp syncDomain \t' 'orskapp syncDomain --uri u' &&
    typed $'orskapp-rehearse -- basena\tx' 'orskapp-rehearse -- basename x' || failed=1
  # fish 3 does not show a completion what follows the cursor, and fish 4 completes more than beginnings.
  [[ $shell == fish && $fish == *' 3.'* ]] ||
    before ' --uri u -q -t' $'orskapp syncDomain start \t' 'orskapp syncDomain start --timeout_s --uri u -q -t' || failed=1
  if [[ $shell != fish ]]; then
    before ' --uri u' $'orskapp syncDomain start --ur\t' 'orskapp syncDomain start --ur --uri u' || failed=1
    # fish does not tell a redirection's file from other words.
    typed $'orskapp list >$HOME/out corr\t' 'orskapp list correlators' || failed=1
    # A hint is shown, and not inserted.
    typed $'orskapp loadResources --remoteHost \t\tx' 'orskapp loadResources --remoteHost x' || failed=1
    [[ $shown == *text* ]] || { print "$shell: no hint: $shown"; failed=1 }
  fi
  if [[ $shell == bash ]]; then
    typed $'orskapp list --x $HOM\t' "orskapp list --x $prefix" &&
      typed $'orskapp list >$HOME/file-n\t x' 'orskapp list x' &&
      typed $'bind \'"\\C-t": menu-complete\'; orskapp up' 'orskapp up' &&
      typed $'orskapp loadResources --remoteHost \x14x' 'orskapp loadResources --remoteHost x' || failed=1
    [[ ! -e $prefix/file-n ]] || { print "bash: no file names after >"; failed=1 }
  fi
  # Without the program nothing is offered and nothing printed.
  mv $prefix/libexec $prefix/moved
  typed $'orskapp syncD\t x' 'orskapp syncD x' || failed=1
  [[ ! $shown =~ '(not found|No such file|Unknown command)' ]] || { print "$shell: $shown"; failed=1 }
  mv $prefix/moved $prefix/libexec
  zpty -d shell
done
exit $failed
