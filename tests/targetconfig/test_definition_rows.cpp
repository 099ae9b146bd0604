// The generator's rows: what is built from the competition, defaults, options, filling down.
#include <QTest>

#include "targetconfig/definition_rows.h"
#include "tests/targetconfig/configured_competition.h"

using namespace qk;
using namespace qk::test;
using C = DefinitionRows;

namespace {

QStringList column(const DefinitionRows& rows, int number) {
  QStringList texts;
  for (int row = 1; row < rows.table().rows(); ++row) texts << rows.table().text(row, number);
  return texts;
}

QStringList tags(const DefinitionRows& rows) {
  QStringList texts;
  for (int row = 1; row < rows.table().rows(); ++row) texts << rows.table().rowData(row);
  return texts;
}

QStringList values(const Suggestions& suggestions) {
  QStringList texts;
  for (const Suggestion& entry : suggestions.entries) texts << entry.value;
  return texts;
}

}  // namespace

class TestDefinitionRows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<ConfiguredCompetition>();
    rows_ = std::make_unique<DefinitionRows>();
  }
  void cleanup() {
    rows_.reset();
    office_.reset();
  }

  void headers();
  void nothingToOffer();
  void aRowForEachWeapon();
  void orderOfDisciplinesAndCombinations();
  void combinationsInheritSeriesAndTenths();
  void aWeaponOfTwoMembersGivesTwoRows();
  void aMemberThatIsGone();
  void defaults();
  void theKeyOfTheWeapon();
  void aQuoteInAWeaponKey();
  void suggestions();
  void naming();
  void filterHidesAndLeavesTicks();
  void selectingTakesHiddenRowsToo();
  void outputShowsItsColumns();
  void fillDownQuestions();
  void fillDownTheWeaponFile();
  void fillDownByWeapon();
  void buildingAgainBeginsAnew();

 private:
  void build() { rows_->build(office_->database(), office_->place.files, office_->folder()); }
  QString text(int row, int number) const { return rows_->table().text(row, number); }

  std::unique_ptr<ConfiguredCompetition> office_;
  std::unique_ptr<DefinitionRows> rows_;
};

void TestDefinitionRows::headers() {
  QStringList found;
  for (int number = 0; number < rows_->table().columns(); ++number) found << text(0, number);
  QCOMPARE(found, (QStringList{"",
                               "Diszi/Kombi",
                               "Waffe",
                               ">Bezeichnung",
                               "def-Datei",
                               ">KennNummer",
                               ">Regelnummer",
                               ">WertungsRadius",
                               ">MaximalDurchmesser",
                               ">MinimalDurchmesser",
                               ">Schusszahl",
                               ">Probeschüsse",
                               ">SchiessZeit",
                               ">ProbeZeit",
                               ">Wertung",
                               ">SchiessPosition",
                               ">SerienLaenge",
                               ">DateiWaffe",
                               ">DateiScheibe",
                               ">ZeitenAnzahl",
                               ">Zeit1",
                               ">SchussAnzahl",
                               ">SchussZahl1",
                               ">PositionsAnzahl",
                               ">Position1",
                               ">SerienAnzahl",
                               ">Serien1",
                               ">DateiName",
                               ""}));
  QVERIFY(rows_->table().isEditable(C::Bezeichnung) && rows_->table().isEditable(C::DateiName));
  QVERIFY(!rows_->table().isEditable(C::Name) && !rows_->table().isEditable(C::Rest));
}

void TestDefinitionRows::nothingToOffer() {
  build();
  QCOMPARE(rows_->table().rows(), 1);
  QVERIFY(rows_->suggestions(C::KennNummer).entries.isEmpty());
}

