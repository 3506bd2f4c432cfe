/* Interface of the time-synchronisation service's client library, liborsksapi.so.1.
 *
 * Contract of every operation:
 * 1. Texts are NUL-terminated. The caller owns them.
 * 2. `status` is a fresh status record of the caller. Only a negative code in it reports an error;
 *    then the results are not valid. A positive code is a warning.
 * 3. `buffer` has `bufferSize` bytes, including the NUL, and receives a NUL-terminated text. The
 *    caller has filled it, and a `Timestamp` for a result, with zero bytes.
 * 4. `timeout_s` is in seconds.
 * 5. A call returns when the service has answered.
 * 6. `paramsName` is the type of the JSON object `paramsJson`. Its members are listed with the
 *    function, and all are required.
 */
#ifndef ORSKSAPI_H
#define ORSKSAPI_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 17 bytes, packed: whole seconds (64 bits), nanoseconds (32 bits), a fraction of a nanosecond in
 * the service's own unit (32 bits), and a byte that is not 0 if the time is negative. Defined in
 * source/service/timestamp.h. */
struct Timestamp;
/* 24 bytes: the code (32 bits, signed), the capacity of the text buffer in bytes (32 bits), the
 * callback that enlarges or releases the buffer, and the buffer or null. Defined, with the contract
 * of both sides, in source/errors/status.h; the buffer's layout is in
 * source/errors/json_text_buffer.h. */
struct zuerr_Status;

/* Returns the version of this interface. Cannot fail. */
uint32_t orsksapi_getApiVersion(void);

/* Load and unload the resources of a host. paramsName: "networkDeviceParams".
 * Members: remoteHost (string). */
void orsksapi_loadResources(const char* paramsName, const char* paramsJson,
                            struct zuerr_Status* status);
void orsksapi_unloadResources(const char* paramsName, const char* paramsJson,
                              struct zuerr_Status* status);

/* Sets `time` to the current time of a timescale. */
void orsksapi_timescale_getTime(const char* timescaleUri, struct Timestamp* time,
                                struct zuerr_Status* status);
/* Writes the URI of the timescale that a host uses into the buffer. */
void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, size_t bufferSize,
                                  struct zuerr_Status* status);

/* Creates a correlator of two timescales. paramsName: "linearCorrelatorParams".
 * Members: timescaleUri1, timescaleUri2 (strings), samplingIntervalMs, maxSampleSize (numbers of 32
 * bits). */
void orsksapi_timestampCorrelator_create(const char* paramsName, const char* paramsJson,
                                         struct zuerr_Status* status);
/* Deletes the correlator of two timescales. */
void orsksapi_timestampCorrelator_delete(const char* timescaleUri1, const char* timescaleUri2,
                                         struct zuerr_Status* status);
/* Converts `srcTime` on one timescale to the time on the other, and sets `dstTime` to that. */
void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri,
                                            const char* dstTimescaleUri,
                                            const struct Timestamp* srcTime,
                                            struct Timestamp* dstTime, struct zuerr_Status* status);

/* Creates a sync domain without devices. paramsName: "syncDomainParams".
 * Members: uri, timescaleUri (strings), maxOffset_ns, minSyncDuration_ms (numbers of 32 bits). */
void orsksapi_syncDomain_create(const char* paramsName, const char* paramsJson,
                                struct zuerr_Status* status);
/* Starts a sync domain. Returns whether it was started; false without an error is a success. */
bool orsksapi_syncDomain_start(const char* syncDomainUri, uint32_t timeout_s,
                               struct zuerr_Status* status);
/* Starts a sync domain, and waits until it is coherent if `waitToBecomeCoherent` is true. */
void orsksapi_syncDomain_startV2(const char* syncDomainUri, bool saveInitialCoherency,
                                 bool waitToBecomeCoherent, uint32_t timeout_s,
                                 struct zuerr_Status* status);
/* Stops a sync domain. */
void orsksapi_syncDomain_stop(const char* syncDomainUri, struct zuerr_Status* status);
/* Deletes a sync domain. */
void orsksapi_syncDomain_delete(const char* syncDomainUri, struct zuerr_Status* status);
/* Adds a syncable device to a sync domain. */
void orsksapi_syncDomain_addSyncableDevice(const char* syncDomainUri, const char* syncableDeviceUri,
                                           struct zuerr_Status* status);
/* Return whether a sync domain is coherent, and was since the previous query. */
bool orsksapi_syncDomain_isCoherent(const char* syncDomainUri, struct zuerr_Status* status);
bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* syncDomainUri,
                                                    struct zuerr_Status* status);
/* Creates a sync domain with the devices of hosts, and writes the URI of its timescale into the
 * buffer. paramsName: "syncDomainCreateAndAddRemoteDevicesParams".
 * Members: those of "syncDomainParams", where timescaleUri may be null, and remoteHosts (an array
 * of strings). */
void orsksapi_syncDomain_createAndAddDevices(const char* paramsName, const char* paramsJson,
                                             char* buffer, size_t bufferSize,
                                             struct zuerr_Status* status);

/* Write a list of the objects into the buffer, as a text for people. */
void orsksapi_getTimescaleInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getSyncableDeviceInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getSyncDomainInfo(char* buffer, size_t bufferSize, struct zuerr_Status* status);
void orsksapi_getTimestampCorrelatorInfo(char* buffer, size_t bufferSize,
                                         struct zuerr_Status* status);

#ifdef __cplusplus
}
#endif

#endif
