// Command lines, as words that end with NUL bytes, with the recording library. The first word is
// the status code.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "main/console.h"

namespace {

void check(bool condition) {
  if (!condition) abort();
}

/// A file in memory.
int memoryFile() {
  return memfd_create("caught", 0);
}

/// Returns the file's content, and empties it.
std::string take(int file) {
  std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
  check(pread(file, text.data(), text.size(), 0) >= 0 && ftruncate(file, 0) == 0);
  lseek(file, 0, SEEK_SET);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int output = memoryFile(), errors = memoryFile(), log = memoryFile();
  static const int terminal = dup(STDERR_FILENO);
  std::vector<std::string> words;
  std::istringstream input(std::string(data, data + size) + '\0');
  for (std::string word; std::getline(input, word, '\0');) words.push_back(word);
  const int code = std::atoi(words.front().c_str());
  setenv("ORSK_TEST_CODE", std::to_string(code).c_str(), 1);
  setenv("ORSK_TEST_TEXT", "{}", 1);
  setenv("ORSK_TEST_LOG", ("/proc/self/fd/" + std::to_string(log)).c_str(), 1);
  words.front() = "orskapp";
  std::vector<const char*> arguments;
  for (const std::string& word : words) arguments.push_back(word.c_str());
  arguments.push_back(nullptr);

  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  const int status = runConsole(static_cast<int>(words.size()), arguments.data());
  // What the fuzzer prints is for the user.
  dup2(terminal, STDOUT_FILENO);
  dup2(terminal, STDERR_FILENO);
  const std::string errorText = take(errors), callText = take(log), outputText = take(output);

  check((status == 0) == errorText.empty());
  check(status == 0 || errorText.find("ERROR: ") != std::string::npos);
  // A line end in a value could imitate a second call.
  if (std::find(data, data + size, '\n') == data + size)
    check(callText.find("\norsksapi_") == std::string::npos);
  const bool versionQuery = callText.starts_with("orsksapi_getApiVersion");
  if (!callText.empty()) check(status == (code < 0 && !versionQuery ? code : 0));
  if (status != 0) check(outputText.empty());
  return 0;
}
