#include "main/console.h"

#include <cinttypes>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "diagnostics/monotonic_stop_watch.h"
#include "errors/library_exception.h"
#include "main/command_line.h"
#include "main/dispatch.h"
#include "output/standard_streams.h"

namespace {

void runTimed(const CommandLine& line) {
  std::optional<orsktools::MonotonicStopWatch> stopWatch;
  if (isTimed(line.flags)) stopWatch.emplace();
  runCommand(line);
  if (!stopWatch) return;
  const auto elapsedNs = orsktools::monotonicNowNs() - stopWatch->startNs;
  const std::string elapsedMs = std::to_string(orsktools::wholeMilliseconds(elapsedNs));
  printLine({"(Command executed in ", elapsedMs, " ms.)"});
}

}  // namespace

// An error line is one call each, so that lines of concurrent runs do not mix.
int runConsole(int argc, const char* const* argv) {
  try {
    runTimed(readCommandLine(argc, argv));
    return 0;
  } catch (const zuerr::ExceptionBase& error) {
    std::fprintf(stderr, "ERROR: %" PRId32 ": %s\n", error.status.code, error.what());
    return error.status.code;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ERROR: %s\n", error.what());
  } catch (...) {
    std::fputs("ERROR: Unknown exception.\n", stderr);
  }
  return 1;
}
