// The administration of the stakes on its real window.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "cash/barcode_text.h"
#include "cash/frmArtikel.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/text_grid.h"
#include "platform/look/look.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kMore = R"(
Zeilen Schützenklassen
  ID | Klasse        | KZ  | Alter von | Alter bis | Geschlecht | Auflage
  20 | Damen         | D1  | 21        | 60        | 2          | nein
  21 | Senioren      | S1  | 61        | 99        | 0          | ja

Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 1         | 1       | 1            | 2

Zeilen Kasse_Eingang
  ID  | Startnummer | KasseID | Betrag
  101 | 107         | 1       | 15
  102 | 107         | 2       | 3,5
)";

const QString kAskDisciplines =
    "Die Zuordnung der Disziplinen ist geändert und nicht gespeichert.\r\nJetzt speichern?";
const QString kKeepDonation = "Die Einlage >>Spende<< kann nicht geändert werden!";

}  // namespace

class TestFrmArtikel : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    till->fillDisciplines();
    till->fill(kMore);
    window = std::make_unique<frmArtikel>(till->workplace(), till->global);
    window->show();
    if (!QTest::qWaitForWindowActive(window.get())) failTest("the window doesn't become active");
  }
  void cleanup() {
    window.reset();
    till.reset();
  }

  void aCompetitionThatIsGone();
  void theFourTabs();
  void theButtons();
  void aChangedStake();
  void anEmptyPriceIsNothing();
  void aNewStake();
  void theDonationStays();
  void aLongArticleNumber();
  void anArticleNumberThatDoesntComeBack();
  void deletingAStake();
  void emptyingAStake();
  void emptyingTheTill();
  void stakesOfClubs();
  void disciplinesOfAStake();
  void aForgottenSave();
  void aSaveThatFailsStaysWithItsStake();
  void aReleaseThatCantBeSavedStaysWithItsStake();
  void failuresOfTheAssignments();
  void noTickLeavesNoRows();
  void aTickWithoutAStakeIsNobodys();
  void aStakeDeletedWhileItIsEdited();
  void classesOfAStake();
  void classesByTheirTraits();
  void nothingTickedSelectsAll();
  void closingStoresTheRow();
  void manners();

 private:
  template <class T>
  T& on(const QString& name) {
    return the<T>(*window, name);
  }
  void press(const QString& button) { click(*window, button); }
  void show(int tab) { on<QTabWidget>("SSTab1").setCurrentIndex(tab); }
  BoundGrid& grid() { return on<BoundGrid>("TDBGrid1"); }
  /// What a cell is changed to by the operator; the row isn't left yet.
  void enter(BoundGrid& where, int row, const QString& field, const QVariant& value) {
    where.setCurrentRow(row);
    QVERIFY(where.rows()->setValue(row, field, value));
  }
  QString stake(int id, const QStringList& columns) {
    return till->read(QString("Select * from Kasse_Verwaltung where ID = %1").arg(id), columns).value(0);
  }
  QStringList selected() {
    QStringList names;
    for (const QListWidgetItem* entry : on<QListWidget>("lstSchuetzenKlassen").selectedItems())
      names += entry->text();
    names.sort();
    return names;
  }
  QStringList ticked() {
    const TextTable& table = *on<TextGrid>("flexBarcode").table();
    QStringList lines;
    for (int row = 1; row < table.rows(); ++row)
      if (table.isTicked(row, 1))
        lines += table.text(row, 2) + " " + table.text(row, 3) + " " + table.text(row, 4);
    return lines;
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<frmArtikel> window;
};

/// The server is away for a moment: nothing of the window acts on a competition that isn't there.
void TestFrmArtikel::aCompetitionThatIsGone() {
  window.reset();
  till->global.sWettkampf = till->path("fort.qkk");
  till->dialogs.expect("Fehler: 3024 - " + errorDescription(3024) + "\nFehler beim Laden der Einlagen!",
                       BoxAnswer::Abort);
  window = std::make_unique<frmArtikel>(till->workplace(), till->global);
  window->show();
  QVERIFY(!on<QTabWidget>("SSTab1").isEnabled());
}

