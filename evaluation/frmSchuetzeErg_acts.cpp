// The acts of the results editor that change what is stored: deleting, and another discipline.
#include <QPushButton>

#include "app/ground/temp_module.h"
#include "evaluation/frmListDiszi.h"
#include "evaluation/frmSchuetzeErg.h"
#include "evaluation/results_page.h"
#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmSchuetzeErg.h"

namespace qk {

namespace {

/// Rows that are deleted before the window has its turn.
constexpr qsizetype kPortion = 25;
const char* const kDeleting = "Fehler beim Löschen des Ergebnisses!";
const char* const kUpdating = "Fehler beim Updaten des Ergebnisses!";
const char* const kGone =
    "Dieses Ergebnis ist inzwischen gelöscht oder in einer anderen Disziplin. Die Liste wird neu gelesen.";

}  // namespace

void frmSchuetzeErg::cmdDelete_Click() {
  if (!RechtPruefen(workplace_.dialogs, global_)) return;
  ResultsPage& page = activePage();
  if (!page.submit()) return;
  const QList<QByteArray> chosen = page.grid().chosenRows();
  if (chosen.isEmpty()) return;
  const int place = page.rows().rowOf(chosen.first());
  QString Ergebnis;
  bool there = true;
  if (!reported(report(kDeleting), [&](Steps& step) {
        if (chosen.size() > 1) return;
        step([&] { there = page.rows().reread(place); });
        Ergebnis = page.rows().index(place, result::Ergebnis).data().toString();
      }))
    return;
  if (!there) {
    workplace_.dialogs.note(kGone);
    return page.refresh(kDeleting, place);
  }
  if (workplace_.dialogs.show({.text = deleteQuestion(page.kind(), chosen.size(), Ergebnis),
                               .title = "Frage",
                               .icon = BoxIcon::Question,
                               .buttons = BoxButtons::YesNo,
                               .preset = BoxAnswer::No}) != BoxAnswer::Yes)
    return;
  deleteRows(page, chosen);
  page.refresh(kDeleting, place);
}

/// In portions, so that the window lives and the operator can stop between two of them.
void frmSchuetzeErg::deleteRows(ResultsPage& page, const QList<QByteArray>& bookmarks) {
  page.grid().clearSelection();
  setDeleting(true, bookmarks.size());
  int removed = 0;
  for (qsizetype first = 0; first < bookmarks.size() && !stop_; first += kPortion) {
    if (first > 0) {
      ui_->prgDelete->setValue(static_cast<int>(first));
      workplace_.waits.runMessageLoop();
    }
    if (!stop_ && !page.remove(bookmarks.mid(first, kPortion), removed)) break;
  }
  setDeleting(false, 0);
  say(deleteNews(page.kind(), bookmarks.size(), removed));
}

void frmSchuetzeErg::setDeleting(bool deleting, qsizetype rows) {
  deleting_ = deleting;
  stop_ = false;
  const bool slow = rows > kPortion;
  ui_->prgDelete->setRange(0, static_cast<int>(rows));
  ui_->prgDelete->setValue(0);
  ui_->prgDelete->setVisible(slow);
  ui_->cmdStop->setVisible(slow);
  for (QWidget* other : {static_cast<QWidget*>(ui_->SSTab1), static_cast<QWidget*>(ui_->menubar),
                         static_cast<QWidget*>(ui_->cmdEdit), static_cast<QWidget*>(ui_->cmdDelete),
                         static_cast<QWidget*>(ui_->cmdChangeDiszi),
                         static_cast<QWidget*>(ui_->cmdClearFilter), static_cast<QWidget*>(ui_->cmdOK)})
    other->setEnabled(!slow);
  if (slow) ui_->cmdStop->setFocus();
  if (!deleting) activePage().grid().setFocus();
}

void frmSchuetzeErg::cmdChangeDiszi_Click() {
  if (!RechtPruefen(workplace_.dialogs, global_)) return;
  ResultsPage& page = activePage();
  const int row = page.grid().currentRow();
  if (!page.submit() || row < 0) return;
  const QList<QByteArray> chosen = page.grid().chosenRows();
  bool there = false;
  if (!reported(report(kUpdating), [&](Steps& step) { step([&] { there = page.rows().reread(row); }); }))
    return;
  if (!there) {
    workplace_.dialogs.note(kGone);
    return page.refresh(kUpdating, row);
  }
  DisciplineChange wanted{
      .kind = page.kind(), .sStartnummer = sStartnummer_, .from = page.currentDiscipline()};
  frmListDiszi chooser(workplace_, *database_, this);
  chooser.setId(wanted.from);
  chooser.setTeiler(page.kind() == ResultKind::Teiler);
  chooser.exec();
  if (chooser.lId() < 1) return;
  wanted.to = chooser.lId();
  wanted.bCopy = chooser.bCopy();
  wanted.bChangeAll = chooser.bChangeAll();
  if (!workplace_.dialogs.confirm(changeQuestion(wanted), BoxIcon::Question, BoxAnswer::No)) return;
  const Hourglass hourglass;
  if (!wanted.bChangeAll && !reported(report(kUpdating), [&](Steps& step) {
        step([&] { wanted.results = page.resultsOf(chosen); });
      }))
    return;
  change(page, wanted, chooser.chosenName());
}

/// The current result stays the current one, wherever the new discipline puts it.
void frmSchuetzeErg::change(ResultsPage& page, const DisciplineChange& wanted, const QString& discipline) {
  const qint32 current = page.currentResult();
  const int row = page.grid().currentRow();
  int rows = 0;
  const bool goOn = reported(report(kUpdating), [&](Steps& step) {
    if (wanted.bChangeAll || !wanted.results.isEmpty()) rows = changeDiscipline(*database_, step, wanted);
  });
  if (goOn) say(changeNews(wanted, rows, discipline));
  page.refresh(kUpdating, row);
  reported(report(kUpdating), [&](Steps& step) { step([&] { page.goTo(current); }); });
}

}  // namespace qk
