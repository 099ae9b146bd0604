#include "capture/result_grid.h"

#include <algorithm>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/fonttext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int Columns = 14;
constexpr int ShotsPerRow = 10;
constexpr int IntegerSumColumn = 11;
constexpr int TenthsSumColumn = 12;
constexpr int RingTeilerColumn = 13;
constexpr int LabelWidth = 500;
constexpr int OwnSize = -1;
constexpr int Hidden = 0;

bool isRingRow(int row) {
  return row % 2 == 1;
}

/// The settings keep colours as numbers in blue-green-red order.
QColor colourSetting(const Settings& settings, const SettingKey& key) {
  const auto bgr = static_cast<unsigned>(liesZahl(settings, key));
  return QColor(static_cast<int>(bgr & 0xff), static_cast<int>(bgr >> 8 & 0xff),
                static_cast<int>(bgr >> 16 & 0xff));
}

QFont fontSetting(const Settings& settings, const SettingKey& key) {
  const FontSpec spec = parseFontText(liesText(settings, key), parseFontText(key.preset.toString()));
  QFont font(spec.name);
  font.setPointSizeF(spec.size);
  font.setBold(spec.bold);
  font.setItalic(spec.italic);
  font.setUnderline(spec.underline);
  font.setStrikeOut(spec.strikethrough);
  return font;
}

/// What the ticked disciplines want of the grid.
struct Demand {
  int nMax = 0;
  bool teiler = false, ringTeiler = false, tenths = false;
};

Demand demandOf(const KeyedCollection<Disziplin>& disciplines) {
  Demand demand;
  for (const auto& d : disciplines.objects()) {
    if (d->Teiler) demand.teiler = true;
    if (d->Teiler && d->Ringe) demand.ringTeiler = true;
    if (!d->Teiler || d->Ringe) demand.nMax = std::max<int>(demand.nMax, d->RingSerie);
    if (d->RingZentel) demand.tenths = true;
  }
  return demand;
}

/// Rounds the pairs first and adds the begun one then: 15 shots give five rows, with half a pair at the end.
int dataRows(const Demand& demand) {
  if (demand.nMax == 0) return demand.teiler ? 2 : 0;
  const int whole = toInt32(static_cast<double>(demand.nMax) / ShotsPerRow * 2);
  return whole + (demand.nMax % ShotsPerRow > 0 ? 2 : 0);
}

void writeTitles(TextTable& ffErg) {
  for (int column = 1; column <= ShotsPerRow; ++column) ffErg.setText(0, column, QString::number(column));
  ffErg.setText(0, IntegerSumColumn, "Serie");
  ffErg.setText(0, TenthsSumColumn, "1/10");
  ffErg.setText(0, RingTeilerColumn, "DSB");
  for (int row = 1; row < ffErg.rows(); ++row) {
    const int count = (row + 1) / 2 * ShotsPerRow;
    ffErg.setText(row, 0, (isRingRow(row) ? " R" : " T") + QString::number(count));
  }
}

/// A white ground is what nobody has chosen: there the house's own light or dark one stays, and black text
/// with it. Another text colour keeps its hue on either.
TextTable::CellLook chosen(TextTable::CellLook look) {
  if (look.back != QColor(Qt::white)) return look;
  look.back.reset();
  if (look.fore == QColor(Qt::black)) look.fore.reset();
  return look;
}

void writeLooks(TextTable& ffErg, const ResultLook& look) {
  for (int row = 1; row < ffErg.rows(); ++row) {
    const TextTable::CellLook& own = isRingRow(row) ? look.ring : look.teiler;
    const TextTable::CellLook shots = chosen(own);
    const TextTable::CellLook sums = chosen({look.serie.font, look.serie.fore, own.back});
    for (int column = 1; column <= ShotsPerRow; ++column) ffErg.setCellLook(row, column, shots);
    for (int column = IntegerSumColumn; column < Columns; ++column) ffErg.setCellLook(row, column, sums);
  }
}

}  // namespace

