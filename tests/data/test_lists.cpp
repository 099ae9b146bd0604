// The delivered reports on a competition of 5,000 shooters and 50,000 payments: every printed sum is reckoned
// again from the plain facts.
#include <QTemporaryDir>
#include <QtTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "tests/data/paid_competition.h"
#include "tests/platform/report/printed.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

struct Figures {
  int paid = 0, open = 0;
  Money paidSum, openSum;

  void add(const Payment& payment) {
    (payment.open ? open : paid) += 1;
    (payment.open ? openSum : paidSum) += payment.amount;
  }
  QString text() const {
    return QStringList{formatNumber(paid, 0, true), paidSum.toCurrencyText(), formatNumber(open, 0, true),
                       openSum.toCurrencyText()}
        .join('|');
  }
};

/// Made once for all tests.
class Competition {
 public:
  Competition() { facts = makePaidCompetition(path(), 5000, 50000); }
  QString path() const { return folder_.filePath("pokal.qkk"); }
  PaidCompetition facts;

 private:
  QTemporaryDir folder_;
};

const Competition& competition() {
  static const Competition made;
  return made;
}

const PaidCompetition& facts() {
  return competition().facts;
}

QStringList linesOfReport(const QString& name, const QString& dataFile, const QVariant& day = {}) {
  Files files;
  report::Input input;
  input.dataFile = dataFile;
  input.now = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
  if (day.isValid()) input.parameters.insert("Tageswahl", day);
  report::Document document(report::readReport(files, QK_PROGRAM_FOLDER + name), input);
  return printedLines(document);
}

/// The lines with their first part taken off that name a value of the map are those of the map, each once.
void compareFigures(const QStringList& lines, const QMap<QString, Figures>& expected) {
  for (auto it = expected.begin(); it != expected.end(); ++it)
    QVERIFY2(lines.count(it.key() + "|" + it->text()) == 1, qPrintable(it.key() + "|" + it->text()));
}

QMap<QString, Money> openSums(const std::function<QString(const Payment&)>& keyOf) {
  QMap<QString, Money> sums;
  for (const Payment& payment : facts().payments)
    if (payment.open) sums[keyOf(payment)] += payment.amount;
  return sums;
}

void compareOpenSums(const QStringList& lines, const QMap<QString, Money>& expected) {
  QStringList sums, wanted;
  for (const QString& line : lines)
    if (line.startsWith("Offen: ")) sums << line;
  for (auto it = expected.begin(); it != expected.end(); ++it)
    wanted << "Offen: " + it.key() + "|" + it->toCurrencyText();
  sums.sort();
  wanted.sort();
  QCOMPARE(sums, wanted);
  Money all;
  int count = 0;
  for (const Payment& payment : facts().payments)
    if (payment.open) all += payment.amount, ++count;
  QCOMPARE(lines.count(QString("Alle offenen Posten (%1)|%2").arg(count).arg(all.toCurrencyText())), 1);
}

}  // namespace

