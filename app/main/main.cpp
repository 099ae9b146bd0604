#include "app/start.h"

int main(int argc, char** argv) {
  return qk::start(argc, argv);
}
