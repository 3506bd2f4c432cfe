# Functions for the scripts in the cases.

# Runs orskapp with the simulator and prints an error as its code and the offending value.
simulated() { orskapp-simulated "$@" 2>&1 | sed -E "s|^ERROR: ([^:]*): .*\"value\":\"(.*)\"}$|\1 \2|; s|$SCRATCH/||g"; }

source "$ROOT/scripts/difference.sh"

# expect OUTPUT COMMAND...: ends the case if the command prints something else. Lines are joined by blanks.
expect() {
  local output
  output=$("${@:2}" 2>&1 | paste -sd ' ')
  [[ $output != "$1" ]] || return 0
  printf '%.200s:\n' "${*:2}"
  difference "$1" "$output"
  exit 1
}

# expect_all OUTPUT COMMAND VALUE...: expects the same output for each value.
expect_all() { for value in "${@:3}"; do expect "$1" $2 "$value"; done; }

# show LABEL COMMAND...: runs the command and prints its output after the label, as one line.
show() { echo "$1: $("${@:2}" 2>&1 | paste -sd ' ')"; }

# run SCRIPT: prints on one line what the script prints, and its status.
run() { (eval "$1"; echo $?) 2>&1 | paste -sd ' '; }

# try LABEL SCRIPT: the same after the label.
try() { echo "$1: $(run "$2")"; }

# each_call COMMAND...: runs the command once for each command line that calls the library, which is $line.
each_call() { while read -r line; do "$@" </dev/null; done <"$CALLING_LINES"; }

# skip WHY: ends the case.
skip() { echo "skipped: $1" >&2; exit 77; }

load() { for host; do simulated loadResources --remoteHost "$host" -q; done; }
# in_domain ACTION URI OPTION...
in_domain() { simulated syncDomain "$1" --uri "$2" -q "${@:3}"; }
# domain ACTION URI: an action that needs no other option than these.
domain() { in_domain "$@" --timeout_s 0; }
# add DOMAIN DEVICE
add() { in_domain addSyncableDevice "$1" --syncableDeviceUri "$2"; }
# create_domain URI MILLISECONDS [TIMESCALE]
create_domain() { in_domain create "$1" --timescaleUri "${3-timescale:local}" --maxOffset_ns 1 --minSyncDuration_ms "$2"; }
start_new() { create_domain "$1" "$2"; domain start "$1"; }
# create_with URI TIMESCALE HOSTS
create_with() {
  in_domain createAndAddDevices "$1" --timescaleUri "$2" --remoteHosts "$3" --maxOffset_ns 1000 --minSyncDuration_ms 0
}
# start_and_wait URI SECONDS [SAVE]
start_and_wait() { in_domain startV2 "$1" --timeout_s "$2" --saveInitialCoherency "${3:-0}" --waitToBecomeCoherent 1; }
correlator() { simulated timestampCorrelator "$@" -q; }
relate() { correlator create --timescaleUri1 "$1" --timescaleUri2 "$2" --samplingInterval 1 --historyLength 1; }
unrelate() { correlator delete --timescaleUri1 "$1" --timescaleUri2 "$2"; }
# correlate FROM TO S NS FNS
correlate() { correlator correlate --srcTimescaleUri "$1" --dstTimescaleUri "$2" --s "$3" --ns "$4" --fns "$5"; }
# now TIMESCALE: its seconds.
now() { simulated timescale getTime --timescaleUri "${1:-timescale:local}" -q | sed "s/^Time in seconds : //"; }
# compact KIND: the list on one line, without blanks.
compact() { simulated list "$1" | tr -d "\n "; echo; }

# took_at_least MILLISECONDS COMMAND...: runs the command, and complains if it was quicker.
took_at_least() {
  local begun
  begun=$(date +%s%3N)
  "${@:2}"
  local took=$(($(date +%s%3N) - begun))
  ((took >= $1)) || echo "after only $took ms"
}

# every_command VARIABLE=VALUE...: runs every command that has a status record with the recording library, which
# gives results and misbehaves as the variables say, and under ORSK_TEST_RUNNER, such as valgrind, if that is set.
# Prints what all of them did, and what some did.
every_command() { each_call misbehaving "$@" | sort -u; }
misbehaving() {
  [[ $line != getApiVersion ]] || return 0
  # shellcheck disable=SC2086
  env ORSK_TEST_LOG="$SCRATCH/log" ORSK_TEST_RESULT=1 ORSK_TEST_OUTPUT=stale ORSK_TEST_TIME="5 1 0 0" "$@" \
    $ORSK_TEST_RUNNER orskapp $line >output 2>errors
  echo "status $?, $([[ ! -s output ]] || echo output), $(wc -c <errors) bytes of errors: $(head -c 50 errors), $(sed 's/_.*//' log | paste -sd ' ')"
  rm log
}

# foreign_library: sets what LD_PRELOAD and LD_AUDIT may name, the recording library. Neither can name a path with a
# blank. A process cannot have the address sanitizer twice, as an auditor would.
foreign_library() {
  cp "$LD_LIBRARY_PATH/liborsksapi.so.1" foreign.so
  preloaded=./foreign.so audited=
  ldd "$preloaded" | grep -q asan || audited=$preloaded
  export ASAN_OPTIONS=verify_asan_link_order=0
}