void TestFrmArtikel::theFourTabs() {
  QCOMPARE(window->windowTitle(), "Kassenverwaltung - Einlagen");
  auto& tabs = on<QTabWidget>("SSTab1");
  QStringList titles;
  for (int i = 0; i < tabs.count(); ++i) titles += tabs.tabText(i);
  QCOMPARE(titles,
           (QStringList{"Schützen", "Vereine, Mannschaften", "Zuordnung-Disziplinen", "Zuordnung Klassen"}));
  const auto header = [](BoundGrid& where) {
    QStringList names;
    for (int column = 0; column < where.model()->columnCount(); ++column)
      names += where.model()->headerData(column, Qt::Horizontal).toString();
    return names;
  };
  QCOMPARE(header(grid()),
           (QStringList{"Platz", "Bezeichnung", "ArtikelNr", "Betrag", "Kauf-Anzahl", "Offen"}));
  QCOMPARE(header(on<BoundGrid>("TDBGrid2")),
           (QStringList{"Platz", "Bezeichnung", "Betrag", "Nachkauf", "Verein"}));
  QCOMPARE(on<QLabel>("lblKaufanzahl").text(), "Kaufanzahl 0 = unbeschränkter Nachkauf möglich");
  QCOMPARE(on<QLabel>("lblNachkauf").text(), "Nachkauf 0 = unbeschränkter Nachkauf möglich");
  QCOMPARE(grid().rows()->count(), 7);
  QCOMPARE(grid().rows()->index(0, 3).data().toString(), "15,00 €");
  QCOMPARE(on<QListWidget>("lstEinlagen").count(), 7);
  QCOMPARE(on<QListWidget>("lstSchuetzenKlassen").count(), 4);
  QVERIFY(grid().hasFocus());
}

void TestFrmArtikel::theButtons() {
  for (const char* name : {"cmdDelEinlage", "cmdDelEinlageMV"})
    QVERIFY2(on<QPushButton>(name).text().remove('&') == "Einlage leeren...", name);
  QCOMPARE(on<QPushButton>("cmdDelAll").text().remove('&'), "Kasse leeren...");
}

void TestFrmArtikel::aChangedStake() {
  till->execute("UPDATE Kasse_Verwaltung SET Verein = Null WHERE ID = 2");  // as older programs leave it
  press("cmdRefresh");
  enter(grid(), 1, "Bezeichnung", "Nachkauf");
  enter(grid(), 1, "ArtikelNr", "77");
  QVERIFY(grid().submitRow());
  QCOMPARE(stake(2, {"Bezeichnung", "Verein", "ArtikelEAN13", "ArtikelCODE128", "ArtikelCODE39"}),
           "Nachkauf|0|" + EAN13Text("400000000077").replace('|', '/') + "|" + Code128Text("77") + "|*77*");
}

void TestFrmArtikel::anEmptyPriceIsNothing() {
  enter(grid(), 0, "Betrag", QVariant());
  enter(grid(), 0, "Nachkauf", QVariant());
  QVERIFY(grid().submitRow());
  QCOMPARE(stake(1, {"Betrag", "Nachkauf"}), "0|0");
}

void TestFrmArtikel::aNewStake() {
  enter(grid(), 7, "Bezeichnung", "Getränk");
  QVERIFY(grid().submitRow());
  QCOMPARE(till->read("Select * from Kasse_Verwaltung where Bezeichnung = 'Getränk'",
                      {"Verein", "Betrag", "Nachkauf", "VorgabeOffen", "ArtikelEAN13"}),
           QStringList("0|0|0|0|"));
}

void TestFrmArtikel::theDonationStays() {
  till->dialogs.expect(kKeepDonation).titled("Hinweis");
  enter(grid(), 5, "Bezeichnung", "Trinkgeld");
  grid().submitRow();
  QVERIFY(!grid().rows()->isEdited());
  QCOMPARE(stake(6, {"Bezeichnung"}), "Spende");
  till->dialogs.expect("Die Einlagenart >>Spende<< kann nicht gelöscht werden.").titled("Hinweis");
  grid().setCurrentRow(5);
  press("cmdDelete");
  QCOMPARE(stake(6, {"Bezeichnung"}), "Spende");
}

void TestFrmArtikel::aLongArticleNumber() {
  enter(grid(), 0, "ArtikelNr", "1234567890123");
  till->dialogs.expect("Hinweis: Bei EAN13 sind nur die ersten 12 Zahlen relevant!");
  QVERIFY(grid().submitRow());
  QCOMPARE(stake(1, {"ArtikelNr", "ArtikelCODE39"}), "123456789012|*123456789012*");
}

