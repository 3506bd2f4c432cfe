#pragma once

/// The names and places in the program's reports. Support staff look up a place by its file and
/// line, so these identifiers never change, even if the source does.

#include "diagnostics/trace.h"

namespace reported {

inline constexpr char componentName[] = "orskapp";
inline constexpr char sourceFile[] = "source/main";

inline constexpr int invalidOptionLine = 499;
inline constexpr int consecutiveOptionsLine = 509;

inline constexpr char missingAction[] = " ERROR: Did not implement all actions for command.";
inline constexpr char missingCommand[] = " ERROR: Did not implement all commands.";

inline constexpr orskdbg_AssertPlace syncDomainActions{sourceFile, 779, missingAction};
inline constexpr orskdbg_AssertPlace timestampCorrelatorActions{sourceFile, 857, missingAction};
inline constexpr orskdbg_AssertPlace timescaleActions{sourceFile, 880, missingAction};
inline constexpr orskdbg_AssertPlace listKinds{sourceFile, 915, missingAction};
inline constexpr orskdbg_AssertPlace commands{sourceFile, 1027, missingCommand};

}  // namespace reported
