// What storing a shot on a PostgreSQL server costs, against the bare client that inserts the same row, one
// commit each; and the same with a million rows in the table. Our own share is counted: both are clients of
// one server, and only they are looked at. How often each asks the server is counted on the wire. What waits,
// for the server and its disk, is timed.
#include <QElapsedTimer>

#include "benchmarks/pairs.h"
#include "benchmarks/server_place.h"
#include "platform/dao/engine/engine.h"
#include "tests/support/cutting_proxy.h"

namespace qk::bench {

namespace {

using Storage = test::PostgresServer::Storage;

constexpr int kRounds = 1500;
/// The house reserves numbers with every so many rows: whole blocks are counted.
constexpr int kCountedRounds = 2 * dao::Engine::kNumberBlock;

ServerPlace& inMemory(int rows) {
  static ServerPlace empty(Storage::Memory, 0);
  if (rows == 0) return empty;
  static ServerPlace full(Storage::Memory, kMillion);
  return full;
}

/// The folder of a place on a server that runs meanwhile. The processes of both sides inherit the word of it
/// from the one that starts them.
QString sharedFolder(int rows) {
  const QByteArray word = "QK_BENCH_SERVER_" + QByteArray::number(rows);
  if (!qEnvironmentVariableIsSet(word.constData()))
    qputenv(word.constData(), inMemory(rows).folder().toUtf8());
  return qEnvironmentVariable(word.constData());
}

void countHouse(Rounds& rounds, int rows) {
  const QString folder = sharedFolder(rows);
  ServerHouse house(folder, folder + "/wettkampf.qkk");
  while (rounds.next()) {
    rounds.pause();
    const HaeringSchuss shot = nextServerShot();
    rounds.resume();
    house.store(shot);
  }
}

void countBare(Rounds& rounds, int rows) {
  BareClient client(*dao::serverAddressIn(sharedFolder(rows) + "/wettkampf.qkk"));
  while (rounds.next()) {
    rounds.pause();
    const HaeringSchuss shot = nextServerShot();
    rounds.resume();
    client.insert(shot);
  }
}

/// How often a shot waits for an answer of the server, seen on the wire between both.
double turnsOfAShot() {
  const ServerPlace& place = inMemory(0);
  const test::CuttingProxy wire(place.server());
  ServerHouse house(place.folder(), place.addressThrough(wire.folder()));
  const auto storeAll = [&] {
    for (int i = 0; i < kCountedRounds; ++i) house.store(nextServerShot());
  };
  storeAll();  // after which all that comes again is prepared
  const int before = wire.turns();
  storeAll();
  return static_cast<double>(wire.turns() - before) / kCountedRounds;
}

/// A place on the disk, with both that work on it.
struct OnDisk {
  explicit OnDisk(int rows)
      : place(Storage::Disk, rows),
        house(place.folder(), place.competition()),
        client(*dao::serverAddressIn(place.competition())) {}

  ServerPlace place;
  ServerHouse house;
  BareClient client;
};

/// Times on the wall, for the server's work counts too. A disk has better and worse seconds: house and bare
/// client take turns shot by shot, so that each meets the same ones.
struct Times {
  Spread ratio, ratioAmongMany, growth;
};

const Times& times() {
  static const Times measured = [] {
    const auto taken = [](const auto& store) {
      const HaeringSchuss shot = nextServerShot();
      QElapsedTimer timer;
      timer.start();
      store(shot);
      return static_cast<double>(timer.nsecsElapsed());
    };
    OnDisk empty(0), full(kMillion);
    const auto house = [&](OnDisk& on) {
      return taken([&](const HaeringSchuss& shot) { on.house.store(shot); });
    };
    const auto bare = [&](OnDisk& on) {
      return taken([&](const HaeringSchuss& shot) { on.client.insert(shot); });
    };
    std::vector<double> ratios, ratiosAmongMany, growths;
    for (int round = 0; round < kRounds; ++round) {
      const double one = house(empty), oneBare = bare(empty), among = house(full), amongBare = bare(full);
      ratios.push_back(one / oneBare);
      ratiosAmongMany.push_back(among / amongBare);
      growths.push_back(among / one);
    }
    return Times{Spread(ratios), Spread(ratiosAmongMany), Spread(growths)};
  }();
  return measured;
}

using namespace std::placeholders;

const auto kAgainstBare = "gegen bloßes Einfügen derselben Zeile";

Pair counted(const QString& name, double bound, int rows) {
  Pair pair{
      name,          bound, kAgainstBare, std::bind(countHouse, _1, rows), std::bind(countBare, _1, rows),
      kCountedRounds};
  pair.ground = [rows] { sharedFolder(rows); };
  return pair;
}

const Registered share{counted("Schuss auf dem Server, Anteil des Programms", 6.1, 0)};
const Registered shareAmongMany{counted("Anteil des Programms bei 1.000.000 Zeilen", 6.1, kMillion)};
const Registered turns{
    Figure{"Schuss auf dem Server, Fragen an ihn", 2, "Fragen; bloßes Einfügen ist eine", turnsOfAShot}};
const Registered onServer{
    Figure{"Ein Schuss auf dem Server", 1.5, kAgainstBare, [] { return times().ratio; }}};
const Registered amongMany{
    Figure{"Server bei 1.000.000 Zeilen", 1.5, kAgainstBare, [] { return times().ratioAmongMany; }}};
const Registered growth{
    Figure{"Wachstum auf dem Server", 1.2, "1.000.000 Zeilen gegen keine", [] { return times().growth; }}};

}  // namespace

}  // namespace qk::bench
