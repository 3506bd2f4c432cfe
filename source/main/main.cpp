#include "main/console.h"
#include "output/standard_streams.h"

int main(int argc, char** argv) {
  protectStandardStreams();
  return runConsole(argc, argv);
}
