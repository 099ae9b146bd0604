// From the generator's rows to the files: checks, bytes, failures on the way.
#include <QDir>
#include <QFile>
#include <QTest>

#include "platform/runtime/error.h"
#include "targetconfig/definition_files.h"
#include "tests/targetconfig/configured_competition.h"

using namespace qk;
using namespace qk::test;
using C = DefinitionRows;

namespace {

const QString kNoEntry =
    "Prüfung fehlgeschlagen: \r\nFür jede gewählte Disziplin/Kombination muss eine def-Datei ausgewählt "
    "sein!";
const QString kNoFiles =
    "Prüfung fehlgeschlagen\r\nFür die Erstellung der def-Dateien müssen die Einträge >DateiWaffe und "
    ">DateiScheibe vorhanden sein";
const QString kCreated = "Datei(en) erstellt";
const QByteArray kEmptyIni =
    "[Setting]\r\nPreselection = 1\r\nRemoteInput = 1\r\nPrePaid = 0\r\nNurMatch = 0\r\n";

}  // namespace

class TestDefinitionFiles : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<ConfiguredCompetition>();
    rows_ = std::make_unique<DefinitionRows>();
    shown_.clear();
  }
  void cleanup() {
    rows_.reset();
    office_.reset();
  }

  void golden_data();
  void golden();
  void nothingButTheHeader();
  void theCounterHasNoGaps();
  void aMissingRuleLeavesItsKey();
  void twoRowsOfOneName();
  void scoringAndSighters_data();
  void scoringAndSighters();
  void repetitions_data();
  void repetitions();
  void aCountBeyondAllBoundsNamesItsFile();
  void anEntryIsMissing();
  void aFileIsMissing();
  void bothMessagesAppear();
  void hiddenRowsAndTheChecks();
  void rowsWithoutNameAreLeftOut();
  void charactersThatStationsLack_data();
  void charactersThatStationsLack();
  void charactersThatArentWritten();
  void manyRowsWithSuchCharacters();
  void eachFileIsRenamedIntoItsPlace();
  void aTornFileLeavesTheOldOne();
  void retryIgnoreAndAbort();
  void theFolderIsMade();
  void aFolderThatCannotBeMade();
  void existingNamesKeepTheirSpelling();
  void progressAndStop();

 private:
  /// Rows of disciplines that are ready to be written.
  void build(const QStringList& names) {
    for (const QString& name : names) office_->addDiscipline({name});
    rebuild();
  }
  void rebuild() {
    rows_->build(office_->database(), office_->place.files, office_->folder());
    for (int row = 1; row < rows_->table().rows(); ++row) {
      set(row, C::DateiWaffe, "0_hwLG.def");
      set(row, C::DateiScheibe, "0_hsLG.def");
    }
    office_->place.files.clearJournal();
  }
  void set(int row, int column, const QString& text) { rows_->table().setText(row, column, text); }
  bool create(Output output, std::function<bool(int, int)> progress = {}) {
    DefinitionFiles files(office_->place.workplace(), *rows_, office_->folder());
    files.showCell = [this](int row, int column) { shown_ << std::pair(row, column); };
    files.progress = std::move(progress);
    return files.create(output);
  }
  bool createWithSuccess(Output output) {
    box(kCreated).showing(BoxIcon::Information);
    return create(output);
  }
  Expectation& box(const QString& text, BoxAnswer answer = BoxAnswer::Ok) {
    return office_->place.dialogs.expect(text, answer);
  }
  Expectation& failure(int number, const QString& name, BoxAnswer answer) {
    return box("Fehler: " + QString::number(number) + " - " + errorDescription(number) +
                   "\nFehler beim Schreiben der Datei " + office_->folder() + name + "!",
               answer)
        .with(BoxButtons::AbortRetryIgnore);
  }

  std::unique_ptr<ConfiguredCompetition> office_;
  std::unique_ptr<DefinitionRows> rows_;
  QList<std::pair<int, int>> shown_;
};

void TestDefinitionFiles::golden_data() {
  QTest::addColumn<int>("output");
  QTest::addColumn<QString>("folder");
  QTest::newRow("ini") << int(Output::Ini) << "ini";
  QTest::newRow("ini and def") << int(Output::IniUndDef) << "ini-und-def";
  QTest::newRow("def") << int(Output::Def) << "def";
}

