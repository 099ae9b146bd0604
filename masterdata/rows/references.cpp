#include "masterdata/rows/references.h"

#include <QStringList>
#include <algorithm>

#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

using Kind = Reference::Kind;

/// How a row of a table is called, and what can be done instead of deleting it.
struct Naming {
  const char* table;
  const char* key;
  const char* name;     ///< the column that people know it by
  const char* subject;  ///< with %1 for the name
  const char* wayOut;
};

constexpr Naming kNamings[] = {
    {"Schützen", "ID", "Startnummer", "Schütze %1",
     "Anmeldungen lassen sich hier löschen, Ergebnisse und Scheiben in der Ergebnisbearbeitung und an der "
     "Kasse. Soll "
     "nur die Person nicht mehr genannt werden, so löschen Sie ihre persönlichen Daten: Ergebnisse und "
     "Zahlungen "
     "bleiben dann stehen."},
    {"Verein", "ID", "Name", "Der Verein »%1«",
     "Ordnen Sie Schützen und Mannschaften zuerst einem anderen Verein zu, und gleichen Sie ihre Ergebnisse "
     "ab."},
    {"Mannschaften", "ID", "MannName", "Die Mannschaft »%1«",
     "Ordnen Sie Schützen und Anmeldungen zuerst einer anderen Mannschaft zu, und gleichen Sie ihre "
     "Ergebnisse ab."},
    {"MannschaftsGruppen", "MannGrpID", "Bezeichnung", "Die Mannschaftsgruppe »%1«",
     "Ordnen Sie die Mannschaften zuerst einer anderen Gruppe zu."},
    {"SchuetzenGruppen", "SchGrpID", "Bezeichnung", "Die Schützengruppe »%1«", ""},
    {"Schützenklassen", "ID", "Klasse", "Die Klasse »%1«",
     "Ordnen Sie die Schützen zuerst einer anderen Klasse zu, und gleichen Sie ihre Ergebnisse ab; nehmen "
     "Sie die "
     "Klasse aus Einlagen und Auswerteprofilen."},
    {"Disziplin", "ID", "Name", "Die Disziplin »%1«",
     "Nehmen Sie die Disziplin zuerst aus Kombinationen, Auswerteprofilen, Einlagen und Scheibenstapeln. Mit "
     "Ergebnissen bleibt sie stehen."},
    {"Kombination_Name", "ID", "Kombinationsname", "Die Kombination »%1«",
     "Nehmen Sie die Kombination zuerst aus Einlagen und Scheibenstapeln."},
    {"MeldeDisziplin", "ID", "MeldeDisziplin", "Der Disziplinschlüssel »%1«",
     "Löschen Sie zuerst die Anmeldungen."},
    {"Waffen", "ID", "Bezeichnung", "Die Waffe »%1«",
     "Nehmen Sie die Waffe zuerst aus Disziplinen und Auswerteprofilen. Mit Ergebnissen bleibt sie stehen."},
    {"AuswertProfil", "ID", "Name", "Das Auswerteprofil »%1«", ""},
    {"Kasse_Verwaltung", "ID", "Bezeichnung", "Die Einlage »%1«", "Einlagen verwaltet die Kasse."},
    {"ScheibenNummern", "ID", "Bezeichnung", "Der Scheibenstapel »%1«",
     "Scheibenstapel verwaltet die Kasse."}};

const Naming& namingOf(const QString& table) {
  const auto found = std::find_if(std::begin(kNamings), std::end(kNamings), [&table](const Naming& naming) {
    return dao::sameName(naming.table, table);
  });
  if (found == std::end(kNamings)) throw Error(errors::kUnknownTable);
  return *found;
}

