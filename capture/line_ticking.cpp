// Ticking shots on a line: one row, all, the series of a competition, the first of the station's discipline.

#include <algorithm>

#include "capture/line_capture.h"
#include "capture/row_values.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

const QString Ticked = "-1";
const QString Unticked = "0";
constexpr int TickColumn = 0;
constexpr int CompetitionColumn = 1;

/// The length of a series when the disciplines name none.
constexpr int UsualSeries = 10;

}  // namespace

void LineCapture::flex_click(int row, int column) {
  if (column != TickColumn || row < 1) return;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei flex_click_err!", {}, false), [&](Steps& step) {
    step([&] {
      const QString key = flex_.rowData(row);
      for (const auto& schuss : m_colHaeringSchuss_.objects()) {
        if (schuss->Key != key) continue;
        schuss->bAngewaehlt = flex_.text(row, TickColumn) == Ticked;
        break;
      }
    });
    PruefeUebertragenSchaltflaecheEnabled();
  });
}

void LineCapture::tickAll(bool bWahl) {
  for (int row = 1; row < flex_.rows(); ++row) flex_.setText(row, TickColumn, bWahl ? Ticked : Unticked);
  for (const auto& schuss : m_colHaeringSchuss_.objects()) schuss->bAngewaehlt = bWahl;
}

void LineCapture::HaeringSchussAnAbwaehlen(bool bWahl) {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei HaeringSchussAnAbwaehlen_err!", {}, false),
           [&](Steps&) {
             tickAll(bWahl);
             m_cmdUebertragenTarvex_Click();
             PruefeUebertragenSchaltflaecheEnabled();
           });
}

int LineCapture::seriesLength(const QString& sWettbewerb) {
  if (!WettbewerbInListen(sWettbewerb, lstDisziTarvex_, lstKombiTarvex_)) return flex_.rows();
  WaehleWettbewerb(required(db_), sWettbewerb, lstDisziTarvex_, lstKombiTarvex_);
  m_lstDisziTarvex_Click();
  int nMax = 0;
  for (const auto& d : m_colDisziplinen_.objects()) nMax = std::max<int>(nMax, d->RingSerie);
  return nMax == 0 ? UsualSeries : nMax;
}

void LineCapture::HaeringSchussWettbewerbAnwaehlen(int currentRow, const std::function<void(int)>& show) {
  if (currentRow < 1 || currentRow >= flex_.rows()) return;
  const ErrorReport report =
      fehlerReport(workplace_.dialogs, "Fehler beim Anwählen der Intarso-Disziplin!", {}, false);
  reported(report, [&](Steps& step) {
    tickAll(false);
    const QString sWettbewerb = flex_.text(currentRow, CompetitionColumn);
    int nMax = 0;
    step([&] { nMax = seriesLength(sWettbewerb); });
    const auto inBlock = [&](int row) { return flex_.text(row, CompetitionColumn) == sWettbewerb; };
    int row = currentRow;
    while (row > 1 && inBlock(row - 1)) --row;
    for (int n = 0; n < nMax && row < flex_.rows() && inBlock(row); ++n, ++row) {
      flex_.setText(row, TickColumn, Ticked);
      flex_click(row, TickColumn);
      show(row);
    }
    if (PruefeUebertragenSchaltflaecheEnabled()) m_cmdUebertragenTarvex_Click();
  });
}

void LineCapture::HaeringSchussSerieAnwaehlen(const TextTable& flexHaeringDiszi) {
  constexpr int ShotsColumn = 2;
  const ErrorReport report = fehlerReport(workplace_.dialogs, "Fehler beim Anwählen der Serie!", {}, false);
  reported(report, [&](Steps& step) {
    int n = 0;
    step([&] {
      for (int row = 1; row < flexHaeringDiszi.rows(); ++row) {
        if (flexHaeringDiszi.text(row, TickColumn) == Unticked) continue;
        n = toInt16(parseTolerant(flexHaeringDiszi.text(row, ShotsColumn)));
        break;
      }
    });
    for (int i = 0; i < std::min(n, m_colHaeringSchuss_.count()); ++i) {
      const auto schuss = m_colHaeringSchuss_.at(i);
      schuss->bAngewaehlt = true;
      if (const int row = flex_.findRow(schuss->Key); row > 0) flex_.setText(row, TickColumn, Ticked);
    }
    PruefeUebertragenSchaltflaecheEnabled();
  });
}

}  // namespace qk
