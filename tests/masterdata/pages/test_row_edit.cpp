// A row is edited, judged and stored: only what differs, all of it or nothing, and nobody's work is lost
// unseen.
#include <QTemporaryDir>
#include <QTest>

#include "masterdata/making/competition.h"
#include "masterdata/pages/opened_competition.h"
#include "masterdata/pages/row_edit.h"
#include "masterdata/rows/references.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

QStringList texts(const std::vector<RowTrouble>& troubles) {
  QStringList lines;
  for (const RowTrouble& trouble : troubles) lines << trouble.text;
  return lines;
}

}  // namespace

class TestRowEdit : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    static const StoreOriginal original(makeDemoCompetition);
    path_ = folder_->filePath("Pokal.qkk");
    original.copyTo(path_);
    database_ = openForMasterData(path_);
  }
  void cleanup() {
    database_.reset();
    folder_.reset();
  }

  void showsWhatIsStored();
  void writesOnlyWhatDiffers();
  void aNewRowGetsItsPresets();
  void saysWhatIsWrong_data();
  void saysWhatIsWrong();
  void whatIsWrongAndUntouchedStays();
  void membersGoWithTheRow();
  void membersAreStoredInTheirOrder();
  void weaponsBringTheirMark();
  void aChangedMarkReachesTheDisciplines();
  void theSecondIsToldWhatTheFirstChanged();
  void aRowThatIsGoneBecomesNew();
  void aChosenRowThatIsGoneIsRefused();
  void aLookedUpRowThatIsGoneIsRefused();
  void aMemberThatIsGoneIsRefused();
  void whatIsGoneAndUntouchedStays();
  void whatBecomesNewNamesOnlyWhatIsThere();
  void looksUpByTheCode();
  void aDayOfTheYearHasItsForm();
  void columnsThatAreMissingAreNotAsked();

 private:
  QString value(const QString& query) {
    const auto row = database_->openRecordset(query);
    return row->eof() ? "-" : row->value(0).toString();
  }
  /// Another desk deletes the row.
  void remove(const QString& table, qint64 key) {
    const auto other = dao::Database::open(path_);
    dao::Changes changes(*other);
    removeRow(*other, changes, table, key);
    changes.write();
  }
  qint64 added(const QString& table, const dao::RowValues& values) {
    dao::Changes changes(*database_);
    const qint64 key = changes.insert(table, values);
    changes.write();
    return key;
  }
  /// What storing says.
  static QString goneIn(RowEdit& row) {
    try {
      row.store();
    } catch (const Error& error) {
      return QString("%1 %2").arg(error.number()).arg(error.description());
    }
    return "gespeichert";
  }
  int count(const QString& from) { return value("SELECT Count(*) AS n FROM " + from).toInt(); }

  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
  std::unique_ptr<dao::Database> database_;
};

void TestRowEdit::showsWhatIsStored() {
  RowEdit row(masterDataPage("Disziplinen"), *database_);
  QVERIFY(!row.isOpen());
  QVERIFY(row.read(15));
  QCOMPARE(row.entry("Name"), QString("LG Ring-Teiler"));
  QCOMPARE(row.entry("dblMaxSerieDSB"), QString("100"));
  QCOMPARE(row.value("Ringe").toInt(), -1);
  QVERIFY(!row.isChanged());
  QVERIFY(!row.read(4711));
  QVERIFY(!row.isOpen());
}

void TestRowEdit::writesOnlyWhatDiffers() {
  RowEdit row(masterDataPage("Disziplinen"), *database_);
  QVERIFY(row.read(1));
  row.setEntry("Name", "LG Meister 40");
  QCOMPARE(row.changedLabels(), QStringList{"Disziplin"});
  // Beside what the form holds, somebody changes a column that it doesn't compare.
  row.setEntry("Name", "LG Meister");
  QVERIFY(!row.isChanged());
  row.setEntry("RingSerie", "60");
  row.setValue("RingZentel", -1);
  QCOMPARE(row.store(), 1);
  QVERIFY(!row.isChanged());
  QCOMPARE(value("SELECT RingSerie FROM Disziplin WHERE ID = 1"), QString("60"));
  QCOMPARE(value("SELECT RingZentel FROM Disziplin WHERE ID = 1"), QString("-1"));
  QCOMPARE(value("SELECT Name FROM Disziplin WHERE ID = 1"), QString("LG Meister"));
}

