// check_record: queries the coherency of a domain that does not exist, and checks the status record
// of the error. Prints what is wrong and ends with 1, or ends with 0.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "errors/status.h"
#include "interface/orsksapi.h"

namespace {

const char* defectOf(const zuerr_Status& status) {
  if (status.code >= 0) return "its code is not negative";
  if (status.json == nullptr) return "it has no text";
  const std::size_t length = strnlen(status.json, status.capacity);
  if (length + 2 > status.capacity) return "its text leaves no room for the end mark";
  const char* const end = status.json + status.capacity - 1;
  if (*end != 'J') return "it has no end mark";
  if (std::count<const char*>(status.json + length, end, '\0') != end - (status.json + length)) {
    return "there are other bytes than zero between its text and the end mark";
  }
  const char* const last = jsonbuf_findEnd(status.json);
  return last == nullptr || last + 1 != status.json + length ? "its text is no JSON object"
                                                             : nullptr;
}

}  // namespace

int main() {
  zuerr_Status status = zuerr_initialStatus;
  orsksapi_syncDomain_isCoherent("check-library: there is no such domain", &status);
  const char* const defect = defectOf(status);
  if (defect != nullptr) std::printf("the record, with code %d: %s\n", status.code, defect);
  zuerr_release(&status);
  return defect == nullptr ? 0 : 1;
}
