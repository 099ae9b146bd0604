#include "evaluation/result_table.h"

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

const QString kFirstOrderTeiler = " order by Disziplin.Name, Schuss.Ergebnis";
const QString kFirstOrderSerien = " ORDER BY Disziplin.Name, SchussSerien.Ergebnis DESC";

QString tableOf(ResultKind kind) {
  return kind == ResultKind::Teiler ? "Schuss" : "SchussSerien";
}

QString reading(ResultKind kind, const QString& sStartnummer) {
  const QString number = dao::sql::quoted(sStartnummer);
  if (kind == ResultKind::Teiler)
    return "SELECT Schuss.Ergebnis, Schuss.WTyp as Waffe, Disziplin.Name as Disziplin, Schuss.Datum, "
           "Disziplin.ID as DisziID, Schuss.ID as SchussID, Schuss.DisziID as SDID"
           " FROM Schuss INNER JOIN Disziplin ON Schuss.DisziId = Disziplin.ID"
           " WHERE (((Schuss.Startnummer)= " +
           number + "))";
  return "SELECT SchussSerien.Ergebnis, SchussSerien.WTyp as Waffe, Disziplin.Name as Disziplin, "
         "SchussSerien.Datum, Disziplin.ID as DisziID, SchussSerien.ID as SchussID, "
         "SchussSerien.DisziID as SDID"
         " FROM SchussSerien INNER JOIN Disziplin ON SchussSerien.DisziID = Disziplin.ID"
         " WHERE (((SchussSerien.Startnummer)=" +
         number + "))";
}

QString counted(ResultKind kind, qsizetype count) {
  const QString one = kind == ResultKind::Teiler ? " Teiler" : " Serie";
  return QString::number(count) + (count == 1 ? one : " " + resultTitle(kind));
}

QString listOf(const QList<qint32>& ids) {
  QStringList texts;
  for (const qint32 id : ids) texts << QString::number(id);
  return texts.join(", ");
}

}  // namespace

const QStringList& resultColumns() {
  static const QStringList names{"Ergebnis", "Waffe", "Disziplin", "Datum"};
  return names;
}

FilteredQuery resultQuery(ResultKind kind, const QString& sStartnummer) {
  const QString table = tableOf(kind);
  const QString date = table + ".Datum";
  return FilteredQuery({.base = reading(kind, sStartnummer),
                        .joint = " AND ",
                        .columns = {{.filter = table + ".Ergebnis"},
                                    {.filter = table + ".WTyp"},
                                    {.filter = "Disziplin.Name"},
                                    {.filter = date, .order = {"DateValue(" + date + ")", date}}},
                        .firstOrder = kind == ResultKind::Teiler ? kFirstOrderTeiler : kFirstOrderSerien});
}

QString resultCount(int rows) {
  return rows == 0 ? QString() : QString::number(rows) + " Serien";
}

QString resultTitle(ResultKind kind) {
  return kind == ResultKind::Teiler ? "Teiler" : "Serien";
}

QString deleteQuestion(ResultKind kind, qsizetype count, const QString& Ergebnis) {
  const bool teiler = kind == ResultKind::Teiler;
  if (count > 1)
    return "Wollen Sie die " + QString::number(count) +
           (teiler ? " Teiler wirklich löschen?" : " Serien wirklich löschen?");
  return (teiler ? "Wollen Sie den Teiler: " : "Wollen Sie die Serie: ") + Ergebnis + " wirklich löschen?";
}

QString deleteNews(ResultKind kind, qsizetype wanted, qsizetype removed) {
  if (removed == wanted) return counted(kind, removed) + " gelöscht.";
  return QString::number(removed) + " von " + counted(kind, wanted) +
         " gelöscht; die Liste zeigt, was noch da ist.";
}

QString changeQuestion(const DisciplineChange& change) {
  if (change.bCopy)
    return change.bChangeAll ? "Alle Ergebnisse des Schützen wirklich in die neue Disziplin kopieren?"
                             : "Gewählte Ergebnisse wirklich in die neue Disziplin kopieren?";
  return change.bChangeAll ? "Alle Ergebnisse des Schützen wirklich der neuen Disziplin zuordnen?"
                           : "Gewählte Ergebnisse wirklich der neuen Disziplin zuordnen?";
}

QString changeStatement(const DisciplineChange& change, const QStringList& columns) {
  const QString table = tableOf(change.kind);
  const QString to = QString::number(change.to), from = QString::number(change.from);
  const QString number = dao::sql::quoted(change.sStartnummer);
  if (!change.bCopy)
    return (change.kind == ResultKind::Teiler ? "UPDATE Schuss SET DisziId = "
                                              : "UPDATE SchussSerien SET DisziId = ") +
           to +
           (change.bChangeAll ? " WHERE DisziId =" + from + " AND Startnummer =" + number
                              : " WHERE ID in (" + listOf(change.results) + ")");
  const QString list = columns.join(", ");
  return "INSERT INTO " + table + " ( " + list + ", DisziID)" + " SELECT " + list + ", " + to + " FROM " +
         table +
         (change.bChangeAll ? " WHERE DisziID = " + from + " AND STARTNUMMER = " + number
                            : " WHERE ID IN (" + listOf(change.results) + ")");
}

QStringList keptColumns(dao::Database& database, ResultKind kind) {
  const auto rows = database.openRecordset(kind == ResultKind::Teiler ? "Select top 1 * from Schuss"
                                                                      : "Select top 1 * from SchussSerien");
  QStringList columns;
  for (int i = 0; i < rows->fieldCount(); ++i) {
    const QString name = rows->fieldDef(i).name, capitals = name.toUpper();
    if (capitals != "ID" && capitals != "DISZIID") columns << name;
  }
  return columns;
}

int changeDiscipline(dao::Database& database, Steps& step, const DisciplineChange& change) {
  QStringList columns;
  if (change.bCopy) step([&] { columns = keptColumns(database, change.kind); });
  int rows = 0;
  step([&] { rows = database.execute(changeStatement(change, columns)); });
  return rows;
}

QString changeNews(const DisciplineChange& change, int rows, const QString& discipline) {
  return counted(change.kind, rows) + (change.bCopy ? " kopiert nach " : " verschoben nach ") + discipline +
         ".";
}

}  // namespace qk
