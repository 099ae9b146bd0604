#include "tests/data/paid_competition.h"

#include <QDateTime>
#include <QRandomGenerator>

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/engine/engine.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

constexpr int kClubs = 60, kTeams = 240, kDays = 5;
/// No stake has this number any more.
constexpr int kGoneStake = 99;

QVariant orNull(int id) {
  return id == 0 ? QVariant() : QVariant(id);
}

class Maker {
 public:
  Maker(int shooters, int payments) {
    for (int i = 1; i <= kClubs; ++i)
      made_.clubs[i] = QString("Schützenverein Ort %1").arg(i, 2, 10, QChar('0'));
    for (int i = 1; i <= kTeams; ++i)
      made_.teams[i] = {i, QString("Mannschaft %1").arg(i, 3, 10, QChar('0')),
                        i % 40 == 0 ? 0 : i % kClubs + 1};
    stakes();
    for (int i = 1; i <= 3; ++i) made_.stacks[i] = QString("Stapel %1").arg(i);
    for (int i = 1; i <= shooters; ++i) addShooter(i);
    for (int i = 1; i <= payments; ++i) addPayment(i);
    for (int i = 1; i <= shooters / 5; ++i) addTarget(i);
  }

  PaidCompetition take() { return std::move(made_); }

 private:
  void stakes() {
    const auto add = [this](int id, const char* name, int cents, bool clubs = false, bool open = false) {
      made_.stakes[id] = {id, name, Money::fromUnits(cents * 100), clubs, open};
    };
    add(1, "Startgeld", 1500);
    add(2, "Nachkauf Serie", 350);
    add(3, "Teiler 10 Schuss", 500);
    add(4, "Großes Paket", 2850);
    add(5, "Jugendpaket", 800);
    add(6, "Festabend", 1250, false, true);
    add(7, "Spende", 0);
    add(8, "Verzehr", 0);
    add(9, "Mannschaftsgeld", 3000, true);
    add(10, "Vereinsbeitrag", 5000, true);
  }

  void addShooter(int id) {
    PaidShooter shooter{id, QString::number(1000 + id),
                        QString("Schütze %1").arg(id * 7919 % 100003, 6, 10, QChar('0'))};
    shooter.club = random_.bounded(20) == 0 ? 0 : random_.bounded(kClubs) + 1;
    shooter.team = random_.bounded(3) == 0 ? 0 : random_.bounded(kTeams) + 1;
    numbers_ << shooter.startnummer;
    made_.shooters[shooter.startnummer] = shooter;
  }

  void addPayment(int id) {
    Payment payment;
    payment.id = id;
    payment.day = QDate(2026, 11, 16).addDays(random_.bounded(kDays));
    payment.open = random_.bounded(8) == 0;
    if (random_.bounded(25) == 0)
      ofClubOrTeam(payment);
    else
      ofShooter(payment);
    made_.payments.push_back(payment);
  }

  void ofShooter(Payment& payment) {
    payment.startnummer = numbers_[random_.bounded(int(numbers_.size()))];
    payment.stake = random_.bounded(200) == 0 ? kGoneStake : random_.bounded(8) + 1;
    payment.amount = made_.stakes.value(payment.stake).price;
    if (payment.amount == Money()) payment.amount = Money::fromUnits(random_.bounded(1, 3000) * 100);
    if (payment.stake == 6 && random_.bounded(2) == 0) payment.open = true;
    const PaidShooter& shooter = made_.shooters[payment.startnummer];
    payment.baseClub = shooter.club;
    payment.baseTeam = shooter.team;
  }

  void ofClubOrTeam(Payment& payment) {
    payment.stake = random_.bounded(9, 11);
    payment.amount = made_.stakes[payment.stake].price;
    if (random_.bounded(2) == 0) {
      payment.club = payment.baseClub = random_.bounded(kClubs) + 1;
      return;
    }
    payment.team = payment.baseTeam = random_.bounded(kTeams) + 1;
    payment.baseClub = made_.teams[payment.team].club;
  }

