#include "cash/label_run.h"

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/print/label_output.h"
#include "platform/runtime/error.h"

namespace qk {
namespace {

constexpr int kDiscipline = 1, kCombination = 2;

int kindOf(const LabelRow& row) {
  return row.kombination ? kCombination : kDiscipline;
}

QString contentFor(const LabelRow& row, const LabelLayout& layout, const LabelShooter& shooter) {
  return layout.kind == BarcodeKind::Ean13 ? labelContentEan(shooter.id, kindOf(row), row.id)
                                           : labelContent(shooter.startnummer, kindOf(row), row.id);
}

Symbology symbologyOf(BarcodeKind kind) {
  switch (kind) {
    case BarcodeKind::Code128:
      return Symbology::Code128;
    case BarcodeKind::Code39:
      return Symbology::Code39;
    case BarcodeKind::Ean13:
      return Symbology::Ean13;
  }
  return Symbology::Code128;
}

/// Labels of a set, as the first stake says that pays for the row.
int labelsPerSet(dao::Database& database, const LabelRow& row) {
  const auto stakes = database.openRecordset(
      QString("Select * from Kasse_DisziKombi where DisziKombiID = %1 AND DisziKZ = %2")
          .arg(row.id)
          .arg(kindOf(row)));
  if (stakes->eof())
    throw Error(errors::kNoCurrentRecord,
                QString("Keine Einlage bezahlt '%1'. Menü: Optionen - Verwaltung Einlagen - "
                        "Zuordnung-Disziplinen")
                    .arg(row.name));
  return stakes->value("Anzahl").toInt();
}

void place(LabelOutput& output, const LabelPosition& position) {
  output.moveTo(position.x, position.y);
  output.setLandscape(position.querformat);
}

void printBarcode(LabelOutput& output, const LabelLayout& layout, const LabelBarcode& barcode) {
  output.setFont(layout.barcodeFont);
  place(output, layout.first);  // a change of the font may have moved it
  output.printBarcode(barcode.symbology, barcode.content, barcode.encoded);
}

void printText(LabelOutput& output, const LabelLayout& layout, LabelCopies& copies) {
  output.moveToColumn(layout.first.x);
  output.setFont(layout.textFont);
  for (const QString& line : copies.next()) {
    output.moveToColumn(layout.first.x);
    output.printLine(line);
  }
}

}  // namespace

LabelBarcode barcodeOf(const LabelRow& row, const LabelLayout& layout, const LabelShooter& shooter) {
  const QString content = contentFor(row, layout, shooter);
  return {symbologyOf(layout.kind), content, barcodeText(layout.kind, content)};
}

QString textOf(const LabelRow& row, const LabelLayout& layout, const LabelShooter& shooter) {
  LabelFields fields = shooter.felder;
  fields.disziplin = row.name;
  fields.kombination = row.kombination;
  return expandLabelTemplate(layout.vorlage, fields);
}

void druckeEtikett(LabelOutput& output, const LabelLayout& layout, const LabelBarcode& barcode,
                   LabelCopies& copies) {
  place(output, layout.first);
  if (layout.barcode) printBarcode(output, layout, barcode);
  if (layout.zweitesEtikett) {
    output.endDocument();
    place(output, layout.second);
  }
  if (layout.text) printText(output, layout, copies);
  output.endDocument();
}

int PrintScheibenEtiketten(LabelOutput& output, dao::Database& database, const std::vector<LabelRow>& rows,
                           const LabelLayout& layout, const LabelShooter& shooter, const LabelTime& time) {
  const QString former = output.currentPrinter();
  if (!layout.printer.isEmpty()) output.choosePrinter(layout.printer);
  int printed = 0;
  bool goesOn = true;
  for (const LabelRow& row : rows) {
    LabelCopies copies(textOf(row, layout, shooter), row.anzahl, labelsPerSet(database, row), time.now,
                       time.pause);
    const LabelBarcode barcode = barcodeOf(row, layout, shooter);
    for (int copy = 0; copy < row.anzahl && (goesOn = time.weiter()); ++copy, ++printed)
      druckeEtikett(output, layout, barcode, copies);
    if (!goesOn) break;
  }
  output.choosePrinter(former);
  return printed;
}

}  // namespace qk