void TestRowEdit::aNewRowGetsItsPresets() {
  RowEdit row(masterDataPage("Klassen"), *database_);
  row.begin();
  QVERIFY(row.isNew() && !row.isChanged());
  QCOMPARE(row.entry("Alter von"), QString("0"));
  row.setEntry("Klasse", "Damen IV");
  row.setEntry("KZ", "D4");
  row.setEntry("Alter von", "61");
  row.setEntry("Alter bis", "99");
  row.setValue("Geschlecht", 2);
  QVERIFY(row.troubles().empty());
  const qint64 key = row.store();
  QVERIFY(key > 0 && !row.isNew());
  QCOMPARE(value(QString("SELECT Klasse FROM Schützenklassen WHERE ID = %1").arg(key)), QString("Damen IV"));
  QCOMPARE(value(QString("SELECT Auflage FROM Schützenklassen WHERE ID = %1").arg(key)), QString("0"));
}

void TestRowEdit::saysWhatIsWrong_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<QString>("entry");
  QTest::addColumn<QString>("told");
  QTest::newRow("letters") << "Alter von"
                           << "alt"
                           << "Alter von: »alt« ist keine Zahl.";
  QTest::newRow("decimals") << "Alter von"
                            << "1,5"
                            << "Alter von: »1,5« ist keine ganze Zahl.";
  QTest::newRow("16 bits") << "Alter bis"
                           << "32768"
                           << "Alter bis: ist größer als 32767.";
  QTest::newRow("below 0") << "Alter von"
                           << "-1"
                           << "Alter von: ist kleiner als 0.";
  QTest::newRow("empty name") << "Klasse"
                              << "  "
                              << "Klasse: fehlt.";
  QTest::newRow("too long") << "KZ" << QString(51, 'x')
                            << "Kürzel: hat 51 Zeichen; höchstens 50 gehen hinein.";
  QTest::newRow("twice") << "Klasse"
                         << "damen I"
                         << "Klasse: »damen I« gibt es schon.";
  QTest::newRow("limits") << "Alter von"
                          << "41"
                          << "Alter von: ist größer als »Alter bis«. In diese Klasse käme niemand.";
}

void TestRowEdit::saysWhatIsWrong() {
  QFETCH(QString, column);
  QFETCH(QString, entry);
  QFETCH(QString, told);
  RowEdit row(masterDataPage("Klassen"), *database_);
  QVERIFY(row.read(7));
  QVERIFY(row.troubles().empty());
  row.setEntry(column, entry);
  QCOMPARE(texts(row.troubles()), QStringList{told});
}

void TestRowEdit::whatIsWrongAndUntouchedStays() {
  database_->execute("UPDATE Mannschaften SET MannName = '' WHERE ID = 1");
  RowEdit row(masterDataPage("Mannschaften"), *database_);
  QVERIFY(row.read(1));
  row.setValue("GruppenID", 2);
  QVERIFY(row.troubles().empty());
  row.store();
  QCOMPARE(value("SELECT GruppenID FROM Mannschaften WHERE ID = 1"), QString("2"));
}

void TestRowEdit::membersGoWithTheRow() {
  RowEdit row(masterDataPage("Kombinationen"), *database_);
  row.begin();
  row.setEntry("Kombinationsname", "Alles");
  row.setMember(0, 1, true);
  row.setMember(0, 6, true);
  const qint64 key = row.store();
  const QString of = QString("Kombination_Diszi WHERE KombiID = %1").arg(key);
  QCOMPARE(count(of), 2);
  row.setMember(0, 1, false);
  row.setMember(0, 7, true);
  QCOMPARE(row.changedLabels(), QStringList{"Disziplinen"});
  // Somebody else has linked the same meanwhile: it isn't there twice.
  database_->execute(QString("INSERT INTO Kombination_Diszi (KombiID, disziID) VALUES (%1, 7)").arg(key));
  row.store();
  QCOMPARE(count(of), 2);
  QCOMPARE(row.members(0), (QSet<qint64>{6, 7}));
}

