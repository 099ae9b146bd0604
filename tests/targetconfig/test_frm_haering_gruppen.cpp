// The discipline groups on their real window and a real competition.
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextDocumentFragment>

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "platform/look/look.h"
#include "targetconfig/frmHaeringGruppenDisziplinen.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmHaeringGruppen : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    place->files.makeFolder(place->path("esa"));
    setFolder(place->path("esa/"));
    static const StoreOriginal original([](const QString& path) {
      const auto store = dao::Database::create(path);
      for (const char* table : {"Haering_Gruppen", "Haering_Gruppen_Disziplinen"})
        store->createTable(*embeddedSchema("LeerSA.txt").table(table));
    });
    original.copyTo(place->path("Pokal.qkk"));
    db = dao::Database::open(place->path("Pokal.qkk"));
  }
  void cleanup() {
    dialog.reset();
    db.reset();
    place.reset();
  }

  void showsGroupsAndDisciplines();
  void titlesAreReadAsTheGroupsReadThem();
  void aFolderWithoutItsSeparator();
  void aMissingIniKeepsTheGroups_data();
  void aMissingIniKeepsTheGroups();
  void withoutAStoredFolderThereIsNone();
  void anUnreadableIniIsReported();
  void aGroupTicksItsTitles();
  void aTitleThatIsGoneVanishesOnSaving();
  void equalTitlesAreTickedTogether();
  void choosingReadsOnce();
  void choosingAgainDropsWhatWasTicked();
  void choosingByKeys();
  void aNewGroupTakesTheTicks();
  void withoutANameThereIsNoNewGroup();
  void theChosenGroupStaysChosen();
  void savingReplacesTheMembers();
  void aGroupWithoutTicksStays();
  void withoutAGroupNothingIsSaved();
  void deletesAfterAQuestion();
  void allAndNoneStoreNothing();
  void theStateTellsWhatIsStored();
  void failuresOfTheStore();
  void aNewGroupThatCantBeStored();
  void aMemberThatCantBeStored();
  void aLongNameIsCutAndHasATip();
  void manners();

 private:
  void setFolder(const QString& folder) {
    place->settings.setValue("Tarvex", "Häring", "Netzverzeichnis", folder);
  }
  void writeIni(const QByteArray& content) { place->files.write(place->path("esa/esa_preis.ini"), content); }
  int addGroup(const QString& name, const QStringList& titles = {}) {
    const auto groups = db->openRecordset("Haering_Gruppen");
    groups->addNew();
    groups->setValue("GruppenName", name);
    const int id = groups->value("ID").toInt();
    groups->update();
    const auto members = db->openRecordset("Haering_Gruppen_Disziplinen");
    for (const QString& title : titles) {
      members->addNew();
      members->setValue("GruppenID", id);
      members->setValue("DisziplinName", title);
      members->update();
    }
    return id;
  }
  QStringList members(int id) {
    const auto rs = db->openRecordset("Select * from Haering_Gruppen_Disziplinen where GruppenID = " +
                                      QString::number(id) + " order by ID");
    QStringList titles;
    for (; !rs->eof(); rs->moveNext()) titles << rs->value("DisziplinName").toString();
    return titles;
  }
  int count(const QString& table) {
    const auto rs = db->openRecordset(table);
    if (!rs->eof()) rs->moveLast();
    return rs->recordCount();
  }
  void open() {
    dialog = std::make_unique<frmHaeringGruppenDisziplinen>(place->workplace(), *db);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  void openOnThree() {
    writeIni("Bezeichnung = \"LG\"\nBezeichnung = \"LP\"\nBezeichnung = \"KK\"\n");
    open();
  }
  QListWidget& list() { return the<QListWidget>(*dialog, "lstHaeringGruppen"); }
  TextTable& table() { return *the<TextGrid>(*dialog, "flexHaeringDiszi").table(); }
  QStringList groups() {
    QStringList names;
    for (int i = 0; i < list().count(); ++i) names << list().item(i)->text();
    return names;
  }
  QStringList titles() {
    QStringList all;
    for (int row = 1; row < table().rows(); ++row) all << table().text(row, 1);
    return all;
  }
  QString chosen() {
    const QList<QListWidgetItem*> selected = list().selectedItems();
    return selected.isEmpty() ? QString() : selected.front()->text();
  }
  /// "0" or "-1" of each row.
  QString ticks() {
    QStringList all;
    for (int row = 1; row < table().rows(); ++row) all << table().text(row, 0);
    return all.join(' ');
  }
  void choose(const QString& group) {
    for (int i = 0; i < list().count(); ++i)
      if (list().item(i)->text() == group)
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualItemRect(list().item(i)).center());
  }
  void tickRow(int row) {
    auto& grid = the<TextGrid>(*dialog, "flexHaeringDiszi");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(table().index(row - 1, 0)).center());
  }
  QString state() { return the<QLabel>(*dialog, "lblAnzahl").text(); }
  bool usable(const QString& button) { return the<QPushButton>(*dialog, button).isEnabled(); }
  QString missingText(const QString& path) {
    return "Datei: " + path +
           " nicht gefunden!\r\nHinweis: Diese Fehlermeldung erscheint noch je Linie!\r\n\r\nBitte setzen "
           "Sie im "
           "Menü: Optionen - Standeinstellungen den Intarso-Netzwerkpfad.";
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> db;
  std::unique_ptr<frmHaeringGruppenDisziplinen> dialog;
};

