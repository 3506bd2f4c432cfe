// What other code is compiled against and may not change: the order of virtual functions.

#include <gtest/gtest.h>

#include <cstring>

#include "commands/timestamp_output.h"
#include "diagnostics/monotonic_stop_watch.h"
#include "errors/library_exception.h"
#include "orsksapi_operations.h"
#include "service/api_wrapper.h"

namespace {

using orsksapi::ApiWrapperInterface;
using orsktools::MonotonicStopWatch;

/// Returns the slot of a virtual function, as the Itanium C++ ABI 2.3 encodes it in a pointer to a
/// member.
template <typename Function>
std::size_t slotOf(Function function) {
  std::size_t words[2];
  static_assert(sizeof function == sizeof words,
                "This ABI encodes pointers to members differently.");
  std::memcpy(words, &function, sizeof words);
  return words[0] / sizeof(void*);
}

template <typename... Functions>
void expectSlotsFrom(std::size_t slot, Functions... functions) {
  EXPECT_EQ(std::size(orsksapiOperations), sizeof...(functions))
      << "add the new operation to this test";
  for (const std::size_t found : {slotOf(functions)...}) EXPECT_EQ(slot++, found);
}

// The destructor has the first two slots.
TEST(Layout, OperationsKeepTheirSlots) {
  using A = ApiWrapperInterface;
  expectSlotsFrom(2, &A::getApiVersion, &A::loadResources, &A::unloadResources,
                  &A::timescale_getTime, &A::getCurrentTimescale, &A::timestampCorrelator_create,
                  &A::timestampCorrelator_delete, &A::timestampCorrelator_correlate,
                  &A::syncDomain_create, &A::syncDomain_start, &A::syncDomain_startV2,
                  &A::syncDomain_stop, &A::syncDomain_delete, &A::syncDomain_addSyncableDevice,
                  &A::syncDomain_isCoherent, &A::syncDomain_isCoherentSinceLastChecked,
                  &A::syncDomain_createAndAddDevices, &A::getTimescaleInfo,
                  &A::getSyncableDeviceInfo, &A::getSyncDomainInfo, &A::getTimestampCorrelatorInfo);
  EXPECT_EQ(0U, slotOf(&MonotonicStopWatch::start));
  EXPECT_EQ(2U, slotOf(&zuerr::ExceptionBase::what));
}

TEST(Layout, ATimestampNeedsNoLabel) {
  testing::internal::CaptureStdout();
  printTimestamp({5, 1, 0, 1});
  EXPECT_EQ("-5.0000000010\n", testing::internal::GetCapturedStdout());
}

}  // namespace
