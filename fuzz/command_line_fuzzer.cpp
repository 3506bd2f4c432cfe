// Command lines, as words that end with NUL bytes, with the recording library. The first word is the status code.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "in_process/in_process_run.h"

namespace {

void check(bool condition) {
  if (!condition) abort();
}

std::ptrdiff_t count(const std::string& text, const std::string& line) {
  std::ptrdiff_t found = 0;
  for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
    found += text.compare(at, line.size(), line) == 0 ? 1 : 0;
  }
  return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> words(1);
  for (const std::uint8_t* byte = data; byte != data + size; ++byte) {
    if (*byte == 0) {
      words.emplace_back();
    } else {
      words.back() += static_cast<char>(*byte);
    }
  }
  const int code = std::atoi(words.front().c_str());
  setenv("ORSK_TEST_CODE", std::to_string(code).c_str(), 1);
  setenv("ORSK_TEST_TEXT", "{}", 1);
  words.erase(words.begin());
  const InProcessResult result = runInProcess(words);

  const std::ptrdiff_t errors = count(result.errors, "ERROR: ");
  const std::ptrdiff_t calls = count(result.calls, "orsksapi_");
  check((result.status == 0) == result.errors.empty());
  check(errors == (result.status == 0 ? 0 : 1));
  check(calls <= 1);
  const bool versionQuery = result.calls.starts_with("orsksapi_getApiVersion");
  if (calls == 1) check(result.status == (code < 0 && !versionQuery ? code : 0));
  if (result.status != 0) check(result.output.empty());
  return 0;
}