void TestFrmHaeringGruppen::showsGroupsAndDisciplines() {
  const int second = addGroup("Pistole");
  addGroup("Auflage");
  openOnThree();
  QCOMPARE(dialog->windowTitle(), "Häring Gruppen - Disziplinen");
  for (const auto& [name, caption] : {std::pair{"cmdNewKombi", "&Neu"},
                                      {"cmdSave", "S&peichern"},
                                      {"cmdDelete", "&Löschen"},
                                      {"cmdWahlAlle", "Alle wählen"},
                                      {"cmdWahlKeine", "Keine wählen"},
                                      {"cmdClose", "&Schließen"}})
    QCOMPARE(the<QPushButton>(*dialog, name).text(), caption);
  QCOMPARE(groups(), (QStringList{"Auflage", "Pistole"}));
  QCOMPARE(list().item(1)->data(Qt::UserRole).toInt(), second);
  QVERIFY(list().selectedItems().isEmpty());
  QCOMPARE(table().text(0, 1), "Disziplin");
  QCOMPARE(titles(), (QStringList{"LG", "LP", "KK"}));
  QCOMPARE(ticks(), "0 0 0");
  QCOMPARE(table().rowData(1), "Diszi1");
  QCOMPARE(table().rowData(3), "Diszi3");
}

void TestFrmHaeringGruppen::titlesAreReadAsTheGroupsReadThem() {
  writeIni("; Bezeichnung der Linien\r\n[W1]\r\n bezeichnung = klein\r\nBezeichnung = \" A=B \"\r\n");
  open();
  QCOMPARE(titles(), (QStringList{";  der Linien", "AB"}));
}

void TestFrmHaeringGruppen::aFolderWithoutItsSeparator() {
  setFolder(place->path("esa"));
  openOnThree();
  QCOMPARE(titles().size(), 3);
}

void TestFrmHaeringGruppen::aMissingIniKeepsTheGroups_data() {
  QTest::addColumn<bool>("hasFolder");
  QTest::newRow("folder without the file") << true;
  QTest::newRow("no folder set") << false;
}

void TestFrmHaeringGruppen::aMissingIniKeepsTheGroups() {
  QFETCH(bool, hasFolder);
  if (!hasFolder) setFolder("");
  const int id = addGroup("Auflage", {"LG"});
  place->dialogs.expect(missingText(hasFolder ? place->path("esa/esa_preis.ini") : "esa_preis.ini"))
      .titled("Fehler")
      .with(BoxButtons::Ok)
      .showing(BoxIcon::Critical);
  open();
  QCOMPARE(groups(), QStringList{"Auflage"});
  QCOMPARE(table().rows(), 1);
  choose("Auflage");
  QCOMPARE(members(id), QStringList{"LG"});
  place->dialogs.expectInput("Bitte neuen Gruppen-Namen eingeben:", "Neu");
  click(*dialog, "cmdNewKombi");
  QCOMPARE(groups(), (QStringList{"Auflage", "Neu"}));
  click(*dialog, "cmdSave");  // empties the group: there is nothing that could be ticked
  QCOMPARE(members(id), QStringList());
}

