// What the generator writes for any configuration, the checker finds whole and the line control reads back
// with the same counts.
#include <QFile>
#include <QTest>
#include <random>

#include "link/linecontrol/line_disciplines.h"
#include "platform/runtime/numbers.h"
#include "targetconfig/definition_files.h"
#include "targetconfig/station_lines.h"
#include "tests/targetconfig/configured_competition.h"

using namespace qk;
using namespace qk::test;
using C = DefinitionRows;

namespace {

constexpr int kRuns = 40;

/// Random texts and choices, the same in each run of a seed.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  int upTo(int most) { return int(engine_() % unsigned(most + 1)); }
  bool chance(int percent) { return upTo(99) < percent; }
  QString pick(const QStringList& texts) { return texts[upTo(int(texts.size()) - 1)]; }
  /// A title as people write them: it neither begins nor ends with a blank and holds no quote.
  QString title() {
    static const QString letters = "aäbcdefgöhiß0123456789 :/\\<>*?|+.,;#€–é()[]&%   ";
    QString text = "T";
    for (int length = upTo(20); length > 0; --length) text += letters[upTo(int(letters.size()) - 1)];
    return text + "x";
  }

 private:
  std::mt19937 engine_;
};

const QStringList kCounts = {"0", "1", "2", "17", "3.5", "2,5", " 4 mal", "viele", "", "-3"};
const QStringList kSeries = {"10", "40", "1", "0", "12.5", "20 Schuss"};

}  // namespace

class TestDefinitionRoundTrip : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void whatIsWrittenIsFound_data();
  void whatIsWrittenIsFound();

 private:
  void fill(ConfiguredCompetition& office, Dice& dice);
  void edit(TextTable& table, Dice& dice);
};

void TestDefinitionRoundTrip::fill(ConfiguredCompetition& office, Dice& dice) {
  std::vector<int> ids;
  for (int count = dice.upTo(8); count > 0; --count) {
    QStringList weapons;
    for (const char* weapon : {"LG", "LP", "ZS", "KK"})
      if (dice.chance(50)) weapons << weapon;
    ids.push_back(office.addDiscipline({dice.title(), dice.upTo(60), dice.chance(40), weapons}));
  }
  for (int count = dice.upTo(3); count > 0 && !ids.empty(); --count) {
    std::vector<int> members;
    for (const int id : ids)
      if (dice.chance(40)) members.push_back(id);
    office.addCombination(dice.title(), members);
  }
}

/// The rows as an operator leaves them; each has a def file of its own, so that none is overwritten.
void TestDefinitionRoundTrip::edit(TextTable& table, Dice& dice) {
  for (int row = 1; row < table.rows(); ++row) {
    table.setText(row, C::Gewaehlt, dice.chance(80) ? "-1" : "0");
    table.setText(row, C::DateiWaffe, "0_hw" + dice.pick({"LG", "LP"}) + ".def");
    table.setText(row, C::DateiScheibe, "0_hs" + dice.pick({"LG", "LP"}) + ".def");
    table.setText(row, C::Schusszahl, dice.pick(kSeries));
    table.setText(row, C::DateiName, QString("0_hd_%1_%2.def").arg(row).arg(dice.upTo(9)));
    for (const int column : {C::ZeitenAnzahl, C::SchussAnzahl, C::PositionsAnzahl, C::SerienAnzahl})
      table.setText(row, column, dice.pick(kCounts));
  }
}

void TestDefinitionRoundTrip::whatIsWrittenIsFound_data() {
  QTest::addColumn<unsigned>("seed");
  for (unsigned seed = 1; seed <= kRuns; ++seed) QTest::addRow("%u", seed) << seed;
}

void TestDefinitionRoundTrip::whatIsWrittenIsFound() {
  QFETCH(unsigned, seed);
  Dice dice(seed);
  ConfiguredCompetition office;
  fill(office, dice);
  DefinitionRows rows;
  rows.build(office.database(), office.place.files, office.folder());
  rows.setNaming(Naming(dice.upTo(2)));
  edit(rows.table(), dice);
  rows.setFilter(RowFilter(dice.upTo(2)));
  office.place.dialogs.expect("Datei(en) erstellt");
  QVERIFY(DefinitionFiles(office.place.workplace(), rows, office.folder()).create(Output::IniUndDef));

  std::vector<int> written;
  for (int row = 1; row < rows.table().rows(); ++row)
    if (rows.isChosen(row) && !rows.isHidden(row)) written.push_back(row);
  const auto cell = [&](int row, int column) { return rows.table().text(row, column); };

  // The checker: every title and every def file, in order, and the weapon and target files that they name.
  QStringList titles, definitions;
  for (const QString& line : readStationLines(office.place.files, office.folder() + EsaPreisIni)) {
    if (holdsTitle(line)) titles << titleForCheck(line);
    if (holdsDefinition(line)) definitions << definitionForCheck(line);
  }
  QStringList expectedTitles, expectedDefinitions;
  for (const int row : written) {
    expectedTitles << '"' + cell(row, C::Bezeichnung) + '"';
    expectedDefinitions << cell(row, C::DateiName);
  }
  QCOMPARE(titles, expectedTitles);
  QCOMPARE(definitions, expectedDefinitions);
  QCOMPARE(office.names("0_hd*").size(), qsizetype(written.size()));
  for (const int row : written) {
    const Definition read = readDefinition(office.place.files, office.folder() + cell(row, C::DateiName));
    Definition expected = definitionOf(rows.table(), row);
    // A repeated value that stands nowhere can't be read.
    for (auto [count, value] : {std::pair{&Definition::zeitenAnzahl, &Definition::zeit},
                                {&Definition::schussAnzahl, &Definition::schussZahl},
                                {&Definition::positionsAnzahl, &Definition::position},
                                {&Definition::serienAnzahl, &Definition::serien}})
      if (toInt16(parsePrefix(expected.*count)) <= 0) (expected.*value).clear();
    QVERIFY(read == expected);
  }

  // The firing line: a row for each section, with the shots that the grid shows.
  LineDisciplines line(office.place.workplace());
  LineReadings readings(1);
  line.read(office.folder(), readings);
  QCOMPARE(line.table().rows() - 1, int(written.size()));
  for (size_t i = 0; i < written.size(); ++i) {
    const int row = int(i) + 1;
    QCOMPARE(line.table().text(row, LineDisciplines::Name), cell(written[i], C::Bezeichnung));
    QCOMPARE(line.table().text(row, LineDisciplines::Schuss),
             numberText(parsePrefix(cell(written[i], C::Schusszahl))));
  }
}

QTEST_GUILESS_MAIN(TestDefinitionRoundTrip)
#include "test_definition_round_trip.moc"
