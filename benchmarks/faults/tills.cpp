#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTextStream>
#include <QThread>
#include <array>

#include "benchmarks/faults/faults.h"
#include "platform/dao/database.h"
#include "tests/support/postgres_server.h"
#include "tools/rundgang/comparison.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

namespace qk::faults {

namespace {

constexpr int kStakesOfABooking = 5;
constexpr int kPatience = 120;     ///< seconds
constexpr int kLookAgain = 10000;  ///< milliseconds, then a cashier presses again: a busy desk takes no key
constexpr int kLatestKill = 30;    ///< milliseconds after the key that books

const QString kStake = "Nachkauf Serie";  // as often as one wants
const QString kMarked = "sie sind in der Liste gekennzeichnet.";
const QString kNothingStored = "Es wurde noch keine Zeile des Kaufs gespeichert.";

QString cellText(const QJsonValue& row, int column) {
  return row.toArray()[column].toObject()["text"].toString();
}

/// One program with its cash desk, and who stands at it. What a box says is done: rows that are said to be
/// stored are taken out before booking again, and nothing else is.
class Cashier {
 public:
  Cashier(const Range& range, const QString& name, const QString& shooter)
      : program_(range.startDesk(name, "1")), shooter_(shooter) {
    Walk walk(*program_);
    walk.waitForMainWindow();
    walk.selectLine(1);
    walk.chooseShooter(1, shooter);
    program_->click("mnuEditKasse");
    program_->waitUntil("cash desk", [&] { return program_->text("frmFinanz/txtStartNr") == shooter; });
  }

  const QString& shooter() const { return shooter_; }
  int sold() const { return sold_; }
  int boxes() const { return boxes_; }
  QString obstacle() const {
    const QString text = program_->modal()["text"].toString();
    return text.isEmpty() ? QString("no box") : "box: " + text;
  }

  void take() {
    const QJsonArray stakes = program_->items("frmFinanz/lstAll");
    for (int row = 0; row < stakes.size(); ++row)
      if (cellText(stakes[row], 0) == kStake) program_->clickCell("frmFinanz/lstAll", row, 0);
    for (int i = 1; i <= kStakesOfABooking; ++i) {
      program_->click("frmFinanz/cmdAdd");
      program_->waitUntil("stake in hand", [&] {
        answerBoxes();
        return inHand() == i;
      });
    }
    sold_ += kStakesOfABooking;
  }

  void pressBook() {
    program_->click("frmFinanz/cmdVerbuchen");
    sincePressed_.start();
  }

  void waitUntilBooked() {
    program_->waitUntil(
        "booking",
        [&] {
          answerBoxes();
          if (atDesk() && inHand() > 0 && sincePressed_.hasExpired(kLookAgain)) pressBook();
          return inHand() == 0 && atDesk();
        },
        kPatience);
  }

 private:
  bool atDesk() const { return program_->modal()["name"].toString() == "frmFinanz"; }
  int inHand() const { return static_cast<int>(program_->items("frmFinanz/flex").size()); }

  void answerBoxes() {
    if (atDesk()) return;
    const QJsonObject box = program_->modal();
    const QString text = box["text"].toString();
    ++boxes_;
    if (box["buttons"].toArray().contains("Wiederholen")) return program_->answer(text, "Wiederholen");
    program_->answer(text, "OK");
    if (text.contains(kMarked)) takeOutMarked();
    if (text.contains(kMarked) || text.contains(kNothingStored)) pressBook();
  }

  void takeOutMarked() {
    for (int row = 0; row < inHand();) {
      if (cellText(program_->items("frmFinanz/flex")[row], 0).isEmpty()) {
        ++row;
        continue;
      }
      const int before = inHand();
      program_->clickCell("frmFinanz/flex", row, 1);
      program_->click("frmFinanz/cmdRemove");
      program_->waitUntil("removal", [&] { return inHand() == before - 1; });
    }
  }

  std::unique_ptr<DrivenProgram> program_;
  QString shooter_;
  int sold_ = 0;
  int boxes_ = 0;
  QElapsedTimer sincePressed_;
};

int storedStakes(dao::Database& store, const QString& shooter) {
  return static_cast<int>(
      storedRows(store, "Select * from Kasse_Eingang where KasseID = 2 and Startnummer = '" + shooter + "'")
          .size());
}

}  // namespace

bool runTills(const QString& folder, int stakes, int kills, unsigned seed) {
  test::PostgresServer server;
  const test::ServerDatabase database(server.folder());
  database.writeAddress(folder + "/demo.qkk");
  RangeOptions options;
  options.folder = folder;
  options.activeLines = "1";
  const Range range(options);
  std::array<QString, 2> shooters{"103", "110"};
  std::array<int, 2> before{};
  {
    const auto store = dao::Database::open(range.competition());
    for (size_t i = 0; i < shooters.size(); ++i) before[i] = storedStakes(*store, shooters[i]);
  }
  std::array<Cashier, 2> cashiers{Cashier(range, "kasse1", shooters[0]),
                                  Cashier(range, "kasse2", shooters[1])};
  QRandomGenerator chance(seed);
  const int bookings = (stakes + 2 * kStakesOfABooking - 1) / (2 * kStakesOfABooking);
  try {
    for (int booking = 1; booking <= bookings; ++booking) {
      for (Cashier& cashier : cashiers) cashier.take();
      for (Cashier& cashier : cashiers) cashier.pressBook();
      const bool outage = booking * (kills + 1) / bookings != (booking - 1) * (kills + 1) / bookings;
      if (outage && booking < bookings) {
        QThread::msleep(chance.bounded(kLatestKill));
        server.kill();
        server.again();
      }
      for (Cashier& cashier : cashiers) cashier.waitUntilBooked();
    }
  } catch (const DriverError& problem) {
    QString text = problem.what();
    for (const Cashier& cashier : cashiers)
      text += "\n  cash desk of " + cashier.shooter() + ": " + cashier.obstacle();
    throw DriverError(text);
  }
  const auto store = dao::Database::open(range.competition());
  bool good = true;
  for (size_t i = 0; i < cashiers.size(); ++i) {
    const int found = storedStakes(*store, shooters[i]) - before[i];
    QTextStream(stdout) << QString(
                               "Kasse %1, %2 SIGKILL des Servers: verkauft %3, gespeichert %4, %5 Meldungen")
                               .arg(i + 1)
                               .arg(kills)
                               .arg(cashiers[i].sold())
                               .arg(found)
                               .arg(cashiers[i].boxes())
                        << Qt::endl;
    good = good && found == cashiers[i].sold();
  }
  return good;
}

}  // namespace qk::faults
