#pragma once

#include "errors/library_exception.h"
#include "service/api_wrapper.h"

/// Makes one library call: `operation` of `apiWrapper` with `arguments` and, last, the address of a
/// fresh status record. Returns what the operation returns. Throws `zuerr::Exception` when the
/// library left an error, before any result can be looked at; a warning is dropped.
template <typename Operation, typename... Arguments>
auto callService(Operation operation, const Arguments&... arguments) {
  zuerr::ScopedStatus status;
  return (apiWrapper.*operation)(arguments..., &status);
}
