// The walk through the stations' configuration, row by row.
#include <QTest>

#include "targetconfig/configuration_check.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

constexpr int kNoLimit = 1000;

class TestConfigurationCheck : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    place->files.makeFolder(place->path("esa"));
  }
  void cleanup() { place.reset(); }

  void aWholeConfiguration();
  void aMissingDefinitionQuotesTheRawLine();
  void anEmptyNameIsMissing();
  void aNameOfBlanksIsMissing();
  void aMissingWeaponOrTargetIsFollowedByTheRest();
  void aTitleKeepsItsQuotesAndLosesEqualsSigns();
  void anyLineWithTheWordIsATitle();
  void theSameDefinitionIsLookedAtTwice();
  void aLineWithBothWordsIsTestedRaw();
  void caseMatters();
  void aValueMayBeTheNextKey();
  void aKeyWithoutItsValueIsMissing();
  void oneLineMayHoldBothKeys();
  void otherLinesAreIgnored();
  void aFolderIsNoFile();
  void aNameIsFoundInAnyCase();
  void aMissingIniIsAnError();
  void anUnreadableDefinitionCanBePassedOver();
  void anUnreadableDefinitionCanBeRepeated();
  void abortKeepsWhatWasFound();
  void theSinkMayStopTheWalk();
  void anotherKindOfFileIsNoCrash();
  void counts();
  void whatIsMissingWhere();

 private:
  QString folder() const { return place->path("esa/"); }
  void write(const QString& name, const QByteArray& content) { place->files.write(folder() + name, content); }
  /// Texts of the rows, with what their state is in front.
  QStringList walk(const ErrorReport& report = {}) {
    rows.clear();
    whole = reported(report ? report
                            : [](const Error& error) {
                                failTest(error.description());
                                return ErrorAnswer::Abort;
                              },
                     [this](Steps& step) {
                       checkConfiguration(place->files, folder(), step, [this](const CheckRow& row) {
                         rows.push_back(row);
                         return int(rows.size()) < limit;
                       });
                     });
    QStringList texts;
    for (const CheckRow& row : rows)
      texts << (row.state == CheckState::Plain ? " " : row.state == CheckState::Found ? "+" : "-") + row.text;
    return texts;
  }

  std::unique_ptr<TestWorkplace> place;
  std::vector<CheckRow> rows;
  bool whole = false;
  int limit = kNoLimit;
};

void TestConfigurationCheck::aWholeConfiguration() {
  write("esa_preis.ini",
        "[Setting]\r\nPreselection = 1\r\n[W1]\r\nBezeichnung = \"LG Gl\xFC"
        "ck\"\r\nDefinition = \"0_hd_LG.def\"\r\nCheck = 0\r\n[W2]\r\nBezeichnung = \"LP\"\r\nDefinition = "
        "\"0_hd_LP.def\"\r\n");
  write("0_hd_LG.def",
        "\">Schusszahl\"\r\n\"40\"\r\n\">DateiWaffe\"\r\n\"0_hwLG.def\"\r\n\">DateiScheibe\"\r\n\"0_hsLG."
        "def\"\r\n");
  write("0_hd_LP.def", "\">DateiWaffe\"\n\"0_hwLP.def\"\n\">DateiScheibe\"\n\"0_hsLG.def\"");
  write("0_hwLG.def", "");
  write("0_hsLG.def", "");
  QCOMPARE(walk(), (QStringList{" \"LG Glück\"", "+\t0_hd_LG.def", "+\t\tDateiWaffe: 0_hwLG.def",
                                "+\t\tDateiScheibe: 0_hsLG.def", " \"LP\"", "+\t0_hd_LP.def",
                                "-\t\tDatei nicht vorhanden: DateiWaffe: 0_hwLP.def",
                                "+\t\tDateiScheibe: 0_hsLG.def"}));
  QVERIFY(whole);
}

void TestConfigurationCheck::aMissingDefinitionQuotesTheRawLine() {
  write("esa_preis.ini", "  Definition = \"fehlt.def\" \r\nBezeichnung = \"danach\"\r\n");
  QCOMPARE(walk(), (QStringList{"-\tDatei nicht vorhanden:   Definition = \"fehlt.def\" ", " \"danach\""}));
  QCOMPARE(rows[0].file, "fehlt.def");
}

void TestConfigurationCheck::anEmptyNameIsMissing() {
  write("esa_preis.ini", "Definition = \"a.def\"\nDefinition = \"\"\n");
  write("a.def", "\">DateiWaffe\"\n\"\"\n\">DateiScheibe\"\n\"\"\n");
  QCOMPARE(walk(), (QStringList{"+\ta.def", "-\t\tDatei nicht vorhanden: DateiWaffe: ",
                                "-\t\tDatei nicht vorhanden: DateiScheibe: ",
                                "-\tDatei nicht vorhanden: Definition = \"\""}));
}