void TestRowEdit::membersAreStoredInTheirOrder() {
  const QList<qint64> wanted = {1, 2, 3, 4, 5, 6, 7, 8};
  RowEdit row(masterDataPage("Kombinationen"), *database_);
  row.begin();
  row.setEntry("Kombinationsname", "Alles");
  for (const qint64 member : {5, 2, 8, 1, 7, 3, 6, 4}) row.setMember(0, member, true);
  const qint64 key = row.store();
  const auto stored = database_->openRecordset(
      QString("SELECT disziID FROM Kombination_Diszi WHERE KombiID = %1 ORDER BY ID").arg(key));
  QList<qint64> members;
  for (; !stored->eof(); stored->moveNext()) members.append(stored->value("disziID").toLongLong());
  QCOMPARE(members, wanted);
}

void TestRowEdit::weaponsBringTheirMark() {
  QVERIFY(database_->hasTable("Waffen"));
  const int lp = value("SELECT ID FROM Waffen WHERE KZ = 'LP'").toInt();
  QVERIFY(lp > 0);
  RowEdit row(masterDataPage("Disziplinen"), *database_);
  QVERIFY(row.read(1));
  row.setMember(1, lp, true);
  row.store();
  QCOMPARE(value(QString("SELECT KZ FROM DisziplinWaffen WHERE DisziID = 1 AND WaffenID = %1").arg(lp)),
           QString("LP"));
}

void TestRowEdit::aChangedMarkReachesTheDisciplines() {
  const int lp = value("SELECT ID FROM Waffen WHERE KZ = 'LP'").toInt();
  const int users = count(QString("DisziplinWaffen WHERE WaffenID = %1").arg(lp));
  QVERIFY(users > 0);
  RowEdit row(masterDataPage("Waffen"), *database_);
  QVERIFY(row.read(lp));
  row.setEntry("KZ", "L'P");
  row.store();
  QCOMPARE(count("DisziplinWaffen WHERE KZ = 'L''P'"), users);
}

void TestRowEdit::theSecondIsToldWhatTheFirstChanged() {
  const Page& page = masterDataPage("Mannschaften");
  RowEdit first(page, *database_), second(page, *database_);
  QVERIFY(first.read(1) && second.read(1));
  first.setEntry("MannName", "Grünau eins");
  first.setValue("VereinID", 3);
  first.store();
  second.setEntry("MannName", "Grünau Eins");
  second.setValue("GruppenID", 2);
  dao::RowValues found;
  try {
    second.store();
    QFAIL("stored over another one's work");
  } catch (const dao::RowChanged& changed) {
    found = changed.found();
  }
  QCOMPARE(
      changedMeanwhileText(second, found, *database_),
      QString(
          "Mannschaft: dort jetzt »Grünau eins«, hier »Grünau Eins«\nVerein: dort jetzt »Edelweiß Höfen«, "
          "hier »Schützengilde Grünau 1876«"));
  QCOMPARE(value("SELECT GruppenID FROM Mannschaften WHERE ID = 1") == "2", false);
  second.takeOver(found);
  QCOMPARE(second.value("VereinID").toInt(), 3);  // theirs, as nobody touched it here
  QCOMPARE(second.entry("MannName"), QString("Grünau Eins"));
  second.store();
  QCOMPARE(value("SELECT MannName FROM Mannschaften WHERE ID = 1"), QString("Grünau Eins"));
  QCOMPARE(value("SELECT VereinID FROM Mannschaften WHERE ID = 1"), QString("3"));
  QCOMPARE(value("SELECT GruppenID FROM Mannschaften WHERE ID = 1"), QString("2"));
}

