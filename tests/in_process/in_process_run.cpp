#include "in_process/in_process_run.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

#include "main/console.h"

namespace {

/// A file in memory in place of a standard stream.
class Caught {
 public:
  explicit Caught(int stream) : stream_(stream), original_(dup(stream)) { dup2(file_, stream_); }
  Caught(const Caught&) = delete;
  Caught& operator=(const Caught&) = delete;
  ~Caught() { close(file_); }

  std::string finish() {
    dup2(original_, stream_);
    close(original_);
    return take(file_);
  }

  /// Returns the file's content, and empties it.
  static std::string take(int file) {
    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    if (pread(file, text.data(), text.size(), 0) < 0 || ftruncate(file, 0) != 0) abort();
    return text;
  }

 private:
  int stream_, original_, file_ = memfd_create("caught", 0);
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

}  // namespace

InProcessResult runInProcess(const std::vector<std::string>& words, void (*atConsole)(bool begins)) {
  callLog();
  std::vector<const char*> arguments{"orskapp"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  arguments.push_back(nullptr);

  InProcessResult result;
  Caught output(STDOUT_FILENO), errors(STDERR_FILENO);
  if (atConsole != nullptr) atConsole(true);
  result.status = runConsole(static_cast<int>(arguments.size()) - 1, arguments.data());
  if (atConsole != nullptr) atConsole(false);
  result.errors = errors.finish();
  result.output = output.finish();
  result.calls = Caught::take(callLog());
  return result;
}