void TestDefinitionFiles::golden() {
  QFETCH(int, output);
  QFETCH(QString, folder);
  office_->addKey("1.10", "Luftgewehr", "LG");
  const int luck = office_->addDiscipline({"Glück – 10 €", 10, true, {"LG", "LP"}});
  const int master = office_->addDiscipline({"Meister", 40});
  office_->addCombination("Großes Paket", {luck, master});
  rebuild();
  // Rows: 1 Glück LG, 2 Glück LP, 3 Meister, 4 Paket LG, 5 Paket LP, 6 Paket LG.
  set(2, C::Gewaehlt, "0");
  set(5, C::Gewaehlt, "0");
  for (int row = 1; row <= 6; ++row) set(row, C::DefDatei, "0_hd_alt.def");
  set(1, C::Probeschuesse, "unbegrenzt");
  set(1, C::ZeitenAnzahl, "3 mal");
  set(3, C::Probeschuesse, "7");
  set(3, C::Wertung, "1");
  set(3, C::PositionsAnzahl, "keine");
  QVERIFY(createWithSuccess(Output(output)));

  const QString golden = QStringLiteral(QK_SOURCE_DIR "/tests/targetconfig/golden/") + folder;
  const QStringList names = office_->place.files.list(golden, "*");
  QCOMPARE(office_->names(), names);
  QVERIFY(!names.isEmpty());
  for (const QString& name : names)
    QCOMPARE(office_->content(name), office_->place.files.read(golden + "/" + name));
}

void TestDefinitionFiles::nothingButTheHeader() {
  rebuild();
  QVERIFY(createWithSuccess(Output::IniUndDef));
  QCOMPARE(office_->names(), QStringList{"esa_preis.ini"});
  QCOMPARE(office_->content("esa_preis.ini"), kEmptyIni);
}

void TestDefinitionFiles::theCounterHasNoGaps() {
  build({"a", "b", "c"});
  set(2, C::Gewaehlt, "0");
  QVERIFY(createWithSuccess(Output::IniUndDef));
  const QByteArray ini = office_->content("esa_preis.ini");
  QVERIFY(ini.contains("[W1]\r\nBezeichnung = \"a\"") && ini.contains("[W2]\r\nBezeichnung = \"c\""));
  QVERIFY(!ini.contains("[W3]"));
  QCOMPARE(office_->names("0_hd*"), (QStringList{"0_hd_LG_a.def", "0_hd_LG_c.def"}));
}

void TestDefinitionFiles::aMissingRuleLeavesItsKey() {
  office_->addKey("2.10", "Luftpistole", "LP");
  build({"a"});
  QVERIFY(createWithSuccess(Output::Def));
  QVERIFY(office_->content("0_hd_LG_a.def").contains("\">RegelNummer\"\r\n\"\"\r\n\">WertungsRadius\""));
}

void TestDefinitionFiles::twoRowsOfOneName() {
  build({"a", "b"});
  set(2, C::DateiName, "0_hd_LG_a.def");
  QVERIFY(createWithSuccess(Output::IniUndDef));
  QCOMPARE(office_->names("0_hd*"), QStringList{"0_hd_LG_a.def"});
  QVERIFY(office_->content("0_hd_LG_a.def").startsWith("\">Bezeichnung\"\r\n\"b\"\r\n"));
  QCOMPARE(office_->content("esa_preis.ini").count("Definition = \"0_hd_LG_a.def\""), 2);
}

void TestDefinitionFiles::scoringAndSighters_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("cell");
  QTest::addColumn<QString>("written");
  const auto row = [](int column, const QString& cell, const QString& written) {
    QTest::newRow(qPrintable(QString::number(column) + " " + cell)) << column << cell << written;
  };
  row(C::Wertung, "Ring", "0");
  row(C::Wertung, "Zehntelringe", "1");
  row(C::Wertung, "Ring + Teiler", "10");
  row(C::Wertung, "Zehntel + Teiler", "11");
  row(C::Wertung, "1", "");
  row(C::Wertung, "0;Ring", "");
  row(C::Wertung, "ring", "");
  row(C::Wertung, "", "");
  row(C::Probeschuesse, "unbegrenzt", "0");
  row(C::Probeschuesse, "keine", "-1");
  row(C::Probeschuesse, "7", "7");
  row(C::Probeschuesse, "", "");
  row(C::Probeschuesse, "Keine", "Keine");
}

