#include "tools/rundgang/official.h"

#include <algorithm>

#include "tools/rundgang/reckoning_log.h"
#include "tools/rundgang/shown_report.h"

namespace qk {

namespace {

const QString kWindow = "frmSchuetzeErg";
const QStringList kColumns = {"Ergebnis", "Waffe", "Disziplin", "Datum"};

}  // namespace

Official::Official(DrivenProgram& program, ResultJournal& journal, const QString& shooter)
    : program_(program), journal_(journal), shooter_(shooter) {
  program_.click("mnuEditErgebnisse");
  waitForModal(program_, kWindow);
  // Shown isn't active yet: what is typed before the window manager says so goes nowhere.
  program_.waitUntil("active window", [this] { return program_.get(kWindow, "isActiveWindow").toBool(); });
}

QString Official::grid() const {
  return kWindow + (tab_ == Tab::Teiler ? "/TDBGrid1" : "/TDBGrid2");
}

void Official::show(Tab tab) {
  tab_ = tab;
  program_.choose(kWindow + "/SSTab1", tab == Tab::Teiler ? "Teiler - Ergebnisse" : "Serien - Ergebnisse");
  program_.waitUntil("results", [&] { return !program_.items(grid()).isEmpty(); });
}

int Official::goTo(const QString& discipline, ResultAct& act) {
  const QJsonArray rows = program_.items(grid());
  QStringList results;
  for (int row = 0; row < rows.size(); ++row)
    if (cellText(rows, row, Discipline) == discipline) results << cellText(rows, row, Result);
  for (int row = 0; row < rows.size(); ++row) {
    const QString result = cellText(rows, row, Result);
    if (cellText(rows, row, Discipline) != discipline || results.count(result) > 1) continue;
    program_.clickCell(grid(), row, Discipline);
    act.teiler = tab_ == Tab::Teiler;
    act.shooter = shooter_;
    act.discipline = discipline;
    act.tenths = tenthsOf(result);
    return row;
  }
  throw DriverError("no result of its own in " + discipline);
}

void Official::change(const QString& discipline, const QString& column, const QString& typed, Doubt doubt) {
  ResultAct act;
  const int row = goTo(discipline, act), at = static_cast<int>(kColumns.indexOf(column));
  program_.click(kWindow + "/cmdEdit");
  program_.waitUntil("unlocked grid",
                     [&] { return program_.text(kWindow + "/cmdEdit").remove('&') == "Sperren"; });
  program_.doubleClickCell(grid(), row, at);
  program_.typeBlindly(typed + "\n");
  if (doubt == Doubt::Overruled) program_.answer("Trotzdem übernehmen?", "Ja");
  program_.waitUntil("what was typed", [&] { return cellText(program_.items(grid()), row, at) == typed; });
  program_.click(kWindow + "/cmdEdit");
  program_.waitUntil("locked grid",
                     [&] { return program_.text(kWindow + "/cmdEdit").remove('&') == "Bearbeiten"; });
  act.kind = ResultAct::Kind::Change;
  act.column = column;
  act.typed = typed;
  journal_.push_back(act);
}

void Official::waitForRows(qsizetype rows) {
  program_.waitUntil(QString("%1 results").arg(rows), [&] { return program_.items(grid()).size() == rows; });
}

void Official::remove(const QString& discipline) {
  ResultAct act;
  goTo(discipline, act);
  const qsizetype before = program_.items(grid()).size();
  program_.click(kWindow + "/cmdDelete");
  program_.answer(tab_ == Tab::Teiler ? "Wollen Sie den Teiler: " : "Wollen Sie die Serie: ", "Ja");
  waitForRows(before - 1);
  act.kind = ResultAct::Kind::Delete;
  journal_.push_back(act);
}

void Official::move(const QString& discipline, const QString& target, bool all) {
  toDiscipline(ResultAct::Kind::Move, discipline, target, all);
}

void Official::copy(const QString& discipline, const QString& target, bool all) {
  toDiscipline(ResultAct::Kind::Copy, discipline, target, all);
}

void Official::toDiscipline(ResultAct::Kind kind, const QString& discipline, const QString& target,
                            bool all) {
  ResultAct act;
  act.kind = kind;
  act.target = target;
  act.all = all;
  goTo(discipline, act);
  const auto inTarget = [&] {
    const QJsonArray rows = program_.items(grid());
    qsizetype count = 0;
    for (int row = 0; row < rows.size(); ++row) count += cellText(rows, row, Discipline) == act.target;
    return count;
  };
  const qsizetype before = inTarget();
  const bool copy = act.kind == ResultAct::Kind::Copy;
  program_.click(kWindow + "/cmdChangeDiszi");
  waitForModal(program_, "frmListDiszi");
  const QJsonArray disciplines = program_.items("frmListDiszi/lstDisziplinen");
  for (int row = 0; row < disciplines.size(); ++row)
    if (cellText(disciplines, row, 0) == act.target)
      program_.clickCell("frmListDiszi/lstDisziplinen", row, 0);
  if (copy) program_.press("frmListDiszi/chkErgCopy", "Space");
  if (act.all) program_.press("frmListDiszi/chkAllChange", "Space");
  program_.click("frmListDiszi/cmdOK");
  program_.answer(
      QString(act.all ? "Alle Ergebnisse des Schützen" : "Gewählte Ergebnisse") +
          (copy ? " wirklich in die neue Disziplin kopieren?" : " wirklich der neuen Disziplin zuordnen?"),
      "Ja");
  program_.waitUntil("results in " + act.target, [&] { return inTarget() > before; });
  journal_.push_back(act);
}

void Official::close() {
  program_.click(kWindow + "/cmdOK");
  program_.waitUntil("closed window", [&] { return program_.modal().isEmpty(); });
}

}  // namespace qk