void TestFrmHaeringGruppen::withoutAStoredFolderThereIsNone() {
  TestWorkplace fresh;
  fresh.dialogs.expect(missingText("esa_preis.ini")).titled("Fehler");
  dialog = std::make_unique<frmHaeringGruppenDisziplinen>(fresh.workplace(), *db);
  dialog->show();
  QVERIFY(fresh.dialogs.done());
  dialog.reset();
}

void TestFrmHaeringGruppen::anUnreadableIniIsReported() {
  writeIni("Bezeichnung = LG\n");
  place->files.fail(FileStep::Read, "esa_preis.ini", 57, 1);
  place->dialogs
      .expect("Fehler: 57 - Geräte-E/A-Fehler\nFehler beim Ermittelen der Intarso-Schusszahlen DEF!",
              BoxAnswer::Retry)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  open();
  QCOMPARE(titles(), QStringList{"LG"});
}

void TestFrmHaeringGruppen::aGroupTicksItsTitles() {
  addGroup("Auflage", {"KK", "lg"});
  addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Auflage");
  QCOMPARE(ticks(), "0 0 -1");  // "lg" is another title
  choose("Pistole");
  QCOMPARE(ticks(), "0 -1 0");
}

void TestFrmHaeringGruppen::aTitleThatIsGoneVanishesOnSaving() {
  const int id = addGroup("Auflage", {"LG", "Zimmerstutzen"});
  openOnThree();
  choose("Auflage");
  QCOMPARE(ticks(), "-1 0 0");
  QCOMPARE(members(id), (QStringList{"LG", "Zimmerstutzen"}));
  click(*dialog, "cmdSave");
  QCOMPARE(members(id), QStringList{"LG"});
}

void TestFrmHaeringGruppen::equalTitlesAreTickedTogether() {
  writeIni("Bezeichnung = LG\nBezeichnung = LP\nBezeichnung = \"LG\"\n");
  const int id = addGroup("Auflage", {"LG"});
  open();
  choose("Auflage");
  QCOMPARE(ticks(), "-1 0 -1");
  click(*dialog, "cmdSave");
  QCOMPARE(members(id), (QStringList{"LG", "LG"}));
}

void TestFrmHaeringGruppen::choosingReadsOnce() {
  addGroup("Auflage", {"LG"});
  openOnThree();
  db->dropTable("Haering_Gruppen_Disziplinen");
  place->dialogs.expect(
      "Fehler: 3078 - Die Tabelle oder Abfrage 'Haering_Gruppen_Disziplinen' wurde nicht gefunden.\nFehler "
      "bei lstHaeringGruppen_Click_err!",
      BoxAnswer::Abort);
  choose("Auflage");
  QCOMPARE(place->dialogs.asked().size(), 1);
}

void TestFrmHaeringGruppen::choosingAgainDropsWhatWasTicked() {
  addGroup("Auflage", {"LG"});
  openOnThree();
  choose("Auflage");
  tickRow(3);
  QCOMPARE(ticks(), "-1 0 -1");
  QTest::qWait(0);  // the press that chose it is over
  choose("Auflage");
  QCOMPARE(ticks(), "-1 0 0");
}

void TestFrmHaeringGruppen::choosingByKeys() {
  addGroup("Auflage", {"LG"});
  addGroup("Pistole", {"LP"});
  openOnThree();
  QVERIFY(list().hasFocus());
  press(*dialog, "lstHaeringGruppen", Qt::Key_Down);
  QCOMPARE(chosen(), "Auflage");
  QCOMPARE(ticks(), "-1 0 0");
  press(*dialog, "lstHaeringGruppen", Qt::Key_Down);
  QCOMPARE(ticks(), "0 -1 0");
}

void TestFrmHaeringGruppen::aNewGroupTakesTheTicks() {
  openOnThree();
  tickRow(1);
  tickRow(3);
  place->dialogs.expectInput("Bitte neuen Gruppen-Namen eingeben:", "Müller's \"Beste\"");
  click(*dialog, "cmdNewKombi");
  QCOMPARE(groups(), QStringList{"Müller's \"Beste\""});
  QCOMPARE(members(list().item(0)->data(Qt::UserRole).toInt()), (QStringList{"LG", "KK"}));
  QCOMPARE(ticks(), "-1 0 -1");
}