std::vector<Reference> allReferences() {
  std::vector<Reference> all;
  const auto add = [&all](const QString& target, const QString& by, Kind kind, const QString& table,
                          const QString& column, const QString& one, const QString& many,
                          std::vector<std::pair<QString, int>> onlyWhere = {}) {
    all.push_back({table, column, target, by, kind, one, many, std::move(onlyWhere)});
  };
  const auto results = [&add](const QString& target, const QString& by, const QString& column) {
    for (const char* table : {"Schuss", "SchussSerien"})
      add(target, by, Kind::Refuses, table, column, "Ergebnis", "Ergebnisse");
  };

  results("Schützen", "Startnummer", "Startnummer");
  add("Schützen", "Startnummer", Kind::Refuses, "Grafik_Scheibe", "StartNr", "Scheibenbild",
      "Scheibenbilder");
  add("Schützen", "Startnummer", Kind::Refuses, "Kasse_Eingang", "Startnummer", "Zahlung", "Zahlungen");
  add("Schützen", "Startnummer", Kind::Refuses, "Schuetzen_ScheibenNummern", "Startnummer",
      "ausgegebene Scheibe", "ausgegebene Scheiben");
  add("Schützen", "Startnummer", Kind::Refuses, "Haering_Daten", "Startnummer", "offenen Schuss",
      "offene Schüsse", {{"Verbucht", 0}, {"Verworfen", 0}});
  add("Schützen", "ID", Kind::Refuses, "Schuetzen_SPO_Anmeldungen", "SchuetzeID", "Anmeldung", "Anmeldungen");
  add("Schützen", "ID", Kind::Belongs, "SchuetzenGruppenZuordnung", "SchuetzeID", "Gruppe", "Gruppen");

  add("Verein", "ID", Kind::Refuses, "Schützen", "VereinsID", "Schützen", "Schützen");
  add("Verein", "ID", Kind::Refuses, "Mannschaften", "VereinID", "Mannschaft", "Mannschaften");
  results("Verein", "ID", "MannID");
  add("Verein", "ID", Kind::Refuses, "Kasse_Eingang", "VereinID", "Zahlung", "Zahlungen");

  add("Mannschaften", "ID", Kind::Refuses, "Schützen", "lMannID", "Schützen", "Schützen");
  add("Mannschaften", "ID", Kind::Refuses, "Schuetzen_SPO_Anmeldungen", "MannID", "Anmeldung", "Anmeldungen");
  results("Mannschaften", "ID", "VorMannID");
  add("Mannschaften", "ID", Kind::Refuses, "Kasse_Eingang", "MannID", "Zahlung", "Zahlungen");
  add("MannschaftsGruppen", "MannGrpID", Kind::Refuses, "Mannschaften", "GruppenID", "Mannschaft",
      "Mannschaften");
  add("SchuetzenGruppen", "SchGrpID", Kind::Belongs, "SchuetzenGruppenZuordnung", "GruppenID", "Zuordnung",
      "Zuordnungen");

  // A stake or profile whose last class is gone would be open to all of them.
  add("Schützenklassen", "ID", Kind::Refuses, "Schützen", "KlassenID", "Schützen", "Schützen");
  results("Schützenklassen", "ID", "KlassenID");
  add("Schützenklassen", "ID", Kind::Refuses, "Kasse_Schuetzenklassen", "SchuetzenklasseID", "Einlage",
      "Einlagen");
  add("Schützenklassen", "ID", Kind::Refuses, "Auswert_Klassen", "KlassenID", "Auswerteprofil",
      "Auswerteprofile");
  add("Schützenklassen", "ID", Kind::Belongs, "DisziplinKlasse", "KlasseID", "Disziplin", "Disziplinen");

  results("Disziplin", "ID", "DisziID");
  add("Disziplin", "ID", Kind::Refuses, "Kombination_Diszi", "disziID", "Kombination", "Kombinationen");
  add("Disziplin", "ID", Kind::Refuses, "AwProfilDiszi", "DisziID", "Auswerteprofil", "Auswerteprofile");
  add("Disziplin", "ID", Kind::Refuses, "Kasse_DisziKombi", "DisziKombiID", "Einlage", "Einlagen",
      {{"DisziKZ", 1}});
  add("Disziplin", "ID", Kind::Refuses, "ScheibenNummern", "VorgabeID", "Scheibenstapel", "Scheibenstapel",
      {{"DisziKombi", 0}});
  add("Disziplin", "ID", Kind::Refuses, "Schuetzen_ScheibenNummern", "DisziKombiID", "ausgegebene Scheibe",
      "ausgegebene Scheiben", {{"DisziKombiWahl", 0}});
  add("Disziplin", "ID", Kind::Belongs, "DisziplinKlasse", "DisziID", "Klasse", "Klassen");
  add("Disziplin", "ID", Kind::Belongs, "DisziplinWaffen", "DisziID", "Waffe", "Waffen");

  add("Kombination_Name", "ID", Kind::Refuses, "Kasse_DisziKombi", "DisziKombiID", "Einlage", "Einlagen",
      {{"DisziKZ", 2}});
  add("Kombination_Name", "ID", Kind::Refuses, "ScheibenNummern", "VorgabeID", "Scheibenstapel",
      "Scheibenstapel", {{"DisziKombi", 1}});
  add("Kombination_Name", "ID", Kind::Refuses, "Schuetzen_ScheibenNummern", "DisziKombiID",
      "ausgegebene Scheibe", "ausgegebene Scheiben", {{"DisziKombiWahl", 1}});
  add("Kombination_Name", "ID", Kind::Belongs, "Kombination_Diszi", "KombiID", "Disziplin", "Disziplinen");

  add("MeldeDisziplin", "ID", Kind::Refuses, "Schuetzen_SPO_Anmeldungen", "SPOID", "Anmeldung",
      "Anmeldungen");

  add("Waffen", "ID", Kind::Refuses, "DisziplinWaffen", "WaffenID", "Disziplin", "Disziplinen");
  add("Waffen", "ID", Kind::Refuses, "Auswert_Waffen", "WaffenID", "Auswerteprofil", "Auswerteprofile");
  results("Waffen", "KZ", "WTyp");

  add("AuswertProfil", "ID", Kind::Belongs, "AwProfilDiszi", "AwProfilID", "Disziplin", "Disziplinen");
  add("AuswertProfil", "ID", Kind::Belongs, "Auswert_Klassen", "AuswertID", "Klasse", "Klassen");
  add("AuswertProfil", "ID", Kind::Belongs, "Auswert_Waffen", "AuswertID", "Waffe", "Waffen");
  add("AuswertProfil", "ID", Kind::Belongs, "Auswert_Tage", "AuswertID", "Tag", "Tage");

  add("Kasse_Verwaltung", "ID", Kind::Refuses, "Kasse_Eingang", "KasseID", "Zahlung", "Zahlungen");
  add("Kasse_Verwaltung", "ID", Kind::Belongs, "Kasse_DisziKombi", "EinlageID", "Disziplin", "Disziplinen");
  add("Kasse_Verwaltung", "ID", Kind::Belongs, "Kasse_Schuetzenklassen", "KasseEinlageID", "Klasse",
      "Klassen");
  add("ScheibenNummern", "ID", Kind::Refuses, "Schuetzen_ScheibenNummern", "StapelID", "ausgegebene Scheibe",
      "ausgegebene Scheiben");
  return all;
}

