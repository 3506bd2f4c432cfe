#include "main/console.h"
#include "main/standard_streams.h"

int main(int argc, char** argv) {
  protectStandardStreams();
  return runConsole(argc, argv);
}
