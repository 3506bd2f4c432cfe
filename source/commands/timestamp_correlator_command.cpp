#include "commands/timestamp_correlator_command.h"

#include <cstdint>

#include "commands/dispatch_table.h"
#include "commands/results.h"
#include "commands/timestamp_output.h"
#include "diagnostics/reported_places.h"
#include "grammar/option_access.h"
#include "service/parameter_document.h"
#include "service/service_call.h"

using orsksapi::ApiWrapper;

// Each action fetches all its options in the order of the grammar's tables, composes the
// parameters, makes one call and prints.

namespace {

void create(const OptionMap& options, const FlagMap& flags) {
  const auto timescaleUri1 = getOption<std::string>("timescaleUri1", options);
  const auto timescaleUri2 = getOption<std::string>("timescaleUri2", options);
  const auto samplingIntervalMs = getOption<std::uint32_t>("samplingInterval", options);
  const auto historyLength = getOption<std::uint32_t>("historyLength", options);
  const auto document =
      linearCorrelatorParams(timescaleUri1, timescaleUri2, samplingIntervalMs, historyLength);
  callService(&ApiWrapper::timestampCorrelator_create, document.name, document.json);
  printSuccess(flags, "Created Timestamp Correlator with timescaleUris = ", timescaleUri1, " and ",
               timescaleUri2);
}

void deleteCorrelator(const OptionMap& options, const FlagMap& flags) {
  const auto timescaleUri1 = getOption<std::string>("timescaleUri1", options);
  const auto timescaleUri2 = getOption<std::string>("timescaleUri2", options);
  callService(&ApiWrapper::timestampCorrelator_delete, timescaleUri1, timescaleUri2);
  printSuccess(flags, "Deleted Timestamp Correlator with timescaleUris = ", timescaleUri1, " and ",
               timescaleUri2);
}

void correlate(const OptionMap& options, const FlagMap& flags) {
  const auto srcTimescaleUri = getOption<std::string>("srcTimescaleUri", options);
  const auto dstTimescaleUri = getOption<std::string>("dstTimescaleUri", options);
  Timestamp srcTime{};
  srcTime.seconds = getOption<std::uint64_t>("s", options);
  srcTime.nanoseconds = getOption<std::uint32_t>("ns", options);
  srcTime.fraction = getOption<std::uint32_t>("fns", options);
  Timestamp dstTime{};
  callService(&ApiWrapper::timestampCorrelator_correlate, srcTimescaleUri, dstTimescaleUri,
              &srcTime, &dstTime);
  printSuccess(flags, "Correlated timestamp from srcTimescaleUri = ", srcTimescaleUri);
  printTimestamp(dstTime, "Correlated time in seconds: ");
}

// clang-format off
constexpr Action actions[] = {
    {"create",    create},
    {"delete",    deleteCorrelator},
    {"correlate", correlate},
};
// clang-format on
static_assert(hasEachArgumentOf(actions, "timestampCorrelator"), "Add a row to actions.");
static_assert(hasOnlyArgumentsOf(actions, "timestampCorrelator"), "Add a row to commandArguments.");

}  // namespace

void runTimestampCorrelatorCommand(const std::string& action, const OptionMap& options,
                                   const FlagMap& flags) {
  requireRow(actions, action, reported::timestampCorrelatorActions).run(options, flags);
}
