// The stand-in service. It knows the resource commands; every other operation answers with an
// error.

#include <nlohmann/json.hpp>
#include <string>

#include "errors/status.h"
#include "orsksapi.h"

namespace {

struct Refusal {
  std::int32_t code;
  const char* constant;
};

constexpr Refusal wrongDocument{-61001, "orsksapisimerr_wrongDocument"};
constexpr Refusal notSimulated{-61002, "orsksapisimerr_notSimulated"};

void refuse(zuerr_Status* status, const Refusal& refusal, const char* value,
            int line = __builtin_LINE()) {
  const zuerr_Site site{"simulator/simulator.cpp", line, "orsksapi-simulator", refusal.constant};
  if (!zuerr_setCodeAt(status, refusal.code, &site, nullptr)) return;
  zuerr_addString(status, zuerr_reserve(status, 2), "value", value);
}

/// Refuses a document that does not name a remote host.
void checkNetworkDeviceParams(const char* paramsName, const char* paramsJson,
                              zuerr_Status* status) {
  if (std::string(paramsName) != "networkDeviceParams") {
    return refuse(status, wrongDocument, paramsName);
  }
  const auto document = nlohmann::json::parse(paramsJson, nullptr, false);
  const bool named = document.is_object() && document.contains("remoteHost") &&
                     document["remoteHost"].is_string() && document["remoteHost"] != "";
  if (!named) refuse(status, wrongDocument, paramsJson);
}

}  // namespace

std::uint32_t orsksapi_getApiVersion() {
  return 1;
}

void orsksapi_loadResources(const char* paramsName, const char* paramsJson, zuerr_Status* status) {
  checkNetworkDeviceParams(paramsName, paramsJson, status);
}

void orsksapi_unloadResources(const char* paramsName, const char* paramsJson,
                              zuerr_Status* status) {
  checkNetworkDeviceParams(paramsName, paramsJson, status);
}

void orsksapi_timescale_getTime(const char* timescaleUri, Timestamp*, zuerr_Status* status) {
  refuse(status, notSimulated, timescaleUri);
}

void orsksapi_getCurrentTimescale(const char* remoteHost, char*, std::size_t,
                                  zuerr_Status* status) {
  refuse(status, notSimulated, remoteHost);
}

void orsksapi_timestampCorrelator_create(const char*, const char* paramsJson,
                                         zuerr_Status* status) {
  refuse(status, notSimulated, paramsJson);
}

void orsksapi_timestampCorrelator_delete(const char* timescaleUri1, const char*,
                                         zuerr_Status* status) {
  refuse(status, notSimulated, timescaleUri1);
}

void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri, const char*,
                                            const Timestamp*, Timestamp*, zuerr_Status* status) {
  refuse(status, notSimulated, srcTimescaleUri);
}

void orsksapi_syncDomain_create(const char*, const char* paramsJson, zuerr_Status* status) {
  refuse(status, notSimulated, paramsJson);
}

bool orsksapi_syncDomain_start(const char* syncDomainUri, std::uint32_t, zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
  return false;
}

void orsksapi_syncDomain_startV2(const char* syncDomainUri, bool, bool, std::uint32_t,
                                 zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
}

void orsksapi_syncDomain_stop(const char* syncDomainUri, zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
}

void orsksapi_syncDomain_delete(const char* syncDomainUri, zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
}

void orsksapi_syncDomain_addSyncableDevice(const char* syncDomainUri, const char*,
                                           zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
}

bool orsksapi_syncDomain_isCoherent(const char* syncDomainUri, zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
  return false;
}

bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* syncDomainUri,
                                                    zuerr_Status* status) {
  refuse(status, notSimulated, syncDomainUri);
  return false;
}

void orsksapi_syncDomain_createAndAddDevices(const char*, const char* paramsJson, char*,
                                             std::size_t, zuerr_Status* status) {
  refuse(status, notSimulated, paramsJson);
}

void orsksapi_getTimescaleInfo(char*, std::size_t, zuerr_Status* status) {
  refuse(status, notSimulated, "timescales");
}

void orsksapi_getSyncableDeviceInfo(char*, std::size_t, zuerr_Status* status) {
  refuse(status, notSimulated, "syncableDevices");
}

void orsksapi_getSyncDomainInfo(char*, std::size_t, zuerr_Status* status) {
  refuse(status, notSimulated, "syncDomains");
}

void orsksapi_getTimestampCorrelatorInfo(char*, std::size_t, zuerr_Status* status) {
  refuse(status, notSimulated, "correlators");
}
