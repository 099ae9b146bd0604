#include "cash/label_selection.h"

#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"

namespace qk {
namespace {

constexpr int kCombination = 2;

qint32 zahl(const QString& text) {
  return toInt32(ZahlAusText(text));
}

}  // namespace

LabelSelection::LabelSelection(CashDesk& desk) : desk_(desk), table_(LabelColumn::Anzahl) {
  const QStringList titles = {"", "J/N", "Art", "Name", "Anz", ""};
  for (int column = 0; column < titles.size(); ++column) table_.setText(0, column, titles[column]);
  table_.setColumnWidth(LabelColumn::Merkmal, 0);
  table_.setTickColumn(LabelColumn::Gewaehlt, "1");
  table_.setRightAligned(LabelColumn::Anz, true);
  setManuell(false);
}

void LabelSelection::setManuell(bool manuell) {
  manuell_ = manuell;
  table_.setEditable(LabelColumn::Gewaehlt, manuell);
  table_.setEditable(LabelColumn::Anz, manuell);
}

void LabelSelection::LoadDisziKombiBaum(const std::vector<DisziKombi>& entries) {
  table_.setRows(1);
  for (const DisziKombi& entry : entries)
    table_.addRow({QString(), "1", entry.Art(), entry.name, "1", QString()}, QString::number(entry.id));
  markiereUnbezahlte();
}

/// Printing what no stake pays for is an error: it must be seen before.
void LabelSelection::markiereUnbezahlte() {
  QSet<QString> paid;
  for (const auto all = desk_.database().openRecordset("Select * from Kasse_DisziKombi"); !all->eof();
       all->moveNext())
    paid += (FeldWert(*all, "DisziKZ").toInt() == kCombination ? "K" : "D") +
            FeldWert(*all, "DisziKombiID").toString();
  for (int row = 1; row < table_.rows(); ++row)
    if (!paid.contains(table_.text(row, LabelColumn::Art) + table_.rowData(row)))
      table_.setText(row, LabelColumn::Hinweis, "keine Einlage");
}

void LabelSelection::UpdateBarcodeAnzeige(int nRow) {
  if (manuell_) return;
  reported(fehlerReport(desk_.workplace().dialogs, "Fehler Aktualisieren der Barcode-Anzeige!"), [&](Steps&) {
    for (int row = 1; row < table_.rows(); ++row) {
      table_.setText(row, LabelColumn::Gewaehlt, QString());
      table_.setText(row, LabelColumn::Anz, "0");
    }
    const TextTable& flex = desk_.purchase().flex();
    const int first = nRow < 0 ? 1 : nRow;
    const int last = nRow < 0 ? flex.rows() - 1 : nRow;
    QHash<QString, int> times;  // each stake is looked up once, however often it is bought
    for (int row = first; row <= last; ++row) ++times[flex.rowData(row)];
    for (auto stake = times.begin(); stake != times.end(); ++stake) fuegeHinzu(zahl(stake.key()), *stake);
  });
}

void LabelSelection::fuegeHinzu(qint32 stake, int times) {
  const auto paidFor = desk_.database().openRecordset(
      QString("Select * from Kasse_DisziKombi where EinlageID = %1").arg(stake));
  for (; !paidFor->eof(); paidFor->moveNext()) {
    const QString art = FeldWert(*paidFor, "DisziKZ").toInt() == 1 ? "D" : "K";
    const QString id = FeldWert(*paidFor, "DisziKombiID").toString();
    for (int row = 1; row < table_.rows(); ++row) {
      if (table_.text(row, LabelColumn::Art) != art || table_.rowData(row) != id) continue;
      table_.setText(row, LabelColumn::Gewaehlt, "1");
      const qint64 more = qint64{FeldWert(*paidFor, "Anzahl").toInt()} * times;
      table_.setText(row, LabelColumn::Anz, QString::number(zahl(table_.text(row, LabelColumn::Anz)) + more));
      break;
    }
  }
}

LabelRow LabelSelection::muster() const {
  if (table_.rows() < 2) return {false, 1, "Disziplin", 1};
  return {table_.text(1, LabelColumn::Art) != "D", zahl(table_.rowData(1)), table_.text(1, LabelColumn::Name),
          1};
}

std::vector<LabelRow> LabelSelection::gewaehlt() const {
  std::vector<LabelRow> rows;
  for (int row = 1; row < table_.rows(); ++row)
    if (ZahlAusText(table_.text(row, LabelColumn::Gewaehlt)) != 0)
      rows.push_back({table_.text(row, LabelColumn::Art) != "D", zahl(table_.rowData(row)),
                      table_.text(row, LabelColumn::Name), zahl(table_.text(row, LabelColumn::Anz))});
  return rows;
}

}  // namespace qk
