#include "commands/sync_domain_command.h"

#include <cstdint>

#include "commands/dispatch_table.h"
#include "commands/results.h"
#include "diagnostics/reported_places.h"
#include "grammar/option_access.h"
#include "service/parameter_document.h"
#include "service/service_call.h"
#include "service/text_buffer.h"

using orsksapi::ApiWrapper;

// Each action fetches all its options in the order of the grammar's tables, composes the
// parameters, makes one call and prints.

namespace {

const char* boolText(bool value) {
  return value ? "true" : "false";
}

void create(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  const auto timescaleUri = getOption<std::string>("timescaleUri", options);
  const auto maxOffsetNs = getOption<std::uint32_t>("maxOffset_ns", options);
  const auto minSyncDurationMs = getOption<std::uint32_t>("minSyncDuration_ms", options);
  const auto document = syncDomainParams(uri, timescaleUri, maxOffsetNs, minSyncDurationMs);
  callService(&ApiWrapper::syncDomain_create, document.name, document.json);
  printSuccess(flags, "Created Sync Domain with uri = ", uri);
}

void createAndAddDevices(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  const auto timescaleUri = getOption<std::string>("timescaleUri", options);
  const auto remoteHosts = getOption<std::string>("remoteHosts", options);
  const auto maxOffsetNs = getOption<std::uint32_t>("maxOffset_ns", options);
  const auto minSyncDurationMs = getOption<std::uint32_t>("minSyncDuration_ms", options);
  const auto document = syncDomainCreateAndAddRemoteDevicesParams(uri, timescaleUri, remoteHosts,
                                                                  maxOffsetNs, minSyncDurationMs);
  TextBuffer<URI_BUFFER_SIZE> usedTimescaleUri;
  callService(&ApiWrapper::syncDomain_createAndAddDevices, document.name, document.json,
              usedTimescaleUri.data(), usedTimescaleUri.size());
  printSuccess(flags, "Created and added devices to Sync Domain with uri = ", uri,
               " and timescaleUri = ", usedTimescaleUri.text());
}

void deleteDomain(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  callService(&ApiWrapper::syncDomain_delete, uri);
  printSuccess(flags, "Deleted Sync Domain where uri = ", uri);
}

void start(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  const auto timeoutS = getOption<std::uint32_t>("timeout_s", options);
  const bool started = callService(&ApiWrapper::syncDomain_start, uri, timeoutS);
  if (started) printSuccess(flags, "Started Sync Domain where uri = ", uri);
}

void startV2(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  const bool saveInitialCoherency = getOption<bool>("saveInitialCoherency", options);
  const bool waitToBecomeCoherent = getOption<bool>("waitToBecomeCoherent", options);
  const auto timeoutS = getOption<std::uint32_t>("timeout_s", options);
  callService(&ApiWrapper::syncDomain_startV2, uri, saveInitialCoherency, waitToBecomeCoherent,
              timeoutS);
  if (isQuiet(flags)) return;
  printSuccess(flags, "Started Sync Domain where uri = ", uri);
  printLine(" Save initial coherency = ", boolText(saveInitialCoherency));
  printLine(" Wait to become coherent = ", boolText(waitToBecomeCoherent));
}

void stop(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  callService(&ApiWrapper::syncDomain_stop, uri);
  printSuccess(flags, "Stopped Sync Domain where uri = ", uri);
}

void addSyncableDevice(const OptionMap& options, const FlagMap& flags) {
  const auto uri = getOption<std::string>("uri", options);
  const auto syncableDeviceUri = getOption<std::string>("syncableDeviceUri", options);
  callService(&ApiWrapper::syncDomain_addSyncableDevice, uri, syncableDeviceUri);
  printSuccess(flags, "Added Syncable Device with uri = ", syncableDeviceUri, " to Domain.");
}

void isCoherent(const OptionMap& options, const FlagMap&) {
  const auto uri = getOption<std::string>("uri", options);
  const bool coherent = callService(&ApiWrapper::syncDomain_isCoherent, uri);
  printLine(boolText(coherent));
}

void isCoherentSinceLastChecked(const OptionMap& options, const FlagMap&) {
  const auto uri = getOption<std::string>("uri", options);
  const bool coherent = callService(&ApiWrapper::syncDomain_isCoherentSinceLastChecked, uri);
  printLine(boolText(coherent));
}

// clang-format off
constexpr Action actions[] = {
    {"create",                     create},
    {"createAndAddDevices",        createAndAddDevices},
    {"delete",                     deleteDomain},
    {"start",                      start},
    {"startV2",                    startV2},
    {"stop",                       stop},
    {"addSyncableDevice",          addSyncableDevice},
    {"isCoherent",                 isCoherent},
    {"isCoherentSinceLastChecked", isCoherentSinceLastChecked},
};
// clang-format on
static_assert(hasEachArgumentOf(actions, "syncDomain"), "Add a row to actions.");
static_assert(hasOnlyArgumentsOf(actions, "syncDomain"), "Add a row to commandArguments.");

}  // namespace

void runSyncDomainCommand(const std::string& action, const OptionMap& options,
                          const FlagMap& flags) {
  requireRow(actions, action, reported::syncDomainActions).run(options, flags);
}
