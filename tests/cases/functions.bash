# Known to the lines of the cases beside this file.

# Runs orskapp with the stand-in library.
simulated() { env -u LD_LIBRARY_PATH orskapp "$@"; }

# The same for what may be refused, of which it prints the code and the value that is the matter.
refused() { simulated "$@" 2>&1 | sed -E "s|^ERROR: (-?[0-9]+): .*\"value\":\"(.*)\"}$|\1 \2|; s|$SCRATCH/||"; }

# every_command VARIABLE=VALUE...: runs every command that has a status with the recording library, which
# gives results, told to misbehave, and under ORSK_TEST_RUNNER, such as valgrind, if that is set. Tells how many ended how.
every_command() {
  local line status output errors log scratch=$SCRATCH/every lines
  lines=$(grep -v getApiVersion "$CALLING_LINES")
  mkdir -p "$scratch"
  while read -r line; do
    status=0
    : >"$scratch/log"
    # shellcheck disable=SC2086
    env ORSK_TEST_LOG="$scratch/log" ORSK_TEST_RESULT=1 ORSK_TEST_OUTPUT=stale ORSK_TEST_TIME="5 1 0 0" "$@" \
      $ORSK_TEST_RUNNER orskapp $line >"$scratch/output" 2>"$scratch/errors" || status=$?
    output=$(<"$scratch/output") errors=$(<"$scratch/errors")
    mapfile -t log <"$scratch/log"
    printf 'status %s, %s, %s bytes of errors: %s, %s %s\n' "$status" "${output:+output}" "${#errors}" "${errors:0:50}" \
      "${log%%_*}" "${log[*]:1}"
  done <<<"$lines" | sort | uniq -c | sed "s/^ *$(wc -l <<<"$lines") /all: /"
}