class TestLists : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void takingsPerStake() {
    const QStringList lines = linesOfReport("kasseeinlagen.rpt", competition().path());
    QMap<QString, Figures> expected;
    for (const Payment& payment : facts().payments) {
      const bool known = facts().stakes.contains(payment.stake);
      const PaidStake stake = facts().stakes.value(payment.stake);
      expected[known ? stake.name + "|" + stake.price.toCurrencyText() : "(gelöschte Einlagen)"].add(payment);
      expected["Alle Einlagen"].add(payment);
    }
    QCOMPARE(expected.size(), 12);
    compareFigures(lines, expected);
  }

  void takingsPerShooter() {
    const QStringList lines = linesOfReport("kasseschuetzen.rpt", competition().path());
    QMap<QString, Figures> expected;
    for (const Payment& payment : facts().payments) {
      expected["Alle Schützen"].add(payment);
      if (payment.startnummer.isEmpty()) {
        expected["Verein oder Mannschaft"].add(payment);
        continue;
      }
      const PaidShooter shooter = facts().shooters.value(payment.startnummer);
      QString key = shooter.startnummer + "|" + shooter.name;
      if (shooter.club > 0) key += "|" + facts().clubs[shooter.club];
      expected[key].add(payment);
    }
    compareFigures(lines, expected);
    int shooters = 0;
    for (const QString& line : lines) shooters += line.contains("|Schütze ");
    QCOMPARE(shooters, expected.size() - 2);
  }

  void takingsPerClub() {
    const QStringList lines = linesOfReport("kassevereine.rpt", competition().path());
    QMap<QString, Figures> expected;
    for (const Payment& payment : facts().payments) {
      expected["Alle Vereine"].add(payment);
      expected[facts().clubs.value(payment.baseClub, "(ohne Verein)")].add(payment);
    }
    QCOMPARE(expected.size(), 62);
    compareFigures(lines, expected);
  }

  void takingsPerTeam() {
    const QStringList lines = linesOfReport("kassemannschaften.rpt", competition().path());
    QMap<QString, Figures> expected;
    for (const Payment& payment : facts().payments) {
      const PaidTeam team = facts().teams.value(payment.baseTeam);
      expected["Alle Mannschaften"].add(payment);
      expected[team.id == 0 ? "(ohne Mannschaft)|(ohne Mannschaft)"
                            : facts().clubs.value(team.club, "(ohne Verein)") + "|" + team.name]
          .add(payment);
    }
    compareFigures(lines, expected);
  }

  void openItems() {
    compareOpenSums(linesOfReport("offenvereine.rpt", competition().path()),
                    openSums([](const Payment& payment) {
                      return facts().clubs.value(payment.baseClub, "(ohne Verein)");
                    }));
    compareOpenSums(
        linesOfReport("offenmannschaften.rpt", competition().path()), openSums([](const Payment& payment) {
          return payment.baseTeam == 0 ? "(ohne Mannschaft)" : facts().teams[payment.baseTeam].name;
        }));
    compareOpenSums(linesOfReport("offenschuetzen.rpt", competition().path()),
                    openSums([](const Payment& payment) {
                      return payment.startnummer.isEmpty() ? "Verein oder Mannschaft"
                                                           : facts().shooters[payment.startnummer].name;
                    }));
  }

  void donations() {
    const QStringList lines = linesOfReport("spenden.rpt", competition().path());
    QMap<QString, Money> days;
    Money all;
    int count = 0;
    for (const Payment& payment : facts().payments)
      if (facts().stakeName(payment.stake, {}) == "Spende") {
        days["Spenden vom " + payment.day.toString("dd.MM.yyyy")] += payment.amount;
        all += payment.amount;
        ++count;
      }
    QCOMPARE(days.size(), 5);
    for (auto it = days.begin(); it != days.end(); ++it)
      QCOMPARE(lines.count(it.key() + "|" + it->toCurrencyText()), 1);
    QCOMPARE(lines.count(QString("Alle Spenden (%1)|%2").arg(count).arg(all.toCurrencyText())), 1);
  }

  void journalOfADay_data() {
    QTest::addColumn<QDate>("day");
    QTest::newRow("a day") << QDate(2026, 11, 18);
    QTest::newRow("no day") << QDate();
  }

  void journalOfADay() {
    QFETCH(QDate, day);
    const QStringList lines =
        linesOfReport("kassetag.rpt", competition().path(),
                      day.isValid() ? QVariant(QDateTime(day, QTime(0, 0))) : QVariant());
    QMap<QString, Money> sums;
    QMap<QString, int> counts;
    Money till;
    for (const Payment& payment : facts().payments) {
      if (day.isValid() && payment.day != day) continue;
      const PaidStake stake = facts().stakes.value(payment.stake);
      const QString kind = payment.open             ? "Offen"
                           : stake.name == "Spende" ? "Spenden"
                           : stake.alwaysOpen       ? "Beglichen"
                                                    : "Bezahlt";
      sums[kind] += payment.amount;
      ++counts[kind];
      if (!payment.open) till += payment.amount;
    }
    QCOMPARE(sums.size(), 4);
    for (auto it = sums.begin(); it != sums.end(); ++it)
      QCOMPARE(
          lines.count(
              QString("%1 (%2 Buchungen)|%3").arg(it.key()).arg(counts[it.key()]).arg(it->toCurrencyText())),
          1);
    QCOMPARE(lines.count("Einnahmen des Tages|" + till.toCurrencyText()), 1);
    QCOMPARE(lines.count("Beglichene Posten|" + sums["Beglichen"].toCurrencyText()), 1);
    QVERIFY(lines.contains(day.isValid() ? "Kassenjournal vom 18.11.2026" : "Kassenjournal aller Tage"));
    QVERIFY(lines.contains("200 €|×|="));
  }

  void stakesAndTargets() {
    const QStringList stakes = linesOfReport("einlagen.rpt", competition().path());
    for (const PaidStake& stake : facts().stakes) QCOMPARE(stakes.count(stake.name), 1);
    const QStringList targets = linesOfReport("scheiben.rpt", competition().path());
    int back = 0;
    for (const IssuedTarget& target : facts().targets) back += target.back;
    QCOMPARE(
        targets.count(QString("Insgesamt %1 ausgegeben, %2 zurück").arg(facts().targets.size()).arg(back)),
        1);
    for (int stack = 1; stack <= 3; ++stack) {
      int issued = 0, returned = 0;
      for (const IssuedTarget& target : facts().targets)
        if (target.stack == stack) ++issued, returned += target.back;
      QVERIFY(targets.contains(QString("%1 ausgegeben, %2 zurück").arg(issued).arg(returned)));
    }
  }

  void targetsOfADeletedStackAreNotByHand() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("scheiben.qkk");
    makePaidCompetition(path, 1, 0);
    dao::Database::open(path)->execute("DELETE * FROM Schuetzen_ScheibenNummern");
    for (const char* stack : {"9901", "9902", "Null"})
      dao::Database::open(path)->execute(
          QString(
              "INSERT INTO Schuetzen_ScheibenNummern (Startnummer, Scheibennummer, StapelID) VALUES ('1', "
              "5, %1)")
              .arg(stack));
    const QStringList lines = linesOfReport("scheiben.rpt", path);
    QCOMPARE(lines.count("(gelöschter Stapel)"), 2);
    QCOMPARE(lines.count("(von Hand eingegeben)"), 1);
    QVERIFY(lines.indexOf("(von Hand eingegeben)") > lines.lastIndexOf("(gelöschter Stapel)"));
  }

  void aDayWithoutTakingsIsCountedAsNothing() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("leer.qkk");
    makePaidCompetition(path, 1, 0);
    const QStringList lines = linesOfReport("kassetag.rpt", path);
    for (const char* line :
         {"Bezahlt|0,00 €", "Beglichene Posten|0,00 €", "Spenden|0,00 €", "Einnahmen des Tages|0,00 €"})
      QVERIFY2(lines.contains(QString(line)), line);
  }

  void aStakeWithoutALimitIsBoughtAsOftenAsWanted() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("einlagen.qkk");
    makePaidCompetition(path, 1, 0);
    const auto database = dao::Database::open(path);
    database->execute("DELETE * FROM Kasse_Verwaltung WHERE ID > 2");
    database->execute("UPDATE Kasse_Verwaltung SET Nachkauf = Null WHERE ID = 2");
    const QStringList lines = linesOfReport("einlagen.rpt", path);
    QCOMPARE(lines.filter("Kauf|"), (QStringList{"Kauf|höchstens 1-mal", "Kauf|beliebig oft"}));
  }

  void everyListOfTheDeskRunsOnAnEmptyCompetition() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("leer.qkk");
    makePaidCompetition(path, 1, 0);
    const auto catalogue = dao::Database::open(QString(QK_PROGRAM_FOLDER) + "AwListenKasse.mdb", true);
    const auto lists = catalogue->openRecordset("Select * from Listen order by Sort");
    int count = 0;
    for (; !lists->eof(); lists->moveNext(), ++count) {
      const QStringList lines = linesOfReport(lists->value("Datei").toString(), path);
      QVERIFY2(lines.contains("28. Herbstpokal|22.11.2026"), qPrintable(lists->value("Datei").toString()));
    }
    QCOMPARE(count, 11);
  }

  void theReceiptSaysWhatWasBought() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("ZVA1.tmp");
    QVERIFY(QFile::copy(QString(QK_PROGRAM_FOLDER) + "ErgKasseDruck.mdb", path));
    {
      const auto file = dao::Database::open(path);
      file->execute(
          "UPDATE Wettkampf SET Bez1 = '28. Herbstpokal', Bez2 = 'der Schützengilde', Ort = 'Grünau'");
      file->execute(
          "INSERT INTO [Schütze] (Startnummer, Name, GebDat, Klasse, Disziplin, Verein, Mannschaft) VALUES "
          "('107', 'Müller Jörg', '14.05.1968', 'Herren III', 'LG Auflage - LP', 'SV Äußere Au', 'Äußere Au "
          "I')");
      file->execute("INSERT INTO [Schützengruppen] (startnummer, Bezeichnung) VALUES ('107', 'Helfer')");
      file->execute(
          "INSERT INTO Kasse (Startnummer, Bezeichnung, Offen, Betrag, Datum) VALUES ('107', 'Startgeld', "
          "False, 15, #2026-11-20#)");
      file->execute(
          "INSERT INTO Kasse (Startnummer, Bezeichnung, Offen, Betrag, Datum) VALUES ('107', 'Festabend', "
          "True, 12.5, #2026-11-20#)");
      file->execute(
          "INSERT INTO Scheiben (Startnummer, Scheibennr, Ausgabe, Bezeichnung, Zuordnung, Typ) VALUES "
          "('107', 1021, #2026-11-20#, 'Stapel Meister', 'LG Auflage', 'LG')");
    }
    const QStringList lines = linesOfReport("schnellkasse.rpt", path);
    for (const char* line :
         {"28. Herbstpokal", "107", "Müller Jörg", "Helfer", "Startgeld|20.11.2026|15,00 €",
          "Festabend|20.11.2026|offen|12,50 €", "Summe|27,50 €", "Bezahlt|15,00 €", "noch offen|12,50 €",
          "Ihre Scheiben", "1021|LG Auflage|Stapel Meister|LG|20.11.2026", "Vielen Dank und Gut Schuss!",
          "Grünau|Seite 1 von 1"})
      QVERIFY2(lines.contains(QString(line)), line);
  }
};

QTEST_MAIN(TestLists)
#include "test_lists.moc"
