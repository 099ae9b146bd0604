// Which labels a purchase pays for.
#include <QTest>
#include <memory>

#include "cash/label_selection.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

namespace {

// Startgeld pays for two targets of discipline 1 and one of combination 1, Teiler for three of discipline 1.
const char* const kPaid = R"(
Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 1         | 1       | 1            | 2
  2  | 1         | 2       | 1            | 1
  3  | 3         | 1       | 1            | 3
  4  | 3         | 1       | 99           | 3
)";

}  // namespace

class TestLabelSelection : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fillDisciplines();
    till->fill(kPaid);
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    desk->UpdateStartNr("107", "", "");
    selection = std::make_unique<LabelSelection>(*desk);
    selection->LoadDisziKombiBaum(ladeDisziKombi(desk->database()));
  }
  void cleanup() {
    selection.reset();
    desk.reset();
    till.reset();
  }

  void rebuiltTableHasEverythingTicked() {
    QCOMPARE(table(), (QStringList{"1 D LG Glück 1 keine Einlage", "1 D LG Meister 1 ", "1 K Pokal 1 "}));
    QCOMPARE(selection->flexBarcode().rowData(2), "1");
  }

  void nothingInHandTicksNothing() {
    selection->UpdateBarcodeAnzeige(-1);
    QCOMPARE(table(), (QStringList{" D LG Glück 0 keine Einlage", " D LG Meister 0 ", " K Pokal 0 "}));
    QVERIFY(selection->gewaehlt().empty());
  }

  void allRowsOfThePurchaseAddUp() {
    buy();
    selection->UpdateBarcodeAnzeige(-1);
    QCOMPARE(table(), (QStringList{" D LG Glück 0 keine Einlage", "1 D LG Meister 5 ", "1 K Pokal 1 "}));
    const std::vector<LabelRow> rows = selection->gewaehlt();
    QCOMPARE(rows.size(), size_t(2));
    QCOMPARE(rows[0].kombination, false);
    QCOMPARE(rows[0].id, 1);
    QCOMPARE(rows[0].name, "LG Meister");
    QCOMPARE(rows[0].anzahl, 5);
    QCOMPARE(rows[1].kombination, true);
  }

  void whatIsBoughtTwiceCountsTwice() {
    for (int times = 0; times < 2; ++times) desk->purchase().AddKauf(3);
    selection->UpdateBarcodeAnzeige(-1);
    QCOMPARE(table().at(1), "1 D LG Meister 6 ");
  }

  void theSampleIsTheFirstDiscipline() {
    const LabelRow sample = selection->muster();
    QCOMPARE(sample.kombination, false);
    QCOMPARE(sample.id, 2);
    QCOMPARE(sample.name, "LG Glück");
  }

  void oneRowOfThePurchase() {
    buy();
    selection->UpdateBarcodeAnzeige(2);
    QCOMPARE(table(), (QStringList{" D LG Glück 0 keine Einlage", "1 D LG Meister 3 ", " K Pokal 0 "}));
  }

  void byHandThePurchaseLeavesItAlone() {
    buy();
    selection->setManuell(true);
    selection->UpdateBarcodeAnzeige(-1);
    QCOMPARE(table().last(), "1 K Pokal 1 ");
    QVERIFY(selection->flexBarcode().isEditable(LabelColumn::Anz));
    selection->setManuell(false);
    QVERIFY(!selection->flexBarcode().isEditable(LabelColumn::Anz));
    QVERIFY(!selection->flexBarcode().isEditable(LabelColumn::Gewaehlt));
  }

  void aFailureIsReported() {
    buy();
    till->store()->dropTable("Kasse_DisziKombi");
    till->dialogs
        .expect(
            till->failureOf("Select * from Kasse_DisziKombi") + "\nFehler Aktualisieren der Barcode-Anzeige!",
            BoxAnswer::Abort)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore);
    selection->UpdateBarcodeAnzeige(-1);
  }

 private:
  void buy() {
    desk->purchase().AddKauf(1);
    desk->purchase().AddKauf(3);
  }
  QStringList table() const {
    QStringList lines;
    const TextTable& all = selection->flexBarcode();
    for (int row = 1; row < all.rows(); ++row) {
      QStringList cells;
      for (int column = LabelColumn::Gewaehlt; column < all.columns(); ++column)
        cells += all.text(row, column);
      lines += cells.join(' ');
    }
    return lines;
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  std::unique_ptr<LabelSelection> selection;
};

QTEST_GUILESS_MAIN(TestLabelSelection)
#include "test_label_selection.moc"
