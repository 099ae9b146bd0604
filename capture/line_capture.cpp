#include "capture/line_capture.h"

#include <algorithm>

#include "capture/row_values.h"
#include "platform/dialog/dialogs.h"

namespace qk {

LineCapture::LineCapture(const Workplace& workplace, QObject* parent)
    : QObject(parent), workplace_(workplace), look_(LadeSchriftenErgebnisse(workplace)) {
  FlexEinrichten(flex_);
  FFerg_AufnahmeVorbereiten(workplace_, ffErg_, m_colDisziplinen_);
  ErgebnislisteEinrichten(workplace_, ffErg_, layoutCode(m_colDisziplinen_), look_);
}

void LineCapture::fillLists(const CompetitionLists& lists) {
  lstDisziTarvex_.takeEntriesOf(lists.disciplines);
  lstKombiTarvex_.takeEntriesOf(lists.combinations);
}

void LineCapture::setShooter(std::shared_ptr<const Schuetze> shooter) {
  shooter_ = std::move(shooter);
  PruefeUebertragenSchaltflaecheEnabled();
}

void LineCapture::TransferInGrid(const std::shared_ptr<HaeringSchuss>& schuss) {
  qk::TransferInGrid(workplace_, flex_, m_colHaeringSchuss_, schuss);
  PruefeUebertragenSchaltflaecheEnabled();
}

bool LineCapture::SpeichereHaeringSchuss(HaeringSchuss& schuss) {
  return qk::SpeichereHaeringSchuss(workplace_, db_, schuss);
}

bool LineCapture::uebernehmeManuellenSchuss(const std::shared_ptr<HaeringSchuss>& schuss) {
  if (!qk::TransferInGrid(workplace_, flex_, m_colHaeringSchuss_, schuss)) return false;
  const bool isOpen =
      m_colHaeringSchuss_.contains(schuss->Key) && m_colHaeringSchuss_.get(schuss->Key) == schuss;
  if (schuss->bAngewaehlt && isOpen) flex_.setText(flex_.findRow(schuss->Key), 0, "-1");
  PruefeUebertragenSchaltflaecheEnabled();
  return SpeichereHaeringSchuss(*schuss);
}

std::int16_t LineCapture::AnzahlOffeneSchuesse(std::int16_t nLinie) {
  return qk::AnzahlOffeneSchuesse(workplace_, db_, nLinie);
}

QString LineCapture::StartnummerOffeneSchuesse(std::int16_t nLinie) {
  return qk::StartnummerOffeneSchuesse(workplace_, db_, nLinie);
}

void LineCapture::LadeOffeneSchuesse(std::int16_t nLinie) {
  qk::LadeOffeneSchuesse(workplace_, db_, nLinie, [this](const std::shared_ptr<HaeringSchuss>& schuss) {
    qk::TransferInGrid(workplace_, flex_, m_colHaeringSchuss_, schuss);
  });
  PruefeUebertragenSchaltflaecheEnabled();
}

void LineCapture::assignOpenShots(const QString& sStartnummer) {
  for (const auto& schuss : m_colHaeringSchuss_.objects()) {
    schuss->SchuetzeStartnummer = sStartnummer;
    UpdateHaeringStartnummer(workplace_, db_, *schuss);
  }
  // What was transferred bears the former shooter: it must be transferred again before it is stored.
  clearResultGrid(ffErg_);
  forgetTransfer();
}

void LineCapture::forgetTransfer() {
  pending_ = {};
  m_colGewaehlt_.clear();
  LeereBesteErgebnisse(best_);
  Q_EMIT bestResultsChanged();
}

// What is discarded never comes back: Enter must not do that.
void LineCapture::HaeringSchussVerwerfenAlle() {
  if (!workplace_.dialogs.confirm("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  // Those of the question; what arrives behind an error box nobody has given up.
  for (const auto& schuss : m_colHaeringSchuss_.objects()) {
    VerwerfeHaeringSchuss(workplace_, db_, *schuss);
    m_colHaeringSchuss_.removeAt(0);
    if (flex_.rows() > 1) flex_.removeRow(1);
  }
  if (m_colHaeringSchuss_.isEmpty()) flex_.setRows(1);
  m_cmdUebertragenTarvex_Click();
  PruefeUebertragenSchaltflaecheEnabled();
}

void LineCapture::HaeringSchussVerwerfenGewaehlte() {
  if (!workplace_.dialogs.confirm("Sollen die gewählten Intarso Schuss dieser Linie verworfen werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  for (int i = m_colHaeringSchuss_.count() - 1; i >= 0; --i) {
    const auto schuss = m_colHaeringSchuss_.at(i);
    if (!schuss->bAngewaehlt) continue;
    if (const int row = flex_.findRow(schuss->Key); row > 0) flex_.removeRow(row);
    VerwerfeHaeringSchuss(workplace_, db_, *schuss);
    m_colHaeringSchuss_.removeAt(i);
  }
  m_cmdUebertragenTarvex_Click();
  PruefeUebertragenSchaltflaecheEnabled();
}

void LineCapture::Select_Disziplinen() {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Select_Disziplinen_err!"), [&](Steps& step) {
    m_colDisziplinen_.clear();
    for (int i = 0; i < lstDisziTarvex_.count(); ++i) {
      if (!lstDisziTarvex_.isTicked(i)) continue;
      step([&] {
        // A discipline that was deleted since the list was filled is no object to collect.
        const auto discipline = LadeDisziplin(required(db_), lstDisziTarvex_.number(i));
        required(discipline);
        m_colDisziplinen_.add(discipline, "-" + QString::number(discipline->ID));
      });
    }
  });
}

void LineCapture::m_lstDisziTarvex_Click() {
  Select_Disziplinen();
  FFerg_AufnahmeVorbereiten(workplace_, ffErg_, m_colDisziplinen_);
  ErgebnislisteEinrichten(workplace_, ffErg_, layoutCode(m_colDisziplinen_), look_);
  PruefeUebertragenSchaltflaecheEnabled();
}

void LineCapture::m_lstKombiTarvex_Click() {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei m_lstKombiTarvex_Click_err!"), [&](Steps& step) {
    step([&] { WendeKombinationenAn(required(db_), lstKombiTarvex_, lstDisziTarvex_); });
  });
  m_lstDisziTarvex_Click();
}

