#pragma once

/// The names and places that the program puts into its reports. Support staff look a place up by
/// its file and line, so these are identifiers that never change: they do not follow our source.

#include "diagnostics/trace.h"

namespace reported {

inline constexpr char componentName[] = "orskapp";
inline constexpr char sourceFile[] = "source/main";

inline constexpr int invalidOptionLine = 499;
inline constexpr int consecutiveOptionsLine = 509;

inline constexpr orskdbg_AssertPlace commandDispatch{sourceFile, 1027,
                                                     " ERROR: Did not implement all commands."};

}  // namespace reported