void TestDefinitionFiles::scoringAndSighters() {
  QFETCH(int, column);
  QFETCH(QString, cell);
  build({"a"});
  set(1, column, cell);
  const Definition definition = definitionOf(rows_->table(), 1);
  QTEST(column == C::Wertung ? definition.wertung : definition.probeSchuesse, "written");
}

void TestDefinitionFiles::repetitions_data() {
  QTest::addColumn<QString>("count");
  QTest::addColumn<int>("lines");
  QTest::newRow("one") << "1" << 1;
  QTest::newRow("three") << "3" << 3;
  QTest::newRow("none") << "0" << 0;
  QTest::newRow("negative") << "-4" << 0;
  QTest::newRow("no number") << "viele" << 0;
  QTest::newRow("empty") << "" << 0;
  QTest::newRow("as far as it reads") << " 2 mal" << 2;
  QTest::newRow("half to even") << "2.5" << 2;
  QTest::newRow("half to even, up") << "3.5" << 4;
  QTest::newRow("a comma ends the number") << "2,9" << 2;
  QTest::newRow("the most") << "32767" << 32767;
}

void TestDefinitionFiles::repetitions() {
  QFETCH(QString, count);
  QFETCH(int, lines);
  build({"a"});
  const std::pair<int, QByteArray> counted[] = {{C::ZeitenAnzahl, "\">Zeit"},
                                                {C::SchussAnzahl, "\">SchussZahl"},
                                                {C::PositionsAnzahl, "\">Position"},
                                                {C::SerienAnzahl, "\">Serien"}};
  for (const auto& [column, key] : counted) {
    set(1, column, count);
    const QByteArray bytes = definitionToBytes(definitionOf(rows_->table(), 1));
    QCOMPARE(bytes.count(key + "1\""), lines > 0 ? 1 : 0);
    QCOMPARE(bytes.count(key + QByteArray::number(std::max(lines, 1)) + "\""), lines > 0 ? 1 : 0);
    QCOMPARE(bytes.count(key + QByteArray::number(lines + 1) + "\""), 0);
    set(1, column, "1");
  }
}

void TestDefinitionFiles::aCountBeyondAllBoundsNamesItsFile() {
  build({"a", "b"});
  for (const char* count : {"32768", "4000000000",
                            "1"
                            "00000000000000000000000000000000000000000000"}) {
    set(1, C::SerienAnzahl, count);
    failure(6, "0_hd_LG_a.def", BoxAnswer::Ignore);
    QVERIFY(createWithSuccess(Output::Def));
    QCOMPARE(office_->names(), QStringList{"0_hd_LG_b.def"});
  }
}

void TestDefinitionFiles::anEntryIsMissing() {
  build({"a", "b"});
  set(1, C::DefDatei, "x.def");
  box(kNoEntry).titled("Hinweis").showing(BoxIcon::Exclamation);
  QVERIFY(!create(Output::Ini));
  QCOMPARE(shown_, (QList<std::pair<int, int>>{{2, C::DefDatei}}));
  QCOMPARE(office_->names(), QStringList());
  set(2, C::Gewaehlt, "0");
  QVERIFY(createWithSuccess(Output::Ini));
}

void TestDefinitionFiles::aFileIsMissing() {
  build({"a", "b"});
  for (const Output output : {Output::IniUndDef, Output::Def})
    for (const int column : {C::DateiWaffe, C::DateiScheibe}) {
      set(2, column, "");
      shown_.clear();
      box(kNoFiles).titled("Hinweis").showing(BoxIcon::Exclamation);
      QVERIFY(!create(output));
      QCOMPARE(shown_, (QList<std::pair<int, int>>{{1, C::DateiWaffe}}));
      set(2, column, "da");
    }
  QCOMPARE(office_->names(), QStringList());
}

void TestDefinitionFiles::bothMessagesAppear() {
  build({"a"});
  set(1, C::DateiName, "");
  set(1, C::DateiWaffe, "");
  box(kNoEntry);
  box(kNoFiles);
  QVERIFY(!create(Output::IniUndDef));
  QCOMPARE(office_->names(), QStringList());
}

