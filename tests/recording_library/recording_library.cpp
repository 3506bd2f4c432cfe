// A client library that writes down what it is asked, argument by argument, and answers as told,
// however badly. Environment variables:
//   ORSK_TEST_LOG     file that each call is appended to, a line a call
//   ORSK_TEST_CODE    status code to leave; default: the record is left alone
//   ORSK_TEST_TEXT    error text to leave
//   ORSK_TEST_PADDING number of bytes "x" that follow the error text
//   ORSK_TEST_OWNER   who keeps the error text: "caller" (default; through the record's callback),
//                     "library" (the record comes back with our callback), "nobody" (and with
//                     none), "both" (through the record's callback, which is then replaced by ours), "unended" (as
//                     "caller", the whole buffer full and without its NUL)
//   ORSK_TEST_OUTPUT  text to put into an output buffer
//   ORSK_TEST_FILL    byte to fill a whole output buffer with, leaving no NUL
//   ORSK_TEST_TIME    "seconds nanoseconds fraction negative" to put into an output time
//   ORSK_TEST_RESULT  number to return; default 0
//   ORSK_TEST_DELAY_MS milliseconds that an answer takes
//   ORSK_TEST_SPOIL   spoils the standard streams
//   ORSK_TEST_THROW   throws a number through the interface, after leaving the status

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <sstream>
#include <string>

#include "errors/status.h"
#include "interface/orsksapi.h"
#include "service/timestamp.h"

/// Called when this library's own work begins and ends. A test program that makes allocations fail
/// defines it, and then lets only the console's own allocations fail.
extern "C" __attribute__((weak)) void orskTestLibraryAtWork(bool atWork);

namespace {

void setAtWork(bool atWork) {
  if (orskTestLibraryAtWork != nullptr) orskTestLibraryAtWork(atWork);
}

/// The log is opened as soon as the library is there, and stays open: were a standard stream closed,
/// it would have its number.
int logFile() {
  static int file = -1;
  const char* const path = std::getenv("ORSK_TEST_LOG");
  if (file < 0 && path != nullptr) file = open(path, O_WRONLY | O_APPEND | O_CREAT, 0600);
  return file;
}
[[maybe_unused]] const int openedLog = logFile();

void log(const std::string& line) {
  if (logFile() >= 0 && write(logFile(), line.data(), line.size()) < 0) std::abort();
}

/// Does to the process's streams what a library may: makes them wide, buffered and non-blocking, and
/// interrupts whoever waits.
void spoilStreams() {
  for (std::FILE* const stream : {stdout, stderr}) {
    std::fwide(stream, 1);
    std::setvbuf(stream, nullptr, _IOFBF, 1 << 16);
    fcntl(fileno(stream), F_SETFL, O_NONBLOCK);
  }
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  const itimerval often{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &often, nullptr);
}

const char* environment(const char* name, const char* otherwise) {
  const char* const value = std::getenv(name);
  return value == nullptr ? otherwise : value;
}

bool releaseOwnText(zuerr_Status* status, std::uint32_t newSize) {
  setAtWork(true);
  log("release with size " + std::to_string(newSize) + "\n");
  setAtWork(false);
  std::free(status->json);
  status->json = nullptr;
  status->capacity = 0;
  return true;
}

/// Gets a buffer as the record's contract says, and checks that it is laid out as agreed. Returns
/// whether there is one.
bool takeCallersBuffer(zuerr_Status* status, std::uint32_t size) {
  setAtWork(false);
  const bool provided = status->resize(status, size);
  setAtWork(true);
  if (!provided) return false;
  const std::string expected = std::string("{}").append(status->capacity - 3, '\0') + 'J';
  if (std::string(status->json, status->capacity) != expected) log("bad buffer\n");
  return status->capacity >= size;
}

void leaveText(zuerr_Status* status) {
  std::string text = environment("ORSK_TEST_TEXT", "");
  text.append(std::strtoull(environment("ORSK_TEST_PADDING", "0"), nullptr, 10), 'x');
  if (text.empty()) return;
  const auto size = static_cast<std::uint32_t>(text.size() + 2);
  const std::string owner = environment("ORSK_TEST_OWNER", "caller");
  if (owner == "caller" || owner == "both" || owner == "unended") {
    if (!takeCallersBuffer(status, size)) return;
  } else {
    status->json = static_cast<char*>(std::malloc(size));
    status->capacity = size;
  }
  if (owner == "library" || owner == "both") status->resize = releaseOwnText;
  if (owner == "nobody") status->resize = nullptr;
  jsonbuf_init(status->json, status->capacity, text.c_str());
  if (owner == "unended") std::memset(status->json, 'x', status->capacity);
}

/// One call: collects what its arguments were, then answers in them.
class Call {
 public:
  explicit Call(const char* function) {
    setAtWork(true);
    line_ << function << '(';
  }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() { setAtWork(false); }

  Call& text(const char* value) {
    separate();
    std::string quoted(jsonbuf_escapedLength(value), '\0');
    jsonbuf_escape(quoted.data(), value);
    line_ << '"' << quoted << '"';
    return *this;
  }

  Call& number(std::uint32_t value) {
    separate();
    line_ << value;
    return *this;
  }

  Call& flag(bool value) {
    separate();
    line_ << (value ? "true" : "false");
    return *this;
  }

  Call& time(const Timestamp* value) {
    separate();
    char hex[3];
    for (std::size_t byte = 0; byte < sizeof *value; ++byte) {
      std::snprintf(hex, sizeof hex, "%02x", reinterpret_cast<const unsigned char*>(value)[byte]);
      line_ << hex;
    }
    return *this;
  }

