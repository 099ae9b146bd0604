// Labels as they go to the printer, operation by operation.
#include <QTest>
#include <memory>

#include "cash/label_run.h"
#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/schema/schema_build.h"
#include "tests/cash/recorded_labels.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kStakes = R"(
Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 5         | 1       | 23           | 2
  2  | 6         | 1       | 23           | 9
  3  | 5         | 2       | 4            | 1
)";

}  // namespace

class TestLabelRun : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    static const StoreOriginal original([](const QString& path) { makeCompetition(path, {}); });
    original.copyTo(place->path("Pokal.qkk"));
    database = dao::Database::open(place->path("Pokal.qkk"));
    buildSchema(*database, parseSchema(kStakes, "test"));
    output = RecordedLabels();
    layout = LabelLayout();
    layout.printer = "Etikett";
    layout.first = {100, 200, false};
    layout.second = {300, 400, true};
    layout.textFont.name = "Textschrift";
    layout.barcodeFont.name = "Strichschrift";
    pauses.clear();
    stopAfter = -1;
  }
  void cleanup() {
    database.reset();
    place.reset();
  }

  void nothingTickedOnlyChangesThePrinter();
  void textLabel();
  void secondLabel();
  void drawnBars();
  void bothOnOneLabel();
  void whatNoFontEncodes();
  void aRunThatIsStopped();
  void withoutALabelPrinterTheCurrentOnePrints();
  void ean13TakesTheShootersId();
  void setsOfTheFirstStake();
  void unpaidDisciplineEndsTheRunThere();
  void unknownPrinter();

 private:
  int print(const std::vector<LabelRow>& rows) {
    LabelShooter shooter{"107", 4711, {}};
    shooter.felder.startnr = "107";
    return PrintScheibenEtiketten(output, *database, rows, layout, shooter,
                                  {[this] { return time; },
                                   [this](int milliseconds) {
                                     pauses << milliseconds;
                                     time = time.addMSecs(milliseconds);
                                   },
                                   [this] { return stopAfter-- != 0; }});
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  RecordedLabels output;
  LabelLayout layout;
  QDateTime time = QDateTime(QDate(2026, 3, 5), QTime(9, 0));
  QList<int> pauses;
  int stopAfter = -1;  // labels; -1 never
};

namespace {
const LabelRow kDiscipline{false, 23, "LG Meister", 1};
const LabelRow kCombination{true, 4, "Pokal", 1};
}  // namespace

void TestLabelRun::nothingTickedOnlyChangesThePrinter() {
  print({});
  QCOMPARE(output.lines, (QStringList{"printer Etikett", "printer Laser"}));
}

void TestLabelRun::textLabel() {
  layout.text = true;
  layout.vorlage = "startnr;nl;diszi";
  print({kCombination});
  QCOMPARE(output.lines,
           (QStringList{"printer Etikett", "at 100 200", "portrait", "column 100", "font Textschrift",
                        "column 100", "line 107", "column 100", "line K-Pokal", "end", "printer Laser"}));
}

void TestLabelRun::secondLabel() {
  layout.text = layout.barcode = layout.zweitesEtikett = true;
  layout.vorlage = "startnr";
  print({kDiscipline});
  // The text of the second label begins at the first one's column.
  QCOMPARE(output.lines,
           (QStringList{"printer Etikett", "at 100 200", "portrait", "font Strichschrift", "at 100 200",
                        "portrait", "bars 0 BC.107.1.23 " + Code128Text("BC.107.1.23"), "end", "at 300 400",
                        "landscape", "column 100", "font Textschrift", "column 100", "line 107", "end",
                        "printer Laser"}));
}

void TestLabelRun::drawnBars() {
  layout.barcode = true;
  layout.kind = BarcodeKind::Code39;
  print({kCombination});
  QCOMPARE(output.lines,
           (QStringList{"printer Etikett", "at 100 200", "portrait", "font Strichschrift", "at 100 200",
                        "portrait", "bars 1 BC.107.2.4 *BC.107.2.4*", "end", "printer Laser"}));
}

void TestLabelRun::bothOnOneLabel() {
  layout.barcode = layout.text = true;
  layout.vorlage = "startnr";
  print({kDiscipline});
  QCOMPARE(output.lines,
           (QStringList{"printer Etikett", "at 100 200", "portrait", "font Strichschrift", "at 100 200",
                        "portrait", "bars 0 BC.107.1.23 " + Code128Text("BC.107.1.23"), "column 100",
                        "font Textschrift", "column 100", "line 107", "end", "printer Laser"}));
}

void TestLabelRun::whatNoFontEncodes() {
  layout.barcode = true;
  LabelShooter shooter{"10ü", 1, {}};
  const LabelBarcode barcode = barcodeOf(kDiscipline, layout, shooter);
  QCOMPARE(barcode.content, "BC.10ü.1.23");
  QCOMPARE(barcode.encoded, "");
}

void TestLabelRun::aRunThatIsStopped() {
  layout.barcode = true;
  LabelRow row = kDiscipline;
  row.anzahl = 3;
  stopAfter = 2;
  QCOMPARE(print({row, kCombination}), 2);
  QCOMPARE(output.lines.count("end"), 2);
  QCOMPARE(output.current, "Laser");
  QCOMPARE(print({}), 0);
}

void TestLabelRun::withoutALabelPrinterTheCurrentOnePrints() {
  layout.printer.clear();
  layout.barcode = true;
  QCOMPARE(print({kDiscipline}), 1);
  QCOMPARE(output.lines.filter("printer"), QStringList("printer Laser"));
}

void TestLabelRun::ean13TakesTheShootersId() {
  layout.barcode = true;
  layout.kind = BarcodeKind::Ean13;
  print({kDiscipline});
  QVERIFY(output.lines.contains("bars 2 400471110023 " + EAN13Text("400471110023")));
}

void TestLabelRun::setsOfTheFirstStake() {
  layout.text = true;
  layout.vorlage = "anzsch; ;uhrgenau";
  LabelRow row = kDiscipline;
  row.anzahl = 3;
  print({row});
  QCOMPARE(output.lines.filter("line"), (QStringList{"line 1 von 2 09:00:00 (1)", "line 2 von 2 09:00:00 (1)",
                                                     "line 1 von 2 09:00:01 (2)"}));
  QCOMPARE(pauses, QList<int>{1000});
  QCOMPARE(output.lines.count("end"), 3);
}

void TestLabelRun::unpaidDisciplineEndsTheRunThere() {
  layout.barcode = true;
  QString said;
  try {
    print({kDiscipline, {false, 99, "LP 20", 1}, kCombination});
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3021);
    said = error.description();
  }
  QVERIFY(said.contains("'LP 20'"));
  QCOMPARE(output.lines.count("end"), 1);
  QCOMPARE(output.current, "Etikett");
}

void TestLabelRun::unknownPrinter() {
  layout.printer = "weg";
  QCOMPARE(errorOf([&] { print({kDiscipline}); }), 482);
  QCOMPARE(output.current, "Laser");
}

QTEST_GUILESS_MAIN(TestLabelRun)
#include "test_label_run.moc"