void TestRowEdit::aRowThatIsGoneBecomesNew() {
  RowEdit row(masterDataPage("Mannschaftsgruppen"), *database_);
  QVERIFY(row.read(1));
  const QString before = row.entry("Bezeichnung");
  database_->execute("DELETE FROM MannschaftsGruppen WHERE MannGrpID = 1");
  row.setEntry("Bezeichnung", before + " neu");
  QVERIFY_THROWS_EXCEPTION(Error, row.store());
  row.becomeNew();
  QVERIFY(row.isNew());
  const qint64 key = row.store();
  QCOMPARE(value(QString("SELECT Bezeichnung FROM MannschaftsGruppen WHERE MannGrpID = %1").arg(key)),
           before + " neu");
}

void TestRowEdit::aChosenRowThatIsGoneIsRefused() {
  const qint64 club = added("Verein", {{"Name", "Kurzlebig"}});
  RowEdit row(masterDataPage("Mannschaften"), *database_);
  row.begin();
  row.setEntry("MannName", "Neue");
  row.setValue("VereinID", club, "Kurzlebig");
  remove("Verein", club);
  QVERIFY(row.troubles().empty());
  QCOMPARE(goneIn(row), "3201 Verein: »Kurzlebig« hat inzwischen jemand gelöscht.");
  QCOMPARE(count("Mannschaften WHERE MannName = 'Neue'"), 0);
  QCOMPARE(row.entry("MannName"), QString("Neue"));
  QVERIFY(row.isNew() && row.isChanged());
  row.setValue("VereinID", 1, "Schützengilde Grünau 1876");
  QVERIFY(row.store() > 0);
  row.setValue("VereinID", club);
  QCOMPARE(goneIn(row), QString("3201 Verein: Nr. %1 hat inzwischen jemand gelöscht.").arg(club));
  QCOMPARE(value("SELECT VereinID FROM Mannschaften WHERE MannName = 'Neue'"), QString("1"));
}

void TestRowEdit::aLookedUpRowThatIsGoneIsRefused() {
  const qint64 shooter = added("Schützen", {{"Startnummer", "901"}, {"Name", "Neu Nina"}});
  const QString key = value("SELECT ID FROM MeldeDisziplin ORDER BY ID");
  const int before = count("Schuetzen_SPO_Anmeldungen");
  RowEdit row(masterDataPage("Anmeldungen"), *database_);
  row.begin();
  row.setEntry("SchuetzeID", " 901");
  row.setValue("SPOID", key.toInt());
  QVERIFY(row.troubles().empty());
  remove("Schützen", shooter);
  QCOMPARE(goneIn(row), "3201 Schütze: »901« hat inzwischen jemand gelöscht.");
  QCOMPARE(count("Schuetzen_SPO_Anmeldungen"), before);
}

void TestRowEdit::aMemberThatIsGoneIsRefused() {
  const qint64 one = added("Schützenklassen", {{"Klasse", "Probe"}, {"KZ", "P"}});
  const qint64 two = added("Schützenklassen", {{"Klasse", "Zweite"}, {"KZ", "Z"}});
  RowEdit row(masterDataPage("Profile"), *database_);
  const int key = value("SELECT ID FROM AuswertProfil ORDER BY ID").toInt();
  QVERIFY(row.read(key));
  row.setEntry("Anzahl", "7");
  row.setMember(1, one, true, "Probe");
  row.setMember(1, two, true, "Zweite");
  remove("Schützenklassen", two);
  QCOMPARE(goneIn(row), "3201 Klassen: »Zweite« hat inzwischen jemand gelöscht.");
  const QString links = QString("Auswert_Klassen WHERE AuswertID = %1 AND KlassenID").arg(key);
  QCOMPARE(count(QString("%1 IN (%2, %3)").arg(links).arg(one).arg(two)), 0);
  QVERIFY(row.members(1).contains(one));
  row.setMember(1, two, false);
  row.store();
  QCOMPARE(count(QString("%1 = %2").arg(links).arg(one)), 1);
  QCOMPARE(value(QString("SELECT Anzahl FROM AuswertProfil WHERE ID = %1").arg(key)), QString("7"));
}

void TestRowEdit::whatIsGoneAndUntouchedStays() {
  database_->execute("UPDATE Mannschaften SET VereinID = 4711 WHERE ID = 1");
  RowEdit row(masterDataPage("Mannschaften"), *database_);
  QVERIFY(row.read(1));
  row.setEntry("MannName", "Grünau eins");
  QCOMPARE(row.store(), 1);
  QCOMPARE(value("SELECT VereinID FROM Mannschaften WHERE ID = 1"), QString("4711"));
  row.setValue("VereinID", 0);  // naming nobody needs nobody
  QCOMPARE(row.store(), 1);
}

