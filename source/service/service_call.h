#pragma once

#include "errors/library_exception.h"
#include "service/api_wrapper.h"

/// Enables this program to catch exceptions of the client library. Call it before each library
/// call.
void initialiseUnwinder() noexcept;

/// Calls `operation` of `apiWrapper` with `arguments` and the address of a fresh status record.
/// Returns the result. Throws `zuerr::Exception` if the library reported an error, and ignores a
/// warning. An exception of the library passes through, without the error.
template <typename Operation, typename... Arguments>
auto callService(Operation operation, const Arguments&... arguments) {
  zuerr::ScopedStatus status;
  initialiseUnwinder();
  try {
    return (apiWrapper.*operation)(arguments..., &status);
  } catch (...) {
    // `std::uncaught_exceptions` does not count the exceptions of another C++ runtime, so the
    // record would throw a second one.
    status.code = 0;
    throw;
  }
}