void TestFrmHaeringGruppen::withoutANameThereIsNoNewGroup() {
  openOnThree();
  for (const std::optional<QString>& answer : {std::optional<QString>(""), std::optional<QString>()}) {
    place->dialogs.expectInput("Bitte neuen Gruppen-Namen eingeben:", answer);
    click(*dialog, "cmdNewKombi");
  }
  QCOMPARE(count("Haering_Gruppen"), 0);
}

void TestFrmHaeringGruppen::theChosenGroupStaysChosen() {
  const int id = addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  tickRow(1);
  place->dialogs.expectInput("Bitte neuen Gruppen-Namen eingeben:", "Alles");
  click(*dialog, "cmdNewKombi");
  QCOMPARE(groups(), (QStringList{"Alles", "Pistole"}));
  QCOMPARE(chosen(), "Pistole");
  QCOMPARE(ticks(), "-1 -1 0");
  QCOMPARE(state(), "Pistole: 2 von 3 gewählt, noch nicht gespeichert");
  QCOMPARE(members(id), QStringList{"LP"});
}

void TestFrmHaeringGruppen::savingReplacesTheMembers() {
  const int other = addGroup("Auflage", {"LG"});
  const int id = addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  tickRow(2);
  tickRow(3);
  QCOMPARE(members(id), QStringList{"LP"});
  click(*dialog, "cmdSave");
  QCOMPARE(members(id), QStringList{"KK"});
  QCOMPARE(members(other), QStringList{"LG"});
}

void TestFrmHaeringGruppen::aGroupWithoutTicksStays() {
  const int id = addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  click(*dialog, "cmdWahlKeine");
  click(*dialog, "cmdSave");
  QCOMPARE(members(id), QStringList());
  QCOMPARE(groups(), QStringList{"Pistole"});
  dialog.reset();
  open();
  QCOMPARE(groups(), QStringList{"Pistole"});
}

void TestFrmHaeringGruppen::withoutAGroupNothingIsSaved() {
  addGroup("Pistole", {"LP"});
  openOnThree();
  click(*dialog, "cmdWahlAlle");
  QVERIFY(!usable("cmdSave"));
  QVERIFY(!usable("cmdDelete"));
  QCOMPARE(count("Haering_Gruppen_Disziplinen"), 1);
}

void TestFrmHaeringGruppen::deletesAfterAQuestion() {
  const int other = addGroup("Auflage", {"LG"});
  const int id = addGroup("Pistole", {"LP", "KK"});
  openOnThree();
  choose("Pistole");
  const QString question = "Soll die gewählte Gruppe: Pistole wirklich gelöscht werden?";
  place->dialogs.expect(question, BoxAnswer::No)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .showing(BoxIcon::Question)
      .presetting(BoxAnswer::No);
  click(*dialog, "cmdDelete");
  QCOMPARE(members(id).size(), 2);
  place->dialogs.expect(question, BoxAnswer::Yes);
  click(*dialog, "cmdDelete");
  QCOMPARE(groups(), QStringList{"Auflage"});
  QCOMPARE(count("Haering_Gruppen"), 1);
  QCOMPARE(members(id), QStringList());
  QCOMPARE(members(other), QStringList{"LG"});
  QVERIFY(list().selectedItems().isEmpty());
  QVERIFY(!usable("cmdDelete"));
}

void TestFrmHaeringGruppen::allAndNoneStoreNothing() {
  const int id = addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  click(*dialog, "cmdWahlAlle");
  QCOMPARE(ticks(), "-1 -1 -1");
  click(*dialog, "cmdWahlKeine");
  QCOMPARE(ticks(), "0 0 0");
  QCOMPARE(members(id), QStringList{"LP"});
}

void TestFrmHaeringGruppen::theStateTellsWhatIsStored() {
  addGroup("Pistole", {"LP"});
  openOnThree();
  QCOMPARE(state(), "0 von 3 gewählt");
  choose("Pistole");
  QCOMPARE(state(), "Pistole: 1 von 3 gewählt");
  tickRow(1);
  QCOMPARE(state(), "Pistole: 2 von 3 gewählt, noch nicht gespeichert");
  click(*dialog, "cmdSave");
  QCOMPARE(state(), "Pistole: 2 von 3 gewählt");
}

