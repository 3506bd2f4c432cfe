#pragma once

/// Exceptions with a status record: errors of the client library, and malformed options.

#include <exception>

#include "errors/status.h"

namespace zuerr {

/// Owns a status record. A copy takes the text from the source, see `zuerr_merge`; the source keeps
/// its code.
class ExceptionBase {
 public:
  ExceptionBase() noexcept = default;
  ExceptionBase(ExceptionBase& other) noexcept;
  ExceptionBase& operator=(const ExceptionBase&) = delete;
  virtual ~ExceptionBase();

  /// Returns the record's JSON text, or "" if there is none. Valid while the exception exists. A
  /// text of the library without a NUL is not bounded; `zuerr_text` is.
  virtual const char* what() const noexcept;

  zuerr_Status status = zuerr_initialStatus;
};
static_assert(sizeof(ExceptionBase) == sizeof(void*) + sizeof(zuerr_Status),
              "Other code is compiled against this layout.");

/// The thrown type. Thrown by copy; the copy takes the text.
class Exception : public virtual std::exception, public virtual ExceptionBase {
 public:
  Exception() noexcept = default;
  Exception(Exception& other) noexcept;
  Exception& operator=(const Exception&) = delete;
  ~Exception() override = default;

  const char* what() const noexcept override;
};

/// The status record of one library call. Its address is the call's last argument, and its scope
/// contains only the call. The end of the scope throws `zuerr::Exception` with the record's text if
/// the code is negative and no other exception is in flight. Otherwise it releases the text. A
/// buffer under the library's own callback is released through that callback.
class ScopedStatus : public zuerr_Status {
 public:
  ScopedStatus() noexcept : zuerr_Status(zuerr_initialStatus) {}
  ScopedStatus(const ScopedStatus&) = delete;
  ScopedStatus& operator=(const ScopedStatus&) = delete;
  ~ScopedStatus() noexcept(false);
};

static_assert(sizeof(ScopedStatus) == sizeof(zuerr_Status),
              "Its address is passed as that of a record: add no members or virtual functions.");

}  // namespace zuerr
