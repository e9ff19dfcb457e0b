#include "recording/program.h"

int main(int argc, char** argv) {
  return kavo::recording::run_to_exit(argc, argv);
}