void TestRowEdit::whatBecomesNewNamesOnlyWhatIsThere() {
  const qint64 club = added("Verein", {{"Name", "Kurzlebig"}});
  const qint64 team = added("Mannschaften", {{"MannName", "Kurzlebig I"}, {"VereinID", club}});
  RowEdit row(masterDataPage("Mannschaften"), *database_);
  QVERIFY(row.read(team));
  remove("Mannschaften", team);
  remove("Verein", club);
  row.becomeNew();
  QCOMPARE(goneIn(row), QString("3201 Verein: Nr. %1 hat inzwischen jemand gelöscht.").arg(club));
}

void TestRowEdit::looksUpByTheCode() {
  const int shooter = value("SELECT ID FROM Schützen WHERE Startnummer = '107'").toInt();
  const int key = value("SELECT ID FROM MeldeDisziplin ORDER BY ID").toInt();
  RowEdit row(masterDataPage("Anmeldungen"), *database_);
  row.begin();
  row.setValue("SPOID", key);
  QCOMPARE(texts(row.troubles()), QStringList{"Schütze: fehlt."});
  row.setEntry("SchuetzeID", "4711");
  QCOMPARE(texts(row.troubles()), QStringList{"Schütze: »4711« gibt es nicht."});
  QCOMPARE(row.lookedUpText("SchuetzeID"), QString());
  row.setEntry("SchuetzeID", " 107");
  QVERIFY(row.troubles().empty());
  QVERIFY(row.lookedUpText("SchuetzeID").startsWith("107 "));
  const qint64 made = row.store();
  QCOMPARE(value(QString("SELECT SchuetzeID FROM Schuetzen_SPO_Anmeldungen WHERE ID = %1").arg(made)).toInt(),
           shooter);
  QCOMPARE(row.entry("SchuetzeID"), QString("107"));
  // The key of the discipline comes along, unless somebody types another.
  QCOMPARE(row.entry("SPOKey"), value(QString("SELECT MeldeKZ FROM MeldeDisziplin WHERE ID = %1").arg(key)));
  row.setValue("SPOID", key + 1);
  row.setEntry("SPOKey", "eigener");
  row.store();
  QCOMPARE(row.entry("SPOKey"), QString("eigener"));
}

void TestRowEdit::aDayOfTheYearHasItsForm() {
  RowEdit row(masterDataPage("Klassenwechsel"), *database_);
  QVERIFY(row.read(1));
  row.setEntry("wechseldatumneu", "1.7");
  QCOMPARE(texts(row.troubles()).size(), 1);
  row.setEntry("wechseldatumneu", "29.02.");
  QCOMPARE(texts(row.troubles()),
           QStringList{"Das Klassenjahr beginnt am: »29.02.« gibt es nicht jedes Jahr."});
  row.setEntry("wechseldatumneu", "1.7.");
  QVERIFY(row.troubles().empty());
  row.store();
  QCOMPARE(value("SELECT wechseldatumneu FROM Klassenwechsel"), QString("01.07."));
}

/// A competition that the office program has never opened lacks the column of the factor.
void TestRowEdit::columnsThatAreMissingAreNotAsked() {
  const QString fresh = folder_->filePath("Neu.qkk");
  prepareStore(fresh);
  makeCompetition(fresh, {});
  const auto competition = dao::Database::open(fresh);
  if (competition->tableDef("MeldeDisziplin").field("TeilerfaktorESA")) return;
  RowEdit row(masterDataPage("Schluessel"), *competition);
  row.begin();
  QCOMPARE(row.columns().size(), row.page().columns.size() - 1);
  row.setEntry("MeldeKZ", "1.10");
  row.setEntry("MeldeDisziplin", "Luftgewehr");
  QVERIFY(row.store() > 0);
}

QTEST_GUILESS_MAIN(TestRowEdit)
#include "test_row_edit.moc"
