#pragma once

/// One good line for every command, action and kind that calls the library.
inline constexpr const char* callingLines[] = {
    "loadResources --remoteHost a-host-name-that-is-too-long-for-any-small-string",
    "unloadResources --remoteHost h",
    "timestampCorrelator create --timescaleUri1 t1 --timescaleUri2 t2 --samplingInterval 1 "
    "--historyLength 2",
    "timestampCorrelator delete --timescaleUri1 t1 --timescaleUri2 t2",
    "timestampCorrelator correlate --srcTimescaleUri t1 --dstTimescaleUri t2 --s 1 --ns 2 --fns 3",
    "syncDomain create --uri d --timescaleUri t --maxOffset_ns 1 --minSyncDuration_ms 2",
    "syncDomain createAndAddDevices --uri d --timescaleUri null --remoteHosts [] --maxOffset_ns 1 "
    "--minSyncDuration_ms 2",
    "syncDomain delete --uri d",
    "syncDomain start --uri d --timeout_s 1",
    "syncDomain startV2 --uri d --saveInitialCoherency 1 --waitToBecomeCoherent 1 --timeout_s 1",
    "syncDomain stop --uri d",
    "syncDomain addSyncableDevice --uri d --syncableDeviceUri v",
    "syncDomain isCoherent --uri d",
    "syncDomain isCoherentSinceLastChecked --uri d",
    "timescale getTime --timescaleUri t",
    "getCurrentTimescale --remoteHost h",
    "list timescales",
    "list syncableDevices",
    "list syncDomains",
    "list correlators",
};