void TestDefinitionFiles::hiddenRowsAndTheChecks() {
  const int one = office_->addDiscipline({"a"});
  office_->addCombination("k", {one});
  rebuild();
  set(1, C::DateiName, "");
  set(1, C::DateiWaffe, "");
  rows_->setFilter(RowFilter::NurKombinationen);
  // The check for entries doesn't see the hidden row, the check for files does.
  QCOMPARE(rowWithoutEntry(*rows_, C::DateiName), std::nullopt);
  box(kNoFiles);
  QVERIFY(!create(Output::IniUndDef));
  set(1, C::DateiWaffe, "w");
  QVERIFY(createWithSuccess(Output::IniUndDef));
  QCOMPARE(office_->names(), (QStringList{"0_hd_LG_k.def", "esa_preis.ini"}));
  QCOMPARE(office_->content("esa_preis.ini").count("[W"), 1);
}

void TestDefinitionFiles::rowsWithoutNameAreLeftOut() {
  build({"a", "b"});
  set(1, C::DateiName, "");
  QVERIFY(createWithSuccess(Output::Def));
  QCOMPARE(office_->names(), QStringList{"0_hd_LG_b.def"});
}

void TestDefinitionFiles::charactersThatStationsLack_data() {
  QTest::addColumn<int>("output");
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("shown");
  const auto row = [](Output output, int column, const QString& text, const QString& shown) {
    QTest::newRow(qPrintable(QString("%1 %2 %3").arg(int(output)).arg(column).arg(shown)))
        << int(output) << column << text << shown;
  };
  row(Output::Ini, C::Bezeichnung, "Łódź", ">Bezeichnung: Ł");
  row(Output::Ini, C::DefDatei, "0_hd_→.def", "def-Datei: →");
  row(Output::IniUndDef, C::DateiName, "0_hd_\u0419.def", ">DateiName: \u0419");
  row(Output::IniUndDef, C::Bezeichnung, "Ziel \U0001F3AF", ">Bezeichnung: \U0001F3AF");
  row(Output::Def, C::SchiessPosition, "stehend\r\nliegend", ">SchiessPosition: Zeilenende");
  row(Output::Def, C::Zeit, "60\u2009min", ">Zeit1: \u2009");
}

void TestDefinitionFiles::charactersThatStationsLack() {
  QFETCH(int, output);
  QFETCH(int, column);
  QFETCH(QString, text);
  QFETCH(QString, shown);
  build({"a", "b", "Pokal"});
  for (int row = 1; row <= 3; ++row) set(row, C::DefDatei, "x.def");
  set(3, column, text);
  box("Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\nZeile 3 (LG, Pokal), " +
      shown)
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation);
  QVERIFY(!create(Output(output)));
  QCOMPARE(shown_, (QList<std::pair<int, int>>{{3, column}}));
  QCOMPARE(office_->names(), QStringList());
  // What isn't written may say what it likes.
  set(3, C::Gewaehlt, "0");
  QVERIFY(createWithSuccess(Output(output)));
}

/// What a def file translates or leaves out, and a row without a file, can't part office and station.
void TestDefinitionFiles::charactersThatArentWritten() {
  build({"a", "b", "c"});
  set(1, C::Wertung, "→");  // an unknown scoring is written as none
  set(2, C::ZeitenAnzahl, "0");
  set(2, C::Zeit, "60\u2009min");
  set(3, C::Bezeichnung, "Łódź");
  set(3, C::DateiName, "");
  QVERIFY(createWithSuccess(Output::Def));
  QCOMPARE(office_->names(), (QStringList{"0_hd_LG_a.def", "0_hd_LG_b.def"}));
  set(2, C::ZeitenAnzahl, "1");
  box("Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\nZeile 2 (LG, b), "
      ">Zeit1: \u2009");
  QVERIFY(!create(Output::Def));
  set(2, C::ZeitenAnzahl, "99999");  // the writing says that this is too much
  box("Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\nZeile 2 (LG, b), "
      ">Zeit1: \u2009");
  QVERIFY(!create(Output::Def));
}

void TestDefinitionFiles::manyRowsWithSuchCharacters() {
  QStringList names, lines;
  for (int i = 1; i <= 12; ++i) names << QString("Ł%1").arg(i);
  build(names);
  for (int i = 1; i <= 10; ++i) lines << QString("Zeile %1 (LG, Ł%1), >Bezeichnung: Ł").arg(i);
  box("Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\n" + lines.join("\r\n") +
      "\r\nund 2 weitere");
  QVERIFY(!create(Output::Def));
}