# install_rehearsal PREFIX: copies the programs and the simulator to where an installation has them, first in PATH. A
# rehearsal then has a state of its own.
install_rehearsal() {
  unset ORSK_SIMULATOR_STATE
  rm -rf "$1"; mkdir -p "$1/bin" "$1/lib/orskapp/simulator/bin"
  cp "$BUILD"/bin/orskapp* "$1/bin"; cp "$BUILD/lib/liborsksapi.so.1" "$1/lib/orskapp/simulator"
  ln -s ../../../../bin/orskapp-simulated "$1/lib/orskapp/simulator/bin/orskapp"
  PATH=$SCRATCH/$1/bin:$PATH
}
# shells: prints the installed shells that scripts are run by. "_" stands for a blank.
shells() { for shell in dash bash busybox_sh mksh; do ! command -v ${shell%_*} >/dev/null || echo $shell; done; }
# wait_for COMMAND...: waits until the command succeeds, at most 60 s.
wait_for() { for try in {1..3000}; do ! "$@" || return 0; sleep 0.02; done; echo "never: $*"; }
# left_over: prints the folders of rehearsals that are still there after 5 s.
left_over() {
  for try in {1..100}; do compgen -G "$TMPDIR/orskapp-*" >/dev/null || return 0; sleep 0.05; done
  compgen -G "$TMPDIR/orskapp-*"
}

# passed COMMAND...: prints the arguments of the call that the command makes, or what it prints if there is none.
passed() {
  rm -f log
  ORSK_TEST_LOG=$PWD/log "$@" >output 2>&1
  if [[ -s log ]]; then sed -E 's/^\w+\((.*), fresh status\)$/\1/' log; else cat output; fi
}

# Messages of the console.
see_help='type "orskapp help [command]" for list of valid arguments and options.'
missing_option="ERROR: Missing option to specified command; $see_help"
repeated_option="ERROR: Too many options provided for specified command; $see_help"
invalid_argument="ERROR: Invalid argument to specified command; $see_help"
bad_cast='ERROR: bad lexical cast: source type value could not be interpreted as target'

# fits ARGUMENT...: what check-library reports, without what is well.
fits() {
  ORSKAPP_BUILD=$BUILD "$ROOT/scripts/check-library" "$@" 2>&1 |
    sed -E "s#($BUILD(/lib)?|$LD_LIBRARY_PATH|$ROOT/scripts|$SCRATCH|$TMPDIR/[^/]*)/##g; /^ok:/d"
}

# Each example with its arguments.
examples() {
  printf '%s\n' 'checked list syncDomains' 'load-hosts hosts' 'bring-up 60 d 1 0 a b' 'tear-down d a b' \
    'compare-hosts hosts' 'check-domain d metrics' 'log-command log syncDomain stop --uri d' \
    'plot-clocks timescale://c timescale:local 2 clocks.svg'
}
# use_examples: has them in PATH, and what their arguments name. Nothing pauses.
use_examples() {
  export PAUSE=0 PATH=$ROOT/docs/examples:$PATH
  mkdir metrics; printf '%s\n' a b c >hosts
  load a b c; relate timescale://c timescale:local
  create_with d null '["a","b"]'; domain start d
  mv state.json prepared.json; rm state.json.lock
}
# prepare EXAMPLE: a state with which the example succeeds, in this case's state file.
prepare() {
  rm -rf state.json* log clocks.svg metrics/*
  echo old >metrics/orskapp_18ac3e7343f016890c510e93f935261169d9e3f565436429830faf0934f4f8e4.prom
  [[ $1 == bring-up ]] || cp prepared.json state.json
}
# each_example COMMAND...: runs each example by the command, and prints its status on one line.
each_example() {
  local example arguments status
  while read -r example arguments; do
    prepare $example
    status=0
    "$@" $example $arguments </dev/null >output 2>&1 || status=$?
    echo "$example $status"
    # What a failed example must not say or leave.
    ((!status)) || ! grep -E '^OK|is coherent$|^nothing is left' output
    [[ "$example $status" != 'check-domain 2' ]] || ! compgen -G 'metrics/*'
  done < <(examples) | paste -sd ' '
}
# fake_program SCRIPT: makes orskapp a shell script, first in PATH.
fake_program() {
  mkdir fake
  printf '#!/bin/sh\n%s\n' "$1" >fake/orskapp; chmod +x fake/orskapp
  PATH=$SCRATCH/fake:$PATH
}
# operations_of EXAMPLE ARGUMENT...: prints the operations that it calls.
operations_of() {
  ORSK_TEST_LOG=called ORSK_TEST_RESULT=1 ORSK_TEST_OUTPUT='[]' ORSK_TEST_TIME='1 2 3 0' "$@" >/dev/null 2>&1
  sed -nE 's/^orsksapi_(\w+).*/\1/p' called | sort -u
  rm called
}