  void addTarget(int number) {
    made_.targets.push_back({number, numbers_[random_.bounded(int(numbers_.size()))], random_.bounded(4),
                             random_.bounded(2) == 0});
  }

  PaidCompetition made_;
  QStringList numbers_;
  QRandomGenerator random_{20261122};
};

void store(dao::Database& database, const PaidCompetition& made) {
  TableData clubs{"Verein", {"ID", "Name"}, {}}, teams{"Mannschaften", {"ID", "MannName", "VereinID"}, {}},
      stakes{"Kasse_Verwaltung",
             {"ID", "Platz", "Bezeichnung", "ArtikelNr", "Betrag", "Nachkauf", "Verein", "VorgabeOffen"},
             {}},
      shooters{"Schützen", {"ID", "Startnummer", "Name", "VereinsID", "lMannID"}, {}},
      payments{"Kasse_Eingang",
               {"ID", "Startnummer", "KasseID", "Offen", "Betrag", "DatumEingang", "VereinID", "MannID",
                "VereinIDBasis", "MannIDBasis"},
               {}},
      stacks{"ScheibenNummern", {"ID", "Bezeichnung"}, {}},
      targets{"Schuetzen_ScheibenNummern",
              {"ID", "Startnummer", "Scheibennummer", "Kaufdatum", "Speicherdatum", "DisziKombiWahl",
               "DisziKombiID", "StapelID"},
              {}};
  const auto money = [](Money amount) { return QVariant::fromValue(amount); };
  const auto date = [](QDate day) { return QDateTime(day, QTime(0, 0)); };
  for (auto it = made.clubs.begin(); it != made.clubs.end(); ++it) clubs.rows.push_back({it.key(), *it});
  for (const PaidTeam& team : made.teams) teams.rows.push_back({team.id, team.name, team.club});
  for (const PaidStake& stake : made.stakes)
    stakes.rows.push_back({stake.id, stake.id, stake.name,
                           stake.id % 3 ? QString::number(stake.id * 100) : "", money(stake.price),
                           stake.id % 2, stake.clubs ? -1 : 0, stake.alwaysOpen ? -1 : 0});
  for (const PaidShooter& shooter : made.shooters)
    shooters.rows.push_back({shooter.id, shooter.startnummer, shooter.name, shooter.club, shooter.team});
  for (const Payment& payment : made.payments)
    payments.rows.push_back({payment.id, payment.startnummer.isEmpty() ? QVariant() : payment.startnummer,
                             payment.stake, payment.open ? -1 : 0, money(payment.amount), date(payment.day),
                             orNull(payment.club), orNull(payment.team), orNull(payment.baseClub),
                             orNull(payment.baseTeam)});
  for (auto it = made.stacks.begin(); it != made.stacks.end(); ++it) stacks.rows.push_back({it.key(), *it});
  for (const IssuedTarget& target : made.targets)
    targets.rows.push_back({target.number, target.startnummer, target.number, date(QDate(2026, 11, 20)),
                            target.back ? QVariant(date(QDate(2026, 11, 21))) : QVariant(), 0, 1,
                            orNull(target.stack)});
  database.engine().transaction([&] {
    for (const TableData* data : {&clubs, &teams, &stakes, &shooters, &payments, &stacks, &targets})
      insertRows(database, *data);
  });
}

}  // namespace

PaidCompetition makePaidCompetition(const QString& path, int shooters, int payments) {
  PaidCompetition made = Maker(shooters, payments).take();
  prepareStore(path);
  makeCompetition(path, {"28. Herbstpokal", "Grünau", QDate(2026, 1, 1)});
  const auto database = dao::Database::open(path, dao::OpenOptions{.durable = false});
  store(*database, made);
  return made;
}

}  // namespace qk::test
