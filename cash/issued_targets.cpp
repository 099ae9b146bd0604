#include "cash/issued_targets.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/datetext.h"

namespace qk {
namespace {

const QString kIssued =
    "SELECT Schuetzen_ScheibenNummern.Scheibennummer, Schuetzen_ScheibenNummern.Kaufdatum, "
    "Schuetzen_ScheibenNummern.Speicherdatum, ScheibenNummern.Bezeichnung AS Stapel, "
    "DisziplinKombinationName.Name AS Zuordnung, ScheibenNummern.ScheibenTyp, Schuetzen_ScheibenNummern.ID "
    "FROM (Schuetzen_ScheibenNummern LEFT JOIN ScheibenNummern ON Schuetzen_ScheibenNummern.StapelID = "
    "ScheibenNummern.ID) LEFT JOIN (SELECT Name, ID, 0 as Art from Disziplin Union SELECT Kombinationsname "
    "as "
    "Name, ID, 1 as Art  from Kombination_Name) as DisziplinKombinationName ON "
    "(Schuetzen_ScheibenNummern.DisziKombiWahl = DisziplinKombinationName.Art) AND "
    "(Schuetzen_ScheibenNummern.DisziKombiID = DisziplinKombinationName.ID) "
    "WHERE (Schuetzen_ScheibenNummern.Startnummer = %1) ORDER BY Schuetzen_ScheibenNummern.Scheibennummer";

QString dateOf(const dao::Recordset& row, const QString& column) {
  const QVariant value = row.value(column);
  return value.isNull() ? QString() : dateText(value.toDateTime());
}

}  // namespace

IssuedTargets::IssuedTargets(CashDesk& desk) : desk_(desk), table_(IssuedColumn::Anzahl) {
  const QStringList titles = {"Nummer", "Ausgabe", "Abgabe", "Stapel", "Zuordnung", "Typ"};
  for (int column = 0; column < titles.size(); ++column) table_.setText(0, column, titles[column]);
  table_.setRightAligned(IssuedColumn::Nummer, true);
}

void IssuedTargets::LoadScheibenGesamt() {
  if (desk_.sStartNr().isEmpty()) return;  // the first shooter's list stays: nobody's mustn't be it
  if (cursor_) {
    cursor_->requery();
  } else {
    sStartNr_ = desk_.sStartNr();
    cursor_ = desk_.database().openRecordset(kIssued.arg(dao::sql::quoted(sStartNr_)));
  }
  table_.setRows(1);
  for (; !cursor_->eof(); cursor_->moveNext())
    table_.addRow({FeldWert(*cursor_, "Scheibennummer").toString(), dateOf(*cursor_, "Kaufdatum"),
                   dateOf(*cursor_, "Speicherdatum"), FeldWert(*cursor_, "Stapel").toString(),
                   FeldWert(*cursor_, "Zuordnung").toString(), FeldWert(*cursor_, "ScheibenTyp").toString()},
                  QString::number(FeldWert(*cursor_, "ID").toInt()));
}

void IssuedTargets::frageUndLoesche(const QString& question, const QString& statement) {
  if (!desk_.workplace().dialogs.confirm(question, BoxIcon::Question, BoxAnswer::No)) return;
  desk_.database().execute(statement);
  LoadScheibenGesamt();
}

void IssuedTargets::cmdScheibenGesamtDelete(int row) {
  if (row < 1) return;
  frageUndLoesche("Soll die gewählte Scheibe des Schützen gelöscht werden?",
                  "Delete * from Schuetzen_Scheibennummern where ID = " + table_.rowData(row));
}

void IssuedTargets::cmdScheibenGesamtDeleteAll() {
  if (table_.rows() <= 1) return;
  frageUndLoesche(
      "Sollen alle Scheiben des Schützen gelöscht werden?",
      "Delete * from Schuetzen_Scheibennummern where Startnummer = " + dao::sql::quoted(desk_.sStartNr()));
}

void IssuedTargets::loescheAlleAusgaben() {
  frageUndLoesche("Sollen alle ausgegebenen Scheiben zu den Schützen gelöscht werden?",
                  "Delete * from Schuetzen_ScheibenNummern");
}

std::vector<ReceiptTarget> IssuedTargets::belegScheiben() const {
  std::vector<ReceiptTarget> all;
  for (int row = 1; row < table_.rows(); ++row) {
    ReceiptTarget on;
    on.Scheibennr = table_.text(row, IssuedColumn::Nummer);
    on.Ausgabe = table_.text(row, IssuedColumn::Ausgabe);
    on.Bezeichnung = table_.text(row, IssuedColumn::Stapel);
    on.Zuordnung = table_.text(row, IssuedColumn::Zuordnung);
    on.Typ = table_.text(row, IssuedColumn::Typ);
    all.push_back(on);
  }
  return all;
}

}  // namespace qk
