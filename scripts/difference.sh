# shellcheck shell=bash
# Shared by the scripts that compare texts, which source it.

# difference EXPECTED ACTUAL: prints the first lines that differ, one below the other, cut around their first difference.
# Prints nothing if the texts are equal.
difference() {
  [[ $1 != "$2" ]] || return 0
  LC_ALL=C awk '
    FILENAME == ARGV[1] { expected[FNR] = $0; count = FNR; next }
    { actual[FNR] = $0; if (FNR > count) count = FNR }
    END {
      for (line = 1; line < count && expected[line] == actual[line] && (line in expected) == (line in actual); ++line) { }
      for (at = 1; substr(expected[line], at, 1) == substr(actual[line], at, 1) && at < length(expected[line]); ++at) { }
      from = at > 60 ? at - 60 : 1
      print "  line " line ", column " at ":"
      print "  expected: " (line in expected ? substr(expected[line], from, 140) : "(no line)")
      print "  actual:   " (line in actual ? substr(actual[line], from, 140) : "(no line)")
    }' <(printf %s "$1") <(printf %s "$2")
}

# For a check that goes on after a difference, and in the end fails if $wrong is not 0.
wrong=0
complain() { echo "$*"; wrong=1; }
# same WHAT EXPECTED ACTUAL: complains if the texts differ or are empty.
same() { [[ $2 && $2 == "$3" ]] || complain "$1:"$'\n'"$(difference "$2" "$3")"; }
