#include "main/query_commands.h"

#include "commands/dispatch_table.h"
#include "commands/results.h"
#include "commands/timestamp_output.h"
#include "diagnostics/reported_places.h"
#include "grammar/option_access.h"
#include "service/service_call.h"
#include "service/text_buffer.h"

using orsksapi::ApiWrapper;

namespace {

void getTime(const OptionMap& options, const FlagMap& flags) {
  const auto timescaleUri = getOption<std::string>("timescaleUri", options);
  Timestamp time{};
  callService(&ApiWrapper::timescale_getTime, timescaleUri, &time);
  printSuccess(flags, "Retrieved timestamp from timescale ", timescaleUri);
  printTimestamp(time, "Time in seconds : ");
}

constexpr Action actions[] = {
    {"getTime", getTime},
};
static_assert(hasEachArgumentOf(actions, "timescale"), "Add a row to actions.");
static_assert(hasOnlyArgumentsOf(actions, "timescale"), "Add a row to commandArguments.");

struct Kind {
  std::string_view word;
  void (ApiWrapper::*getInfo)(char* buffer, std::size_t bufferSize, zuerr_Status* status);
};

// clang-format off
constexpr Kind kinds[] = {
    {"timescales",      &ApiWrapper::getTimescaleInfo},
    {"syncableDevices", &ApiWrapper::getSyncableDeviceInfo},
    {"syncDomains",     &ApiWrapper::getSyncDomainInfo},
    {"correlators",     &ApiWrapper::getTimestampCorrelatorInfo},
};
// clang-format on
static_assert(hasEachArgumentOf(kinds, "list"), "Add a row to kinds.");
static_assert(hasOnlyArgumentsOf(kinds, "list"), "Add a row to commandArguments.");

}  // namespace

void runTimescaleCommand(const std::string& action, const OptionMap& options,
                         const FlagMap& flags) {
  requireRow(actions, action, reported::timescaleActions).run(options, flags);
}

void getCurrentTimescale(const OptionMap& options, const FlagMap&) {
  const auto remoteHost = getOption<std::string>("remoteHost", options);
  TextBuffer<URI_BUFFER_SIZE> timescaleUri;
  callService(&ApiWrapper::getCurrentTimescale, remoteHost, timescaleUri.data(),
              timescaleUri.size());
  printLine(timescaleUri.text());
}

void listServiceObjects(const std::string& kind) {
  const auto getInfo = requireRow(kinds, kind, reported::listKinds).getInfo;
  TextBuffer<INFO_BUFFER_SIZE> info;
  callService(getInfo, info.data(), info.size());
  printLine(info.text());
}

void getApiVersion(const OptionMap&, const FlagMap&) {
  initialiseUnwinder();
  printLine(std::to_string(apiWrapper.getApiVersion()));
}
