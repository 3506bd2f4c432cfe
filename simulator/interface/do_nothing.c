/* The client library's interface with nothing behind it. The program is linked against this one, so
 * that the needs of no particular library get into it; it never runs with it but to be measured. */

#include "orsksapi.h"

#define STATUS struct zuerr_Status* status

/* clang-format off */
uint32_t orsksapi_getApiVersion(void) { return 1; }
void orsksapi_loadResources(const char* name, const char* json, STATUS) {}
void orsksapi_unloadResources(const char* name, const char* json, STATUS) {}
void orsksapi_timescale_getTime(const char* uri, struct Timestamp* time, STATUS) {}
void orsksapi_getCurrentTimescale(const char* host, char* buffer, size_t size, STATUS) {}
void orsksapi_timestampCorrelator_create(const char* name, const char* json, STATUS) {}
void orsksapi_timestampCorrelator_delete(const char* uri1, const char* uri2, STATUS) {}
void orsksapi_timestampCorrelator_correlate(const char* source, const char* destination, const struct Timestamp* time, struct Timestamp* result, STATUS) {}
void orsksapi_syncDomain_create(const char* name, const char* json, STATUS) {}
bool orsksapi_syncDomain_start(const char* uri, uint32_t timeout, STATUS) { return true; }
void orsksapi_syncDomain_startV2(const char* uri, bool save, bool wait, uint32_t timeout, STATUS) {}
void orsksapi_syncDomain_stop(const char* uri, STATUS) {}
void orsksapi_syncDomain_delete(const char* uri, STATUS) {}
void orsksapi_syncDomain_addSyncableDevice(const char* uri, const char* deviceUri, STATUS) {}
bool orsksapi_syncDomain_isCoherent(const char* uri, STATUS) { return true; }
bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* uri, STATUS) { return true; }
void orsksapi_syncDomain_createAndAddDevices(const char* name, const char* json, char* buffer, size_t size, STATUS) {}
void orsksapi_getTimescaleInfo(char* buffer, size_t size, STATUS) {}
void orsksapi_getSyncableDeviceInfo(char* buffer, size_t size, STATUS) {}
void orsksapi_getSyncDomainInfo(char* buffer, size_t size, STATUS) {}
void orsksapi_getTimestampCorrelatorInfo(char* buffer, size_t size, STATUS) {}
/* clang-format on */
