#pragma once

/// What the stand-in answers when it does not simply do as asked.

#include <cstdint>
#include <string>

#include "errors/status.h"

namespace simulator {

struct Outcome {
  std::int32_t code;
  const char* constant;
  const char* message;
};

// clang-format off
inline constexpr Outcome wrongDocumentType      {-61001, "orsksapisimerr_wrongDocumentType",      "The document is not of the type that the operation takes."};
inline constexpr Outcome documentNotJson        {-61002, "orsksapisimerr_documentNotJson",        "The document is not a JSON object."};
inline constexpr Outcome memberMissing          {-61003, "orsksapisimerr_memberMissing",          "The document lacks a member."};
inline constexpr Outcome memberOfWrongType      {-61004, "orsksapisimerr_memberOfWrongType",      "A member of the document has the wrong type or no text."};
inline constexpr Outcome hostNotLoaded          {-61005, "orsksapisimerr_hostNotLoaded",          "The host's resources are not loaded."};
inline constexpr Outcome hostInUse              {-61006, "orsksapisimerr_hostInUse",              "A sync domain or a correlator uses the host's device or timescale."};
inline constexpr Outcome timescaleUnknown       {-61007, "orsksapisimerr_timescaleUnknown",       "There is no such timescale."};
inline constexpr Outcome deviceUnknown          {-61008, "orsksapisimerr_deviceUnknown",          "There is no such syncable device."};
inline constexpr Outcome deviceInUse            {-61009, "orsksapisimerr_deviceInUse",            "The device belongs to a sync domain already."};
inline constexpr Outcome domainUnknown          {-61010, "orsksapisimerr_domainUnknown",          "There is no such sync domain."};
inline constexpr Outcome domainExists           {-61011, "orsksapisimerr_domainExists",           "A sync domain of this URI exists already."};
inline constexpr Outcome domainRunning          {-61012, "orsksapisimerr_domainRunning",          "The sync domain is running; stop it first."};
inline constexpr Outcome correlatorUnknown      {-61013, "orsksapisimerr_correlatorUnknown",      "There is no correlator of these timescales."};
inline constexpr Outcome correlatorExists       {-61014, "orsksapisimerr_correlatorExists",       "A correlator of these timescales exists already."};
inline constexpr Outcome sameTimescale          {-61015, "orsksapisimerr_sameTimescale",          "A correlator needs two different timescales."};
inline constexpr Outcome timeOutOfRange         {-61016, "orsksapisimerr_timeOutOfRange",         "The time is not a valid one, or leaves the range when converted."};
inline constexpr Outcome timedOut               {-61017, "orsksapisimerr_timedOut",               "The sync domain did not become coherent within the time-out, and was left as it was."};
inline constexpr Outcome bufferTooSmall         {-61018, "orsksapisimerr_bufferTooSmall",         "The text does not fit its buffer; the value is the size in bytes that it needs."};
inline constexpr Outcome stateUnusable          {-61019, "orsksapisimerr_stateUnusable",          "The state file cannot be read or written."};
inline constexpr Outcome stateDamaged           {-61020, "orsksapisimerr_stateDamaged",           "The state file does not hold a state; it was left as it is."};
inline constexpr Outcome badVariable            {-61021, "orsksapisimerr_badVariable",            "An environment variable of the simulator has a bad value."};
inline constexpr Outcome internalError          {-61022, "orsksapisimerr_internalError",          "The simulator itself failed."};
inline constexpr Outcome domainStopped          {-61023, "orsksapisimerr_domainStopped",          "The sync domain was stopped or deleted while the call waited for it."};
inline constexpr Outcome hostAlreadyLoaded      { 61001, "orsksapisimwarn_hostAlreadyLoaded",     "The host's resources are loaded already."};
inline constexpr Outcome domainNotRunning       { 61002, "orsksapisimwarn_domainNotRunning",      "The sync domain is not running."};
// clang-format on

/// An outcome on its way to the caller, with the value that is the matter and the place that came
/// to it. Thrown where it ends the operation.
struct Refusal {
  Refusal(const Outcome& what, std::string about, const char* inFile = __builtin_FILE(),
          int atLine = __builtin_LINE())
      : outcome(what), value(std::move(about)), file(inFile), line(atLine) {}

  Outcome outcome;
  std::string value;
  const char* file;
  int line;
};

/// Leaves an outcome in the caller's record. Needs no memory but the record's. The place is that of
/// the call: clang 14 has no std::source_location.
inline void leave(zuerr_Status* status, const Outcome& outcome, const char* value,
                  const char* file = __builtin_FILE(), int line = __builtin_LINE()) noexcept {
  const zuerr_Site site{file, line, "orsksapi-simulator", outcome.constant};
  if (!zuerr_setCodeAt(status, outcome.code, &site, nullptr)) return;
  char* position = zuerr_reserve(status, 2);
  position = zuerr_addString(status, position, "message", outcome.message);
  zuerr_addString(status, position, "value", value);
}

inline void leave(zuerr_Status* status, const Refusal& refusal) noexcept {
  leave(status, refusal.outcome, refusal.value.c_str(), refusal.file, refusal.line);
}

}  // namespace simulator
