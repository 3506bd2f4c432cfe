#include "in_process/failing_allocations.h"

#include <cstdlib>
#include <new>

std::size_t allocationsUntilFailure = 0;

namespace {

bool consoleAtWork = false;
bool libraryAtWork = false;

bool failsNow() {
  const bool counts = consoleAtWork && !libraryAtWork;
  return counts && allocationsUntilFailure > 0 && --allocationsUntilFailure == 0;
}

}  // namespace

void countAllocations(bool begins) {
  consoleAtWork = begins;
}

extern "C" void orskTestLibraryAtWork(bool atWork) {
  libraryAtWork = atWork;
}

// With --wrap the linker replaces calls of malloc by calls of __wrap_malloc in this program. operator new is replaced
// in all libraries.
extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size) {
  return failsNow() ? nullptr : __real_malloc(size);
}
void* operator new(std::size_t size) {
  void* const block = failsNow() ? nullptr : __real_malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return failsNow() ? nullptr : __real_malloc(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
