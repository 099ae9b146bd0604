#include "cash/target_evaluation.h"

#include <QCollator>
#include <QHash>
#include <QMap>
#include <QSet>
#include <algorithm>

#include "app/ground/feld_wert.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

const QString kAusgaben =
    "SELECT Schuetzen_ScheibenNummern.*, ScheibenNummern.Bezeichnung AS Stapel, ScheibenNummern.ScheibenTyp, "
    "DisziplinKombinationName.Name AS Zuordnung FROM (Schuetzen_ScheibenNummern LEFT JOIN ScheibenNummern ON "
    "Schuetzen_ScheibenNummern.StapelID = ScheibenNummern.ID) LEFT JOIN (SELECT Name, ID, 0 as Art from "
    "Disziplin Union SELECT Kombinationsname as Name, ID, 1 as Art from Kombination_Name) as "
    "DisziplinKombinationName ON (Schuetzen_ScheibenNummern.DisziKombiWahl = DisziplinKombinationName.Art) "
    "AND (Schuetzen_ScheibenNummern.DisziKombiID = DisziplinKombinationName.ID)";

QHash<QString, QString> namen(dao::Database& database) {
  QHash<QString, QString> names;
  for (const auto rows = database.openRecordset("Select ID, Startnummer, Name from Schützen order by ID");
       !rows->eof(); rows->moveNext()) {
    const QString number = FeldWert(*rows, "Startnummer").toString();
    if (!names.contains(number)) names.insert(number, FeldWert(*rows, "Name").toString());
  }
  return names;
}

/// What tells a group from the others, and what it is called.
struct Group {
  QString key, name;
};

Group groupOf(const IssuedTarget& target, Gruppierung nach) {
  switch (nach) {
    case Gruppierung::Stapel:
      if (target.StapelID == 0) return {"0", "(von Hand eingegeben)"};
      return {QString::number(target.StapelID),
              target.Stapel.isEmpty() ? "(gelöschter Stapel)" : target.Stapel};
    case Gruppierung::Disziplin:
      return {QString("%1 %2").arg(target.DisziKombiWahl).arg(target.DisziKombiID),
              target.Zuordnung.isEmpty()   ? "(gelöscht)"
              : target.DisziKombiWahl != 0 ? target.Zuordnung + " (Kombination)"
                                           : target.Zuordnung};
    case Gruppierung::Schuetze:
      return {target.Startnummer, target.Startnummer + "  " + target.Name};
    case Gruppierung::Tag:
      return {target.Ausgabe.toString(Qt::ISODate),
              target.Ausgabe.isValid() ? target.Ausgabe.toString("dd.MM.yyyy") : "(ohne Datum)"};
  }
  return {};
}

void count(IssuedSum& sum, const IssuedTarget& target) {
  sum.von = sum.ausgegeben == 0 ? target.nummer : qMin(sum.von, target.nummer);
  sum.bis = qMax(sum.bis, target.nummer);
  ++sum.ausgegeben;
  sum.abgegeben += target.abgegeben ? 1 : 0;
}

}  // namespace

std::vector<IssuedTarget> ladeAusgaben(dao::Database& database) {
  const QHash<QString, QString> names = namen(database);
  std::vector<IssuedTarget> all;
  for (const auto rows = database.openRecordset(kAusgaben); !rows->eof(); rows->moveNext()) {
    IssuedTarget target;
    target.nummer = FeldWert(*rows, "Scheibennummer").toInt();
    target.Startnummer = FeldWert(*rows, "Startnummer").toString();
    target.Name = names.value(target.Startnummer);
    target.StapelID = FeldWert(*rows, "StapelID").toInt();
    target.Stapel = FeldWert(*rows, "Stapel").toString();
    target.Typ = FeldWert(*rows, "ScheibenTyp").toString();
    target.DisziKombiWahl = FeldWert(*rows, "DisziKombiWahl").toInt();
    target.DisziKombiID = FeldWert(*rows, "DisziKombiID").toInt();
    target.Zuordnung = FeldWert(*rows, "Zuordnung").toString();
    target.Ausgabe = rows->value("Kaufdatum").toDateTime().date();
    target.abgegeben = !rows->value("Speicherdatum").isNull();
    all.push_back(target);
  }
  return all;
}

QList<QDate> ausgabeTage(const std::vector<IssuedTarget>& all) {
  QSet<QDate> found;
  for (const IssuedTarget& target : all)
    if (target.Ausgabe.isValid()) found += target.Ausgabe;
  QList<QDate> days(found.cbegin(), found.cend());
  std::sort(days.begin(), days.end(), std::greater<QDate>());
  return days;
}

std::vector<IssuedSum> gruppiere(const std::vector<IssuedTarget>& all, Gruppierung nach, const QDate& tag) {
  QMap<QString, IssuedSum> byKey;
  for (const IssuedTarget& target : all) {
    if (tag.isValid() && target.Ausgabe != tag) continue;
    const Group group = groupOf(target, nach);
    IssuedSum& sum = byKey[group.key];
    sum.Bezeichnung = group.name;
    count(sum, target);
  }
  std::vector<IssuedSum> sums(byKey.cbegin(), byKey.cend());
  if (nach == Gruppierung::Tag) return sums;  // their keys sort by time
  QCollator german(QLocale(QLocale::German, QLocale::Germany));
  german.setNumericMode(true);
  german.setCaseSensitivity(Qt::CaseInsensitive);
  std::stable_sort(sums.begin(), sums.end(), [&](const IssuedSum& a, const IssuedSum& b) {
    const bool aLast = a.Bezeichnung.startsWith(u'('), bLast = b.Bezeichnung.startsWith(u'(');
    return aLast != bLast ? bLast : german.compare(a.Bezeichnung, b.Bezeichnung) < 0;
  });
  return sums;
}

IssuedSum summe(const std::vector<IssuedSum>& sums) {
  IssuedSum total;
  for (const IssuedSum& each : sums) {
    total.ausgegeben += each.ausgegeben;
    total.abgegeben += each.abgegeben;
  }
  return total;
}

void fuelle(TextTable& table, Gruppierung nach, const std::vector<IssuedSum>& sums) {
  const QStringList first = {"Stapel", "Disziplin / Kombination", "Schütze", "Tag"};
  const QStringList titles = {first.at(static_cast<int>(nach)),
                              "Ausgegeben",
                              "Abgegeben",
                              "Noch draußen",
                              "Erste Nummer",
                              "Letzte Nummer"};
  table.setRows(1);
  table.setColumns(IssuedSumColumn::Anzahl);
  for (int column = 0; column < titles.size(); ++column) {
    table.setText(0, column, titles[column]);
    table.setRightAligned(column, column != IssuedSumColumn::Bezeichnung);
  }
  for (const IssuedSum& each : sums)
    table.addRow({each.Bezeichnung, QString::number(each.ausgegeben), QString::number(each.abgegeben),
                  QString::number(each.draussen()), QString::number(each.von), QString::number(each.bis)});
}

}  // namespace qk
