#include "cash/stake_links.h"

#include <limits>

#include "app/ground/temp_module.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/numbers.h"

namespace qk {
namespace {

constexpr int kDiscipline = 1;
constexpr int kCombination = 2;
constexpr int kGrownUp = 18;
constexpr int kMen = 1, kWomen = 2, kBoth = 0;

qint32 zahl(const QString& text) {
  return toInt32(ZahlAusText(text));
}

/// "Select * from …" of one stake.
std::unique_ptr<dao::Recordset> rowsOf(dao::Database& database, const QString& table, const QString& column,
                                       qint32 EinlageID) {
  return database.openRecordset(QString("Select * from %1 where %2 = %3").arg(table, column).arg(EinlageID));
}

void deleteAll(dao::Recordset& rows) {
  while (!rows.eof()) {
    rows.remove();
    if (!rows.eof()) rows.moveNext();  // behind the last one there is nothing to move to
  }
}

}  // namespace

StakeTargets::StakeTargets() : table_(StakeTargetColumn::Anzahl) {
  const QStringList titles = {"", "J/N", "Art", "Name", "Anz"};
  for (int column = 0; column < titles.size(); ++column) table_.setText(0, column, titles[column]);
  table_.setColumnWidth(StakeTargetColumn::Merkmal, 0);
  table_.setTickColumn(StakeTargetColumn::Gewaehlt, "1");
  table_.setEditable(StakeTargetColumn::Anz, true);
  table_.setRightAligned(StakeTargetColumn::Anz, true);
}

void StakeTargets::LoadDisziKombi(const std::vector<DisziKombi>& entries) {
  table_.setRows(1);
  for (const DisziKombi& entry : entries)
    table_.addRow({QString(), QString(), entry.Art(), entry.name, "1"}, QString::number(entry.id));
}

int StakeTargets::zeile(int DisziKZ, qint32 DisziKombiID) const {
  const QString art = DisziKZ == kDiscipline ? "D" : "K";
  for (int row = 1; row < table_.rows(); ++row)
    if (table_.text(row, StakeTargetColumn::Art) == art &&
        table_.rowData(row) == QString::number(DisziKombiID))
      return row;
  return -1;
}

void StakeTargets::zeige(dao::Database& database, qint32 EinlageID) {
  for (int row = 1; row < table_.rows(); ++row) {
    table_.setText(row, StakeTargetColumn::Gewaehlt, QString());
    table_.setText(row, StakeTargetColumn::Anz, "1");
  }
  for (const auto rows = rowsOf(database, "Kasse_DisziKombi", "EinlageID", EinlageID); !rows->eof();
       rows->moveNext()) {
    const int row = zeile(FeldWert(*rows, "DisziKZ").toInt(), FeldWert(*rows, "DisziKombiID").toInt());
    if (row < 0) continue;
    table_.setText(row, StakeTargetColumn::Gewaehlt, "1");
    table_.setText(row, StakeTargetColumn::Anz, FeldWert(*rows, "Anzahl").toString());
  }
}

void StakeTargets::speichere(dao::Database& database, qint32 EinlageID) const {
  const auto rows = rowsOf(database, "Kasse_DisziKombi", "EinlageID", EinlageID);
  deleteAll(*rows);
  for (int row = 1; row < table_.rows(); ++row) {
    if (ZahlAusText(table_.text(row, StakeTargetColumn::Gewaehlt)) == 0) continue;
    rows->addNew();
    rows->setValue("EinlageID", EinlageID);
    rows->setValue("DisziKZ", table_.text(row, StakeTargetColumn::Art) == "D" ? kDiscipline : kCombination);
    rows->setValue("DisziKombiID", zahl(table_.rowData(row)));
    rows->setValue("Anzahl", zahl(table_.text(row, StakeTargetColumn::Anz)));
    rows->update();
  }
}

bool passt(const ClassFilter& filter, const ClassTraits& klasse) {
  const auto group = [](bool one, bool fitsOne, bool other, bool fitsOther) {
    return (!one && !other) || (one && fitsOne) || (other && fitsOther);
  };
  return group(filter.freihand, !klasse.Auflage, filter.auflage, klasse.Auflage) &&
         group(filter.damen, klasse.Geschlecht == kWomen || klasse.Geschlecht == kBoth, filter.herren,
               klasse.Geschlecht == kMen || klasse.Geschlecht == kBoth) &&
         group(filter.bis18, klasse.AlterBis <= kGrownUp, filter.ueber18, klasse.AlterVon > kGrownUp);
}

std::vector<ShooterClass> ladeKlassen(dao::Database& database) {
  std::vector<ShooterClass> all;
  for (const auto rows =
           database.openRecordset("Select * from Schützenklassen order by [Alter Von], Auflage DESC");
       !rows->eof(); rows->moveNext())
    all.push_back({FeldWert(*rows, "ID").toInt(), FeldWert(*rows, "Klasse").toString()});
  return all;
}

QSet<qint32> klassenDerEinlage(dao::Database& database, qint32 EinlageID) {
  QSet<qint32> found;
  for (const auto rows = rowsOf(database, "Kasse_Schuetzenklassen", "KasseEinlageID", EinlageID);
       !rows->eof(); rows->moveNext())
    found += FeldWert(*rows, "SchuetzenKlasseID").toInt();
  return found;
}

QSet<qint32> klassenNachMerkmal(dao::Database& database, const ClassFilter& filter) {
  QSet<qint32> found;
  // A class without an upper bound is for the old, too.
  const auto upTo = [](const dao::Recordset& row) {
    const QVariant bound = row.value("Alter bis");
    return bound.isNull() ? std::numeric_limits<int>::max() : bound.toInt();
  };
  for (const auto rows = database.openRecordset("Select * from Schützenklassen"); !rows->eof();
       rows->moveNext())
    if (passt(filter, {FeldWert(*rows, "Auflage").toInt() != 0, FeldWert(*rows, "Geschlecht").toInt(),
                       FeldWert(*rows, "Alter von").toInt(), upTo(*rows)}))
      found += FeldWert(*rows, "id").toInt();
  return found;
}

void speichereKlassen(dao::Database& database, qint32 EinlageID, const std::vector<qint32>& klassen) {
  const auto rows = rowsOf(database, "Kasse_Schuetzenklassen", "KasseEinlageID", EinlageID);
  deleteAll(*rows);
  for (qint32 klasse : klassen) {
    rows->addNew();
    rows->setValue("KasseEinlageID", EinlageID);
    rows->setValue("SchuetzenklasseId", klasse);
    rows->update();
  }
}

}  // namespace qk
