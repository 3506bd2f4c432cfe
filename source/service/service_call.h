#pragma once

#include "errors/library_exception.h"
#include "service/api_wrapper.h"

/// Enables this program to catch exceptions of the client library. Call it before each library
/// call.
void initialiseUnwinder() noexcept;

/// Calls `operation` of `apiWrapper` with `arguments` and the address of a fresh status record.
/// Returns the result. Throws `zuerr::Exception` if the library reported an error, and ignores a
/// warning. If the library throws, that exception goes on and its status code is dropped.
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
