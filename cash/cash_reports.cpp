#include "cash/cash_reports.h"

#include "app/ground/temp_module.h"
#include "cash/base_update.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/files.h"

namespace qk {

QString listenTabelle(const Auswertungsart& art) {
  if (art.Vortel) return "VortelListen";
  if (art.Preisgeld) return "PreisgeldListen";
  return art.bEinlagen ? "EinlagenListen" : "Listen";
}

QString tageswahlParameter(const std::optional<QDate>& tag) {
  return tag ? "Tageswahl;Date(" + tag->toString("yyyy,MM,dd") + ");TRUE;" : QString();
}

std::vector<QDate> kassenTage(dao::Database& wettkampf) {
  std::vector<QDate> days;
  const auto rows = wettkampf.openRecordset(
      "SELECT DISTINCT DateValue(DatumEingang) AS Tag FROM Kasse_Eingang WHERE DatumEingang IS NOT NULL "
      "ORDER BY Tag DESC");
  for (; !rows->eof(); rows->moveNext()) days.push_back(rows->value("Tag").toDate());
  return days;
}

CashReports::CashReports(const Workplace& workplace, ReportDoor& reports, QString sWettkampf)
    : workplace_(workplace), reports_(reports), sWettkampf_(std::move(sWettkampf)) {}

void CashReports::load() {
  wettkampf_ = dao::Database::open(sWettkampf_);
  KasseBasisAktualisieren(*wettkampf_);
  katalog_ = dao::Database::open(Programmverzeichnis() + "AwListenKasse.mdb", true);
  listen_.clear();
  const auto rows = katalog_->openRecordset("Select * from " + listenTabelle(art) + " order by Sort");
  for (; !rows->eof(); rows->moveNext())
    listen_.push_back({FeldWert(*rows, "ID").toInt(), FeldWert(*rows, "Beschreibung").toString()});
}

void CashReports::werteAus(const std::optional<KassenListe>& liste) {
  if (!liste) return workplace_.dialogs.note("Es wurde keine Liste ausgewäht!", BoxIcon::Exclamation);
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Auswerten der Kasse"), [&](Steps& step) {
    std::optional<ReportOrder> order;
    step([&] { order = auftrag(*liste); });
    if (order && liestBasis(*order)) step([&] { KasseBasisAktualisieren(*wettkampf_); });
    if (order) step([&] { reports_.run(*order); });
  });
}

/// It walks all payments: only where the report asks. One that can't be read says so itself.
bool CashReports::liestBasis(const ReportOrder& order) const {
  return order.dataFile == sWettkampf_ && workplace_.files.readable(order.reportFile) &&
         QString::fromUtf8(workplace_.files.read(order.reportFile)).contains("IDBasis", Qt::CaseInsensitive);
}

/// Nothing for an entry without a report.
std::optional<ReportOrder> CashReports::auftrag(const KassenListe& liste) {
  const auto rows = katalog_->openRecordset("Select * from " + listenTabelle(art));
  rows->findFirst("ID = " + QString::number(liste.ID));
  const QString Datei = rows->noMatch() ? QString() : FeldWert(*rows, "Datei").toString();
  if (Datei.isEmpty()) return {};
  ReportOrder order;
  order.reportFile = Programmverzeichnis() + Datei;
  order.dataFile = art.Preisgeld && !art.PreisgeldDatei.isEmpty() ? art.PreisgeldDatei : sWettkampf_;
  order.titel = "Auswertung - " + liste.Beschreibung;
  if (FeldWert(*rows, "Tageswahl").toBool())
    order.parameter = tageswahlParameter(waehleTag(kassenTage(*wettkampf_)));
  return order;
}

}  // namespace qk