void TestConfigurationCheck::aNameOfBlanksIsMissing() {
  write("esa_preis.ini", "Definition = a.def\n");
  write("a.def", "DateiWaffe\n\"   \"\n");
  write("   ", "");
  QCOMPARE(walk(), (QStringList{"+\ta.def", "-\t\tDatei nicht vorhanden: DateiWaffe:    "}));
}

void TestConfigurationCheck::aMissingWeaponOrTargetIsFollowedByTheRest() {
  write("esa_preis.ini", "Definition = a.def\nDefinition = a.def\n");
  write("a.def", "DateiWaffe\nw.def\nDateiScheibe\ns.def\n");
  const QStringList once{"+\ta.def", "-\t\tDatei nicht vorhanden: DateiWaffe: w.def",
                         "-\t\tDatei nicht vorhanden: DateiScheibe: s.def"};
  QCOMPARE(walk(), once + once);
}

void TestConfigurationCheck::aTitleKeepsItsQuotesAndLosesEqualsSigns() {
  write("esa_preis.ini", "Bezeichnung = \"A=B\"\n");
  QCOMPARE(walk(), QStringList{" \"AB\""});
}

void TestConfigurationCheck::anyLineWithTheWordIsATitle() {
  write("esa_preis.ini", "; Bezeichnung der Linien\n[Bezeichnung]\n");
  QCOMPARE(walk(), (QStringList{" ;  der Linien", " []"}));
}

void TestConfigurationCheck::theSameDefinitionIsLookedAtTwice() {
  write("esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\nBezeichnung=B\nDefinition=a.def\n");
  write("a.def", "DateiWaffe\na.def\n");
  QCOMPARE(walk(), (QStringList{" A", "+\ta.def", "+\t\tDateiWaffe: a.def", " B", "+\ta.def",
                                "+\t\tDateiWaffe: a.def"}));
}

void TestConfigurationCheck::aLineWithBothWordsIsTestedRaw() {
  write("esa_preis.ini", "Bezeichnung Definition = \"a.def\"\n");
  QCOMPARE(walk(), (QStringList{" Definition  \"a.def\"",
                                "-\tDatei nicht vorhanden: Bezeichnung Definition = \"a.def\""}));
  QCOMPARE(rows[1].file, "Bezeichnung   a.def");
}

void TestConfigurationCheck::caseMatters() {
  write("esa_preis.ini", "bezeichnung=A\ndefinition=a.def\nDefinition=a.def\n");
  write("a.def", "dateiwaffe\nw.def\nDATEISCHEIBE\ns.def\n");
  QCOMPARE(walk(), QStringList{"+\ta.def"});
}

void TestConfigurationCheck::aValueMayBeTheNextKey() {
  write("esa_preis.ini", "Definition=a.def\n");
  write("a.def", "\">DateiWaffe\"\n\">DateiScheibe\"\n\"s.def\"\n\">DateiWaffe\"\n\"w.def\"\n");
  write("s.def", "");
  write("w.def", "");
  QCOMPARE(walk(), (QStringList{"+\ta.def", "-\t\tDatei nicht vorhanden: DateiWaffe: >DateiScheibe",
                                "+\t\tDateiScheibe: s.def", "+\t\tDateiWaffe: w.def"}));
}

void TestConfigurationCheck::aKeyWithoutItsValueIsMissing() {
  write("esa_preis.ini", "Definition=a.def");
  write("a.def", "\">DateiWaffe\"");
  QCOMPARE(walk(), (QStringList{"+\ta.def", "-\t\tDatei nicht vorhanden: DateiWaffe: "}));
}

void TestConfigurationCheck::oneLineMayHoldBothKeys() {
  write("esa_preis.ini", "Definition=a.def\n");
  write("a.def", "DateiWaffe DateiScheibe\nw.def\nDateiScheibe\nw.def\n");
  write("w.def", "");
  QCOMPARE(walk(), (QStringList{"+\ta.def", "+\t\tDateiWaffe: w.def", "+\t\tDateiScheibe: w.def"}));
}

void TestConfigurationCheck::otherLinesAreIgnored() {
  write("esa_preis.ini", "[Setting]\nPreselection = 1\n\nCheck = 0\n");
  QCOMPARE(walk(), QStringList());
  write("esa_preis.ini", "");
  QCOMPARE(walk(), QStringList());
}

void TestConfigurationCheck::aFolderIsNoFile() {
  place->files.makeFolder(folder() + "unter");
  write("esa_preis.ini", "Definition=unter\nDefinition=.\nDefinition=..\n");
  QCOMPARE(walk().filter("nicht vorhanden").size(), 3);
}

void TestConfigurationCheck::aNameIsFoundInAnyCase() {
  write("ESA_PREIS.INI", "Definition=A.DEF\n");
  write("a.def", "");
  QCOMPARE(walk(), QStringList{"+\tA.DEF"});
}

