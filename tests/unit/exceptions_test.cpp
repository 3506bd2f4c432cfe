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
  EXPECT_EQ(-5, copy.status.code);
  EXPECT_EQ(-5, source.status.code);
}

}  // namespace