void TestDefinitionRows::aRowForEachWeapon() {
  const int one = office_->addDiscipline({"Meister", 40, false, {"LG", "LP", "ZS"}});
  const int two = office_->addDiscipline({"Glück", 10, true, {"LG"}});
  office_->addDiscipline({"ohne Waffe", 10, false, {}});
  build();
  QCOMPARE(column(*rows_, C::Name), (QStringList{"Meister", "Meister", "Meister", "Glück"}));
  QCOMPARE(column(*rows_, C::Waffe), (QStringList{"LG", "LP", "ZS", "LG"}));
  QCOMPARE(column(*rows_, C::Gewaehlt), QStringList(4, "-1"));
  QCOMPARE(tags(*rows_),
           (QStringList{QString("Diszi%1-LG;40;0").arg(one), QString("Diszi%1-LP;40;0").arg(one),
                        QString("Diszi%1-ZS;40;0").arg(one), QString("Diszi%1-LG;10;-1").arg(two)}));
  QCOMPARE(column(*rows_, C::Schusszahl), (QStringList{"40", "40", "40", "10"}));
  QCOMPARE(column(*rows_, C::Wertung),
           (QStringList{"Ring + Teiler", "Ring + Teiler", "Ring + Teiler", "Zehntel + Teiler"}));
}

void TestDefinitionRows::orderOfDisciplinesAndCombinations() {
  const int b = office_->addDiscipline({"B"});
  office_->addDiscipline({"A"});
  office_->addCombination("Y", {b});
  office_->addCombination("X", {b});
  build();
  QCOMPARE(column(*rows_, C::Name), (QStringList{"B", "A", "Y", "X"}));
  office_->sortByName(true, false);
  build();
  QCOMPARE(column(*rows_, C::Name), (QStringList{"A", "B", "Y", "X"}));
  office_->sortByName(false, true);
  build();
  QCOMPARE(column(*rows_, C::Name), (QStringList{"B", "A", "X", "Y"}));
}

void TestDefinitionRows::combinationsInheritSeriesAndTenths() {
  const int ten = office_->addDiscipline({"zehn", 10, false, {}});
  const int forty = office_->addDiscipline({"vierzig", 40, false, {"LP"}});
  const int tenths = office_->addDiscipline({"Zehntel", 20, true, {"LG"}});
  const int five = office_->addDiscipline({"fünf", 5, false, {"LG"}});
  const QString first = QString::number(office_->addCombination("erste", {five, forty, ten}));
  const QString second = QString::number(office_->addCombination("zweite", {five, tenths}));
  const QString third = QString::number(office_->addCombination("dritte", {five}));
  build();
  // A row is written when its member is read: a later member doesn't change the rows before it.
  QCOMPARE(tags(*rows_).sliced(3), (QStringList{"Kombi" + first + "-LG;5;0", "Kombi" + first + "-LP;40;0",
                                                "Kombi" + second + "-LG;40;0", "Kombi" + second + "-LG;40;-1",
                                                "Kombi" + third + "-LG;40;-1"}));
}

void TestDefinitionRows::aWeaponOfTwoMembersGivesTwoRows() {
  const int one = office_->addDiscipline({"eins", 10, false, {"LG", "LP"}});
  const int two = office_->addDiscipline({"zwei", 10, false, {"LG"}});
  office_->addCombination("beide", {one, two});
  build();
  QCOMPARE(column(*rows_, C::Name).sliced(3), QStringList(3, "beide"));
  QCOMPARE(column(*rows_, C::Waffe).sliced(3), (QStringList{"LG", "LP", "LG"}));
}

void TestDefinitionRows::aMemberThatIsGone() {
  const int one = office_->addDiscipline({"eins", 30});
  office_->addCombination("Rest", {9999, one});
  build();
  QCOMPARE(column(*rows_, C::Name), (QStringList{"eins", "Rest"}));
  QVERIFY(tags(*rows_).last().endsWith("-LG;30;0"));
}

void TestDefinitionRows::defaults() {
  office_->addKey("1.10", "Luftgewehr", "LG");
  office_->addDiscipline({"Luftgewehr: Auflage 1+2", 40});
  build();
  QStringList cells;
  for (int number = 0; number < C::ColumnCount; ++number) cells << text(1, number);
  QCOMPARE(cells, (QStringList{"-1",
                               "Luftgewehr: Auflage 1+2",
                               "LG",
                               "Luftgewehr: Auflage 1+2",
                               "",
                               "0",
                               "1.10",
                               "225",
                               "450",
                               "450",
                               "40",
                               "keine",
                               "999 min",
                               "999 min",
                               "Ring + Teiler",
                               "stehend",
                               "10",
                               "",
                               "",
                               "1",
                               "60 min",
                               "1",
                               "10",
                               "1",
                               "1-Position",
                               "1",
                               "10",
                               "0_hd_LG_Luftgewehr_Auflage_12.def",
                               ""}));
}