void TestConfigurationCheck::aMissingIniIsAnError() {
  QList<int> numbers;
  QCOMPARE(walk([&](const Error& error) {
             numbers << error.number();
             return numbers.size() == 1 ? ErrorAnswer::Retry : ErrorAnswer::Abort;
           }),
           QStringList());
  QCOMPARE(numbers, (QList<int>{53, 53}));
  QVERIFY(!whole);
}

void TestConfigurationCheck::anUnreadableDefinitionCanBePassedOver() {
  write("esa_preis.ini", "Definition=a.def\nBezeichnung=B\n");
  write("a.def", "DateiWaffe\nw.def\n");
  place->files.fail(FileStep::Read, "a.def", 70);
  QCOMPARE(walk([](const Error&) { return ErrorAnswer::Ignore; }), (QStringList{"+\ta.def", " B"}));
  QVERIFY(whole);
}

void TestConfigurationCheck::anUnreadableDefinitionCanBeRepeated() {
  write("esa_preis.ini", "Definition=a.def\n");
  write("a.def", "DateiWaffe\na.def\n");
  place->files.fail(FileStep::Read, "a.def", 57, 1);
  QCOMPARE(walk([](const Error&) { return ErrorAnswer::Retry; }),
           (QStringList{"+\ta.def", "+\t\tDateiWaffe: a.def"}));
}

void TestConfigurationCheck::abortKeepsWhatWasFound() {
  write("esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\nBezeichnung=B\n");
  write("a.def", "");
  place->files.fail(FileStep::Read, "a.def", 57);
  QCOMPARE(walk([](const Error&) { return ErrorAnswer::Abort; }), (QStringList{" A", "+\ta.def"}));
  QVERIFY(!whole);
}

void TestConfigurationCheck::theSinkMayStopTheWalk() {
  write("esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\nBezeichnung=B\n");
  write("a.def", "DateiWaffe\na.def\nDateiWaffe\na.def\n");
  for (limit = 1; limit <= 4; ++limit) QCOMPARE(walk().size(), limit);
  // Nor is anything looked for behind it: the folder may be at the other end of a network.
  place->files.clearLooks();
  limit = 3;
  walk();
  QCOMPARE(place->files.looks(), 2);
  QStringList reads;
  place->files.before([&](FileStep step, const QString& path) {
    if (step == FileStep::Read) reads << path.section('/', -1);
  });
  limit = 2;
  walk();
  place->files.before({});
  limit = kNoLimit;
  QCOMPARE(reads, QStringList{"esa_preis.ini"});
}

void TestConfigurationCheck::anotherKindOfFileIsNoCrash() {
  QByteArray bytes;
  for (int i = 0; i < 5000; ++i) bytes += char(i * 37 % 256);
  write("esa_preis.ini", bytes);
  QCOMPARE(walk(), QStringList());
  write("esa_preis.ini", "Definition=a.def\n" + bytes);
  write("a.def", bytes + "DateiWaffe");
  QCOMPARE(walk().size(), 2);
}

void TestConfigurationCheck::counts() {
  QCOMPARE(countsText({}), "0 Disziplinen, 0 Dateien vorhanden, keine fehlt");
  QCOMPARE(countsText({1, 1, 1}), "1 Disziplin, 1 Datei vorhanden, 1 fehlt");
  QCOMPARE(countsText({3, 8, 2}), "3 Disziplinen, 8 Dateien vorhanden, 2 fehlen");
  write("esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\nDefinition=b.def\n");
  write("a.def", "DateiWaffe\na.def\nDateiScheibe\n\n");
  walk();
  QCOMPARE(countsText(countRows(rows)), "1 Disziplin, 2 Dateien vorhanden, 2 fehlen");
}

void TestConfigurationCheck::whatIsMissingWhere() {
  write("esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\nDefinition=b.def\n");
  write("a.def", "DateiWaffe\nw.def\nDateiScheibe\n\n");
  walk();
  QCOMPARE(missingText(rows[0], "/esa/"), "");
  QCOMPARE(missingText(rows[1], "/esa/"), "");
  QCOMPARE(missingText(rows[2], "/esa/"),
           "Es fehlt die Waffendatei: w.def\nOrdner: /esa/\nGenannt wird sie in: a.def");
  QCOMPARE(missingText(rows[3], "/esa/"), "In a.def steht kein Name für die Scheibendatei.\nOrdner: /esa/");
  QCOMPARE(missingText(rows[4], "/esa/"),
           "Es fehlt die def-Datei: b.def\nOrdner: /esa/\nGenannt wird sie in: esa_preis.ini");
}

QTEST_APPLESS_MAIN(TestConfigurationCheck)
#include "test_configuration_check.moc"