QString column(const QString& name) {
  return "[" + name + "]";
}

qint64 countOf(dao::Database& database, const QString& table, const QString& condition) {
  return database
      .openRecordset("Select Count(*) as Anzahl from " + column(table) + " where " + condition,
                     dao::RecordsetType::Snapshot)
      ->value("Anzahl")
      .toLongLong();
}

bool stands(dao::Database& database, const Reference& reference) {
  return database.hasTable(reference.table) && database.tableDef(reference.table).field(reference.column);
}

QVariant valueOf(dao::Database& database, const QString& table, qint64 key, const QString& wanted) {
  const auto row = database.openRecordset(
      QString("Select * from [%1] where [%2] = %3").arg(table, namingOf(table).key).arg(key),
      dao::RecordsetType::Snapshot);
  return row->eof() ? QVariant() : row->value(wanted);
}

/// The condition for the rows that name this one; empty where nothing can name it.
QString condition(dao::Database& database, const Reference& reference, qint64 key) {
  QString value = QString::number(key);
  if (dao::sameName(reference.by, namingOf(reference.target).key)) {
    if (key == 0) return {};  // 0 stands for none
  } else {
    const QString text = valueOf(database, reference.target, key, reference.by).toString();
    if (text.isEmpty()) return {};
    value = dao::sql::quoted(text);
    const QString borne = column(reference.by) + " = " + value;
    if (countOf(database, reference.target, borne) > 1) return {};
  }
  QString result = column(reference.column) + " = " + value;
  for (const auto& [name, number] : reference.onlyWhere)
    result += " and " + column(name) + " = " + QString::number(number);
  return result;
}

