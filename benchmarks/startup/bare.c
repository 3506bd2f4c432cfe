// The floor: a program that makes the library call of a command and prints the same lines, without
// checks and conversions.

#include <stdio.h>
#include <string.h>

#include "interface/orsksapi.h"

// The status record, which orsksapi.h only declares.
struct zuerr_Status {
  int32_t code;
  uint32_t capacity;
  bool (*resize)(struct zuerr_Status*, uint32_t);
  char* json;
};

int main(int argc, char** argv) {
  struct zuerr_Status status = {0, 0, NULL, NULL};
  if (argc < 2) return 1;
  if (strcmp(argv[1], "getApiVersion") == 0) {
    printf("%u\n", orsksapi_getApiVersion());
  } else if (strcmp(argv[1], "loadResources") == 0) {
    orsksapi_loadResources("networkDeviceParams", "{\"remoteHost\":\"h1\"}", &status);
    printf("SUCCESS: Loaded resources from remoteHost = %s\n", "h1");
  } else if (strcmp(argv[1], "syncDomain") == 0) {
    orsksapi_syncDomain_startV2("d1", true, false, 30, &status);
    printf("SUCCESS: Started Sync Domain where uri = %s\n", "d1");
    fflush(stdout);
    printf(" Save initial coherency = true\n");
    fflush(stdout);
    printf(" Wait to become coherent = false\n");
  } else {
    orsksapi_getApiVersion();
    printf("\n   help [arg]\n");
  }
  fflush(stdout);
  return status.code;
}
