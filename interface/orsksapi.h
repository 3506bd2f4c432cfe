/* Interface of the time-synchronisation service's client library, liborsksapi.so.1.
 *
 * Contract of every operation:
 * 1. Texts are NUL-terminated and stay the caller's.
 * 2. `status` is the caller's fresh record. A negative code left in it is the only report of a
 *    failure; the operation's results are then not to be used. A positive code is a warning.
 * 3. `buffer` holds `bufferSize` bytes and receives a NUL-terminated text.
 * 4. A call returns when the service has answered.
 */
#ifndef ORSKSAPI_H
#define ORSKSAPI_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct Timestamp;
struct zuerr_Status;

uint32_t orsksapi_getApiVersion(void);

/* Hosts. paramsName: "networkDeviceParams". */
void orsksapi_loadResources(const char* paramsName, const char* paramsJson,
                            struct zuerr_Status* status);
void orsksapi_unloadResources(const char* paramsName, const char* paramsJson,
                              struct zuerr_Status* status);

/* Timescales. */
void orsksapi_timescale_getTime(const char* timescaleUri, struct Timestamp* time,
                                struct zuerr_Status* status);
void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, size_t bufferSize,
                                  struct zuerr_Status* status);

/* Timestamp correlators. paramsName: "linearCorrelatorParams". */
void orsksapi_timestampCorrelator_create(const char* paramsName, const char* paramsJson,
                                         struct zuerr_Status* status);
void orsksapi_timestampCorrelator_delete(const char* timescaleUri1, const char* timescaleUri2,
                                         struct zuerr_Status* status);
void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri,
                                            const char* dstTimescaleUri,
                                            const struct Timestamp* srcTime,
                                            struct Timestamp* dstTime, struct zuerr_Status* status);

/* Sync domains. paramsName: "syncDomainParams". */
void orsksapi_syncDomain_create(const char* paramsName, const char* paramsJson,
                                struct zuerr_Status* status);
/* Returns whether the domain was started; the time-out is in seconds. */
bool orsksapi_syncDomain_start(const char* syncDomainUri, uint32_t timeout,
                               struct zuerr_Status* status);
void orsksapi_syncDomain_startV2(const char* syncDomainUri, bool saveInitialCoherency,
                                 bool waitToBecomeCoherent, uint32_t timeout,
                                 struct zuerr_Status* status);
void orsksapi_syncDomain_stop(const char* syncDomainUri, struct zuerr_Status* status);
void orsksapi_syncDomain_delete(const char* syncDomainUri, struct zuerr_Status* status);
void orsksapi_syncDomain_addSyncableDevice(const char* syncDomainUri, const char* syncableDeviceUri,
                                           struct zuerr_Status* status);
bool orsksapi_syncDomain_isCoherent(const char* syncDomainUri, struct zuerr_Status* status);
bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* syncDomainUri,
                                                    struct zuerr_Status* status);
/* paramsName: "syncDomainCreateAndAddRemoteDevicesParams". The buffer receives the URI of the
 * timescale that the domain uses. */
void orsksapi_syncDomain_createAndAddDevices(const char* paramsName, const char* paramsJson,
                                             char* buffer, size_t bufferSize,
                                             struct zuerr_Status* status);

/* What the service knows, as a text for people. */
void orsksapi_getTimescaleInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getSyncableDeviceInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getSyncDomainInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getTimestampCorrelatorInfo(char* buffer, size_t bufferSize,
                                         struct zuerr_Status* status);

#ifdef __cplusplus
}
#endif

#endif
