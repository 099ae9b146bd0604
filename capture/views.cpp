#include "capture/views.h"

#include <QCollator>
#include <algorithm>
#include <array>
#include <vector>

#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int TickWidth = 400;
constexpr int CompetitionWidth = 2000;
constexpr int FirstHiddenColumn = 9;
constexpr int LastHiddenColumn = 28;
constexpr int ValueWidth = 8;

/// A column of the grid of open shots. Columns 9 to 31 repeat the record for inspection; the title over the
/// radius in column 21 is the operators' own word for it.
struct FlexColumn {
  QString title;
  QString (*text)(const HaeringSchuss&);
  bool number;
};

QString shown(const QString& value) {
  return value;
}
QString shown(double value) {
  return numberText(value);
}
QString shown(qint16 value) {
  return QString::number(value);
}

template <auto Field>
FlexColumn showing(const QString& title) {
  constexpr bool isText =
      std::is_same_v<std::decay_t<decltype(std::declval<HaeringSchuss>().*Field)>, QString>;
  return {title, [](const HaeringSchuss& schuss) { return shown(schuss.*Field); }, !isText};
}

const auto& flexColumns() {
  using S = HaeringSchuss;
  static const std::array columns{
      FlexColumn{" ", [](const HaeringSchuss&) { return QString(); }, false},
      showing<&S::WettbewerbBezeichnung>("WettbewerbBezeichnung"),
      showing<&S::TrefferNummer>("Treffer"),
      showing<&S::RingOhneZehntel>("Ring"),
      showing<&S::RingMitZehntel>("Ring (1/10)"),
      showing<&S::dblTeiler>("Teiler"),
      showing<&S::AbsoluteZeit>("Zeit"),
      showing<&S::RegelNummerWettbewerb>("Wettbewerb"),
      showing<&S::RegelNummerKlasse>("Klasse"),
      showing<&S::WettbewerbBezeichnung>("WettbewerbBezeichnung"),
      showing<&S::KlasseBezeichnung>("KlasseBezeichnung"),
      showing<&S::OrtStandnummer>("StandnummerOrt"),
      showing<&S::LinienNummer>("Linie"),
      showing<&S::SchuetzenName>("Schütze"),
      showing<&S::ProbeMatch>("ProbeMatch"),
      showing<&S::Wertung>("Wertung"),
      showing<&S::TrefferNummer>("Treffer"),
      showing<&S::RingMitZehntel>("RingwertmitZehntel"),
      showing<&S::LagePfeilzeichen>("Lagepfeil"),
      showing<&S::X>("X"),
      showing<&S::Y>("Y"),
      showing<&S::Radius>("Teiler"),
      showing<&S::PHiPosition>("Winkel"),
      showing<&S::AbsoluteZeit>("ZeitAbsolut"),
      showing<&S::RelativeZeit>("ZeitRelativ"),
      showing<&S::Datum>("Datum"),
      showing<&S::RegelNummerWettbewerb>("Wettbewerb"),
      showing<&S::RegelNummerKlasse>("Klasse"),
      showing<&S::SchuetzeStartnummer>("Startnummer"),
      showing<&S::sWaffe>("Waffe"),
      showing<&S::Radius>("Radius"),
      showing<&S::dblTeilerFaktor>("TF"),
  };
  return columns;
}

/// Sorted as the operator's language sorts, whatever the case.
void sortByText(QStringList& lines) {
  QCollator german(QLocale(QLocale::German, QLocale::Germany));
  german.setCaseSensitivity(Qt::CaseInsensitive);
  std::stable_sort(lines.begin(), lines.end(),
                   [&](const QString& a, const QString& b) { return german.compare(a, b) < 0; });
}

QString resultLine(double result, const QString& discipline, const QString& addition = {}) {
  return (QString(ValueWidth, u' ') + formatNumber(result, 1, true)).right(ValueWidth) + " - " + discipline +
         addition;
}

/// A line of a result list, taken apart again: everything before the first " - " and everything behind it.
struct ListedResult {
  explicit ListedResult(const QString& text) : line(text) {
    const QString separator = " - ";
    const auto at = text.indexOf(separator);
    value = parseTolerant(text.left(at));
    discipline = text.mid(at + separator.size());
  }
  QString line, discipline;
  double value;
};

