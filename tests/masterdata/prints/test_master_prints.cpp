// The printed lists of the master data, as they would come out of the printer.
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include "masterdata/making/competition.h"
#include "masterdata/prints/master_prints.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/report/parser.h"
#include "platform/runtime/error.h"
#include "tests/platform/report/printed.h"
#include "tests/support/read_bars.h"
#include "tests/support/report_doors.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kDotsPerMetre = 7992;  // 203 an inch

const StoreOriginal& demo() {
  static const StoreOriginal original(makeDemoCompetition);
  return original;
}

}  // namespace

class TestMasterPrints : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    demo().copyTo(competition());
    place->random.give({0.5});
    QDir().mkpath(place->path("programm"));
    for (const char* name :
         {"Startkarte.mdb", "startliste.rpt", "vereinsliste.rpt", "disziplinblatt.rpt", "startkarten.rpt"})
      QVERIFY2(QFile::copy(QString(QK_PROGRAM_FOLDER) + name, place->path("programm/") + name), name);
    qputenv("QK_PROGRAMM", place->path("programm").toUtf8());
    door.meanwhile = [this](const ReportOrder& order) {
      try {
        look(order);
      } catch (const Error& error) {
        failTest(error.description());
        throw;
      }
    };
    prints = std::make_unique<MasterPrints>(place->workplace(), door, competition());
  }
  void cleanup() {
    prints.reset();
    place.reset();
    door = {};
  }

  void theStartListHasEverybodyByNumber();
  void theClubListSumsEachClub();
  void theDisciplineSheetTellsWhatCounts();
  void startCardsForAChoice();
  void withoutAChoiceThereIsNothingToPrint();
  void aMissingReportIsReported();

 private:
  QString competition() const { return place->path("demo.qkk"); }
  void look(const ReportOrder& order) {
    report::Input input;
    input.dataFile = order.dataFile;
    input.now = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
    report::Document document(report::readReport(place->files, order.reportFile), input);
    pages = printedPages(document);
    scanned.clear();
    for (int corner = 0; corner < 4; ++corner) {
      QImage sheet(QSize(1680, 2376), QImage::Format_RGB32);
      sheet.setDotsPerMeterX(kDotsPerMetre);
      sheet.setDotsPerMeterY(kDotsPerMetre);
      sheet.fill(Qt::white);
      QPainter painter(&sheet);
      document.paint(painter, 0);
      painter.end();
      const QSize quarter(sheet.width() / 2, sheet.height() / 2);
      scanned << barsOn(sheet.copy(
          QRect(QPoint((corner % 2) * quarter.width(), (corner / 2) * quarter.height()), quarter)));
    }
  }
  QStringList lines() const {
    QStringList all;
    for (const QStringList& page : pages) all += page;
    return all;
  }
  int count(const QString& query) const {
    const auto rows = dao::Database::open(competition())->openRecordset(query);
    return rows->value(0).toInt();
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<MasterPrints> prints;
  NotedReports door;
  QList<QStringList> pages;
  QStringList scanned;
};

void TestMasterPrints::theStartListHasEverybodyByNumber() {
  prints->show(MasterList::Startliste);
  QCOMPARE(door.orders.size(), size_t(1));
  QCOMPARE(door.orders[0].titel, "Startliste");
  const QStringList found = lines();
  QVERIFY(found.contains("101|Öttl Ägidius|Senioren Auflage|Schützengilde Grünau|Grünau I"));
  QVERIFY(found.contains("112|O'Connor Séan|30.04.1988|Herren I|Freundeskreis"));
  const qsizetype letter = found.indexOf(QRegularExpression("^7a\\|.*"));
  QVERIFY(letter >= 0 && letter < found.indexOf(QRegularExpression("^101\\|.*")));
  QVERIFY(found.contains(QString("%1 Schützen").arg(count("SELECT Count(*) AS N FROM Schützen"))));
}

void TestMasterPrints::theClubListSumsEachClub() {
  prints->show(MasterList::Vereinsliste);
  const QStringList found = lines();
  const int inClub = count("SELECT Count(*) AS N FROM Schützen WHERE VereinsID = 3");
  const qsizetype club = found.indexOf("Edelweiß Höfen");
  QVERIFY(club >= 0);
  QVERIFY(found.indexOf(QString("%1 Schützen").arg(inClub), club) > club);
  QVERIFY(found.indexOf("(ohne Verein)") > club);
  QVERIFY(found.contains(QString("Alle Schützen: %1").arg(count("SELECT Count(*) AS N FROM Schützen"))));
}

void TestMasterPrints::theDisciplineSheetTellsWhatCounts() {
  prints->show(MasterList::Disziplinblatt);
  const QStringList found = lines();
  for (const char* line :
       {"LG Meister|volle Ringe|40", "LG Meister Zehntel|Zehntelringe|40", "LG Teiler|Teiler",
        "LG Glück|nur die Zehntelstelle|10", "LG Ring plus Zehntel|Ring plus Zehntelstelle|10",
        "LG Ring-Teiler Grenze|Ring-Teiler|10|50", "LG Ring-Teiler Zehntel|Ring-Teiler mit Zehnteln|10",
        "LG 20 mit Zusatz|volle Ringe|20|der letzte, nur Teiler", "Ehrenscheibe|ohne Wertung"})
    QVERIFY2(found.contains(line), line);
}

void TestMasterPrints::startCardsForAChoice() {
  prints->showStartCards({7, 12, 1});
  QCOMPARE(pages.size(), 1);
  QCOMPARE(scanned, (QStringList{"101", "107", "112", "nothing read"}));
  const QStringList found = lines();
  QVERIFY(found.contains("Öttl Ägidius|Müller Jörg"));
  QVERIFY(found.contains("O'Connor Séan"));
  QVERIFY(found.contains("geb. 14.05.28"));  // the unknown date of 101 is left out
  QVERIFY(!found.join('\n').contains("0000"));
  QCOMPARE(QDir(qEnvironmentVariable("temp")).entryList(QDir::Files), QStringList());
}

void TestMasterPrints::withoutAChoiceThereIsNothingToPrint() {
  place->dialogs
      .expect(
          "Es ist kein Schütze gewählt. Auf der Seite »Schützen« die Zeilen markieren, Strg+A markiert alle.")
      .titled("Startkarten");
  prints->showStartCards({});
  QVERIFY(door.orders.empty());
}

void TestMasterPrints::aMissingReportIsReported() {
  door.meanwhile = {};
  door.error = 53;
  place->dialogs.expect("Fehler: 53 - " + errorDescription(53) + "\nDie Liste konnte nicht gezeigt werden.",
                        BoxAnswer::Abort);
  prints->show(MasterList::Startliste);
  place->dialogs.expect(
      "Fehler: 53 - " + errorDescription(53) + "\nDie Startkarten konnten nicht gezeigt werden.",
      BoxAnswer::Abort);
  prints->showStartCards({1});
  QCOMPARE(QDir(qEnvironmentVariable("temp")).entryList(QDir::Files), QStringList());
}

QTEST_MAIN(TestMasterPrints)
#include "test_master_prints.moc"
