#include "evaluation/print_rows.h"

#include <array>

#include "app/ground/settings_keys.h"
#include "capture/row_values.h"
#include "evaluation/evaluation_tables.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "shooters/look_ups.h"

namespace qk {

namespace {

struct Spalte {
  const char* druck;
  const char* wettkampf;
};

constexpr std::array kSchuetze = {
    Spalte{"Startnummer", "Startnummer"},
    Spalte{"Name", "Name"},
    Spalte{"Straße", "Strasse"},
    Spalte{"PLZ", "PLZ"},
    Spalte{"Ort", "Ort"},
    Spalte{"Verein", "Verein"},
    Spalte{"VID", "VereinsID"},
    Spalte{"Anrede", "Anrede"},
    Spalte{"Telefon", "Telefon"},
    Spalte{"Geschlecht", "Geschlecht"},
    Spalte{"Gebdat", "Gebdat"},
    Spalte{"AusweisNr", "AusweisNr"},
    Spalte{"Bank", "Bank"},
    Spalte{"BLZ", "BLZ"},
    Spalte{"Kto", "Kto"},
    Spalte{"BIC", "BIC"},
    Spalte{"IBAN", "IBAN"},
    Spalte{"Mandatsreferenz", "Mandatsreferenz"},
    Spalte{"KtoInhaber", "KtoInhaber"},
    Spalte{"Klasse", "Klasse"},
    Spalte{"Mannschaft", "MannName"},
};

void setze(dao::Recordset& rs, const SchuetzenSpalten& spalten) {
  for (const auto& [spalte, value] : spalten) rs.setValue(spalte, value);
}

/// What is empty stays Null, as in a row that nobody touched.
void setzeText(dao::Recordset& rs, const QString& column, const QString& text) {
  if (!text.isEmpty()) rs.setValue(column, text);
}

}  // namespace

SchuetzenSpalten fuelleSchuetze(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck,
                                const QString& Startnummer) {
  const auto quelle = wettkampf.openRecordset(
      "SELECT Schützen.*, Verein.Name AS Verein, Schützenklassen.Klasse, Mannschaften.MannName"
      " FROM ((Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID)"
      " LEFT JOIN Mannschaften ON Schützen.lMannID = Mannschaften.ID)"
      " LEFT JOIN Schützenklassen ON Schützen.KlassenID = Schützenklassen.ID"
      " WHERE Schützen.Startnummer = " +
          dao::sql::quoted(Startnummer),
      dao::RecordsetType::Snapshot);
  if (quelle->eof()) return {};
  SchuetzenSpalten spalten;
  for (const Spalte& spalte : kSchuetze)
    spalten.emplace_back(spalte.druck, quelle->value(QString(spalte.wettkampf)));
  const QString disziplin = ErmittleSPOText(wettkampf, workplace.dialogs, longIn(*quelle, "ID"));
  const auto ziel = druck.openRecordset("Schütze");
  ziel->addNew();
  setze(*ziel, spalten);
  setzeText(*ziel, "disziplin", disziplin);
  ziel->update();
  return spalten;
}

void fuelleWettkampf(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck) {
  const auto quelle = wettkampf.openRecordset("Wettkampf");
  const auto ziel = druck.openRecordset("Wettkampf");
  if (ziel->eof())
    ziel->addNew();
  else
    ziel->edit();
  if (liesZahl(workplace.settings, keys::Schnelldruckzusatz) == 0) ziel->setValue("EndText", "");
  if (!quelle->eof()) {
    ziel->setValue("Bez1", quelle->value("Bezeichnung"));
    ziel->setValue("Bez2", quelle->value("Bezeichnung2"));
    ziel->setValue("Ort", quelle->value("Ort"));
  }
  ziel->update();
}

void schreibeEinzelErgebnis(dao::Recordset& tabelle, EinzelErgebnis& ergebnis) {
  tabelle.addNew();
  tabelle.setValue("Startnummer", ergebnis.Startnummer);
  tabelle.setValue("DisziId", ergebnis.DisziId);
  tabelle.setValue("WTyp", ergebnis.WTyp);
  tabelle.setValue("Art", ergebnis.Art);
  tabelle.setValue("Ergebnis", ergebnis.Ergebnis);
  tabelle.setValue("KlassenID", ergebnis.KlassenID);
  tabelle.setValue("ErgID", ergebnis.ErgID);
  tabelle.setValue("Tabelle", tabellenName(ergebnis.Tabelle));
  tabelle.setValue("WkID", ergebnis.WkID);
  tabelle.setValue("Datum", ergebnis.Datum);
  ergebnis.ID = longIn(tabelle, "ID");
  tabelle.update();
}

void schreibeErgebnis(dao::Recordset& tabelle, const ErgebnisZeile& zeile, const SchuetzenSpalten& schuetze) {
  tabelle.addNew();
  setze(tabelle, schuetze);
  tabelle.setValue("Startnummer", zeile.Startnummer);
  tabelle.setValue("Disziplin", zeile.Disziplin);
  setzeText(tabelle, "Wettkampf", zeile.Wettkampf);
  setzeText(tabelle, "Gruppe", zeile.Gruppe);
  setzeText(tabelle, "WTyp", zeile.WTyp);
  if (zeile.DisziErgebnis) tabelle.setValue("DisziErgebnis", *zeile.DisziErgebnis);
  for (std::size_t i = 0; i < zeile.E.size(); ++i) tabelle.setValue("E" + QString::number(i + 1), zeile.E[i]);
  tabelle.update();
}

}  // namespace qk