void TestDefinitionFiles::eachFileIsRenamedIntoItsPlace() {
  build({"a"});
  QVERIFY(createWithSuccess(Output::IniUndDef));
  QCOMPARE(office_->place.files.journal(),
           (QStringList{"makeFolder austausch", "write 0_hd_LG_a.def.neu", "rename 0_hd_LG_a.def",
                        "write esa_preis.ini.neu", "rename esa_preis.ini"}));
}

void TestDefinitionFiles::aTornFileLeavesTheOldOne() {
  build({"a"});
  office_->place.files.write(office_->folder() + "0_hd_LG_a.def", "alt");
  office_->place.files.tear(FileStep::Write, "0_hd_LG_a.def.neu", 10);
  failure(61, "0_hd_LG_a.def", BoxAnswer::Abort);
  QVERIFY(!create(Output::IniUndDef));
  QCOMPARE(office_->content("0_hd_LG_a.def"), QByteArray("alt"));
  // Nothing behind an abort is written.
  QVERIFY(!office_->names().contains("esa_preis.ini"));
}

void TestDefinitionFiles::retryIgnoreAndAbort() {
  build({"a", "b", "c"});
  office_->place.files.fail(FileStep::Rename, "0_hd_LG_a.def", 70, 2);
  office_->place.files.fail(FileStep::Write, "0_hd_LG_b.def.neu", 75, 1);
  failure(70, "0_hd_LG_a.def", BoxAnswer::Retry);
  failure(70, "0_hd_LG_a.def", BoxAnswer::Retry);
  failure(75, "0_hd_LG_b.def", BoxAnswer::Ignore);
  QVERIFY(createWithSuccess(Output::Def));
  QCOMPARE(office_->names("0_hd*.def"), (QStringList{"0_hd_LG_a.def", "0_hd_LG_c.def"}));

  office_->place.files.fail(FileStep::Write, "esa_preis.ini.neu", 61, 1);
  failure(61, "esa_preis.ini", BoxAnswer::Abort);
  QVERIFY(!create(Output::IniUndDef));
  QVERIFY(!office_->names().contains("esa_preis.ini"));
  QVERIFY(office_->names().contains("0_hd_LG_b.def"));
}

void TestDefinitionFiles::theFolderIsMade() {
  build({"a"});
  QVERIFY(QDir(office_->folder()).removeRecursively());
  QVERIFY(createWithSuccess(Output::Def));
  QCOMPARE(office_->names(), QStringList{"0_hd_LG_a.def"});
}

void TestDefinitionFiles::aFolderThatCannotBeMade() {
  build({"a"});
  QVERIFY(QDir(office_->folder()).removeRecursively());
  office_->place.files.fail(FileStep::MakeFolder, "austausch", 75);
  failure(76, "0_hd_LG_a.def", BoxAnswer::Abort);
  QVERIFY(!create(Output::Def));
}

void TestDefinitionFiles::existingNamesKeepTheirSpelling() {
  build({"a"});
  office_->place.files.write(office_->folder() + "0_HD_lg_A.DEF", "alt");
  office_->place.files.write(office_->folder() + "ESA_PREIS.INI", "alt");
  QVERIFY(createWithSuccess(Output::IniUndDef));
  QCOMPARE(office_->names(), (QStringList{"0_HD_lg_A.DEF", "ESA_PREIS.INI"}));
  QVERIFY(office_->content("0_HD_lg_A.DEF").startsWith("\">Bezeichnung\""));
}

void TestDefinitionFiles::progressAndStop() {
  build({"a", "b", "c"});
  QList<std::pair<int, int>> calls;
  box(kCreated);
  QVERIFY(create(Output::IniUndDef, [&](int written, int all) {
    calls << std::pair(written, all);
    return true;
  }));
  QCOMPARE(calls, (QList<std::pair<int, int>>{{0, 4}, {1, 4}, {2, 4}, {3, 4}}));

  for (const QString& name : office_->names()) office_->place.files.remove(office_->folder() + name);
  box("Angehalten: 2 von 4 Dateien erstellt").showing(BoxIcon::Exclamation);
  QVERIFY(!create(Output::IniUndDef, [](int written, int) { return written < 2; }));
  QCOMPARE(office_->names(), (QStringList{"0_hd_LG_a.def", "0_hd_LG_b.def"}));
}

QTEST_GUILESS_MAIN(TestDefinitionFiles)
#include "test_definition_files.moc"
