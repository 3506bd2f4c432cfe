#pragma once

/// The frame around every operation: on-demand failures and delays, the locked state, refusals.

#include <functional>
#include <string>

#include "model.h"
#include "outcomes.h"

namespace simulator {

/// Performs `work` on the state, which is written back if it changed. Returns whether it was done;
/// if not, nothing has changed and `status` says why. Lets no exception out.
bool perform(const char* operation, zuerr_Status* status,
             const std::function<void(State&)>& work) noexcept;

/// Performs `work` and puts the text it returns into the caller's buffer, which otherwise, and
/// where the text does not fit, becomes an empty one.
void performText(const char* operation, char* buffer, std::size_t size, zuerr_Status* status,
                 const std::function<std::string(State&)>& work) noexcept;

}  // namespace simulator
