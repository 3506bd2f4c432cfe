#pragma once

/// Errors that travel in a status record: what the service library reports, and the front end's
/// own option errors.

#include <exception>

#include "errors/status.h"

namespace zuerr {

/// Owns a status record. Copying moves the text to the copy and changes the source, as
/// `zuerr_merge` does; the source keeps its code.
class ExceptionBase {
 public:
  ExceptionBase() noexcept = default;
  ExceptionBase(ExceptionBase& other) noexcept;
  ExceptionBase& operator=(const ExceptionBase&) = delete;
  virtual ~ExceptionBase();

  /// The record's JSON text, or "" when it has none; valid while the exception lives.
  virtual const char* what() const noexcept;

  zuerr_Status status = zuerr_initialStatus;
};

/// The thrown type. Always thrown as a copy of a local one, which hands its text over.
class Exception : public virtual std::exception, public virtual ExceptionBase {
 public:
  Exception() noexcept = default;
  Exception(Exception& other) noexcept;
  Exception& operator=(const Exception&) = delete;
  ~Exception() override = default;

  const char* what() const noexcept override;
};

/// The status record of one library call, whose scope spans the call and nothing else: its address
/// is the call's last argument. The end of the scope throws `zuerr::Exception`, with the record's
/// text, if the library left an error and no other exception is in flight; else it drops the
/// record's text. Either way a buffer under the library's own callback is released through it.
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
