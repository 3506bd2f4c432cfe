# Known to the lines of the cases beside this file.

# Runs orskapp with the stand-in library.
simulated() { env -u LD_LIBRARY_PATH orskapp "$@"; }

# The same for what may be refused, of which it prints the code and the value that is the matter.
refused() { simulated "$@" 2>&1 | sed -E "s|^ERROR: (-?[0-9]+): .*\"value\":\"(.*)\"}$|\1 \2|; s|$SCRATCH/||"; }

# every_command VARIABLE=VALUE...: runs every command that has a status with the recording library told
# to misbehave, and under ORSK_TEST_RUNNER, such as valgrind, if that is set. Tells how many ended how.
every_command() {
  local line status scratch=$SCRATCH/every lines
  lines=$(grep -v getApiVersion "$CALLING_LINES")
  mkdir -p "$scratch"
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
  done <<<"$lines" | sort | uniq -c | sed "s/^ *$(wc -l <<<"$lines") /all: /"
}
