// A client library that writes down what it is asked, argument by argument, and answers as told,
// however badly. Environment variables:
//   ORSK_TEST_LOG     file that each call is appended to, a line a call
//   ORSK_TEST_CODE    status code to leave; default: the record is left alone
//   ORSK_TEST_TEXT    error text to leave
//   ORSK_TEST_PADDING number of bytes "x" that follow the error text
//   ORSK_TEST_OWNER   who keeps the error text: "caller" (default; through the record's callback),
//                     "library" (the record comes back with our callback), "nobody" (and with
//                     none), "both" (through the record's callback, which is then replaced by ours), "unended" (as
//                     "caller", the whole buffer full and without its NUL), "unsized" (without its capacity)
//   ORSK_TEST_OUTPUT  text to put into an output buffer, where that is not filled
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
#include <iomanip>
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
  if (owner == "caller" || owner == "both" || owner == "unended" || owner == "unsized") {
    if (!takeCallersBuffer(status, size)) return;
  } else {
    status->json = static_cast<char*>(std::malloc(size));
    status->capacity = size;
  }
  if (owner == "library" || owner == "both") status->resize = releaseOwnText;
  if (owner == "nobody") status->resize = nullptr;
  jsonbuf_init(status->json, status->capacity, text.c_str());
  if (owner == "unended") std::memset(status->json, 'x', status->capacity);
  if (owner == "unsized") status->capacity = 0;
}

/// One call: collects what its arguments are, and answers in them.
class Call {
 public:
  explicit Call(const char* function) {
    setAtWork(true);
    line_ << function << '(';
  }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() { setAtWork(false); }

  void take(const char* text) {
    std::string quoted(jsonbuf_escapedLength(text), '\0');
    jsonbuf_escape(quoted.data(), text);
    next() << '"' << quoted << '"';
  }
  void take(std::uint32_t number) { next() << number; }
  void take(bool flag) { next() << (flag ? "true" : "false"); }

  void take(const Timestamp* time) {
    next() << std::hex << std::setfill('0');
    for (std::size_t byte = 0; byte < sizeof *time; ++byte) {
      line_ << std::setw(2) << unsigned{reinterpret_cast<const unsigned char*>(time)[byte]};
    }
    line_ << std::dec;
  }

  void take(Timestamp* output) {
    take(const_cast<const Timestamp*>(output));
    std::istringstream answer(environment("ORSK_TEST_TIME", ""));
    unsigned negative = 0;
    std::uint64_t seconds = 0;
    std::uint32_t nanoseconds = 0, fraction = 0;
    if (answer >> seconds >> nanoseconds >> fraction >> negative) {
      *output = {seconds, nanoseconds, fraction, static_cast<std::uint8_t>(negative)};
    }
  }

  /// A buffer, and then its size.
  void take(char* buffer) { buffer_ = buffer; }
  void take(std::size_t size) {
    const bool zero = std::all_of(buffer_, buffer_ + size, [](char byte) { return byte == 0; });
    next() << "buffer of " << size << (zero ? " zero bytes" : " bytes not all zero");
    if (const char* const fill = std::getenv("ORSK_TEST_FILL")) {
      std::memset(buffer_, *fill, size);
    } else {
      std::strcpy(buffer_, environment("ORSK_TEST_OUTPUT", ""));
    }
  }

  void take(zuerr_Status* status) {
    const bool fresh = status->code == 0 && status->capacity == 0 && status->json == nullptr;
    next() << (fresh ? "fresh status" : "used status");
    if (const char* const code = std::getenv("ORSK_TEST_CODE")) {
      status->code = std::atoi(code);
      leaveText(status);
    }
  }

  /// The end of the call. Returns the result.
  std::uint32_t answer() {
    log(line_.str() + ")\n");
    usleep(1000 * static_cast<useconds_t>(std::atoi(environment("ORSK_TEST_DELAY_MS", "0"))));
    if (std::getenv("ORSK_TEST_SPOIL") != nullptr) spoilStreams();
    if (std::getenv("ORSK_TEST_THROW") != nullptr) throw 1;
    return static_cast<std::uint32_t>(std::strtoul(environment("ORSK_TEST_RESULT", "0"), nullptr, 10));
  }

 private:
  std::ostream& next() {
    if (!first_) line_ << ", ";
    first_ = false;
    return line_;
  }

  std::ostringstream line_;
  bool first_ = true;
  char* buffer_ = nullptr;
};

template <typename... Arguments>
std::uint32_t record(const char* function, Arguments... arguments) {
  Call call(function);
  (call.take(arguments), ...);
  return call.answer();
}

}  // namespace

#define RECORDED(result, name, parameters, ...)                              \
  result orsksapi_##name parameters {                                        \
    return static_cast<result>(record(__func__ __VA_OPT__(, ) __VA_ARGS__)); \
  }
#define TEXT const char*
#define BUFFER char *b, std::size_t n
#define STATUS zuerr_Status* s
// clang-format off
RECORDED(std::uint32_t, getApiVersion, ())
RECORDED(void, loadResources, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(void, unloadResources, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(void, timescale_getTime, (TEXT x, Timestamp* t, STATUS), x, t, s)
RECORDED(void, getCurrentTimescale, (TEXT x, BUFFER, STATUS), x, b, n, s)
RECORDED(void, timestampCorrelator_create, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(void, timestampCorrelator_delete, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(void, timestampCorrelator_correlate, (TEXT x, TEXT y, const Timestamp* t, Timestamp* u, STATUS), x, y, t, u, s)
RECORDED(void, syncDomain_create, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(bool, syncDomain_start, (TEXT x, std::uint32_t i, STATUS), x, i, s)
RECORDED(void, syncDomain_startV2, (TEXT x, bool f, bool g, std::uint32_t i, STATUS), x, f, g, i, s)
RECORDED(void, syncDomain_stop, (TEXT x, STATUS), x, s)
RECORDED(void, syncDomain_delete, (TEXT x, STATUS), x, s)
RECORDED(void, syncDomain_addSyncableDevice, (TEXT x, TEXT y, STATUS), x, y, s)
RECORDED(bool, syncDomain_isCoherent, (TEXT x, STATUS), x, s)
RECORDED(bool, syncDomain_isCoherentSinceLastChecked, (TEXT x, STATUS), x, s)
RECORDED(void, syncDomain_createAndAddDevices, (TEXT x, TEXT y, BUFFER, STATUS), x, y, b, n, s)
RECORDED(void, getTimescaleInfo, (BUFFER, STATUS), b, n, s)
RECORDED(void, getSyncableDeviceInfo, (BUFFER, STATUS), b, n, s)
RECORDED(void, getSyncDomainInfo, (BUFFER, STATUS), b, n, s)
RECORDED(void, getTimestampCorrelatorInfo, (BUFFER, STATUS), b, n, s)
