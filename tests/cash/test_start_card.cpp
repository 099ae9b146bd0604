// The start card: what stands on it, and that nothing happens where it can't be printed.
#include <QDir>
#include <QPainter>
#include <QTest>

#include "cash/cash_desk.h"
#include "cash/start_card.h"
#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"
#include "tests/platform/report/printed.h"
#include "tests/support/read_bars.h"
#include "tests/support/report_doors.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kPrinted = "Startkarte gedruckt.";
const QString kFailed = "Die Startkarte wurde nicht gedruckt";

constexpr int kDotsPerMetre = 7992;  // 203 an inch

}  // namespace

class TestStartCard : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->deliver();
    till->fill(
        "Zeilen Disziplin\n  ID | Name | CmdIndex\n  1 | LG Meister | 2\n  2 | LP | 1\n"
        "Zeilen Kombination_Name\n  ID | Kombinationsname | CmdIndex\n  1 | Pokal | 1\n"
        "Zeilen Kasse_DisziKombi\n  EinlageID | DisziKZ | DisziKombiID | Anzahl\n"
        "  1 | 1 | 1 | 2\n  1 | 1 | 2 | 1\n  2 | 1 | 1 | 1\n  5 | 2 | 1 | 1\n  3 | 2 | 1 | 4\n");
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    desk->sBez1 = "Jubiläumsschießen";
    desk->sOrt = "Grünau";
    door.meanwhile = [this](const ReportOrder& order) {
      try {
        look(order);
      } catch (const Error& error) {
        failTest(error.description());  // nobody else would say it
        throw;
      }
    };
  }
  void cleanup() {
    desk.reset();
    till.reset();
    door = {};
    lines.clear();
  }

  void paidDisciplinesInTheOrderOfTheDesk();
  void whatIsPrinted();
  void aShooterWhoHasPaidNothing();
  void aStartNumberThatNoBarCodeHolds();
  void nothingHappensWithoutATemplate();
  void nothingHappensWithoutAPrinter();
  void nothingHappensWithoutAStore();

 private:
  void pay() {
    till->fill(
        "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
        "  107 | 1 | nein | 15 | 19.11.2026\n  107 | 2 | nein | 3,5 | 19.11.2026\n"
        "  107 | 2 | nein | 3,5 | 19.11.2026\n  107 | 5 | ja | 12,5 | 19.11.2026\n"
        "  108 | 3 | nein | 5 | 19.11.2026\n");
  }
  void show(const QString& number) {
    till->random.give({0.5});
    QVERIFY(desk->UpdateStartNr(number, "SG Grünau", "Grünau I"));
  }
  /// The card as it would come out of the printer.
  void look(const ReportOrder& order) {
    report::Input input;
    input.dataFile = order.dataFile;
    input.now = till->clock.now();
    report::Document document(report::readReport(till->files, order.reportFile), input);
    lines = printedLines(document);
    QImage sheet(QSize(1200, 1700), QImage::Format_RGB32);
    sheet.setDotsPerMeterX(kDotsPerMetre);
    sheet.setDotsPerMeterY(kDotsPerMetre);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    document.paint(painter, 0);
    painter.end();
    scanned = barsOn(sheet);
  }
  QStringList left() { return QDir(qEnvironmentVariable("temp")).entryList(QDir::Files); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  NotedReports door;
  QStringList lines;
  QString scanned;
};

void TestStartCard::paidDisciplinesInTheOrderOfTheDesk() {
  pay();
  show("107");
  QStringList found;
  for (const StartCard::Zeile& line : startkarteFuer(*desk).Disziplinen)
    found << QString("%1 %2 %3").arg(line.kombi ? "K" : "D", line.Bezeichnung).arg(line.Anzahl);
  QCOMPARE(found, (QStringList{"D LP 1", "D LG Meister 4"}));
  show("108");
  const std::vector<StartCard::Zeile> paid = startkarteFuer(*desk).Disziplinen;
  QCOMPARE(paid.size(), size_t(1));
  QVERIFY(paid[0].kombi && paid[0].Bezeichnung == "Pokal" && paid[0].Anzahl == 4);
}

void TestStartCard::whatIsPrinted() {
  pay();
  show("107");
  QCOMPARE(Kladde_Print(*desk, door), kPrinted);
  QCOMPARE(door.orders.size(), size_t(1));
  QVERIFY(door.orders[0].ziel == ReportOrder::Ziel::Drucker);
  QCOMPARE(door.orders[0].titel, "Startkarte 107");
  for (const char* line : {"Jubiläumsschießen", "107", "Müller Jörg", "Herren I", "SG Grünau", "Grünau I",
                           "geb. 14.05.1980", "Disziplin|LP|1", "Disziplin|LG Meister|4"})
    QVERIFY2(lines.join('|').contains(QString(line)), qPrintable(line + ("\n" + lines.join('\n'))));
  QCOMPARE(scanned, "107");
  QCOMPARE(left(), QStringList());
}

void TestStartCard::aShooterWhoHasPaidNothing() {
  show("5.1");
  QCOMPARE(Kladde_Print(*desk, door), kPrinted);
  QVERIFY(lines.contains("Noch nichts bezahlt."));
  QCOMPARE(scanned, "5.1");
}

void TestStartCard::aStartNumberThatNoBarCodeHolds() {
  till->fill("Zeilen Schützen\n  ID | Startnummer | Name\n  9 | Ω7 | Grieche Alex\n");
  show("Ω7");
  QCOMPARE(Kladde_Print(*desk, door), kPrinted);
  QCOMPARE(scanned, "nothing read");
}

void TestStartCard::nothingHappensWithoutATemplate() {
  show("107");
  QVERIFY(QFile::remove(till->path("programm/Startkarte.mdb")));
  QVERIFY(Kladde_Print(*desk, door).startsWith(kFailed + ": "));
  QVERIFY(door.orders.empty());
  QCOMPARE(left(), QStringList());
}

void TestStartCard::nothingHappensWithoutAPrinter() {
  show("107");
  door.error = 482;
  QCOMPARE(Kladde_Print(*desk, door), kFailed + ": " + errorDescription(482));
  QCOMPARE(left(), QStringList());
}

void TestStartCard::nothingHappensWithoutAStore() {
  QCOMPARE(Kladde_Print(*desk, door), kFailed + ": " + errorDescription(91));
  QVERIFY(door.orders.empty());
}

QTEST_MAIN(TestStartCard)
#include "test_start_card.moc"
