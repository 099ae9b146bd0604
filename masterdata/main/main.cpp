#include "masterdata/main/start.h"

int main(int argc, char** argv) {
  return qk::startMasterData(argc, argv);
}
