#pragma once

/// Calls of the client library: all go through `apiWrapper`.
///
/// Contract of an operation:
/// 1. It calls the function with the same name and the prefix "orsksapi_", with the same arguments,
///    and returns its result.
/// 2. `status` is a fresh record of the caller. Only its code reports an error, see `callService`.
/// 3. The caller owns output buffers and `Timestamp`s and fills them with zero bytes before the
///    call. Their contents after the call are outside input.

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include "errors/status.h"
#include "service/timestamp.h"

/// Sizes in bytes of the buffers for a URI and for a list.
inline constexpr std::size_t URI_BUFFER_SIZE = 512;
inline constexpr std::size_t INFO_BUFFER_SIZE = 32768;

namespace orsksapi {

/// The client library's operations, for the program and for other implementations. The order of the
/// functions is that of the virtual table.
class ApiWrapperInterface {
 public:
  virtual ~ApiWrapperInterface() = default;

  virtual std::uint32_t getApiVersion() = 0;
  virtual void loadResources(const std::string& paramsName, const std::string& paramsJson,
                             zuerr_Status* status) = 0;
  virtual void unloadResources(const std::string& paramsName, const std::string& paramsJson,
                               zuerr_Status* status) = 0;
  virtual void timescale_getTime(const std::string& timescaleUri, Timestamp* time,
                                 zuerr_Status* status) = 0;
  virtual void getCurrentTimescale(const std::string& remoteHost, char* buffer,
                                   std::size_t bufferSize, zuerr_Status* status) = 0;
  virtual void timestampCorrelator_create(const std::string& paramsName,
                                          const std::string& paramsJson, zuerr_Status* status) = 0;
  virtual void timestampCorrelator_delete(const std::string& timescaleUri1,
                                          const std::string& timescaleUri2,
                                          zuerr_Status* status) = 0;
  virtual void timestampCorrelator_correlate(const std::string& srcTimescaleUri,
                                             const std::string& dstTimescaleUri,
                                             const Timestamp* srcTime, Timestamp* dstTime,
                                             zuerr_Status* status) = 0;
  virtual void syncDomain_create(const std::string& paramsName, const std::string& paramsJson,
                                 zuerr_Status* status) = 0;
  /// Returns whether the domain was started. `timeout` is in seconds.
  virtual bool syncDomain_start(const std::string& syncDomainUri, std::uint32_t timeout,
                                zuerr_Status* status) = 0;
  /// `timeout` is in seconds.
  virtual void syncDomain_startV2(const std::string& syncDomainUri, bool saveInitialCoherency,
                                  bool waitToBecomeCoherent, std::uint32_t timeout,
                                  zuerr_Status* status) = 0;
  virtual void syncDomain_stop(const std::string& syncDomainUri, zuerr_Status* status) = 0;
  virtual void syncDomain_delete(const std::string& syncDomainUri, zuerr_Status* status) = 0;
  virtual void syncDomain_addSyncableDevice(const std::string& syncDomainUri,
                                            const std::string& syncableDeviceUri,
                                            zuerr_Status* status) = 0;
  virtual bool syncDomain_isCoherent(const std::string& syncDomainUri, zuerr_Status* status) = 0;
  virtual bool syncDomain_isCoherentSinceLastChecked(const std::string& syncDomainUri,
                                                     zuerr_Status* status) = 0;
  /// Writes the URI of the domain's timescale into `buffer`.
  virtual void syncDomain_createAndAddDevices(const std::string& paramsName,
                                              const std::string& paramsJson, char* buffer,
                                              std::size_t bufferSize, zuerr_Status* status) = 0;
  virtual void getTimescaleInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) = 0;
  virtual void getSyncableDeviceInfo(char* buffer, std::size_t bufferSize,
                                     zuerr_Status* status) = 0;
  virtual void getSyncDomainInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) = 0;
  virtual void getTimestampCorrelatorInfo(char* buffer, std::size_t bufferSize,
                                          zuerr_Status* status) = 0;
};
static_assert(std::is_abstract_v<ApiWrapperInterface> &&
                  sizeof(ApiWrapperInterface) == sizeof(void*),
              "Other code is compiled against this layout.");

/// Calls the client library that the program is linked against.
class ApiWrapper : public ApiWrapperInterface {
 public:
  std::uint32_t getApiVersion() override;
  void loadResources(const std::string& paramsName, const std::string& paramsJson,
                     zuerr_Status* status) override;
  void unloadResources(const std::string& paramsName, const std::string& paramsJson,
                       zuerr_Status* status) override;
  void timescale_getTime(const std::string& timescaleUri, Timestamp* time,
                         zuerr_Status* status) override;
  void getCurrentTimescale(const std::string& remoteHost, char* buffer, std::size_t bufferSize,
                           zuerr_Status* status) override;
  void timestampCorrelator_create(const std::string& paramsName, const std::string& paramsJson,
                                  zuerr_Status* status) override;
  void timestampCorrelator_delete(const std::string& timescaleUri1,
                                  const std::string& timescaleUri2, zuerr_Status* status) override;
  void timestampCorrelator_correlate(const std::string& srcTimescaleUri,
                                     const std::string& dstTimescaleUri, const Timestamp* srcTime,
                                     Timestamp* dstTime, zuerr_Status* status) override;
  void syncDomain_create(const std::string& paramsName, const std::string& paramsJson,
                         zuerr_Status* status) override;
  bool syncDomain_start(const std::string& syncDomainUri, std::uint32_t timeout,
                        zuerr_Status* status) override;
  void syncDomain_startV2(const std::string& syncDomainUri, bool saveInitialCoherency,
                          bool waitToBecomeCoherent, std::uint32_t timeout,
                          zuerr_Status* status) override;
  void syncDomain_stop(const std::string& syncDomainUri, zuerr_Status* status) override;
  void syncDomain_delete(const std::string& syncDomainUri, zuerr_Status* status) override;
  void syncDomain_addSyncableDevice(const std::string& syncDomainUri,
                                    const std::string& syncableDeviceUri,
                                    zuerr_Status* status) override;
  bool syncDomain_isCoherent(const std::string& syncDomainUri, zuerr_Status* status) override;
  bool syncDomain_isCoherentSinceLastChecked(const std::string& syncDomainUri,
                                             zuerr_Status* status) override;
  void syncDomain_createAndAddDevices(const std::string& paramsName, const std::string& paramsJson,
                                      char* buffer, std::size_t bufferSize,
                                      zuerr_Status* status) override;
  void getTimescaleInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) override;
  void getSyncableDeviceInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) override;
  void getSyncDomainInfo(char* buffer, std::size_t bufferSize, zuerr_Status* status) override;
  void getTimestampCorrelatorInfo(char* buffer, std::size_t bufferSize,
                                  zuerr_Status* status) override;
};

}  // namespace orsksapi

/// The only wrapper object.
extern orsksapi::ApiWrapper apiWrapper;
