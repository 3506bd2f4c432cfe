#pragma once

#include "errors/library_exception.h"
#include "service/api_wrapper.h"

/// Makes it possible that an exception of the client library reaches this program. To be called
/// before each library call.
void prepareForExceptions() noexcept;

/// Makes one library call: `operation` of `apiWrapper` with `arguments` and, last, the address of a
/// fresh status record. Returns what the operation returns. Throws `zuerr::Exception` if the
/// library reported an error, before any result can be used, and ignores a warning. An exception of
/// the library goes on, without the error.
template <typename Operation, typename... Arguments>
auto callService(Operation operation, const Arguments&... arguments) {
  zuerr::ScopedStatus status;
  prepareForExceptions();
  try {
    return (apiWrapper.*operation)(arguments..., &status);
  } catch (...) {
    // `std::uncaught_exceptions` does not count the exceptions of another C++ runtime, so the
    // record would throw a second one.
    status.code = 0;
    throw;
  }
}
