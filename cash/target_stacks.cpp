#include "cash/target_stacks.h"

#include <QSet>
#include <algorithm>

#include "app/ground/feld_wert.h"
#include "app/ground/settings_keys.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"

namespace qk {

const QString kStapelMitVorgabe =
    "SELECT ScheibenNummern.*, DisziplinKombinationName.Name as Vorgabe FROM ScheibenNummern LEFT JOIN "
    "(SELECT Name, ID, 0 as Art from Disziplin Union SELECT Kombinationsname as Name, ID, 1 as Art  from "
    "Kombination_Name) as DisziplinKombinationName ON (ScheibenNummern.DisziKombi = "
    "DisziplinKombinationName.Art) AND (ScheibenNummern.VorgabeID = DisziplinKombinationName.ID)";

namespace {

TargetStack stapelOf(const dao::Recordset& row) {
  const auto zahl = [&](const QString& column) { return FeldWert(row, column).toInt(); };
  TargetStack stack;
  stack.id = zahl("ID");
  stack.Bezeichnung = FeldWert(row, "Bezeichnung").toString();
  stack.Scheibentyp = FeldWert(row, "Scheibentyp").toString();
  stack.Startnummer = zahl("Startnummer");
  stack.Endnummer = zahl("Endnummer");
  stack.AktuelleNummer = zahl("AktuelleNummer");
  stack.VorgabeID = zahl("VorgabeID");
  stack.DisziKombi = zahl("DisziKombi");
  stack.Anzeigen = zahl("Anzeigen") == 1;
  const QVariant marks = row.value("PCAnzeige");
  stack.PCAnzeige = marks.isNull() ? std::nullopt : std::optional(marks.toString());
  stack.Sortierung = zahl("Sortierung");
  return stack;
}

qint32 nummer(const QString& text, const QString& what) {
  bool whole = false;
  const int value = text.trimmed().toInt(&whole);
  if (!whole || value < 0) throw Error(errors::kTypeMismatch, what + ": »" + text + "« ist keine Nummer.");
  return value;
}

std::unique_ptr<dao::Recordset> rowOfStack(dao::Database& database, qint32 id) {
  return database.openRecordset(QString("Select * from ScheibenNummern where ID = %1").arg(id));
}

QHash<qint32, int> ausgegeben(dao::Database& database) {
  QHash<qint32, int> counts;
  for (const auto rows = database.openRecordset("SELECT StapelID, Count(*) AS Anzahl FROM "
                                                "Schuetzen_ScheibenNummern WHERE StapelID > 0 GROUP BY "
                                                "StapelID");
       !rows->eof(); rows->moveNext())
    counts.insert(FeldWert(*rows, "StapelID").toInt(), FeldWert(*rows, "Anzahl").toInt());
  return counts;
}

QSet<qint32> angeboten(dao::Database& database, const Settings& settings) {
  QSet<qint32> ids;
  for (const auto rows = database.openRecordset(angeboteneStapel(settings)); !rows->eof(); rows->moveNext())
    ids += FeldWert(*rows, "ID").toInt();
  return ids;
}

QString anDerKasse(const TargetStack& stack, bool offered) {
  if (offered) return "ja";
  if (!stack.Anzeigen) return "nein, ausgeschaltet";
  return stack.PCAnzeige ? "nein, anderer Arbeitsplatz" : "nein, nie gespeichert";
}

}  // namespace

QString angeboteneStapel(const Settings& settings) {
  const QString mark = liesText(settings, keys::LokalePCKennung);
  return kStapelMitVorgabe +
         QString(
             " WHERE ScheibenNummern.Anzeigen = 1 AND (ScheibenNummern.PCAnzeige LIKE %1 or "
             "ScheibenNummern.PCAnzeige = '')")
             .arg(dao::sql::quoted(u'*' + mark + u'*')) +
         (liesZahl(settings, keys::SortedScheibenNummern) == 1 ? " order by Bezeichnung"
                                                               : " order by Sortierung");
}

std::vector<TargetStack> ladeAlleStapel(dao::Database& database) {
  std::vector<TargetStack> all;
  for (const auto rows = database.openRecordset("Select * from ScheibenNummern order by Sortierung, ID");
       !rows->eof(); rows->moveNext())
    all.push_back(stapelOf(*rows));
  return all;
}

std::optional<TargetStack> ladeStapel(dao::Database& database, qint32 id) {
  if (id != 0) {
    const auto row = rowOfStack(database, id);
    return row->eof() ? std::nullopt : std::optional(stapelOf(*row));
  }
  TargetStack fresh;
  for (const TargetStack& each : ladeAlleStapel(database))
    fresh.Sortierung = qMax(fresh.Sortierung, each.Sortierung);
  ++fresh.Sortierung;
  return fresh;
}

StackInput eingabeAus(const TargetStack& stack) {
  const auto text = [&](qint32 number) { return stack.id == 0 ? QString() : QString::number(number); };
  return {stack.Bezeichnung,
          stack.Scheibentyp,
          text(stack.Startnummer),
          text(stack.Endnummer),
          text(stack.AktuelleNummer),
          stack.PCAnzeige.value_or(QString()),
          QString::number(stack.Sortierung),
          stack.VorgabeID,
          stack.DisziKombi,
          stack.Anzeigen};
}

TargetStack stapelAus(const StackInput& input, const TargetStack& before) {
  if (input.Bezeichnung.trimmed().isEmpty())
    throw Error(errors::kTypeMismatch, "Bitte geben Sie eine Bezeichnung ein.");
  TargetStack stack = before;
  stack.Bezeichnung = input.Bezeichnung.trimmed();
  stack.Scheibentyp = input.Scheibentyp.trimmed();
  stack.Startnummer = nummer(input.Startnummer, "Erste Nummer");
  stack.Endnummer = nummer(input.Endnummer, "Letzte Nummer");
  if (stack.Endnummer < stack.Startnummer)
    throw Error(errors::kTypeMismatch, "Die letzte Nummer liegt vor der ersten.");
  stack.AktuelleNummer = input.AktuelleNummer.trimmed().isEmpty()
                             ? stack.Startnummer
                             : nummer(input.AktuelleNummer, "Nächste Nummer");
  stack.Sortierung = nummer(input.Sortierung, "Platz in der Liste");
  stack.VorgabeID = input.VorgabeID;
  stack.DisziKombi = input.DisziKombi;
  stack.Anzeigen = input.Anzeigen;
  stack.PCAnzeige = input.PCAnzeige.trimmed();
  return stack;
}

QStringList bedenken(const TargetStack& stack, const std::vector<TargetStack>& all) {
  QStringList doubts;
  // The number behind the last one is that of a stack that is used up.
  if (stack.AktuelleNummer < stack.Startnummer || stack.AktuelleNummer > stack.Endnummer + 1)
    doubts += QString("Die nächste Nummer %1 liegt nicht zwischen %2 und %3.")
                  .arg(stack.AktuelleNummer)
                  .arg(stack.Startnummer)
                  .arg(stack.Endnummer);
  for (const TargetStack& each : all)
    if (each.id != stack.id && each.Startnummer <= stack.Endnummer && each.Endnummer >= stack.Startnummer)
      doubts += QString("Die Nummern %1 bis %2 gehören auch zum Stapel »%3«.")
                    .arg(qMax(each.Startnummer, stack.Startnummer))
                    .arg(qMin(each.Endnummer, stack.Endnummer))
                    .arg(each.Bezeichnung);
  return doubts;
}

qint32 speichereStapel(dao::Database& database, const TargetStack& stack, const TargetStack& before) {
  const auto row = rowOfStack(database, stack.id);
  const bool fresh = stack.id == 0;
  if (!fresh && row->eof())
    throw Error(errors::kRecordDeleted,
                "Der Stapel ist nicht mehr da; ein anderer Arbeitsplatz hat ihn gelöscht.");
  try {
    fresh ? row->addNew() : row->edit();
    const auto write = [&](const QString& column, const auto& now, const auto& then) {
      if (fresh || now != then) row->setValue(column, now);
    };
    write("Bezeichnung", stack.Bezeichnung, before.Bezeichnung);
    write("Scheibentyp", stack.Scheibentyp, before.Scheibentyp);
    write("Startnummer", stack.Startnummer, before.Startnummer);
    write("Endnummer", stack.Endnummer, before.Endnummer);
    write("AktuelleNummer", stack.AktuelleNummer, before.AktuelleNummer);
    write("VorgabeID", stack.VorgabeID, before.VorgabeID);
    write("DisziKombi", stack.DisziKombi, before.DisziKombi);
    write("Anzeigen", int(stack.Anzeigen), int(before.Anzeigen));
    write("Sortierung", stack.Sortierung, before.Sortierung);
    if (fresh || stack.PCAnzeige != before.PCAnzeige)
      row->setValue("PCAnzeige", stack.PCAnzeige.value_or(QString()));
    const qint32 id = row->value("ID").toInt();
    row->update();
    return id;
  } catch (const Error&) {
    row->cancelUpdate();
    throw;
  }
}

StackList::StackList(const Workplace& workplace, dao::Database& database)
    : workplace_(workplace), database_(database), table_(StackListColumn::Anzahl) {
  const QStringList titles = {"Bezeichnung", "Typ",          "Von",           "Bis",       "Akt.Nr.",
                              "Zuordnung",   "An der Kasse", "Arbeitsplätze", "Ausgegeben"};
  for (int column = 0; column < titles.size(); ++column) table_.setText(0, column, titles[column]);
  for (int column :
       {StackListColumn::Von, StackListColumn::Bis, StackListColumn::AktNr, StackListColumn::Ausgegeben})
    table_.setRightAligned(column, true);
}

void StackList::lade() {
  const QHash<qint32, int> issued = ausgegeben(database_);
  const QSet<qint32> offered = angeboten(database_, workplace_.settings);
  table_.setRows(1);
  for (const auto rows =
           database_.openRecordset(kStapelMitVorgabe + " order by Sortierung, ScheibenNummern.ID");
       !rows->eof(); rows->moveNext()) {
    const TargetStack stack = stapelOf(*rows);
    table_.addRow({stack.Bezeichnung, stack.Scheibentyp, QString::number(stack.Startnummer),
                   QString::number(stack.Endnummer), QString::number(stack.AktuelleNummer),
                   FeldWert(*rows, "Vorgabe").toString(), anDerKasse(stack, offered.contains(stack.id)),
                   stack.PCAnzeige && stack.PCAnzeige->isEmpty() ? "alle" : stack.PCAnzeige.value_or(""),
                   QString::number(issued.value(stack.id))},
                  QString::number(stack.id));
  }
}

qint32 StackList::idOf(int row) const {
  return row < 1 || row >= table_.rows() ? 0 : table_.rowData(row).toInt();
}

bool StackList::loesche(int row) {
  const qint32 id = idOf(row);
  if (id == 0) return false;
  QString question =
      "Soll der Stapel: " + table_.text(row, StackListColumn::Bezeichnung) + " wirklich gelöscht werden?";
  if (const int issued = ausgegeben(database_).value(id))
    question += "\r\nAusgegebene Scheiben des Stapels: " + QString::number(issued) +
                ". Sie bleiben bei den Schützen, ohne Stapel und Typ.";
  if (!workplace_.dialogs.confirm(question, BoxIcon::Question, BoxAnswer::No)) return false;
  database_.execute("Delete * from ScheibenNummern where ID = " + QString::number(id));
  lade();
  return true;
}

bool StackList::verschiebe(int row, int schritt) {
  std::vector<TargetStack> order = ladeAlleStapel(database_);
  const auto from = std::find_if(order.begin(), order.end(),
                                 [id = idOf(row)](const TargetStack& each) { return each.id == id; });
  if (from == order.end()) return false;
  const auto to = from - order.begin() + schritt;
  if (to < 0 || to >= static_cast<qsizetype>(order.size())) return false;
  std::iter_swap(from, order.begin() + to);
  for (size_t place = 0; place < order.size(); ++place) {
    const qint32 number = static_cast<qint32>(place) + 1;
    if (order[place].Sortierung != number)
      database_.execute(QString("UPDATE ScheibenNummern SET Sortierung = %1 WHERE ID = %2")
                            .arg(number)
                            .arg(order[place].id));
  }
  lade();
  return true;
}

}  // namespace qk
