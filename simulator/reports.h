#pragma once

/// The errors and warnings that the simulator reports.

#include <cstdint>
#include <string>

#include "errors/status.h"

namespace simulator {

struct ReportKind {
  std::int32_t code;
  const char* constant;
  const char* message;
};

// clang-format off
inline constexpr ReportKind
    wrongDocumentType {-61001, "orsksapisimerr_wrongDocumentType",   "The document has the wrong type."},
    documentNotJson   {-61002, "orsksapisimerr_documentNotJson",     "The document is not a JSON object."},
    memberMissing     {-61003, "orsksapisimerr_memberMissing",       "A member of the document is missing."},
    memberOfWrongType {-61004, "orsksapisimerr_memberOfWrongType",   "A member has the wrong type or is empty."},
    hostNotLoaded     {-61005, "orsksapisimerr_hostNotLoaded",       "The host's resources are not loaded."},
    hostInUse         {-61006, "orsksapisimerr_hostInUse",           "A sync domain or a correlator uses the host."},
    timescaleUnknown  {-61007, "orsksapisimerr_timescaleUnknown",    "The timescale does not exist."},
    deviceUnknown     {-61008, "orsksapisimerr_deviceUnknown",       "The syncable device does not exist."},
    deviceInUse       {-61009, "orsksapisimerr_deviceInUse",         "The device is already in a sync domain."},
    domainUnknown     {-61010, "orsksapisimerr_domainUnknown",       "The sync domain does not exist."},
    domainExists      {-61011, "orsksapisimerr_domainExists",        "The sync domain already exists."},
    domainRunning     {-61012, "orsksapisimerr_domainRunning",       "The sync domain is running. Stop it first."},
    correlatorUnknown {-61013, "orsksapisimerr_correlatorUnknown",   "The correlator does not exist."},
    correlatorExists  {-61014, "orsksapisimerr_correlatorExists",    "The correlator already exists."},
    sameTimescale     {-61015, "orsksapisimerr_sameTimescale",       "A correlator needs two different timescales."},
    timeOutOfRange    {-61016, "orsksapisimerr_timeOutOfRange",      "The time or its conversion is out of range."},
    timedOut          {-61017, "orsksapisimerr_timedOut",            "It was not coherent within the time-out."},
    bufferTooSmall    {-61018, "orsksapisimerr_bufferTooSmall",      "The text needs a buffer of this many bytes."},
    stateUnusable     {-61019, "orsksapisimerr_stateUnusable",       "The state file cannot be used."},
    stateDamaged      {-61020, "orsksapisimerr_stateDamaged",        "The state file is damaged and stays unchanged."},
    badVariable       {-61021, "orsksapisimerr_badVariable",         "An environment variable has an invalid value."},
    internalError     {-61022, "orsksapisimerr_internalError",       "The simulator failed."},
    domainStopped     {-61023, "orsksapisimerr_domainStopped",       "The sync domain was stopped, restarted or deleted during the wait, or the state was used in simulated time."},
    memberUnknown     {-61024, "orsksapisimerr_memberUnknown",       "A member is unknown, repeated or nested too deeply, or a text contains a NUL."},
    hostAlreadyLoaded { 61001, "orsksapisimwarn_hostAlreadyLoaded",  "The host's resources are already loaded."},
    domainNotRunning  { 61002, "orsksapisimwarn_domainNotRunning",   "The sync domain is not running."};
// clang-format on

/// An error, or with a positive code a warning, with the offending value and the place that found
/// it: clang 14 has no std::source_location. Thrown, which ends the operation.
struct Report {
  ReportKind kind;
  std::string offendingValue;
  const char* file = __builtin_FILE();
  int line = __builtin_LINE();
};

/// Writes a report into the caller's status record. Allocates nothing but the record's text.
inline void write(const Report& report, zuerr_Status* status) noexcept {
  const zuerr_Site site{report.file, report.line, "orsksapi-simulator", report.kind.constant};
  if (!zuerr_setCodeAt(status, report.kind.code, &site, nullptr)) return;
  char* position = zuerr_findClosingBrace(status);
  position = zuerr_addString(status, position, "message", report.kind.message);
  zuerr_addString(status, position, "value", report.offendingValue.c_str());
}

}  // namespace simulator
