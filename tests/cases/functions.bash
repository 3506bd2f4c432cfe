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
