#include "masterdata/counter/shooter_data.h"

namespace qk {

namespace {

QString textIn(const dao::RowValues& row, const QString& column) {
  return row.value(column).toString();
}

/// Null, nothing and 0 are one: a row that says nothing isn't changed to say so.
bool sameValue(const QVariant& a, const QVariant& b) {
  const auto plain = [](const QVariant& value) {
    const QString text = value.toString();
    return text == "0" ? QString() : text;
  };
  return plain(a) == plain(b);
}

}  // namespace

const QStringList& furtherColumns() {
  static const QStringList columns = {"Anrede",   "Strasse",         "PLZ",        "Ort", "Telefon", "email",
                                      "homepage", "KtoInhaber",      "IBAN",       "BIC", "Kto",     "BLZ",
                                      "Bank",     "Mandatsreferenz", "Bemerkungen"};
  return columns;
}

QString titleOf(const QString& column) {
  static const QHash<QString, QString> titles = {{"Gebdat", "Geburtsdatum"},
                                                 {"VereinsID", "Verein"},
                                                 {"lMannID", "Mannschaft"},
                                                 {"KlassenID", "Klasse"},
                                                 {"bGebKlasseManuell", "Klasse von Hand"},
                                                 {"AusweisNr", "Ausweis-Nr."},
                                                 {"Strasse", "Straße"},
                                                 {"email", "E-Mail"},
                                                 {"homepage", "Homepage"},
                                                 {"Kto", "Konto"},
                                                 {"KtoInhaber", "Kontoinhaber"}};
  return titles.value(column, column);
}

ShooterData shooterData(const dao::RowValues& row) {
  ShooterData data;
  data.startnummer = textIn(row, "Startnummer");
  data.person = personName({textIn(row, "Name"), textIn(row, "Vorname")});
  data.gebDat = textIn(row, "Gebdat");
  data.geschlecht = textIn(row, "Geschlecht").toUpper();
  data.vereinsID = row.value("VereinsID").toInt();
  data.mannID = row.value("lMannID").toInt();
  data.klassenID = row.value("KlassenID").toInt();
  data.klasseManuell = row.value("bGebKlasseManuell").toInt() != 0;
  data.ausweisNr = textIn(row, "AusweisNr");
  for (const QString& column : furtherColumns())
    if (row.contains(column)) data.further.insert(column, textIn(row, column));
  return data;
}

dao::RowValues changedValues(const ShooterData& data, const dao::RowValues& row) {
  dao::RowValues changed;
  const auto compare = [&](const QString& column, const QVariant& value) {
    if (row.contains(column) && !sameValue(row.value(column), value)) changed.insert(column, value);
  };
  compare("Startnummer", data.startnummer.trimmed());
  if (!(data.person == personName({textIn(row, "Name"), textIn(row, "Vorname")}))) {
    const StoredName stored = storedName(data.person);
    compare("Name", stored.name);
    compare("Vorname", stored.vorname);
  }
  compare("Gebdat", data.gebDat);
  if (data.geschlecht != textIn(row, "Geschlecht").toUpper()) compare("Geschlecht", data.geschlecht);
  compare("VereinsID", data.vereinsID);
  compare("lMannID", data.mannID);
  compare("KlassenID", data.klassenID);
  compare("bGebKlasseManuell", data.klasseManuell ? -1 : 0);
  compare("AusweisNr", data.ausweisNr.trimmed());
  for (auto it = data.further.begin(); it != data.further.end(); ++it) compare(it.key(), it.value());
  return changed;
}

}  // namespace qk
