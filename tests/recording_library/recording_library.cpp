// A client library that records each call with its arguments, and misbehaves, as these environment
// variables say:
//   ORSK_TEST_LOG      file to which each call is appended as a line
//   ORSK_TEST_CODE     status code; default: the status record does not change
//   ORSK_TEST_TEXT     status text
//   ORSK_TEST_OWNER    words; default: the caller's callback
//     "library"        allocates the text, so that the library releases it
//     "both"           only replaces the callback, so that the library releases the text
//     "nobody"         removes the callback
//     "unended"        fills the buffer and leaves no NUL
//     "unsized"        sets the capacity to 0
//   ORSK_TEST_OUTPUT   text for an output buffer
//   ORSK_TEST_FILL     byte that fills an output buffer before that
//   ORSK_TEST_TIME     "seconds nanoseconds fraction negative" for an output time
//   ORSK_TEST_RESULT   result; default 0
//   ORSK_TEST_DELAY_MS duration of a call in milliseconds
//   ORSK_TEST_PRINT    text that is printed with stdio
//   ORSK_TEST_SPOIL    words
//     "wide"           makes the standard streams wide and buffered
//     "nonblocking"    makes them non-blocking
//     "interrupt"      sends a signal every millisecond
//   ORSK_TEST_THROW    what is thrown
//     "int"            an int
//     "silence"        an exception without a text
//     other text       a std::runtime_error
//   ORSK_TEST_EXIT     ends the thread when the text is released, which unwinds the stack as an
//                      exception does

#include <fcntl.h>
#include <pthread.h>
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
#include <stdexcept>
#include <string>

#include "errors/status.h"
#include "interface/orsksapi.h"
#include "service/timestamp.h"

namespace {

/// The log is opened when the library is loaded: it would get the number of a closed standard
/// stream.
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

const char* environment(const char* name, const char* otherwise) {
  const char* const value = std::getenv(name);
  return value == nullptr ? otherwise : value;
}

/// Returns whether a variable contains a word.
bool isAsked(const char* variable, const char* word) {
  return std::string(environment(variable, "")).find(word) != std::string::npos;
}

/// Does to the process what ORSK_TEST_SPOIL says.
void spoilStreams() {
  for (std::FILE* const stream : {stdout, stderr}) {
    if (isAsked("ORSK_TEST_SPOIL", "wide")) {
      std::fwide(stream, 1);
      std::setvbuf(stream, nullptr, _IOFBF, 1 << 16);
    }
    if (isAsked("ORSK_TEST_SPOIL", "nonblocking")) fcntl(fileno(stream), F_SETFL, O_NONBLOCK);
  }
  if (isAsked("ORSK_TEST_SPOIL", "interrupt")) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &often, nullptr);
  }
}

bool releaseOwnText(zuerr_Status* status, std::uint32_t newSize) {
  if (std::getenv("ORSK_TEST_EXIT") != nullptr) pthread_exit(nullptr);
  log("release with size " + std::to_string(newSize) + "\n");
  std::free(status->json);
  status->json = nullptr;
  status->capacity = 0;
  return true;
}

/// Requests a buffer from the caller's callback and checks it. Returns false if there is none.
bool takeCallersBuffer(zuerr_Status* status, std::uint32_t size) {
  if (!status->resize(status, size)) return false;
  const std::string expected = std::string("{}").append(status->capacity - 3, '\0') + 'J';
  if (std::string(status->json, status->capacity) != expected) log("bad buffer\n");
  return status->capacity >= size;
}

void writeText(zuerr_Status* status) {
  const std::string text = environment("ORSK_TEST_TEXT", "");
  if (text.empty()) return;
  const auto size = static_cast<std::uint32_t>(text.size() + 2);
  const auto owner = [](const char* word) { return isAsked("ORSK_TEST_OWNER", word); };
  if (owner("library")) {
    status->json = static_cast<char*>(std::malloc(size));
    status->capacity = size;
  } else if (!takeCallersBuffer(status, size)) {
    return;
  }
  if (owner("library") || owner("both")) status->resize = releaseOwnText;
  if (owner("nobody")) status->resize = nullptr;
  jsonbuf_init(status->json, status->capacity, text.c_str());
  if (owner("unended")) std::memset(status->json, 'x', status->capacity);
  if (owner("unsized")) status->capacity = 0;
}

struct Silence : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

/// One call: records its arguments and writes the results.
class Call {
 public:
  explicit Call(const char* function) { line_ << function << '('; }