ResultLook LadeSchriftenErgebnisse(const Workplace& workplace) {
  const Settings& settings = workplace.settings;
  ResultLook look;
  reported(fehlerReport(workplace.dialogs, "Fehler beim Laden der Schriften Ergebnisse!"), [&](Steps&) {
    look.teiler = {fontSetting(settings, keys::FontTeiler), colourSetting(settings, keys::ForeColorTeiler),
                   colourSetting(settings, keys::BackColorTeiler)};
    look.ring = {fontSetting(settings, keys::FontRinge), colourSetting(settings, keys::ForeColorRinge),
                 colourSetting(settings, keys::BackColorRinge)};
    look.serie = {fontSetting(settings, keys::FontSerie), colourSetting(settings, keys::ForeColorSerie), {}};
  });
  return look;
}

void FFerg_AufnahmeVorbereiten(const Workplace& workplace, TextTable& ffErg,
                               const KeyedCollection<Disziplin>& disciplines) {
  reported(fehlerReport(workplace.dialogs, "Fehler bei FFerg_AufnahmeVorbereiten_err!"), [&](Steps&) {
    const Demand demand = demandOf(disciplines);
    ffErg.setColumns(Columns);
    ffErg.setRows(dataRows(demand) + 1);
    const int ringHeight = demand.nMax == 0 ? Hidden : OwnSize;
    const int teilerHeight = demand.teiler ? OwnSize : Hidden;
    for (int row = 1; row < ffErg.rows(); ++row)
      ffErg.setRowHeight(row, isRingRow(row) ? ringHeight : teilerHeight);
    const int width = ffErg.columnWidth(1);
    ffErg.setColumnWidth(TenthsSumColumn, demand.tenths ? width : Hidden);
    ffErg.setColumnWidth(RingTeilerColumn, demand.ringTeiler ? width : Hidden);
  });
}

void ErgebnislisteEinrichten(const Workplace& workplace, TextTable& ffErg, const QString& sCode,
                             const ResultLook& look) {
  reported(fehlerReport(workplace.dialogs, "Fehler beim Einrichten des Ergebnisliste!"), [&](Steps&) {
    const int width = liesZahl(workplace.settings, keys::Spaltenbreite);
    const int sumWidth = liesZahl(workplace.settings, keys::SpaltenbreiteGesamt);
    const auto widthIf = [&](bool wanted) { return wanted ? sumWidth : Hidden; };
    ffErg.setColumns(Columns);
    ffErg.setColumnWidth(0, LabelWidth);
    for (int column = 1; column <= ShotsPerRow; ++column) ffErg.setColumnWidth(column, width);
    ffErg.setColumnWidth(IntegerSumColumn, widthIf(sCode.contains('1')));
    ffErg.setColumnWidth(TenthsSumColumn, widthIf(sCode.contains('2') || sCode.contains('4')));
    ffErg.setColumnWidth(RingTeilerColumn, widthIf(sCode.contains('3')));
    for (int column = 1; column < Columns; ++column) ffErg.setRightAligned(column, true);
    writeTitles(ffErg);
    writeLooks(ffErg, look);
  });
}

int resultCapacity(const TextTable& ffErg) {
  return toInt32(static_cast<double>(ffErg.rows() - 1) / 2 * ShotsPerRow);
}

void fillResultGrid(TextTable& ffErg, const std::vector<std::shared_ptr<HaeringSchuss>>& shots) {
  clearResultGrid(ffErg);
  int ringRow = 1, column = 1;
  int integerSum = 0;
  double tenthsSum = 0;
  for (const auto& shot : shots) {
    ffErg.setText(ringRow, column, numberText(shot->RingMitZehntel));
    if (const int teilerRow = ringRow + 1; teilerRow < ffErg.rows())
      ffErg.setText(teilerRow, column, numberText(shot->dblTeiler));
    integerSum += shot->RingOhneZehntel;
    tenthsSum += shot->RingMitZehntel;
    ffErg.setText(ringRow, IntegerSumColumn, QString::number(integerSum));
    ffErg.setText(ringRow, TenthsSumColumn, numberText(tenthsSum));
    if (++column <= ShotsPerRow) continue;
    column = 1;
    integerSum = 0;
    tenthsSum = 0;
    ringRow += 2;
  }
}

void clearResultGrid(TextTable& ffErg) {
  if (ffErg.rows() > 1) ffErg.clearCells(1, 1);
}

}  // namespace qk
