// A list of 20,000 shooters taken over, from the judgement to the last row and what takes it back, against
// bare inserts of the same rows in one transaction; and how long a shot on the same file waits meanwhile.
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <map>
#include <thread>

#include "benchmarks/bare_store.h"
#include "benchmarks/pairs.h"
#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 20'000;
constexpr int kClubs = 200;

/// An empty competition, and a list that was judged against it.
class Import {
 public:
  Import() : original_(folder_.filePath("Leer.qkk")) {
    makeCompetition(original_, {});
    const auto store = dao::Database::open(original_);
    for (const auto& [id, sex] : {std::pair(1, 1), std::pair(2, 2)})
      store->execute(
          QString("INSERT INTO Schützenklassen (ID, Klasse, KZ, [Alter von], [Alter bis], Geschlecht) "
                  "VALUES (%1, 'Klasse %1', 'K%1', 0, 120, %2)")
              .arg(id)
              .arg(sex));
    lists::CsvReading reading = lists::readCsv(text().toUtf8());
    const auto table = std::make_shared<lists::CsvTable>(std::move(reading.table));
    judgement_ = lists::judge(lists::ListKind::Shooters, table,
                              lists::recognised(lists::ListKind::Shooters, table->rows.front()),
                              lists::readStoreState(*store));
  }

  const lists::Judgement& judgement() const { return judgement_; }
  QString freshCopy() {
    const QString path = folder_.filePath(QString("%1.qkk").arg(++copies_));
    QFile::copy(original_, path);
    return path;
  }

 private:
  static QString text() {
    QString text =
        "Startnummer;Anrede;Nachname;Vorname;Straße;PLZ;Ort;Telefon;Geschlecht;Geburtsdatum;Ausweis;Verein\n";
    for (int i = 0; i < kShooters; ++i)
      text += QString("%1;Herr;Schütze %2;Vorname %3;Schützenstraße %4;9%5;Ort %6;0911/%1;m;%7.%8.19%9;A%1;")
                  .arg(1000 + i)
                  .arg(i * 7919 % 20011)
                  .arg(i % 300)
                  .arg(i % 99)
                  .arg(1000 + i % 9000)
                  .arg(i % 500)
                  .arg(1 + i % 28)
                  .arg(1 + i % 12)
                  .arg(40 + i % 60) +
              QString("Schützenverein %1\n").arg(i % kClubs);
    return text;
  }

  QTemporaryDir folder_;
  QString original_;
  lists::Judgement judgement_;
  int copies_ = 0;
};

/// Syncing is off on both sides.
void house(Rounds& rounds) {
  Import import;
  if (import.judgement().count(lists::Verdict::New) != kShooters) rounds.fail("not all are new");
  while (rounds.next()) {
    rounds.pause();
    dao::OpenOptions options;
    options.durable = false;
    auto store = dao::Database::open(import.freshCopy(), options);
    rounds.resume();
    if (!lists::takeOver(*store, import.judgement(), "Liste", QDateTime::currentDateTime()).written)
      rounds.fail("the list wasn't taken over");
    rounds.pause();
    store.reset();
    rounds.resume();
  }
}

struct BareRow {
  QString text;
  QVariantList values;
};

/// The rows of the plan, their references worked out before, by one prepared statement a table.
class BareImport {
 public:
  explicit BareImport(const QString& path) : store_(path) { store_.execute("PRAGMA synchronous = OFF"); }

  void write(const std::vector<BareRow>& rows) {
    std::map<QString, sqlite3_stmt*> statements;
    store_.execute("BEGIN IMMEDIATE");
    for (const BareRow& row : rows) {
      const auto [statement, isNew] = statements.try_emplace(row.text, nullptr);
      if (isNew) statement->second = store_.prepare(row.text);
      store_.run(statement->second, row.values);
    }
    store_.execute("COMMIT");
  }

 private:
  BareStore store_;
};

std::vector<BareRow> bareRows(const lists::Plan& plan) {
  std::vector<BareRow> rows;
  QHash<QString, int> numbers;
  std::vector<int> keys;
  for (const lists::PlannedRow& row : plan) {
    keys.push_back(++numbers[row.table]);
    QStringList columns = {"ID"};
    QVariantList values = {keys.back()};
    for (const lists::PlannedValue& value : row.values) {
      columns << "\"" + value.column + "\"";
      values << (value.made == lists::kNoRow ? value.after : keys[static_cast<size_t>(value.made)]);
    }
    rows.push_back({QString("INSERT INTO \"%1\" (%2) VALUES (%3)")
                        .arg(row.table, columns.join(", "), QStringList(columns.size(), "?").join(", ")),
                    values});
  }
  return rows;
}

void bare(Rounds& rounds) {
  Import import;
  const std::vector<BareRow> rows = bareRows(import.judgement().plan);
  while (rounds.next()) {
    rounds.pause();
    auto store = std::make_unique<BareImport>(import.freshCopy());
    rounds.resume();
    store->write(rows);
    rounds.pause();
    store.reset();
    rounds.resume();
  }
}

/// Many more shots than a range fires, with a breath between them as there: two writers without one would
/// only measure whom the store favours.
constexpr std::chrono::milliseconds BetweenShots(10);

/// Seconds; both sides durable.
double longestWaitOfAShot() {
  Import import;
  const QString path = import.freshCopy();
  std::atomic<bool> done = false;
  std::atomic<int> shots = 0;
  double longest = 0;
  std::thread line([&] {
    const auto store = dao::Database::open(path);
    const auto rows = store->openRecordset("Schuss");
    while (!done) {
      QElapsedTimer wait;
      wait.start();
      rows->addNew();
      rows->setValue("Startnummer", "1");
      rows->setValue("Ergebnis", 10.9);
      rows->update();
      longest = std::max(longest, static_cast<double>(wait.nsecsElapsed()) / 1e9);
      ++shots;
      std::this_thread::sleep_for(BetweenShots);
    }
  });
  const auto store = dao::Database::open(path);
  while (shots < 10) std::this_thread::yield();
  const bool written =
      lists::takeOver(*store, import.judgement(), "Liste", QDateTime::currentDateTime()).written;
  done = true;
  line.join();
  return written ? longest : 1e9;
}

const Registered import{
    Pair{"20.000 Schützen übernehmen", 2.13, "gegen bloßes Einfügen in einer Transaktion", house, bare, 1}};
const Registered wait{
    Figure{"Schuss während der Übernahme", 1.0, "Sekunden, die der langsamste wartet", longestWaitOfAShot}};

}  // namespace
}  // namespace qk::bench
