// The acts of an operator on the real window, one function an act.
#pragma once

#include "tools/driver/driven_program.h"

namespace qk {

class Walk {
 public:
  explicit Walk(DrivenProgram& program) : program_(program) {}

  void selectLine(int line);
  bool hasShooter(int line) { return !program_.text(at(line, "m_lblSchuetzenName")).isEmpty(); }
  void chooseShooter(int line, const QString& startNumber);
  /// Ticks the station's discipline in the line's grid.
  void tickStationDiscipline(int line, const QString& name);
  void tickAllStationDisciplines(int line) { program_.click(at(line, "cmdWahlAlle")); }
  void priceModeOn(int line);
  void sendShooter(int line);
  int openShots(int line);
  void waitForOpenShots(int line, int count);
  void tickAllShots(int line);
  void tickDiscipline(int line, const QString& name);
  void transfer(int line);
  void saveAndBook(int line);
  void signOffAndLeavePriceMode(int line);
  /// Closes the window; answers the questions for open shots when there are any.
  void close(bool openShotsLeft);

 private:
  static QString at(int line, const QString& control) { return QString("cLine_%1/").arg(line - 1) + control; }
  DrivenProgram& program_;
};

}  // namespace qk