void TestFrmHaeringGruppen::failuresOfTheStore() {
  addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  db->dropTable("Haering_Gruppen_Disziplinen");
  QString table = "Haering_Gruppen_Disziplinen";
  const auto gone = [&](const QString& text, BoxAnswer answer) -> Expectation& {
    return place->dialogs
        .expect("Fehler: 3078 - Die Tabelle oder Abfrage '" + table + "' wurde nicht gefunden.\n" + text,
                answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  };
  gone("Fehler bei cmdSave_Click_err!", BoxAnswer::Abort);
  tickRow(1);
  click(*dialog, "cmdSave");
  QCOMPARE(state(), "Pistole: 2 von 3 gewählt, noch nicht gespeichert");
  // Retry repeats the one statement, ignore goes on with the next.
  gone("Fehler bei cmdSave_Click_err!", BoxAnswer::Retry);
  gone("Fehler bei cmdSave_Click_err!", BoxAnswer::Ignore);
  gone("Fehler bei cmdSave_Click_err!", BoxAnswer::Retry).during([this] {
    db->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Gruppen_Disziplinen"));
  });
  click(*dialog, "cmdSave");
  QCOMPARE(count("Haering_Gruppen_Disziplinen"), 2);

  db->dropTable("Haering_Gruppen_Disziplinen");
  place->dialogs.expect("Soll die gewählte Gruppe: Pistole wirklich gelöscht werden?", BoxAnswer::Yes);
  gone("Fehler bei cmdDelete_Click_err!", BoxAnswer::Abort);
  click(*dialog, "cmdDelete");
  QCOMPARE(groups(), QStringList{"Pistole"});
  dialog.reset();
  db->dropTable("Haering_Gruppen");
  table = "Haering_Gruppen";
  gone("Fehler beim Ermittelen der Intarso-Gruppen!", BoxAnswer::Abort);
  open();
  QCOMPARE(groups(), QStringList());
  QCOMPARE(titles().size(), 3);
}

void TestFrmHaeringGruppen::aNewGroupThatCantBeStored() {
  openOnThree();
  tickRow(1);
  const QString tooLong(256, 'x');
  for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Ignore}) {
    place->dialogs.expectInput("Bitte neuen Gruppen-Namen eingeben:", tooLong);
    place->dialogs.expect(
        "Fehler: 3163 - " + Error(3163).description() + "\nFehler bei cmdNewKombi_Click_err!", answer);
    click(*dialog, "cmdNewKombi");
    QCOMPARE(count("Haering_Gruppen"), 0);
    QCOMPARE(count("Haering_Gruppen_Disziplinen"), 0);
  }
}

void TestFrmHaeringGruppen::aMemberThatCantBeStored() {
  writeIni("Bezeichnung = LG\nBezeichnung = " + QByteArray(300, 'x') + "\nBezeichnung = KK\n");
  const int id = addGroup("Pistole", {"LP"});
  open();
  choose("Pistole");
  click(*dialog, "cmdWahlAlle");
  place->dialogs.expect("Fehler: 3163 - " + Error(3163).description() + "\nFehler bei cmdSave_Click_err!",
                        BoxAnswer::Ignore);
  click(*dialog, "cmdSave");
  QCOMPARE(members(id), (QStringList{"LG", "KK"}));
}

void TestFrmHaeringGruppen::aLongNameIsCutAndHasATip() {
  const QString name = "Auflage <b> & Luftpistole " + QString(60, 'x');
  addGroup(name);
  openOnThree();
  QVERIFY(!list().horizontalScrollBar()->isVisible());
  QCOMPARE(QTextDocumentFragment::fromHtml(list().item(0)->toolTip()).toPlainText(), name);
}

void TestFrmHaeringGruppen::manners() {
  addGroup("Pistole", {"LP"});
  openOnThree();
  choose("Pistole");
  QCOMPARE(badManners(*dialog).join('\n'), QString());
}

QTEST_MAIN(TestFrmHaeringGruppen)
#include "test_frm_haering_gruppen.moc"