void TestDefinitionRows::theKeyOfTheWeapon() {
  office_->addKey("1.10", "Luftgewehr", "LG");
  office_->addKey("1.11", "Luftgewehr Auflage", "LG");
  office_->addKey("2.10", "Luftpistole", "LP");
  office_->addDiscipline({"alle", 10, false, {"LP", "LG", "AB"}});
  build();
  QCOMPARE(column(*rows_, C::Regelnummer), (QStringList{"2.10", "1.10", ""}));
}

void TestDefinitionRows::aQuoteInAWeaponKey() {
  office_->addKey("9.9", "Sonder", "O'G");
  office_->addDiscipline({"alle", 10, false, {"O'G"}});
  build();
  QCOMPARE(text(1, C::Regelnummer), "9.9");
}

void TestDefinitionRows::suggestions() {
  for (const char* name : {"0_hwLG.def", "0_hw_LP.DEF", "0_hsLG.def", "0_hd_LG_a.def", "0_hdLG.def",
                           "anderes.def", "0_hs|1;b.def"})
    office_->place.files.write(office_->folder() + name, "x");
  office_->addKey("2.10", "Luftpistole", "LP");
  office_->addKey("1.10", "Luft|gewehr", "LG");
  build();
  QCOMPARE(rows_->suggestions(C::KennNummer),
           (Suggestions{true, {{"2", "2 – 1.10 – Luft|gewehr"}, {"1", "1 – 2.10 – Luftpistole"}}}));
  QCOMPARE(values(rows_->suggestions(C::Wertung)),
           (QStringList{"Ring", "Zehntelringe", "Ring + Teiler", "Zehntel + Teiler"}));
  QCOMPARE(values(rows_->suggestions(C::Probeschuesse)),
           (QStringList{"unbegrenzt", "keine", "1", "2", "3", "4", "5", "10"}));
  QCOMPARE(values(rows_->suggestions(C::DateiWaffe)), (QStringList{"0_hw_LP.DEF", "0_hwLG.def"}));
  QCOMPARE(values(rows_->suggestions(C::DateiScheibe)), (QStringList{"0_hsLG.def", "0_hs|1;b.def"}));
  for (const int number : {C::DefDatei, C::DateiName})
    QCOMPARE(values(rows_->suggestions(number)), (QStringList{"0_hd_LG_a.def", "0_hdLG.def"}));
  for (const int number : {C::KennNummer, C::Wertung, C::Probeschuesse, C::DateiWaffe, C::DateiScheibe,
                           C::DefDatei, C::DateiName})
    QVERIFY(rows_->suggestions(number).freeText);
  QVERIFY(rows_->suggestions(C::Bezeichnung).entries.isEmpty());
}

void TestDefinitionRows::naming() {
  office_->addDiscipline({"Glück", 10, false, {"LG", "LP"}});
  build();
  rows_->setNaming(Naming::MitDoppelpunkt);
  QCOMPARE(column(*rows_, C::Bezeichnung), (QStringList{"LG: Glück", "LP: Glück"}));
  QCOMPARE(text(1, C::DateiName), "0_hd_LG_Glück.def");
  rows_->setNaming(Naming::MitUnterstrich);
  QCOMPARE(column(*rows_, C::Bezeichnung), (QStringList{"LG_Glück", "LP_Glück"}));
  rows_->setNaming(Naming::Direkt);
  QCOMPARE(column(*rows_, C::Bezeichnung), (QStringList{"Glück", "Glück"}));
}

void TestDefinitionRows::filterHidesAndLeavesTicks() {
  const int one = office_->addDiscipline({"eins"});
  office_->addCombination("Kombi", {one});
  build();
  const auto hidden = [&] { return QList<bool>{rows_->isHidden(1), rows_->isHidden(2)}; };
  QCOMPARE(hidden(), (QList<bool>{false, false}));
  rows_->setFilter(RowFilter::NurDisziplinen);
  QCOMPARE(hidden(), (QList<bool>{false, true}));
  rows_->setFilter(RowFilter::NurKombinationen);
  QCOMPARE(hidden(), (QList<bool>{true, false}));
  QCOMPARE(column(*rows_, C::Gewaehlt), QStringList(2, "-1"));
  rows_->setFilter(RowFilter::Alle);
  QCOMPARE(hidden(), (QList<bool>{false, false}));
}

