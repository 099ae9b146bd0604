// The folders of a start: an empty store, a wrong system folder, custom paths, copies.
#include <QDir>
#include <QTest>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFolders : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void anEmptyStoreMakesAllFolders();
  void theRootIsMadeWithAllAboveIt();
  void aMissingProofNamesBothPaths();
  void theNewSystemFolderIsNotTestedAgain();
  void aGoodSystemFolderStays();
  void aCustomPathWithMissingParentsStaysMissing();
  void aForeignPathIsNeverMade();
  void copiesNeverOverwrite();
  void aFullDiskMakesNothingAndSaysNothing();
  void aSecondStartChangesNothing();

 private:
  /// A program's folder with what a good system folder holds.
  static void install(TestWorkplace& place) {
    place.files.makeFolder(place.path("programm/System"));
    for (const char* name : {"ErgSchützen.mdb", "QKUtil.mdb", "Scheiben.mdb"})
      place.files.write(place.path("programm/System/") + name, "Vorlage");
  }
};

void TestFolders::anEmptyStoreMakesAllFolders() {
  TestWorkplace place;
  install(place);
  QVERIFY(!place.files.folderExists(place.path("dokumente")));
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  const QString base = place.path("dokumente/Tarvex/");
  QCOMPARE(global.Basisverzeichnis, base);
  QCOMPARE(global.Verzeichnis, base + "Daten/");
  QCOMPARE(global.SicherungsVerzeichnis, base + "Sicherung/");
  QCOMPARE(global.Exportpfad, base + "Export/");
  QCOMPARE(global.SystemVerzeichnisUser, base + "SystemUser/");
  QCOMPARE(global.SystemVerzeichnis, place.path("programm/System/"));
  for (const QString& folder :
       {global.Verzeichnis, global.SicherungsVerzeichnis, global.Exportpfad, global.SystemVerzeichnisUser})
    QVERIFY2(place.files.folderExists(folder), qPrintable(folder));
  QCOMPARE(liesText(place.settings, keys::Verzeichnis), base + "Daten/");
  QCOMPARE(liesText(place.settings, keys::SicherungsVerzeichnis), base + "Sicherung/");
  QCOMPARE(liesText(place.settings, keys::Exportpfad), base + "Export/");
  QCOMPARE(liesText(place.settings, keys::SystemVerzeichnisUser), base + "SystemUser/");
  QCOMPARE(liesText(place.settings, keys::SystemVerzeichnis), place.path("programm/System/"));
  QCOMPARE(place.files.list(global.SystemVerzeichnisUser, "*"), QStringList({"QKUtil.mdb", "Scheiben.mdb"}));
}

void TestFolders::theRootIsMadeWithAllAboveIt() {
  TestWorkplace place;
  install(place);
  qputenv("QK_DOKUMENTE", place.path("netz/haus/dokumente").toUtf8());
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.Verzeichnis, place.path("netz/haus/dokumente/Tarvex/Daten/"));
  QVERIFY(place.files.folderExists(global.Verzeichnis));
}

void TestFolders::aMissingProofNamesBothPaths() {
  TestWorkplace place;
  install(place);
  schreibe(place.settings, keys::SystemVerzeichnis, place.path("alt"));
  place.dialogs
      .expect("Fehler:\n\nFalscher Systempfad: " + place.path("alt").toUpper() +
              "\nNeuer Systempfad: " + place.path("programm/System/").toUpper())
      .titled("Hinweis")
      .with(BoxButtons::Ok)
      .showing(BoxIcon::Exclamation);
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.SystemVerzeichnis, place.path("programm/System/"));
  QCOMPARE(liesText(place.settings, keys::SystemVerzeichnis), place.path("programm/System/"));
}

void TestFolders::theNewSystemFolderIsNotTestedAgain() {
  TestWorkplace place;
  const QString own = place.path("programm/System/");
  place.dialogs.expect("Fehler:\n\nFalscher Systempfad: " + own.toUpper() +
                       "\nNeuer Systempfad: " + own.toUpper());
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.SystemVerzeichnis, own);
  QVERIFY(place.files.folderExists(global.Verzeichnis));
}

void TestFolders::aGoodSystemFolderStays() {
  TestWorkplace place;
  place.files.makeFolder(place.path("eigen"));
  place.files.write(place.path("eigen/ERGSCHÜTZEN.MDB"), "");
  schreibe(place.settings, keys::SystemVerzeichnis, place.path("eigen"));
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.SystemVerzeichnis, place.path("eigen/"));
  QCOMPARE(liesText(place.settings, keys::SystemVerzeichnis), place.path("eigen"));
}

void TestFolders::aCustomPathWithMissingParentsStaysMissing() {
  TestWorkplace place;
  install(place);
  schreibe(place.settings, keys::Verzeichnis, place.path("fehlt/tief/"));
  schreibe(place.settings, keys::Exportpfad, place.path("flach"));
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.Verzeichnis, place.path("fehlt/tief/"));
  QVERIFY(!place.files.folderExists(place.path("fehlt")));
  QCOMPARE(global.Exportpfad, place.path("flach/"));
  QVERIFY(place.files.folderExists(place.path("flach")));
}

void TestFolders::aForeignPathIsNeverMade() {
  TestWorkplace place;
  install(place);
  const QString here = QDir::currentPath();
  QDir::setCurrent(place.path());
  schreibe(place.settings, keys::Exportpfad, QString("C:\\Export\\"));
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.Exportpfad, "C:\\Export\\");
  QCOMPARE(QDir(place.path()).entryList({"C:*"}, QDir::AllEntries), QStringList());
  QDir::setCurrent(here);
}

void TestFolders::copiesNeverOverwrite() {
  TestWorkplace place;
  install(place);
  place.files.makeFolder(place.path("eigene"));
  place.files.write(place.path("eigene/SCHEIBEN.mdb"), "meine");
  schreibe(place.settings, keys::SystemVerzeichnisUser, place.path("eigene"));
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(place.files.read(place.path("eigene/SCHEIBEN.mdb")), QByteArray("meine"));
  QCOMPARE(place.files.read(place.path("eigene/QKUtil.mdb")), QByteArray("Vorlage"));
  QCOMPARE(place.files.list(place.path("eigene"), "*").size(), 2);
}

void TestFolders::aFullDiskMakesNothingAndSaysNothing() {
  TestWorkplace place;
  install(place);
  place.files.fillDisk();
  GlobalVariablen global;
  OrdnerErmitteln(place.workplace(), global);
  QCOMPARE(global.Verzeichnis, place.path("dokumente/Tarvex/Daten/"));
  QVERIFY(!place.files.folderExists(global.Verzeichnis));
}

void TestFolders::aSecondStartChangesNothing() {
  TestWorkplace place;
  install(place);
  GlobalVariablen first;
  OrdnerErmitteln(place.workplace(), first);
  const QByteArray stored = place.files.read(place.settings.filePath());
  place.files.clearJournal();
  GlobalVariablen second;
  OrdnerErmitteln(place.workplace(), second);
  QCOMPARE(place.files.journal(), QStringList());
  QCOMPARE(place.files.read(place.settings.filePath()), stored);
  QCOMPARE(second.Exportpfad, first.Exportpfad);
}

QTEST_GUILESS_MAIN(TestFolders)
#include "test_folders.moc"
