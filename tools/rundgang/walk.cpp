#include "tools/rundgang/walk.h"

namespace qk {

namespace {

constexpr int kShootingSeconds = 90;

bool isTicked(const QJsonArray& rows, int row) {
  return rows[row].toArray().first().toObject()["ticked"].toBool();
}

}  // namespace

void Walk::waitForMainWindow() {
  program_.waitUntil("main window", [&] { return !program_.items("tree").isEmpty(); });
}

void Walk::selectLine(int line) {
  const QJsonArray nodes = program_.items("tree");
  for (int row = 0; row < nodes.size(); ++row) {
    const QString text = nodes[row].toArray().first().toObject()["text"].toString().trimmed();
    if (text.section(' ', 0, 0).toInt() != line) continue;
    program_.clickCell("tree", row, 0, true);
    program_.waitUntil("line in sight",
                       [&] { return program_.get(at(line, "lblLinie"), "visible").toBool(); });
    return;
  }
  throw DriverError(QString("no line %1 in the tree").arg(line));
}

void Walk::enterStartNumber(int line, const QString& startNumber) {
  program_.type(at(line, "m_txtStartNummer"), startNumber);
  program_.press(at(line, "m_txtStartNummer"), "Return");
}

void Walk::chooseShooter(int line, const QString& startNumber) {
  enterStartNumber(line, startNumber);
  program_.waitUntil("shooter", [&] { return hasShooter(line); });
}

int Walk::rowOf(const QString& grid, const QString& name) {
  const QJsonArray rows = program_.items(grid);
  for (int row = 0; row < rows.size(); ++row)
    if (cellText(rows, row, 1) == name) return row;
  throw DriverError("the station offers no discipline " + name);
}

void Walk::tickStationDiscipline(int line, const QString& name) {
  const QString grid = at(line, "flexHaeringDiszi");
  const int row = rowOf(grid, name);
  program_.clickCell(grid, row, 0);
  program_.waitUntil("tick of " + name, [&] { return isTicked(program_.items(grid), row); });
}

void Walk::chooseGroup(int line, const QString& name) {
  program_.choose(at(line, "cmbHaeringGruppen"), name);
}

void Walk::enterExtraShots(int line, const QString& name, int count) {
  const QString grid = at(line, "flexHaeringDiszi");
  const int row = rowOf(grid, name);
  program_.clickCell(grid, row, 1);
  program_.click(at(line, "mnuSchuss" + QString::number(count)));
  program_.waitUntil("extra shots",
                     [&] { return cellText(program_.items(grid), row, 4) == QString::number(count); });
}

void Walk::sendExtraShots(int line) {
  program_.click(at(line, "cmdNachkauf"));
  program_.answer("Nachkauf senden: ", "Ja");
}

void Walk::priceModeOn(int line) {
  program_.click(at(line, "cmdPreisModus"));
}

void Walk::sendShooter(int line) {
  program_.click(at(line, "cmdSendenSchuetzenDisziplinen"));
  program_.answer("Disziplinen senden: ", "Ja");
}

int Walk::openShots(int line) {
  return static_cast<int>(program_.items(at(line, "flex")).size());
}

void Walk::waitForOpenShots(int line, int count) {
  program_.waitUntil(
      QString("%1 open shots").arg(count), [&] { return openShots(line) >= count; }, kShootingSeconds);
}

void Walk::waitForLastHit(int line, int hit) {
  program_.waitUntil(
      QString("hit %1 on line %2").arg(hit).arg(line),
      [&] {
        const QJsonArray shots = program_.items(at(line, "flex"));
        return cellText(shots, static_cast<int>(shots.size()) - 1, 2) == QString::number(hit);
      },
      kShootingSeconds);
}

void Walk::clickShot(int line, int place) {
  const QString grid = at(line, "flex");
  const bool before = isTicked(program_.items(grid), place);
  program_.clickCell(grid, place, 0);
  program_.waitUntil("tick of a shot", [&] { return isTicked(program_.items(grid), place) != before; });
}

void Walk::chooseSeriesAround(int line, int place) {
  program_.doubleClickCell(at(line, "flex"), place, 1);
}

void Walk::tickAllShots(int line, bool on) {
  program_.click(at(line, on ? "m_cmdAlleWaehlenHaering" : "m_cmdAlleAbwaehlenHaering"));
}

void Walk::clickDiscipline(int line, const QString& name) {
  program_.choose(at(line, "SSTabDiszi"), "Disziplinen");
  program_.clickItem(at(line, "m_lstDisziTarvex"), name);
}

void Walk::tickCombination(int line, const QString& name) {
  program_.choose(at(line, "SSTabDiszi"), "Kombinationen");
  program_.clickItem(at(line, "m_lstKombiTarvex"), name);
}

void Walk::transfer(int line) {
  const QString button = at(line, "m_cmdUebertragenTarvex");
  program_.waitUntil("transfer allowed", [&] { return program_.enabled(button); });
  program_.click(button);
}

bool Walk::hasResults(int line) {
  return !program_.items(at(line, "lstBesteErg")).isEmpty();
}

void Walk::saveAndBook(int line) {
  program_.click(at(line, "m_cmdSaveTarvex"));
  program_.waitUntil("storing", [&] { return !hasResults(line); });
}

void Walk::saveOnly(int line) {
  program_.click(at(line, "cmd_SaveOnlyTarvex"));
  program_.waitUntil("storing", [&] { return !hasResults(line); });
}

void Walk::discardTicked(int line) {
  program_.click(at(line, "m_cmdVerwerfenGewaehlte"));
  program_.answer("Sollen die gewählten Intarso Schuss dieser Linie verworfen werden?", "Ja");
}

void Walk::discardAll(int line) {
  program_.click(at(line, "m_cmdVerwerfen"));
  program_.answer("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?", "Ja");
  program_.waitUntil("discarding", [&] { return openShots(line) == 0; });
}

void Walk::signOffAndLeavePriceMode(int line) {
  program_.click(at(line, "Command2"));
  program_.waitUntil("sign-off", [&] { return !hasShooter(line); });
}

void Walk::freeLine(int line) {
  program_.click(at(line, "cmdLinieClear"));
}

void Walk::close(bool openShotsLeft) {
  program_.click("mnuExit");
  if (openShotsLeft) program_.answer("Einige Linien haben noch offene Schüsse!", "Ja");
  if (const int status = program_.waitForEnd(); status != 0)
    throw DriverError(QString("the program ended with status %1").arg(status));
}

}  // namespace qk
