#include "in_process/in_process_run.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "main/console.h"

namespace {

/// Stands in for one of the C library's streams, and keeps what is written.
class CaughtStream {
 public:
  explicit CaughtStream(FILE*& stream) : stream_(stream), original_(stream) { stream = open_memstream(&text_, &size_); }
  CaughtStream(const CaughtStream&) = delete;
  CaughtStream& operator=(const CaughtStream&) = delete;
  ~CaughtStream() { std::free(text_); }

  std::string finish() {
    std::fclose(stream_);
    stream_ = original_;
    return {text_, size_};
  }

 private:
  FILE*& stream_;
  FILE* original_;
  char* text_ = nullptr;
  std::size_t size_ = 0;
};

/// The recording library's log, in memory.
int callLog() {
  static const int file = [] {
    const int created = memfd_create("calls", 0);
    setenv("ORSK_TEST_LOG", ("/proc/self/fd/" + std::to_string(created)).c_str(), 1);
    return created;
  }();
  return file;
}

std::string takeCalls() {
  std::string text(static_cast<std::size_t>(lseek(callLog(), 0, SEEK_END)), '\0');
  if (pread(callLog(), text.data(), text.size(), 0) < 0 || ftruncate(callLog(), 0) != 0) abort();
  return text;
}

}  // namespace

InProcessOutcome runInProcess(const std::vector<std::string>& words, void (*atConsole)(bool begins)) {
  callLog();
  std::vector<const char*> arguments{"orskapp"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  arguments.push_back(nullptr);

  InProcessOutcome outcome;
  CaughtStream output(stdout);
  CaughtStream errors(stderr);
  if (atConsole != nullptr) atConsole(true);
  outcome.status = runConsole(static_cast<int>(arguments.size()) - 1, arguments.data());
  if (atConsole != nullptr) atConsole(false);
  outcome.errors = errors.finish();
  outcome.output = output.finish();
  outcome.calls = takeCalls();
  return outcome;
}