  void take(const char* text) { next() << '"' << text << '"'; }
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
    const Timestamp zero{};
    next() << (std::memcmp(output, &zero, sizeof zero) == 0 ? "zero time" : "time not zero");
    std::istringstream answer(environment("ORSK_TEST_TIME", ""));
    unsigned negative = 0;
    std::uint64_t seconds = 0;
    std::uint32_t nanoseconds = 0, fraction = 0;
    if (answer >> seconds >> nanoseconds >> fraction >> negative) {
      *output = {seconds, nanoseconds, fraction, static_cast<std::uint8_t>(negative)};
    }
  }

  /// A buffer, then its size.
  void take(char* buffer) { buffer_ = buffer; }
  void take(std::size_t size) {
    const bool zero = std::all_of(buffer_, buffer_ + size, [](char byte) { return byte == 0; });
    next() << "buffer of " << size << (zero ? " zero bytes" : " bytes not all zero");
    const char* const fill = std::getenv("ORSK_TEST_FILL");
    const char* const output = std::getenv("ORSK_TEST_OUTPUT");
    if (fill != nullptr) std::memset(buffer_, *fill, size);
    if (output != nullptr) std::strcpy(buffer_, output);
  }

  void take(zuerr_Status* status) {
    const bool fresh = status->code == 0 && status->capacity == 0 && status->json == nullptr;
    next() << (fresh ? "fresh status" : "used status");
    if (const char* const code = std::getenv("ORSK_TEST_CODE")) {
      status->code = std::atoi(code);
      writeText(status);
    }
  }

  /// Ends the call. Returns the result.
  std::uint32_t answer() {
    log(line_.str() + ")\n");
    usleep(1000 * static_cast<useconds_t>(std::atoi(environment("ORSK_TEST_DELAY_MS", "0"))));
    std::fputs(environment("ORSK_TEST_PRINT", ""), stdout);
    spoilStreams();
    if (isAsked("ORSK_TEST_THROW", "int")) throw 1;
    if (isAsked("ORSK_TEST_THROW", "silence")) throw Silence();
    if (const char* const text = std::getenv("ORSK_TEST_THROW")) throw std::runtime_error(text);
    return static_cast<std::uint32_t>(
        std::strtoul(environment("ORSK_TEST_RESULT", "0"), nullptr, 10));
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

using Text = const char*;
using Status = zuerr_Status*;
using Size = std::size_t;
using Number = std::uint32_t;

}  // namespace

/// Makes the library an auditor too, see rtld-audit(7).
extern "C" unsigned la_version(unsigned version) {
  return version;
}

// clang-format off
Number orsksapi_getApiVersion() { return record(__func__); }
void orsksapi_loadResources(Text name, Text json, Status s) { record(__func__, name, json, s); }
void orsksapi_unloadResources(Text name, Text json, Status s) { record(__func__, name, json, s); }
void orsksapi_timescale_getTime(Text uri, Timestamp* time, Status s) { record(__func__, uri, time, s); }
void orsksapi_getCurrentTimescale(Text host, char* text, Size n, Status s) { record(__func__, host, text, n, s); }
void orsksapi_timestampCorrelator_create(Text name, Text json, Status s) { record(__func__, name, json, s); }
void orsksapi_timestampCorrelator_delete(Text uri1, Text uri2, Status s) { record(__func__, uri1, uri2, s); }
void orsksapi_timestampCorrelator_correlate(Text source, Text destination, const Timestamp* from, Timestamp* to, Status s) {
  record(__func__, source, destination, from, to, s);
}
void orsksapi_syncDomain_create(Text name, Text json, Status s) { record(__func__, name, json, s); }
bool orsksapi_syncDomain_start(Text uri, Number timeout, Status s) { return record(__func__, uri, timeout, s) != 0; }
void orsksapi_syncDomain_startV2(Text uri, bool save, bool wait, Number timeout, Status s) {
  record(__func__, uri, save, wait, timeout, s);
}
void orsksapi_syncDomain_stop(Text uri, Status s) { record(__func__, uri, s); }
void orsksapi_syncDomain_delete(Text uri, Status s) { record(__func__, uri, s); }
void orsksapi_syncDomain_addSyncableDevice(Text uri, Text device, Status s) { record(__func__, uri, device, s); }
bool orsksapi_syncDomain_isCoherent(Text uri, Status s) { return record(__func__, uri, s) != 0; }
bool orsksapi_syncDomain_isCoherentSinceLastChecked(Text uri, Status s) { return record(__func__, uri, s) != 0; }
void orsksapi_syncDomain_createAndAddDevices(Text name, Text json, char* text, Size n, Status s) {
  record(__func__, name, json, text, n, s);
}
void orsksapi_getTimescaleInfo(char* text, Size n, Status s) { record(__func__, text, n, s); }
void orsksapi_getSyncableDeviceInfo(char* text, Size n, Status s) { record(__func__, text, n, s); }
void orsksapi_getSyncDomainInfo(char* text, Size n, Status s) { record(__func__, text, n, s); }
void orsksapi_getTimestampCorrelatorInfo(char* text, Size n, Status s) { record(__func__, text, n, s); }
