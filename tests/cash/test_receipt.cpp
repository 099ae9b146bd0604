// The data file behind a receipt: what the window shows, in the tables that the report reads.
#include <QDir>
#include <QFile>
#include <QTest>
#include <memory>

#include "cash/receipt.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Reads the data file while the report would run on it.
class ReadingDoor : public ReportDoor {
 public:
  bool run(const ReportOrder& given) override {
    order = given;
    if (failure) throw Error(*failure);
    const auto db = dao::Database::open(given.dataFile);
    const auto line = [&](const QString& table, const QStringList& columns) {
      QStringList lines;
      for (const auto rs = db->openRecordset("Select * from " + table + " order by ID"); !rs->eof();
           rs->moveNext()) {
        QStringList cells;
        for (const QString& column : columns) {
          const QVariant value = rs->value(column);
          cells += value.isNull()                           ? "Null"
                   : value.typeId() == QMetaType::QDateTime ? dateText(value.toDateTime())
                   : value.canConvert<Money>()              ? value.value<Money>().toText()
                                                            : value.toString();
        }
        lines += cells.join('|');
      }
      return lines;
    };
    title = line("Wettkampf", {"EndText", "Bez1", "Bez2", "Ort"});
    shooter =
        line("Schütze", {"Startnummer", "Name", "GebDat", "Klasse", "Disziplin", "Verein", "Mannschaft"});
    groups = line("Schützengruppen", {"startnummer", "Bezeichnung"});
    rows = line("Kasse", {"Startnummer", "Bezeichnung", "Offen", "Betrag", "Datum"});
    targets = line("Scheiben", {"Startnummer", "Scheibennr", "Ausgabe", "Bezeichnung", "Zuordnung", "Typ"});
    return true;
  }
  ReportOrder order;
  QStringList title, shooter, groups, rows, targets;
  std::optional<int> failure;
};

}  // namespace

class TestReceipt : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    makeReceiptTemplate(till->path("programm/ErgKasseDruck.mdb"));
    till->random.give({0.5});
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    desk->sBez1 = "Jubiläumsschießen";
    desk->sBez2 = "150 Jahre";
    desk->sOrt = "Grünau";
    QVERIFY(desk->UpdateStartNr("107", "SG Grünau", "Grünau I"));
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void whatStandsOnIt();
  void thePurchaseInHandHasOneDate();
  void storedPaymentsHaveTheirOwn();
  void targetsAndWhatIsMissing();
  void theOrderOfTheReport();
  void theDataFileIsGoneAfterwards();
  void aFailureIsReportedAndLeavesTheFile();
  void aMissingTemplate();

 private:
  void print(bool aktuellerKauf, ReportOrder::Ziel ziel = ReportOrder::Ziel::Fenster,
             std::vector<ReceiptTarget> scheiben = {}) {
    druckeBeleg(
        till->workplace(), door, [&] { return belegFuer(*desk, aktuellerKauf, scheiben); }, ziel);
  }
  QStringList left() { return QDir(qEnvironmentVariable("temp")).entryList({"ZVA*"}, QDir::Files); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  ReadingDoor door;
};

void TestReceipt::whatStandsOnIt() {
  till->fill(
      "Zeilen SchuetzenGruppen\n  SchGrpID | Bezeichnung\n  1 | Ehrengäste\n  2 | Helfer\n"
      "Zeilen SchuetzenGruppenZuordnung\n  SchuetzeID | GruppenID\n  1 | 2\n  2 | 1\n");
  print(true);
  QCOMPARE(door.title, QStringList("|Jubiläumsschießen|150 Jahre|Grünau"));
  QCOMPARE(door.shooter,
           QStringList("107|Müller Jörg|14.05.1980|Herren I|LG - |SG Grünau|Grünau I (Luftgewehr)"));
  QCOMPARE(door.groups, QStringList("107|Helfer"));
  QCOMPARE(door.rows, QStringList());
}

void TestReceipt::thePurchaseInHandHasOneDate() {
  desk->purchase().AddKauf(1);
  desk->purchase().AddKauf(5);
  till->clock.advance(60000);
  print(true);
  QCOMPARE(door.rows, (QStringList{"107|Startgeld|0|15|20.11.2026 10:01:00",
                                   "107|Festabend|-1|12,5|20.11.2026 10:01:00"}));
}

void TestReceipt::storedPaymentsHaveTheirOwn() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  107 | 2 | nein | 3,5 | 19.11.2026 09:00:00\n  107 | 99 | ja | 4 |\n");
  desk->ladeSchuetzenNeu();
  desk->purchase().AddKauf(1);
  print(false);
  QCOMPARE(door.rows, (QStringList{"107|Nachkauf Serie|0|3,5|19.11.2026 09:00:00", "107||-1|4|Null"}));
}

void TestReceipt::targetsAndWhatIsMissing() {
  print(true, ReportOrder::Ziel::Fenster,
        {{"38", "20.11.2026", "Stapel Meister", "LG Meister", "LG"}, {"7001", "", "", "LP", ""}});
  QCOMPARE(door.targets,
           (QStringList{"107|38|20.11.2026|Stapel Meister|LG Meister|LG", "107|7001|Null||LP|"}));
}

void TestReceipt::theOrderOfTheReport() {
  print(true, ReportOrder::Ziel::Drucker);
  QVERIFY(door.order.reportFile.endsWith("schnellkasse.rpt"));
  QVERIFY(door.order.reportFile.startsWith(till->path("programm")));
  QCOMPARE(door.order.unterbericht, "Scheibennummer");
  QCOMPARE(door.order.unterberichtDatei, door.order.dataFile);
  QCOMPARE(door.order.titel, "Kasse Eingänge");
  QCOMPARE(door.order.parameter, "");
  QCOMPARE(door.order.zoom, 90);
  QVERIFY(door.order.ziel == ReportOrder::Ziel::Drucker);
}

void TestReceipt::theDataFileIsGoneAfterwards() {
  print(true);
  QCOMPARE(left(), QStringList());
}

void TestReceipt::aFailureIsReportedAndLeavesTheFile() {
  door.failure = 5;
  till->dialogs
      .expect("Fehler: 5 - " + errorDescription(5) + "\nFehler beim Drucken der Kasseneingänge!",
              BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  print(true);
  QCOMPARE(left().size(), 1);
}

void TestReceipt::aMissingTemplate() {
  QVERIFY(QFile::remove(till->path("programm/ErgKasseDruck.mdb")));
  till->dialogs.expect("Fehler: 53 - " + errorDescription(53) + "\nFehler beim Drucken der Kasseneingänge!",
                       BoxAnswer::Abort);
  print(true);
}

QTEST_MAIN(TestReceipt)
#include "test_receipt.moc"