  Call& output(Timestamp* value) {
    time(value);
    if (const char* const answer = std::getenv("ORSK_TEST_TIME")) {
      unsigned long long seconds = 0;
      unsigned nanoseconds = 0, fraction = 0, negative = 0;
      std::sscanf(answer, "%llu %u %u %u", &seconds, &nanoseconds, &fraction, &negative);
      *value = {seconds, nanoseconds, fraction, static_cast<std::uint8_t>(negative)};
    }
    return *this;
  }

  Call& output(char* buffer, std::size_t size) {
    separate();
    const bool zero = std::all_of(buffer, buffer + size, [](char byte) { return byte == 0; });
    line_ << "buffer of " << size << (zero ? " zero bytes" : " bytes not all zero");
    if (const char* const fill = std::getenv("ORSK_TEST_FILL")) std::memset(buffer, *fill, size);
    if (const char* const text = std::getenv("ORSK_TEST_OUTPUT")) std::strcpy(buffer, text);
    return *this;
  }

  /// The end of the call. Returns the result.
  std::uint32_t answer(zuerr_Status* status) {
    separate();
    const bool fresh = status->code == 0 && status->capacity == 0 && status->json == nullptr;
    line_ << (fresh ? "fresh status" : "used status");
    if (const char* const code = std::getenv("ORSK_TEST_CODE")) {
      status->code = std::atoi(code);
      leaveText(status);
    }
    return answer();
  }

  std::uint32_t answer() {
    log(line_.str() + ")\n");
    usleep(1000 * static_cast<useconds_t>(std::atoi(environment("ORSK_TEST_DELAY_MS", "0"))));
    if (std::getenv("ORSK_TEST_SPOIL") != nullptr) spoilStreams();
    if (std::getenv("ORSK_TEST_THROW") != nullptr) throw 1;
    return static_cast<std::uint32_t>(std::strtoul(environment("ORSK_TEST_RESULT", "0"), nullptr, 10));
  }

 private:
  void separate() {
    if (!first_) line_ << ", ";
    first_ = false;
  }

  std::ostringstream line_;
  bool first_ = true;
};

}  // namespace

std::uint32_t orsksapi_getApiVersion() {
  return Call(__func__).answer();
}

// The operations that only take texts.
#define ORSK_TEST_ONE_TEXT(result, name)                                  \
  result name(const char* text, zuerr_Status* status) {                   \
    return static_cast<result>(Call(__func__).text(text).answer(status)); \
  }
#define ORSK_TEST_TWO_TEXTS(name)                                          \
  void name(const char* first, const char* second, zuerr_Status* status) { \
    Call(__func__).text(first).text(second).answer(status);                \
  }
#define ORSK_TEST_BUFFER(name)                                      \
  void name(char* buffer, std::size_t size, zuerr_Status* status) { \
    Call(__func__).output(buffer, size).answer(status);             \
  }

ORSK_TEST_TWO_TEXTS(orsksapi_loadResources)
ORSK_TEST_TWO_TEXTS(orsksapi_unloadResources)
ORSK_TEST_TWO_TEXTS(orsksapi_timestampCorrelator_create)
ORSK_TEST_TWO_TEXTS(orsksapi_timestampCorrelator_delete)
ORSK_TEST_TWO_TEXTS(orsksapi_syncDomain_create)
ORSK_TEST_TWO_TEXTS(orsksapi_syncDomain_addSyncableDevice)
ORSK_TEST_ONE_TEXT(void, orsksapi_syncDomain_stop)
ORSK_TEST_ONE_TEXT(void, orsksapi_syncDomain_delete)
ORSK_TEST_ONE_TEXT(bool, orsksapi_syncDomain_isCoherent)
ORSK_TEST_ONE_TEXT(bool, orsksapi_syncDomain_isCoherentSinceLastChecked)
ORSK_TEST_BUFFER(orsksapi_getTimescaleInfo)
ORSK_TEST_BUFFER(orsksapi_getSyncableDeviceInfo)
ORSK_TEST_BUFFER(orsksapi_getSyncDomainInfo)
ORSK_TEST_BUFFER(orsksapi_getTimestampCorrelatorInfo)

void orsksapi_timescale_getTime(const char* uri, Timestamp* time, zuerr_Status* status) {
  Call(__func__).text(uri).output(time).answer(status);
}

void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, std::size_t size, zuerr_Status* status) {
  Call(__func__).text(remoteHost).output(buffer, size).answer(status);
}

void orsksapi_timestampCorrelator_correlate(const char* source, const char* destination, const Timestamp* sourceTime,
                                            Timestamp* destinationTime, zuerr_Status* status) {
  Call(__func__).text(source).text(destination).time(sourceTime).output(destinationTime).answer(status);
}

bool orsksapi_syncDomain_start(const char* uri, std::uint32_t timeout, zuerr_Status* status) {
  return static_cast<bool>(Call(__func__).text(uri).number(timeout).answer(status));
}

void orsksapi_syncDomain_startV2(const char* uri, bool saveInitialCoherency, bool waitToBecomeCoherent,
                                 std::uint32_t timeout, zuerr_Status* status) {
  Call(__func__).text(uri).flag(saveInitialCoherency).flag(waitToBecomeCoherent).number(timeout).answer(status);
}

void orsksapi_syncDomain_createAndAddDevices(const char* paramsName, const char* paramsJson, char* buffer,
                                             std::size_t size, zuerr_Status* status) {
  Call(__func__).text(paramsName).text(paramsJson).output(buffer, size).answer(status);
}
