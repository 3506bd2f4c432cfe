#include "main/console.h"

#include <unistd.h>

#include <cinttypes>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "commands/results.h"
#include "diagnostics/monotonic_stop_watch.h"
#include "errors/library_exception.h"
#include "main/command_line.h"
#include "main/dispatch.h"

namespace {

constexpr char unknownException[] = "Unknown exception.";

void runTimed(const CommandLine& line) {
  std::optional<orsktools::MonotonicStopWatch> stopWatch;
  if (isTimed(line.flags)) stopWatch.emplace();
  runCommand(line);
  if (!stopWatch) return;
  const auto elapsedNs = orsktools::monotonicNowNs() - stopWatch->startNs;
  const std::string elapsedMs = std::to_string(orsktools::wholeMilliseconds(elapsedNs));
  printLine("(Command executed in ", elapsedMs, " ms.)");
}

template <typename... Parts>
void printError(const Parts&... parts) {
  writeLine(STDERR_FILENO, "ERROR: ", parts...);
}

}  // namespace

int runConsole(int argc, const char* const* argv) {
  try {
    runTimed(readCommandLine(argc, argv));
    return 0;
  } catch (const zuerr::ExceptionBase& error) {
    char code[12];
    std::snprintf(code, sizeof code, "%" PRId32, error.status.code);
    printError(code, ": ", zuerr_text(error.status));
    return error.status.code;
  } catch (const std::exception& error) {
    const char* const message = error.what();
    printError(message != nullptr ? message : unknownException);
  } catch (...) {
    printError(unknownException);
  }
  return 1;
}
