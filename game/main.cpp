#include "game/program.h"

int main(int argc, char** argv) {
  return kavo::run_to_exit(argc, argv);
}