void add(std::vector<Uses::Count>& counts, const Reference& reference, qint64 rows) {
  if (rows == 0) return;
  const auto same = std::find_if(counts.begin(), counts.end(), [&reference](const Uses::Count& count) {
    return count.one == reference.one;
  });
  if (same == counts.end())
    counts.push_back({reference.one, reference.many, rows});
  else
    same->rows += rows;
}

}  // namespace

const std::vector<Reference>& references() {
  static const std::vector<Reference> all = allReferences();
  return all;
}

QString Uses::Count::text() const {
  return QString("%1 %2").arg(rows).arg(rows == 1 ? one : many);
}

QString countsText(const std::vector<Uses::Count>& counts) {
  QStringList texts;
  for (const Uses::Count& count : counts) texts.append(count.text());
  if (texts.size() < 2) return texts.join(QString());
  const QString last = texts.takeLast();
  return texts.join(", ") + " und " + last;
}

Uses usesOf(dao::Database& database, const QString& table, qint64 key) {
  Uses uses;
  for (const Reference& reference : references()) {
    if (!dao::sameName(reference.target, table) || !stands(database, reference)) continue;
    const QString rows = condition(database, reference, key);
    if (rows.isEmpty()) continue;
    add(reference.kind == Kind::Refuses ? uses.refusing : uses.parts, reference,
        countOf(database, reference.table, rows));
  }
  return uses;
}

QString subjectOf(dao::Database& database, const QString& table, qint64 key) {
  const Naming& naming = namingOf(table);
  return QString(naming.subject).arg(valueOf(database, table, key, naming.name).toString());
}

QString refusalOf(dao::Database& database, const QString& table, qint64 key) {
  const Uses uses = usesOf(database, table, key);
  if (uses.refusing.empty()) return {};
  const QString text =
      QString("%1 hat %2 und kann nicht gelöscht werden. %3")
          .arg(subjectOf(database, table, key), countsText(uses.refusing), QString(namingOf(table).wayOut));
  return text.trimmed();
}

void removeRow(dao::Database& database, dao::Changes& changes, const QString& table, qint64 key) {
  const QString keyColumn = namingOf(table).key;
  // Every writer that holds several tables begins with the shooters, so that none waits for another in turn.
  if (dao::sameName(table, "Schützen")) changes.hold(table);
  for (const Reference& reference : references()) {
    if (!dao::sameName(reference.target, table) || !stands(database, reference)) continue;
    if (reference.kind == Kind::Refuses)
      changes.hold(reference.table);
    else if (dao::sameName(reference.by, keyColumn))
      changes.execute(
          QString("Delete * from [%1] where [%2] = %3").arg(reference.table, reference.column).arg(key));
  }
  changes.require([&database, table, key] {
    if (const QString refusal = refusalOf(database, table, key); !refusal.isEmpty())
      throw Error(errors::kReferredTo, refusal);
  });
  changes.remove(table, key);
}

namespace {

QString goneText(const NewReferences& wanted, qint64 key) {
  const QString name = wanted.names.value(key);
  return QString("%1: %2 hat inzwischen jemand gelöscht.")
      .arg(wanted.label, name.isEmpty() ? QString("Nr. %1").arg(key) : "»" + name + "«");
}

}  // namespace

ReferenceGone::ReferenceGone(const NewReferences& wanted, qint64 key)
    : Error(errors::kReferenceMissing, goneText(wanted, key)),
      table_(wanted.table),
      column_(wanted.column),
      key_(key) {}

void requireThere(dao::Database& database, dao::Changes& changes, const NewReferences& wanted) {
  changes.hold(wanted.table);
  changes.require([&database, wanted] {
    QList<qint64> keys = wanted.names.keys();
    std::sort(keys.begin(), keys.end());
    QStringList texts;
    for (const qint64 key : keys) texts << QString::number(key);
    const QString key = column(namingOf(wanted.target).key);
    const auto rows = database.openRecordset("Select " + key + " as Nummer from " + column(wanted.target) +
                                                 " where " + key + " in (" + texts.join(',') + ")",
                                             dao::RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) keys.removeOne(rows->value("Nummer").toLongLong());
    if (!keys.isEmpty()) throw ReferenceGone(wanted, keys.front());
  });
}

}  // namespace qk
