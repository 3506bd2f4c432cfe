#include "service/service_call.h"

#include <unwind.h>

// The shipped program contains a copy of the unwinder, which fills its table of register sizes when
// it is first used. The client library's unwinder calls functions of this copy, and without the
// table they abort: see _Unwind_SetGR and init_dwarf_reg_size_table in libgcc's unwind-dw2.c.
void initialiseUnwinder() noexcept {
  const auto stop = [](_Unwind_Context*, void*) { return _URC_END_OF_STACK; };
  _Unwind_Backtrace(stop, nullptr);
}