void TestFrmArtikel::anArticleNumberThatDoesntComeBack() {
  enter(grid(), 0, "ArtikelNr", "007");
  QCOMPARE(grid().rows()->index(0, 2).data().toString(), "007  (vom EAN-Code kommt sie nicht zurück)");
  QVERIFY(grid().submitRow());
  QCOMPARE(stake(1, {"ArtikelNr"}), "007");
}

void TestFrmArtikel::deletingAStake() {
  grid().setCurrentRow(1);
  const QString ask = "Soll die Einlage: Nachkauf Serie wirklich gelöscht werden?";
  till->dialogs.expect(ask, BoxAnswer::No).presetting(BoxAnswer::No);
  press("cmdDelete");
  till->dialogs.expect(ask, BoxAnswer::Yes);
  press("cmdDelete");
  QCOMPARE(stake(2, {"ID"}), "");
  QCOMPARE(grid().currentRow(), 0);
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"ID"}), (QStringList{"101", "102"}));
}

void TestFrmArtikel::emptyingAStake() {
  grid().setCurrentRow(0);
  const QString ask = "Sollen alle Kasseneingänge der Einlage: Startgeld unwiderruflich gelöscht werden?";
  till->dialogs.expect(ask, BoxAnswer::No).presetting(BoxAnswer::No);
  press("cmdDelEinlage");
  till->dialogs.expect(ask, BoxAnswer::Yes);
  till->dialogs.expect("Alle Eingänge von der Einlage: Startgeld wurden gelöscht!");
  press("cmdDelEinlage");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"ID"}), QStringList("102"));
}

void TestFrmArtikel::emptyingTheTill() {
  const QString ask = "Sollen alle Kasseneingänge unwiderruflich gelöscht werden?";
  till->dialogs.expect(ask, BoxAnswer::No).titled("Hinweis").presetting(BoxAnswer::No);
  press("cmdDelAll");
  QCOMPARE(till->payments().size(), 2);
  till->dialogs.expect(ask, BoxAnswer::Yes);
  till->dialogs.expect("Alle Eingänge wurden gelöscht!");
  press("cmdDelAll");
  QVERIFY(till->payments().isEmpty());
}

void TestFrmArtikel::stakesOfClubs() {
  show(1);
  auto& clubs = on<BoundGrid>("TDBGrid2");
  enter(clubs, 1, "Bezeichnung", "Spende");
  QVERIFY(clubs.submitRow());
  QCOMPARE(till->read("Select * from Kasse_Verwaltung where Bezeichnung = 'Spende' order by ID", {"Verein"}),
           (QStringList{"0", "-1"}));
  clubs.setCurrentRow(1);
  till->dialogs.expect("Soll die Einlage: Spende wirklich gelöscht werden?", BoxAnswer::Yes);
  press("cmdDeleteMV");
  clubs.setCurrentRow(0);
  till->dialogs.expect(
      "Sollen alle Kasseneingänge der Einlage: Vereinsbeitrag unwiderruflich gelöscht werden?",
      BoxAnswer::Yes);
  till->dialogs.expect("Alle Eingänge von der Einlage: Vereinsbeitrag wurden gelöscht!");
  press("cmdDelEinlageMV");
  press("cmdRefreshMV");
  QCOMPARE(clubs.rows()->count(), 1);
}

void TestFrmArtikel::disciplinesOfAStake() {
  show(2);
  on<QListWidget>("lstEinlagen").setCurrentRow(0);
  QCOMPARE(ticked(), QStringList("D LG Meister 2"));
  TextTable& table = *on<TextGrid>("flexBarcode").table();
  QVERIFY(table.setData(table.index(2, 4), "15", Qt::EditRole));  // who gives a number means the row
  QCOMPARE(ticked(), (QStringList{"D LG Meister 2", "K Pokal 15"}));
  press("cmdSaveDisziKombi");
  QCOMPARE(till->read("Select * from Kasse_DisziKombi order by ID",
                      {"EinlageID", "DisziKZ", "DisziKombiID", "Anzahl"}),
           (QStringList{"1|1|1|2", "1|2|1|15"}));
  on<QListWidget>("lstEinlagen").setCurrentRow(1);
  QCOMPARE(ticked(), QStringList());
  QVERIFY(on<TextGrid>("flexBarcode").hasSuggestions());
}

