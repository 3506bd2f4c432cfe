#include "in_process/in_process_run.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <new>

#include "main/console.h"

namespace {

/// Allocations until the one that fails; null or 0: none will.
std::size_t* countdown = nullptr;

bool libraryAtWork = false;

bool failsNow() {
  return countdown != nullptr && !libraryAtWork && *countdown > 0 && --*countdown == 0;
}

/// Stands in for one of the C library's streams, and keeps what is written.
class CaughtStream {
 public:
  explicit CaughtStream(FILE*& stream) : stream_(stream), original_(stream) {
    stream = open_memstream(&text_, &size_);
  }
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

extern "C" void orskTestLibraryAtWork(bool atWork) {
  libraryAtWork = atWork;
}

// The linker leads malloc and realloc of the console's own code here; new stands for all of C++.
extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __real_realloc(void* block, std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size) {
  return failsNow() ? nullptr : __real_malloc(size);
}
extern "C" void* __wrap_realloc(void* block, std::size_t size) {
  return failsNow() ? nullptr : __real_realloc(block, size);
}
void* operator new(std::size_t size) {
  void* const block = failsNow() ? nullptr : __real_malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}

InProcessOutcome runInProcess(const std::vector<std::string>& words,
                              std::size_t* failingAllocation) {
  callLog();
  std::vector<const char*> arguments{"orskapp"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  arguments.push_back(nullptr);

  InProcessOutcome outcome;
  CaughtStream output(stdout);
  CaughtStream errors(stderr);
  countdown = failingAllocation;
  outcome.status = runConsole(static_cast<int>(arguments.size()) - 1, arguments.data());
  countdown = nullptr;
  outcome.errors = errors.finish();
  outcome.output = output.finish();
  outcome.calls = takeCalls();
  return outcome;
}