/// For each different discipline, in the order of the list, the line that beats all before it.
template <class Beats>
QStringList bestLines(const QStringList& lines, double start, Beats beats) {
  struct Best {
    QString discipline, line;
    double value;
  };
  std::vector<Best> found;
  for (const QString& text : lines) {
    const ListedResult result(text);
    auto best = std::find_if(found.begin(), found.end(),
                             [&](const Best& b) { return b.discipline == result.discipline; });
    if (best == found.end()) best = found.insert(found.end(), {result.discipline, {}, start});
    if (!beats(result.value, best->value)) continue;
    best->line = result.line;
    best->value = result.value;
  }
  QStringList kept;
  for (const Best& best : found)
    if (!best.line.isEmpty()) kept += best.line;
  return kept;
}

}  // namespace

void FlexEinrichten(TextTable& flex) {
  const auto& columns = flexColumns();
  flex.setRows(1);
  flex.setColumns(static_cast<int>(columns.size()));
  for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
    const FlexColumn& column = columns[static_cast<size_t>(i)];
    flex.setText(0, i, column.title);
    flex.setRightAligned(i, column.number);
    flex.setEditable(i, i == 0);
    if (i >= FirstHiddenColumn && i <= LastHiddenColumn) flex.setColumnWidth(i, 0);
  }
  flex.setColumnWidth(0, TickWidth);
  flex.setColumnWidth(1, CompetitionWidth);
  flex.setTickColumn(0, "-1");
}

QStringList shotCells(const HaeringSchuss& schuss) {
  QStringList cells;
  cells.reserve(static_cast<int>(flexColumns().size()));
  for (const FlexColumn& column : flexColumns()) cells += column.text(schuss);
  return cells;
}

bool TransferInGrid(const Workplace& workplace, TextTable& flex, ShotCollection& shots,
                    const std::shared_ptr<HaeringSchuss>& schuss) {
  const ErrorReport report = fehlerReport(
      workplace.dialogs, "Fehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!", {}, false);
  int row = 0;
  bool kept = false;
  const bool done = reported(report, [&](Steps& step) {
    step([&] { row = flex.addRow(shotCells(*schuss), schuss->Key); });
    kept = step([&] { shots.add(schuss, schuss->Key); });
  });
  // A row of its own could be ticked, and would count nowhere. Behind it others may have come under the box.
  if (row > 0 && !kept) flex.removeRow(row);
  return done;
}

void PruefeBesteErgebnisse(const Workplace& workplace, const PendingResults& pending, BestResults& lists) {
  const ErrorReport report =
      fehlerReport(workplace.dialogs, "Fehler beim Prüfen der besten Ergebnisse!", {}, false);
  reported(report, [&](Steps& step) {
    LeereBesteErgebnisse(lists);
    for (const auto& record : pending.m_colTeilerErg.objects()) {
      QString addition;
      if (record->DSBRinge > 0)
        addition = " (" + numberText(record->DSBMaxRinge) + " - " + numberText(record->DSBRinge) + " + " +
                   numberText(record->DSBTeiler) + ")";
      step([&] { lists.teiler += resultLine(record->ergebnis, record->DisziplinName, addition); });
    }
    for (const auto& record : pending.m_colRingErg.objects())
      step([&] { lists.serien += resultLine(record->ergebnis, record->DisziplinName); });
    sortByText(lists.teiler);
    sortByText(lists.serien);
    ErmittleBesteErgebnisse(workplace, lists);
  });
}

void ErmittleBesteErgebnisse(const Workplace& workplace, BestResults& lists) {
  constexpr double WorstTeiler = 100000;
  const ErrorReport report =
      fehlerReport(workplace.dialogs, "Fehler beim Ermitteln der besten Ergebnisse!", {}, false);
  reported(report, [&](Steps&) {
    lists.beste = bestLines(lists.serien, 0, std::greater<>());
    if (lists.teiler.isEmpty()) return;
    if (!lists.beste.isEmpty()) lists.beste += "   ";
    lists.beste += bestLines(lists.teiler, WorstTeiler, std::less<>());
  });
}

void LeereBesteErgebnisse(BestResults& lists) {
  lists = {};
}

}  // namespace qk