std::vector<std::shared_ptr<HaeringSchuss>> LineCapture::tickedShots() const {
  std::vector<std::shared_ptr<HaeringSchuss>> ticked;
  for (auto& schuss : m_colHaeringSchuss_.objects())
    if (schuss->bAngewaehlt) ticked.push_back(std::move(schuss));
  return ticked;
}

bool LineCapture::PruefeUebertragenSchaltflaecheEnabled() {
  const int nGewaehlt = static_cast<int>(tickedShots().size());
  const bool bFrei = nGewaehlt > 0 && shooter_ && lstDisziTarvex_.tickedCount() > 0;
  QString lblSchusszahl;
  if (flex_.rows() >= 2)
    lblSchusszahl = "Gesamt: " + QString::number(nOffeneSchuss()) + " Gewählt: " + QString::number(nGewaehlt);
  Q_EMIT transferStateChanged(bFrei, lblSchusszahl);
  return bFrei;
}

void LineCapture::m_cmdUebertragenTarvex_Click() {
  const ErrorReport report = fehlerReport(
      workplace_.dialogs, "Fehler beim Übertragen der Ergebnisse zu den Disziplinen!", {}, false);
  reported(report, [&](Steps& step) {
    const auto shots = tickedShots();
    const auto nGewaehlt = static_cast<int>(shots.size());
    const int nKapazitaet = resultCapacity(ffErg_);
    if (nGewaehlt > nKapazitaet) {
      workplace_.dialogs.note(
          "Es sind mehr Schuss (" + QString::number(nGewaehlt) + ") angewählt, als momentan in Tarvex (" +
          QString::number(nKapazitaet) +
          ") aufgenommen werden können!\r\nBitte wählen Sie andere Tarvex Disziplinen oder weniger Schuss "
          "zum Übernehmen");
      return;
    }
    step([&] { fillResultGrid(ffErg_, shots); });
    m_colGewaehlt_.clear();
    for (const auto& schuss : shots) step([&] { m_colGewaehlt_.add(schuss, schuss->Key); });
    UebertragenInDisziplinen();
  });
}

void LineCapture::UebertragenInDisziplinen() {
  const ErrorReport report =
      fehlerReport(workplace_.dialogs, "Fehler beim Übertragen der Tarvex Disziplinen!", {}, false);
  reported(report, [&](Steps& step) {
    const auto shots = m_colGewaehlt_.objects();
    step([&] {
      pending_ = {};
      transferShots(shots, m_colDisziplinen_.objects(), shooter_.get(),
                    {workplace_.clock.now(), workplace_.random,
                     [this](const Error& error, const QString& routine) {
                       return fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!", {},
                                           false)(error);
                     }},
                    pending_);
    });
    for (const int extra : pending_.extraShots) clearRingValues(*shots[static_cast<size_t>(extra)]);
    PruefeBesteErgebnisse(workplace_, pending_, best_);
    Q_EMIT bestResultsChanged();
  });
}

void LineCapture::m_cmdSaveTarvex_Click() {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei m_cmdSaveTarvex_Click_err!"), [&](Steps&) {
    storeAfterTransfer("Bitte wählen Sie zuerst die Schüsse.\r\nund übertragen diese in die Disziplin(en).",
                       true);
  });
}

void LineCapture::cmd_SaveOnlyTarvex_Click() {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei cmd_SaveOnlyTarvex_Click!"), [&](Steps&) {
    storeAfterTransfer("Bitte wählen Sie zuerst die Schüsse\r\nund übertragen diese in die Disziplin(en).",
                       false);
  });
}

void LineCapture::storeAfterTransfer(const QString& missing, bool bUndVerbuchen) {
  if (m_colGewaehlt_.isEmpty())
    workplace_.dialogs.note(missing);
  else
    SpeichernInDatenbank(bUndVerbuchen);
}

void LineCapture::SpeichernInDatenbank(bool bUndVerbuchen) {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei SpeichernInDatenbank_err!"), [&](Steps& step) {
    const auto results = SpeichereErgebnisse(workplace_, db_, pending_);
    if (!results) return;
    const PictureCaption caption = caption_ ? caption_() : PictureCaption{};
    SpeichernInGrafikDatenbank(workplace_, db_, caption, m_colHaeringSchuss_);
    std::optional<int> booked;
    if (bUndVerbuchen) booked = VerbucheHaeringSchuss(workplace_, db_, m_colHaeringSchuss_, flex_);
    step([&] { clearResultGrid(ffErg_); });
    forgetTransfer();
    PruefeUebertragenSchaltflaecheEnabled();
    const QString text = storedText(*results, shooter_ ? shooter_->Name : QString(), booked);
    const bool bookingGivenUp = bUndVerbuchen && !booked;
    if (!text.isEmpty() && !bookingGivenUp) Q_EMIT stored(text);
  });
}

}  // namespace qk
