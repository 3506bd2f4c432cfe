#pragma once

#include "errors/library_exception.h"

/// Makes one library call: `call` gets the address of a fresh status record and passes it on as
/// the library function's last argument. Returns what `call` returns. Throws `zuerr::Exception`
/// when the library left an error, before any result can be looked at; a warning is dropped.
template <typename Call>
auto callService(Call call) {
  zuerr::ScopedStatus status;
  return call(static_cast<zuerr_Status*>(&status));
}
