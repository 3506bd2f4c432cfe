#include <gtest/gtest.h>

#include <cstdlib>

#include "errors/library_exception.h"

namespace {

int releases = 0;
bool libraryResize(zuerr_Status* status, std::uint32_t newSize) {
  if (newSize != 0) return false;
  ++releases;
  std::free(status->json);
  status->json = nullptr;
  status->capacity = 0;
  return true;
}

/// Reports `code` in a record, with a text under our callback or the library's.
void report(zuerr_Status* status, std::int32_t code, bool librarysBuffer) {
  status->code = code;
  EXPECT_EQ(zuerr_defaultResize, status->resize);
  zuerr_setJson(status, "[1]");
  if (librarysBuffer) status->resize = libraryResize;
}

TEST(ScopedStatus, ThrowsErrorsAndReleasesEveryTextOnce) {
  for (const bool librarysBuffer : {false, true}) {
    for (const std::int32_t code : {0, 1, 3, INT32_MAX, -1, -9, INT32_MIN}) {
      releases = 0;
      bool thrown = false;
      try {
        zuerr::ScopedStatus status;
        report(&status, code, librarysBuffer);
      } catch (const zuerr::ExceptionBase& error) {
        thrown = error.status.code == code && error.status.resize == zuerr_defaultResize;
        EXPECT_STREQ("[1]", error.what());
      }
      EXPECT_EQ(code < 0, thrown) << code;
      EXPECT_EQ(librarysBuffer ? 1 : 0, releases) << code;
    }
  }
}

TEST(ScopedStatus, ThrowsNothingDuringAnotherException) {
  struct ClosesInFlight {
    ~ClosesInFlight() {
      zuerr::ScopedStatus status;
      report(&status, -1, true);
    }
  };
  releases = 0;
  try {
    const ClosesInFlight closing;
    throw 17;
  } catch (int arrived) {
    EXPECT_EQ(17, arrived);
  }
  EXPECT_EQ(1, releases);
}

TEST(LibraryException, CopyTakesTheText) {
  zuerr::Exception source;
  EXPECT_STREQ("", source.what());
  zuerr::Exception ofSuccess(source);
  EXPECT_EQ(0, ofSuccess.status.code);
  report(&source.status, -5, false);
  zuerr::Exception copy(source);
  EXPECT_STREQ("[1]", static_cast<const std::exception&>(copy).what());
  EXPECT_STREQ("[1]", copy.zuerr::ExceptionBase::what());
  EXPECT_EQ(-5, copy.status.code);
  EXPECT_STREQ("", source.what());
  EXPECT_EQ(-5, source.status.code);
}

}  // namespace
