// The discipline grid of a line: reading it, the rules of its columns, groups, additional shots.
#include <QTest>

#include "link/linecontrol/line_disciplines.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/textcodec.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;
using Column = LineDisciplines::Column;

namespace {

QStringList cells(const LineDisciplines& grid, int row) {
  QStringList all;
  for (int column = 0; column < LineDisciplines::ColumnCount; ++column) all << grid.table().text(row, column);
  return all;
}

}  // namespace

class TestLineDisciplines : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    grid_ = std::make_unique<LineDisciplines>(place_->workplace());
    writeIni("Bezeichnung = \"LG Auflage\"\r\nDefinition = \"0_hd_lg.def\"\r\nBezeichnung=\"LP 20\"\r\n");
    place_->files.write(place_->path("0_hd_lg.def"), ">Schusszahl\r\n\"40\"\r\n");
  }
  void cleanup() {
    grid_.reset();
    place_.reset();
  }

  void readsNamesAndShotCounts() {
    read();
    QCOMPARE(grid_->table().rows(), 3);
    QCOMPARE(cells(*grid_, 1), (QStringList{"0", "LG Auflage", "40", "40", "", "40"}));
    QCOMPARE(cells(*grid_, 2), (QStringList{"0", "LP 20", "", "", "", ""}));
    QCOMPARE(grid_->table().rowData(2), QString("Diszi2"));
    QCOMPARE(grid_->table().text(0, Column::Name), QString("Disziplin"));
    QCOMPARE(grid_->table().text(0, Column::Gesamt), QString("Ges."));
  }

  void readingAgainBeginsAnew() {
    read();
    read();
    QCOMPARE(grid_->table().rows(), 3);
  }

  /// Each has a file in a folder of the network: lines that are loaded together read them once.
  void readWithOthersFilesAreReadOnce() {
    LineReadings shared(1);
    read(shared);
    place_->files.write(place_->path("0_hd_lg.def"), ">Schusszahl\r\n\"60\"\r\n");
    LineDisciplines other(place_->workplace());
    other.read(place_->path() + "/", shared);
    QCOMPARE(cells(other, 1), (QStringList{"0", "LG Auflage", "40", "40", "", "40"}));
    QCOMPARE(cells(other, 2), (QStringList{"0", "LP 20", "", "", "", ""}));
    QCOMPARE(other.table().rows(), 3);
    read();
    QCOMPARE(cells(*grid_, 1), (QStringList{"0", "LG Auflage", "60", "60", "", "60"}));
  }

  /// Each line says what it couldn't read, and the next one tries again.
  void whatIsMissingIsNotShared() {
    LineReadings shared(1);
    const QByteArray ini = place_->files.read(place_->path("esa_preis.ini"));
    place_->files.remove(place_->path("esa_preis.ini"));
    for (int line = 0; line < 2; ++line) {
      place_->dialogs.expect(iniMissingText(place_->path("esa_preis.ini"))).titled("Fehler");
      read(shared);
      QCOMPARE(grid_->table().rows(), 1);
    }
    place_->files.write(place_->path("esa_preis.ini"), ini);
    read(shared);
    QCOMPARE(grid_->table().rows(), 3);
  }

  void missingIniIsToldAndLeavesTheGridEmpty() {
    read();
    place_->files.remove(place_->path("esa_preis.ini"));
    place_->dialogs
        .expect("Datei: " + place_->path() +
                "/esa_preis.ini nicht gefunden!\r\n"
                "Hinweis: Diese Fehlermeldung erscheint noch je Linie!\r\n\r\n"
                "Bitte setzen Sie im Menü: Optionen - Standeinstellungen den Intarso-Netzwerkpfad.")
        .titled("Fehler")
        .showing(BoxIcon::Critical);
    read();
    QCOMPARE(grid_->table().rows(), 1);
  }

  void unreadableIniIsReported() {
    place_->files.fail(FileStep::Read, "esa_preis.ini", 70, 1);
    place_->dialogs
        .expect(
            "Fehler: 70 - " + errorDescription(70) + "\nFehler beim Ermittelen der Intarso-Schusszahlen DEF!",
            BoxAnswer::Abort)
        .titled("Fehler");
    read();
    QCOMPARE(grid_->table().rows(), 1);
  }

  void theOperatorTypesTicksAndAdditionalShotsOnly() {
    QVERIFY(grid_->table().isEditable(Column::Auswahl));
    QVERIFY(grid_->table().isEditable(Column::Nachkauf));
    for (int column : {Column::Name, Column::Schuss, Column::Gesamt, Column::Grundwert})
      QVERIFY(!grid_->table().isEditable(column));
  }

  void fewerShotsThanTheDefFileAreRefused() {
    read();
    grid_->table().setText(1, Column::Schuss, "39");
    place_->dialogs.expect("Schusszahl unter Einstellung in DEF-Datei!")
        .titled("Fehler")
        .showing(BoxIcon::Exclamation);
    grid_->afterEdit(1, Column::Schuss);
    QCOMPARE(grid_->table().text(1, Column::Schuss), QString("40"));
    grid_->table().setText(1, Column::Schuss, "41");
    grid_->afterEdit(1, Column::Schuss);
    QCOMPARE(grid_->table().text(1, Column::Schuss), QString("41"));
  }

  void additionalShotsAddToTheBase() {
    read();
    grid_->table().setText(1, Column::Nachkauf, "5");
    grid_->afterEdit(1, Column::Nachkauf);
    QCOMPARE(cells(*grid_, 1), (QStringList{"0", "LG Auflage", "40", "45", "5", "40"}));
    grid_->table().setText(1, Column::Nachkauf, "");
    grid_->afterEdit(1, Column::Nachkauf);
    QCOMPARE(grid_->table().text(1, Column::Gesamt), QString("40"));
  }

  void aTotalOfNothingIsRefused() {
    read();
    grid_->table().setText(1, Column::Grundwert, "5");
    grid_->table().setText(1, Column::Nachkauf, "-5");
    place_->dialogs.expect("Gesamtschusszahl muss größer 0 sein!")
        .titled("Hinweis")
        .showing(BoxIcon::Critical);
    grid_->afterEdit(1, Column::Nachkauf);
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString());
    QCOMPARE(grid_->table().text(1, Column::Gesamt), QString("5"));
  }

  void clearingUndoesAdditionalShots() {
    read();
    grid_->enterExtra(1, 10);
    grid_->extraSent(1, "10");
    QCOMPARE(cells(*grid_, 1), (QStringList{"1", "LG Auflage", "40", "50", "", "50"}));
    grid_->enterExtra(1, 3);
    QCOMPARE(grid_->table().text(1, Column::Gesamt), QString("53"));
    grid_->clearShots();
    QCOMPARE(cells(*grid_, 1), (QStringList{"1", "LG Auflage", "40", "40", "", "40"}));
  }

  void allAndNone() {
    read();
    grid_->selectAll(true);
    QCOMPARE(grid_->table().text(2, Column::Auswahl), QString("1"));
    grid_->selectAll(false);
    QCOMPARE(grid_->table().text(1, Column::Auswahl), QString("0"));
  }

  void aGroupSelectsByName() {
    writeIni("Bezeichnung=\"LG\"\r\nBezeichnung=\"LP\"\r\nBezeichnung=\"LG\"\r\n");
    read();
    const auto db = groups();
    grid_->table().setText(2, Column::Auswahl, "1");
    grid_->selectGroup(*db, 7);
    QCOMPARE(selection(), QString("101"));
    grid_->selectGroup(*db, 0);
    QCOMPARE(selection(), QString("000"));
  }

  void theEmptyEntryReadsNoGroup() {
    read();
    const auto db = groups();
    db->dropTable("Haering_Gruppen_Disziplinen");
    grid_->selectAll(true);
    grid_->selectGroup(*db, 0);
    QCOMPARE(selection(), QString("00"));
  }

 private:
  void writeIni(const QString& text) {
    place_->files.write(place_->path("esa_preis.ini"), toWindows1252(text));
  }
  void read() {
    LineReadings own(1);
    read(own);
  }
  void read(LineReadings& readings) { grid_->read(place_->path() + "/", readings); }
  QString selection() const {
    QString all;
    for (int row = 1; row < grid_->table().rows(); ++row) all += grid_->table().text(row, Column::Auswahl);
    return all;
  }
  std::unique_ptr<dao::Database> groups() {
    prepareStore(place_->path("gruppen.qkk"));
    auto db = dao::Database::create(place_->path("gruppen.qkk"));
    db->createTable({"Haering_Gruppen_Disziplinen",
                     {{"GruppenID", dao::FieldType::Long}, {"DisziplinName", dao::FieldType::Text}},
                     {}});
    const auto rs = db->openRecordset("Haering_Gruppen_Disziplinen");
    for (const auto& [id, name] : {std::pair{7, "LG"}, std::pair{7, "fort"}, std::pair{8, "LP"}}) {
      rs->addNew();
      rs->setValue("GruppenID", id);
      rs->setValue("DisziplinName", name);
      rs->update();
    }
    return db;
  }

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<LineDisciplines> grid_;
};

QTEST_GUILESS_MAIN(TestLineDisciplines)
#include "test_line_disciplines.moc"
