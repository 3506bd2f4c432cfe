#include "service/api_wrapper.h"

#include "interface/orsksapi.h"

constinit orsksapi::ApiWrapper apiWrapper;

namespace orsksapi {

std::uint32_t ApiWrapper::getApiVersion() {
  return orsksapi_getApiVersion();
}

void ApiWrapper::loadResources(const std::string& paramsName, const std::string& paramsJson,
                               zuerr_Status* status) {
  orsksapi_loadResources(paramsName.c_str(), paramsJson.c_str(), status);
}

void ApiWrapper::unloadResources(const std::string& paramsName, const std::string& paramsJson,
                                 zuerr_Status* status) {
  orsksapi_unloadResources(paramsName.c_str(), paramsJson.c_str(), status);
}

void ApiWrapper::timescale_getTime(const std::string& timescaleUri, Timestamp* time,
                                   zuerr_Status* status) {
  orsksapi_timescale_getTime(timescaleUri.c_str(), time, status);
}

void ApiWrapper::getCurrentTimescale(const std::string& remoteHost, char* buffer,
                                     std::size_t bufferSize, zuerr_Status* status) {
  orsksapi_getCurrentTimescale(remoteHost.c_str(), buffer, bufferSize, status);
}

void ApiWrapper::timestampCorrelator_create(const std::string& paramsName,
                                            const std::string& paramsJson, zuerr_Status* status) {
  orsksapi_timestampCorrelator_create(paramsName.c_str(), paramsJson.c_str(), status);
}

void ApiWrapper::timestampCorrelator_delete(const std::string& timescaleUri1,
                                            const std::string& timescaleUri2,
                                            zuerr_Status* status) {
  orsksapi_timestampCorrelator_delete(timescaleUri1.c_str(), timescaleUri2.c_str(), status);
}

void ApiWrapper::timestampCorrelator_correlate(const std::string& srcTimescaleUri,
                                               const std::string& dstTimescaleUri,
                                               const Timestamp* srcTime, Timestamp* dstTime,
                                               zuerr_Status* status) {
  orsksapi_timestampCorrelator_correlate(srcTimescaleUri.c_str(), dstTimescaleUri.c_str(), srcTime,
                                         dstTime, status);
}

void ApiWrapper::syncDomain_create(const std::string& paramsName, const std::string& paramsJson,
                                   zuerr_Status* status) {
  orsksapi_syncDomain_create(paramsName.c_str(), paramsJson.c_str(), status);
}

bool ApiWrapper::syncDomain_start(const std::string& syncDomainUri, std::uint32_t timeout,
                                  zuerr_Status* status) {
  return orsksapi_syncDomain_start(syncDomainUri.c_str(), timeout, status);
}

void ApiWrapper::syncDomain_startV2(const std::string& syncDomainUri, bool saveInitialCoherency,
                                    bool waitToBecomeCoherent, std::uint32_t timeout,
                                    zuerr_Status* status) {
  orsksapi_syncDomain_startV2(syncDomainUri.c_str(), saveInitialCoherency, waitToBecomeCoherent,
                              timeout, status);
}

void ApiWrapper::syncDomain_stop(const std::string& syncDomainUri, zuerr_Status* status) {
  orsksapi_syncDomain_stop(syncDomainUri.c_str(), status);
}

void ApiWrapper::syncDomain_delete(const std::string& syncDomainUri, zuerr_Status* status) {
  orsksapi_syncDomain_delete(syncDomainUri.c_str(), status);
}

void ApiWrapper::syncDomain_addSyncableDevice(const std::string& syncDomainUri,
                                              const std::string& syncableDeviceUri,
                                              zuerr_Status* status) {
  orsksapi_syncDomain_addSyncableDevice(syncDomainUri.c_str(), syncableDeviceUri.c_str(), status);
}

bool ApiWrapper::syncDomain_isCoherent(const std::string& syncDomainUri, zuerr_Status* status) {
  return orsksapi_syncDomain_isCoherent(syncDomainUri.c_str(), status);
}

bool ApiWrapper::syncDomain_isCoherentSinceLastChecked(const std::string& syncDomainUri,
                                                       zuerr_Status* status) {
  return orsksapi_syncDomain_isCoherentSinceLastChecked(syncDomainUri.c_str(), status);
}

void ApiWrapper::syncDomain_createAndAddDevices(const std::string& paramsName,
                                                const std::string& paramsJson, char* buffer,
                                                std::size_t bufferSize, zuerr_Status* status) {
  orsksapi_syncDomain_createAndAddDevices(paramsName.c_str(), paramsJson.c_str(), buffer,
                                          bufferSize, status);
}

void ApiWrapper::getTimescaleInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) {
  orsksapi_getTimescaleInfo(buffer, bufferSize, status);
}

void ApiWrapper::getSyncableDeviceInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) {
  orsksapi_getSyncableDeviceInfo(buffer, bufferSize, status);
}

void ApiWrapper::getSyncDomainInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) {
  orsksapi_getSyncDomainInfo(buffer, bufferSize, status);
}

void ApiWrapper::getTimestampCorrelatorInfo(char* buffer, std::size_t bufferSize,
                                            zuerr_Status* status) {
  orsksapi_getTimestampCorrelatorInfo(buffer, bufferSize, status);
}

}  // namespace orsksapi
