#include "errors/library_exception.h"

namespace zuerr {

ExceptionBase::ExceptionBase(ExceptionBase& other) noexcept {
  zuerr_merge(&status, &other.status, nullptr);
}

ExceptionBase::~ExceptionBase() {
  zuerr_release(&status);
}

const char* ExceptionBase::what() const noexcept {
  return status.json == nullptr ? "" : status.json;
}

Exception::Exception(Exception& other) noexcept
    : std::exception(other), ExceptionBase(static_cast<ExceptionBase&>(other)) {}

const char* Exception::what() const noexcept {
  return ExceptionBase::what();
}

ScopedStatus::~ScopedStatus() noexcept(false) {
  if (code >= 0 || std::uncaught_exceptions() > 0) {
    zuerr_release(this);
    return;
  }
  Exception error;
  zuerr_merge(&error.status, this, nullptr);
  // A text under the library's callback was copied; release the original.
  zuerr_release(this);
  throw Exception(error);
}

}  // namespace zuerr