void TestDefinitionRows::selectingTakesHiddenRowsToo() {
  const int one = office_->addDiscipline({"eins"});
  office_->addCombination("Kombi", {one});
  build();
  rows_->setFilter(RowFilter::NurDisziplinen);
  rows_->selectAll(false);
  QCOMPARE(column(*rows_, C::Gewaehlt), QStringList(2, "0"));
  rows_->selectAll(true);
  QCOMPARE(column(*rows_, C::Gewaehlt), QStringList(2, "-1"));
}

void TestDefinitionRows::outputShowsItsColumns() {
  const auto shown = [&] {
    QList<int> columns;
    for (int number = 0; number < C::ColumnCount; ++number)
      if (rows_->table().columnWidth(number) != 0) columns << number;
    return columns;
  };
  QList<int> whole = {0, 1, 2, 3};
  for (int number = 5; number < 29; ++number) whole << number;
  rows_->setOutput(Output::Ini);
  QCOMPARE(shown(), (QList<int>{0, 1, 2, 3, 4}));
  rows_->setOutput(Output::IniUndDef);
  QCOMPARE(shown(), whole);
  rows_->setOutput(Output::Ini);
  rows_->setOutput(Output::Def);
  QCOMPARE(shown(), whole);
}

void TestDefinitionRows::fillDownQuestions() {
  const QString all = "Alle offenen Einträge dieser Spalte übertragen?";
  const QString weapon = "Alle offenen Einträge dieser Waffenart übertragen?";
  QCOMPARE(C::fillDownQuestion(1, C::DateiWaffe), std::optional(all));
  QCOMPARE(C::fillDownQuestion(2, C::DateiWaffe), std::nullopt);
  QCOMPARE(C::fillDownQuestion(1, C::DateiScheibe), std::optional(weapon));
  QCOMPARE(C::fillDownQuestion(7, C::DateiScheibe), std::optional(weapon));
  QCOMPARE(C::fillDownQuestion(3, C::DefDatei), std::optional(weapon));
  for (const int number : {C::Gewaehlt, C::Bezeichnung, C::Schusszahl, C::DateiName})
    QCOMPARE(C::fillDownQuestion(1, number), std::nullopt);
}

void TestDefinitionRows::fillDownTheWeaponFile() {
  office_->addDiscipline({"eins", 10, false, {"LG", "LP", "ZS"}});
  build();
  rows_->table().setText(2, C::DateiWaffe, "eigen");
  rows_->table().setText(1, C::DateiWaffe, "w");
  rows_->setFilter(RowFilter::NurKombinationen);
  rows_->fillDown(1, C::DateiWaffe);
  QCOMPARE(column(*rows_, C::DateiWaffe), (QStringList{"w", "eigen", "w"}));
}

void TestDefinitionRows::fillDownByWeapon() {
  for (const char* name : {"eins", "zwei", "drei"}) office_->addDiscipline({name, 10, false, {"LG", "LP"}});
  build();
  for (const int number : {C::DateiScheibe, C::DefDatei}) {
    rows_->table().setText(1, number, "davor");
    rows_->table().setText(1, number, "");
    rows_->table().setText(5, number, "eigen");
    rows_->table().setText(3, number, "s");
    rows_->fillDown(3, number);
    // Rows above, too.
    QCOMPARE(column(*rows_, number), (QStringList{"s", "", "s", "", "eigen", ""}));
  }
}

void TestDefinitionRows::buildingAgainBeginsAnew() {
  office_->addDiscipline({"eins"});
  build();
  rows_->table().setText(1, C::Bezeichnung, "anders");
  rows_->table().setText(1, C::Gewaehlt, "0");
  rows_->setFilter(RowFilter::NurKombinationen);
  build();
  QCOMPARE(rows_->table().rows(), 2);
  QCOMPARE(text(1, C::Bezeichnung), "eins");
  QVERIFY(rows_->isChosen(1));
  QVERIFY(!rows_->isHidden(1));
}

QTEST_GUILESS_MAIN(TestDefinitionRows)
#include "test_definition_rows.moc"
