# Known to the lines of the cases beside this file.

# Runs orskapp with the stand-in library.
simulated() { env -u LD_LIBRARY_PATH orskapp "$@"; }

# The same for a refusal: the report without the place in the stand-in's source, and its status.
refused() {
  local status=0 report
  report=$(simulated "$@" 2>&1) || status=$?
  sed -E 's/"file":"simulator[^"]*","line":[0-9]+,//' <<<"$report"
  return $status
}

# every_command VARIABLE=VALUE...: runs each line of calling_lines, every command that has a status,
# with the recording library told to misbehave, and under ORSK_TEST_RUNNER, such as valgrind, if that is
# set. Tells how many ended in which way.
every_command() {
  local line status scratch
  scratch=$(mktemp -d)
  while read -r line; do
    status=0
    : >"$scratch/log"
    # shellcheck disable=SC2086
    env ORSK_TEST_LOG="$scratch/log" ORSK_TEST_RESULT=1 "$@" $ORSK_TEST_RUNNER orskapp $line \
      >"$scratch/output" 2>"$scratch/errors" || status=$?
    printf 'status %s, %s, %s bytes of errors (%s), %s call, %s release\n' "$status" \
      "$([[ -s $scratch/output ]] && echo output || echo 'no output')" \
      "$(wc -c <"$scratch/errors")" "$(head -c 50 "$scratch/errors" | tr '\n' '|')" \
      "$(grep -c ^orsksapi_ "$scratch/log")" "$(grep -c ^release "$scratch/log")"
  done <"${BASH_ENV%/*}/calling_lines" | sort | uniq -c
  rm -r "$scratch"
}
