#include "cash/start_card.h"

#include <QScopeGuard>

#include "app/ground/print_data.h"
#include "app/ground/temp_module.h"
#include "cash/cash_desk.h"
#include "cash/diszi_kombi.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

using PaidCounts = QHash<std::pair<int, qint32>, int>;  // by kind and id

PaidCounts bezahlt(dao::Database& database, const QString& sStartNr) {
  PaidCounts counts;
  const auto rows = database.openRecordset(
      "SELECT Kasse_DisziKombi.DisziKZ AS DisziKZ, Kasse_DisziKombi.DisziKombiID AS DisziKombiID, "
      "Kasse_DisziKombi.Anzahl AS Anzahl FROM Kasse_Eingang INNER JOIN Kasse_DisziKombi ON "
      "Kasse_Eingang.KasseID = Kasse_DisziKombi.EinlageID WHERE Kasse_Eingang.Offen = False AND "
      "Kasse_Eingang.Startnummer = " +
      dao::sql::quoted(sStartNr));
  for (; !rows->eof(); rows->moveNext())
    counts[{FeldWert(*rows, "DisziKZ").toInt(), FeldWert(*rows, "DisziKombiID").toInt()}] +=
        FeldWert(*rows, "Anzahl").toInt();
  return counts;
}

void fill(dao::Database& file, const StartCard& card) {
  const auto head = file.openRecordset("Startkarte");
  head->addNew();
  for (const auto& [column, value] :
       {std::pair("Bez1", card.Bez1), std::pair("Bez2", card.Bez2), std::pair("Ort", card.Ort),
        std::pair("Startnummer", card.Startnummer), std::pair("Name", card.Name),
        std::pair("GebDat", card.GebDat), std::pair("Klasse", card.Klasse), std::pair("Verein", card.Verein),
        std::pair("Mannschaft", card.Mannschaft), std::pair("Meldungen", card.Meldungen)})
    head->setValue(column, value);
  head->update();
  const auto rows = file.openRecordset("Disziplinen");
  for (const StartCard::Zeile& line : card.Disziplinen) {
    rows->addNew();
    rows->setValue("Art", line.kombi ? "Kombination" : "Disziplin");
    rows->setValue("Bezeichnung", line.Bezeichnung);
    rows->setValue("Anzahl", line.Anzahl);
    rows->update();
  }
}

bool print(const Workplace& workplace, ReportDoor& reports, const StartCard& card) {
  ReportOrder order;
  const auto gone = qScopeGuard([&] { loescheDatendatei(workplace, order.dataFile); });
  order.dataFile = kopiereVorlage(workplace, Programmverzeichnis() + "Startkarte.mdb", "ZVK");
  fill(*dao::Database::open(order.dataFile), card);
  order.reportFile = Programmverzeichnis() + "startkarte.rpt";
  order.titel = "Startkarte " + card.Startnummer;
  order.ziel = ReportOrder::Ziel::Drucker;
  return reports.run(order);
}

}  // namespace

StartCard startkarteFuer(CashDesk& desk) {
  const ShownShooter& shooter = desk.shooter();
  StartCard card{desk.sBez1,
                 desk.sBez2,
                 desk.sOrt,
                 desk.sStartNr(),
                 shooter.Name,
                 shooter.GebDat,
                 shooter.Klasse,
                 shooter.Verein,
                 shooter.Mann,
                 shooter.SPO,
                 {}};
  const PaidCounts counts = bezahlt(desk.database(), desk.sStartNr());
  for (const DisziKombi& entry : ladeDisziKombi(desk.database()))
    if (const auto paid = counts.find({entry.DisziKZ(), entry.id}); paid != counts.end())
      card.Disziplinen.push_back({entry.kombi, entry.name, *paid});
  return card;
}

QString Kladde_Print(CashDesk& desk, ReportDoor& reports) {
  const QString failed = "Die Startkarte wurde nicht gedruckt";
  try {
    return print(desk.workplace(), reports, startkarteFuer(desk)) ? "Startkarte gedruckt." : failed + ".";
  } catch (const Error& error) {
    return failed + ": " + error.description();
  }
}

}  // namespace qk
