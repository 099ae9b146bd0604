#include "tools/rundgang/walk.h"

#include <QThread>

namespace qk {

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

void Walk::chooseShooter(int line, const QString& startNumber) {
  program_.type(at(line, "m_txtStartNummer"), startNumber);
  program_.press(at(line, "m_txtStartNummer"), "Return");
  program_.waitUntil("shooter", [&] { return hasShooter(line); });
}

void Walk::tickStationDiscipline(int line, const QString& name) {
  const QString grid = at(line, "flexHaeringDiszi");
  const QJsonArray rows = program_.items(grid);
  for (int row = 0; row < rows.size(); ++row)
    if (rows[row].toArray()[1].toObject()["text"].toString() == name) {
      program_.clickCell(grid, row, 0);
      program_.waitUntil("tick of " + name, [&] {
        return program_.items(grid)[row].toArray()[0].toObject()["ticked"].toBool();
      });
      return;
    }
  throw DriverError("the station offers no discipline " + name);
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
      QString("%1 open shots").arg(count), [&] { return openShots(line) >= count; }, 90);
}

void Walk::tickAllShots(int line) {
  program_.click(at(line, "m_cmdAlleWaehlenHaering"));
}

void Walk::tickDiscipline(int line, const QString& name) {
  program_.tickItem(at(line, "m_lstDisziTarvex"), name);
}

void Walk::transfer(int line) {
  const QString button = at(line, "m_cmdUebertragenTarvex");
  program_.waitUntil("transfer allowed", [&] { return program_.enabled(button); });
  program_.click(button);
  program_.waitUntil("best results", [&] { return !program_.items(at(line, "lstBesteErg")).isEmpty(); });
}

void Walk::saveAndBook(int line) {
  program_.click(at(line, "m_cmdSaveTarvex"));
  program_.waitUntil("booking", [&] { return openShots(line) == 0; });
}

void Walk::signOffAndLeavePriceMode(int line) {
  program_.click(at(line, "Command2"));
  program_.waitUntil("sign-off", [&] { return !hasShooter(line); });
}

void Walk::close(bool openShotsLeft) {
  program_.click("mnuExit");
  if (openShotsLeft) program_.answer("Einige Linien haben noch offene Schüsse!", "Ja");
  if (const int status = program_.waitForEnd(); status != 0)
    throw DriverError(QString("the program ended with status %1").arg(status));
}

}  // namespace qk
