#include "main/console.h"

int main(int argc, char** argv) {
  return runConsole(argc, argv);
}
