// Linked into every test program that runs on both engines: a run on the server that made no database there
// would prove nothing, and fails.
#include <cstdio>
#include <cstdlib>

#include "tests/support/postgres_server.h"
#include "tests/support/test_store.h"

namespace {

void requireDatabases() {
  if (!qk::test::storesOnServer() || qk::test::ServerDatabase::count() > 0) return;
  std::fputs("this run is for the server, and no test made a database there\n", stderr);
  std::_Exit(EXIT_FAILURE);
}

const int registered = std::atexit(requireDatabases);

}  // namespace
