#include "main/resource_commands.h"

#include <string>
#include <string_view>

#include "commands/results.h"
#include "grammar/option_access.h"
#include "service/parameter_document.h"
#include "service/service_call.h"

using orsksapi::ApiWrapper;

namespace {

using ResourceOperation = void (ApiWrapper::*)(const std::string& paramsName,
                                               const std::string& paramsJson, zuerr_Status* status);

void runResourceCommand(ResourceOperation operation, std::string_view confirmation,
                        const OptionMap& options, const FlagMap& flags) {
  const auto remoteHost = getOption<std::string>("remoteHost", options);
  const ParameterDocument document = networkDeviceParams(remoteHost);
  callService(operation, document.name, document.json);
  printSuccess(flags, confirmation, remoteHost);
}

}  // namespace

void loadResources(const OptionMap& options, const FlagMap& flags) {
  runResourceCommand(&ApiWrapper::loadResources, "Loaded resources from remoteHost = ", options,
                     flags);
}

void unloadResources(const OptionMap& options, const FlagMap& flags) {
  runResourceCommand(&ApiWrapper::unloadResources, "Unloaded resources from remoteHost = ", options,
                     flags);
}
