#include "cash/receipt.h"

#include "app/ground/print_data.h"
#include "app/ground/temp_module.h"
#include "cash/amounts.h"
#include "cash/cash_desk.h"
#include "cash/cash_rows.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "shooters/look_ups.h"

namespace qk {

namespace {

using Values = std::vector<std::pair<QString, QVariant>>;

void addRow(dao::Recordset& table, const Values& values) {
  table.addNew();
  for (const auto& [column, value] : values) table.setValue(column, value);
  table.update();
}

/// An empty text is no date and no number: the column stays empty.
QVariant orNull(const QString& text) {
  return text.isEmpty() ? QVariant() : QVariant(text);
}

void fill(dao::Database& file, const Receipt& receipt) {
  const auto title = file.openRecordset("Wettkampf");
  title->edit();
  title->setValue("EndText", "");
  title->setValue("Bez1", receipt.Bez1);
  title->setValue("Bez2", receipt.Bez2);
  title->setValue("Ort", receipt.Ort);
  title->update();
  addRow(*file.openRecordset("Schütze"), {{"Startnummer", receipt.Startnummer},
                                          {"Name", receipt.Name},
                                          {"GebDat", receipt.GebDat},
                                          {"Klasse", receipt.Klasse},
                                          {"Disziplin", receipt.Disziplin},
                                          {"Verein", receipt.Verein},
                                          {"Mannschaft", receipt.Mannschaft}});
  const auto groups = file.openRecordset("Schützengruppen");
  for (const QString& group : receipt.Gruppen)
    addRow(*groups, {{"startnummer", receipt.Startnummer}, {"Bezeichnung", group}});
  const auto rows = file.openRecordset("Kasse");
  for (const Receipt::Zeile& row : receipt.Kasse)
    addRow(*rows, {{"Startnummer", receipt.Startnummer},
                   {"Bezeichnung", row.Bezeichnung},
                   {"Offen", row.Offen},
                   {"Betrag", QVariant::fromValue(BetragAusText(row.Betrag))},
                   {"Datum", orNull(row.Datum)}});
  const auto targets = file.openRecordset("Scheiben");
  for (const ReceiptTarget& target : receipt.Scheiben)
    addRow(*targets, {{"Startnummer", receipt.Startnummer},
                      {"Scheibennr", orNull(target.Scheibennr)},
                      {"Ausgabe", orNull(target.Ausgabe)},
                      {"Bezeichnung", target.Bezeichnung},
                      {"Zuordnung", target.Zuordnung},
                      {"Typ", target.Typ}});
}

}  // namespace

QString belegMannschaft(const QString& label9, const QString& gruppe) {
  return label9.contains(gruppe) ? label9 : label9 + " (" + gruppe + ")";
}

std::vector<Receipt::Zeile> belegZeilen(const TextTable& rows, const QString& datum) {
  std::vector<Receipt::Zeile> lines;
  for (int row = 1; row < rows.rows(); ++row)
    lines.push_back({rows.text(row, CashColumn::Bezeichnung), rows.text(row, CashColumn::Offen),
                     rows.text(row, CashColumn::Betrag),
                     datum.isEmpty() ? rows.text(row, CashColumn::Datum) : datum});
  return lines;
}

QString schreibeBelegDatei(const Workplace& workplace, const Receipt& receipt) {
  const QString path = kopiereVorlage(workplace, Programmverzeichnis() + "ErgKasseDruck.mdb", "ZVA");
  const auto file = dao::Database::open(path);
  fill(*file, receipt);
  return path;
}

Receipt belegFuer(CashDesk& desk, bool aktuellerKauf, std::vector<ReceiptTarget> scheiben) {
  const ShownShooter& shooter = desk.shooter();
  const Workplace& workplace = desk.workplace();
  Receipt receipt;
  receipt.Bez1 = desk.sBez1;
  receipt.Bez2 = desk.sBez2;
  receipt.Ort = desk.sOrt;
  receipt.Startnummer = desk.sStartNr();
  receipt.Name = shooter.Name;
  receipt.GebDat = shooter.GebDat;
  receipt.Klasse = shooter.Klasse;
  receipt.Disziplin = shooter.SPO;
  receipt.Verein = shooter.Verein;
  receipt.Mannschaft = belegMannschaft(
      shooter.Mann, ErmittleMannschaftsGruppe(desk.database(), workplace.dialogs, shooter.lMannID, true));
  const auto groups = desk.database().openRecordset(
      "SELECT SchuetzenGruppen.Bezeichnung FROM SchuetzenGruppenZuordnung INNER JOIN SchuetzenGruppen ON "
      "SchuetzenGruppenZuordnung.GruppenID = SchuetzenGruppen.SchGrpID WHERE "
      "(((SchuetzenGruppenZuordnung.SchuetzeID)=" +
      QString::number(shooter.ID) + " ))");
  for (; !groups->eof(); groups->moveNext()) receipt.Gruppen += FeldWert(*groups, "Bezeichnung").toString();
  receipt.Kasse = aktuellerKauf ? belegZeilen(desk.purchase().flex(), Buchungsdatum(workplace))
                                : belegZeilen(desk.payments().flexAll());
  receipt.Scheiben = std::move(scheiben);
  return receipt;
}

void druckeBeleg(const Workplace& workplace, ReportDoor& reports, const std::function<Receipt()>& beleg,
                 ReportOrder::Ziel ziel) {
  reported(fehlerReport(workplace.dialogs, "Fehler beim Drucken der Kasseneingänge!"), [&](Steps&) {
    const QString path = schreibeBelegDatei(workplace, beleg());
    ReportOrder order;
    order.reportFile = Programmverzeichnis() + "schnellkasse.rpt";
    order.dataFile = path;
    order.unterbericht = "Scheibennummer";
    order.unterberichtDatei = path;
    order.titel = "Kasse Eingänge";
    order.ziel = ziel;
    reports.run(order);
    loescheDatendatei(workplace, path);
  });
}

}  // namespace qk