void TestFrmArtikel::aForgottenSave() {
  show(2);
  on<QListWidget>("lstEinlagen").setCurrentRow(0);
  TextTable& table = *on<TextGrid>("flexBarcode").table();
  QVERIFY(table.setData(table.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  till->dialogs.expect(kAskDisciplines, BoxAnswer::Yes);
  on<QListWidget>("lstEinlagen").setCurrentRow(1);
  QCOMPARE(till->read("Select * from Kasse_DisziKombi where EinlageID = 1", {"ID"}).size(), 2);
  QVERIFY(table.setData(table.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  till->dialogs.expect(kAskDisciplines, BoxAnswer::No);
  press("cmdClose");
  QVERIFY(!window->isVisible());
  QCOMPARE(till->read("Select * from Kasse_DisziKombi", {"ID"}).size(), 2);
}

/// The list stands on the stake that the table shows: or "Speichern" would write one stake's ticks to
/// another.
void TestFrmArtikel::aSaveThatFailsStaysWithItsStake() {
  show(2);
  auto& stakes = on<QListWidget>("lstEinlagen");
  stakes.setCurrentRow(0);
  TextTable& table = *on<TextGrid>("flexBarcode").table();
  QVERIFY(table.setData(table.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  refuse(till->competition(), StoreAct::Insert, "Kasse_DisziKombi", "EinlageID", 1);
  till->dialogs.expect(kAskDisciplines, BoxAnswer::Yes);
  till->dialogs.expect(till->failureOfAct("INSERT INTO Kasse_DisziKombi (EinlageID) VALUES (1)") +
                           "\nFehler beim Speichern der Disziplinen-Kombinationen!",
                       BoxAnswer::Abort);
  stakes.setCurrentRow(1);
  QTRY_COMPARE(stakes.currentRow(), 0);
  QCOMPARE(ticked().size(), 2);
  till->dialogs.expect(kAskDisciplines, BoxAnswer::No);
  stakes.setCurrentRow(1);
  QCOMPARE(stakes.currentRow(), 1);
  QCOMPARE(ticked(), QStringList());
}

void TestFrmArtikel::aReleaseThatCantBeSavedStaysWithItsStake() {
  show(3);
  auto& stakes = on<QListWidget>("lstEinlagenKlasse");
  stakes.setCurrentRow(0);
  tick(*window, "lstSchuetzenKlassen", "Damen");
  refuse(till->competition(), StoreAct::Insert, "Kasse_Schuetzenklassen", "KasseEinlageID", 1);
  const QString ask = "Die Zuordnung der Klassen ist geändert und nicht gespeichert.\r\nJetzt speichern?";
  till->dialogs.expect(ask, BoxAnswer::Yes);
  till->dialogs
      .expect(till->failureOfAct("INSERT INTO Kasse_Schuetzenklassen (KasseEinlageID) VALUES (1)") +
                  "\nFehler beim Speichern der Einlagen zu Schützenklassen!",
              BoxAnswer::Abort)
      .with(BoxButtons::AbortRetryIgnore);
  stakes.setCurrentRow(3);
  QTRY_COMPARE(stakes.currentRow(), 0);
  QCOMPARE(selected(), QStringList("Damen"));
  till->dialogs.expect(ask, BoxAnswer::No);
  stakes.setCurrentRow(3);
  QCOMPARE(selected(), QStringList("Schüler"));
}

void TestFrmArtikel::failuresOfTheAssignments() {
  for (const char* name : {"Kasse_DisziKombi", "Kasse_Schuetzenklassen", "Schützenklassen"})
    till->store()->dropTable(name);
  const auto expect = [this](const QString& table, const QString& text) {
    till->dialogs.expect(till->failureOf("Select * from " + table) + "\n" + text, BoxAnswer::Abort)
        .with(BoxButtons::AbortRetryIgnore);
  };
  // The tab may choose the first stake by itself.
  expect("Kasse_DisziKombi", "Fehler Ermitteln der Disziplin-Kombination!");
  show(2);
  on<QListWidget>("lstEinlagen").setCurrentRow(0);
  expect("Kasse_DisziKombi", "Fehler beim Speichern der Disziplinen-Kombinationen!");
  press("cmdSaveDisziKombi");
  expect("Kasse_Schuetzenklassen", "Fehler Ermitteln der Einlage zu Schützenklassen!");
  show(3);
  on<QListWidget>("lstEinlagenKlasse").setCurrentRow(0);
  expect("Kasse_Schuetzenklassen", "Fehler beim Speichern der Einlagen zu Schützenklassen!");
  press("cmdSaveEinlagenKlassen");
  expect("Schützenklassen", "Fehler beim Setzen der Schützenklassen-Auswahl!");
  press("cmdKlassenSetzen");
}

void TestFrmArtikel::aTickWithoutAStakeIsNobodys() {
  show(2);
  on<QListWidget>("lstEinlagen").setCurrentRow(-1);
  TextTable& table = *on<TextGrid>("flexBarcode").table();
  QVERIFY(table.setData(table.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  press("cmdClose");  // nothing is asked
  QVERIFY(!window->isVisible());
}

void TestFrmArtikel::aStakeDeletedWhileItIsEdited() {
  enter(grid(), 1, "Betrag", "4");
  till->dialogs.expect("Soll die Einlage: Nachkauf Serie wirklich gelöscht werden?", BoxAnswer::Yes);
  press("cmdDelete");
  QCOMPARE(stake(2, {"Betrag"}), QString());
  press("cmdClose");
  QVERIFY(!window->isVisible());
}

void TestFrmArtikel::noTickLeavesNoRows() {
  show(2);
  on<QListWidget>("lstEinlagen").setCurrentRow(0);
  TextTable& table = *on<TextGrid>("flexBarcode").table();
  QCOMPARE(ticked(), QStringList("D LG Meister 2"));
  QVERIFY(table.setData(table.index(1, 1), Qt::Unchecked, Qt::CheckStateRole));
  press("cmdSaveDisziKombi");
  QCOMPARE(till->read("Select * from Kasse_DisziKombi", {"ID"}), QStringList());
  on<QListWidget>("lstEinlagen").setCurrentRow(1);
  on<QListWidget>("lstEinlagen").setCurrentRow(0);
  QCOMPARE(ticked(), QStringList());
}

void TestFrmArtikel::classesOfAStake() {
  show(3);
  on<QListWidget>("lstEinlagenKlasse").setCurrentRow(3);
  QCOMPARE(selected(), QStringList("Schüler"));
  on<QListWidget>("lstSchuetzenKlassen").clearSelection();
  press("cmdSaveEinlagenKlassen");
  QVERIFY(till->read("Select * from Kasse_Schuetzenklassen where KasseEinlageID = 4", {"ID"}).isEmpty());
  on<QListWidget>("lstEinlagenKlasse").setCurrentRow(0);
  QCOMPARE(selected(), QStringList());
  tick(*window, "lstSchuetzenKlassen", "Damen");
  press("cmdSaveEinlagenKlassen");
  QCOMPARE(till->read("Select * from Kasse_Schuetzenklassen", {"KasseEinlageID", "SchuetzenklasseID"}),
           QStringList("1|20"));
}

void TestFrmArtikel::classesByTheirTraits() {
  show(3);
  press("chkAuflage");
  press("cmdKlassenSetzen");
  QCOMPARE(selected(), QStringList("Senioren"));
  press("chkFreihand");
  press("chkDamen");
  press("chkueber18");
  press("cmdKlassenSetzen");
  QCOMPARE(selected(), (QStringList{"Damen", "Senioren"}));
}

void TestFrmArtikel::nothingTickedSelectsAll() {
  show(3);
  press("cmdKlassenSetzen");
  QCOMPARE(selected().size(), 4);
}

void TestFrmArtikel::closingStoresTheRow() {
  enter(grid(), 0, "Bezeichnung", "Startgebühr");
  press("cmdClose");
  QVERIFY(!window->isVisible());
  QCOMPARE(stake(1, {"Bezeichnung"}), "Startgebühr");
}

void TestFrmArtikel::manners() {
  for (int tab = 0; tab < 4; ++tab) {
    show(tab);
    QCOMPARE(badManners(*window).join("; "), QString());
  }
}

QTEST_MAIN(TestFrmArtikel)
#include "test_frm_artikel.moc"
