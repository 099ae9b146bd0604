#include "masterdata/prints/master_prints.h"

#include <QScopeGuard>
#include <QSet>

#include "app/ground/feld_wert.h"
#include "app/ground/print_data.h"
#include "app/ground/temp_module.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"

namespace qk {

namespace {

struct ListFile {
  const char* file;
  const char* title;
};

ListFile fileOf(MasterList list) {
  switch (list) {
    case MasterList::Startliste:
      return {"startliste.rpt", "Startliste"};
    case MasterList::Vereinsliste:
      return {"vereinsliste.rpt", "Vereinsliste"};
    case MasterList::Disziplinblatt:
      return {"disziplinblatt.rpt", "Disziplinblatt"};
  }
  Q_UNREACHABLE();
}

/// What each shooter is registered for, by his key.
QHash<qint64, QStringList> registrations(dao::Database& competition) {
  QHash<qint64, QStringList> all;
  const auto rows = competition.openRecordset(
      "SELECT Schuetzen_SPO_Anmeldungen.SchuetzeID AS Schuetze, MeldeDisziplin.MeldeDisziplin AS Meldung "
      "FROM "
      "Schuetzen_SPO_Anmeldungen INNER JOIN MeldeDisziplin ON Schuetzen_SPO_Anmeldungen.SPOID = "
      "MeldeDisziplin.ID ORDER BY Schuetzen_SPO_Anmeldungen.ID");
  for (; !rows->eof(); rows->moveNext())
    all[FeldWert(*rows, "Schuetze").toLongLong()] << FeldWert(*rows, "Meldung").toString();
  return all;
}

}  // namespace

void MasterPrints::show(MasterList list) {
  const ListFile file = fileOf(list);
  reported(fehlerReport(workplace_.dialogs, "Die Liste konnte nicht gezeigt werden."), [&](Steps&) {
    ReportOrder order;
    order.reportFile = Programmverzeichnis() + file.file;
    order.dataFile = sWettkampf_;
    order.titel = file.title;
    reports_.run(order);
  });
}

void MasterPrints::showStartCards(const QList<qint64>& shooters) {
  if (shooters.isEmpty())
    return workplace_.dialogs.note(
        "Es ist kein Schütze gewählt. Auf der Seite »Schützen« die Zeilen markieren, Strg+A markiert alle.",
        BoxIcon::Information, "Startkarten");
  reported(fehlerReport(workplace_.dialogs, "Die Startkarten konnten nicht gezeigt werden."), [&](Steps&) {
    ReportOrder order;
    const auto gone = qScopeGuard([&] { loescheDatendatei(workplace_, order.dataFile); });
    order.dataFile = kopiereVorlage(workplace_, Programmverzeichnis() + "Startkarte.mdb", "ZST");
    fillCards(*dao::Database::open(order.dataFile), shooters);
    order.reportFile = Programmverzeichnis() + "startkarten.rpt";
    order.titel = "Startkarten";
    reports_.run(order);
  });
}

void MasterPrints::fillCards(dao::Database& file, const QList<qint64>& shooters) const {
  const auto competition = dao::Database::open(sWettkampf_);
  const auto head = competition->openRecordset("Select * from Wettkampf");
  const auto ofCompetition = [&](const char* column) {
    return head->eof() ? QString() : FeldWert(*head, column).toString();
  };
  const QHash<qint64, QStringList> reported = registrations(*competition);
  const QSet<qint64> wanted(shooters.begin(), shooters.end());
  const auto rows = competition->openRecordset(
      "SELECT Schützen.ID AS Nummer, Schützen.Startnummer AS Startnummer, Schützen.Name AS Name, "
      "Schützen.Gebdat AS GebDat, Schützenklassen.Klasse AS Klasse, Verein.Name AS Verein, "
      "Mannschaften.MannName AS Mannschaft FROM ((Schützen LEFT JOIN Verein ON Schützen.VereinsID = "
      "Verein.ID) LEFT JOIN Mannschaften ON Schützen.lMannID = Mannschaften.ID) LEFT JOIN Schützenklassen ON "
      "Schützen.KlassenID = Schützenklassen.ID ORDER BY val(Schützen.Startnummer), Schützen.Startnummer");
  dao::Changes cards(file);
  for (; !rows->eof(); rows->moveNext()) {
    const qint64 id = FeldWert(*rows, "Nummer").toLongLong();
    if (!wanted.contains(id)) continue;
    dao::RowValues card{{"Bez1", ofCompetition("Bezeichnung")},
                        {"Bez2", ofCompetition("Bezeichnung2")},
                        {"Ort", ofCompetition("Ort")},
                        {"Meldungen", reported.value(id).join(", ")}};
    for (const char* column : {"Startnummer", "Name", "GebDat", "Klasse", "Verein", "Mannschaft"})
      card.insert(column, FeldWert(*rows, column).toString());
    if (card.value("GebDat").toString().endsWith("0000")) card.insert("GebDat", QString());
    cards.insert("Startkarte", card);
  }
  cards.write();
}

}  // namespace qk
