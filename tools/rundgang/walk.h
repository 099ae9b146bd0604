// The acts of an operator on the real window, one function an act. Lines count from 1.
#pragma once

#include "tools/driver/driven_program.h"

namespace qk {

class Walk {
 public:
  explicit Walk(DrivenProgram& program) : program_(program) {}

  void waitForMainWindow();
  void selectLine(int line);
  /// Types the number and presses Enter. A question that comes up is the caller's.
  void enterStartNumber(int line, const QString& startNumber);
  void chooseShooter(int line, const QString& startNumber);
  bool hasShooter(int line) { return !program_.text(at(line, "m_lblSchuetzenName")).isEmpty(); }

  // The station's disciplines.
  void tickStationDiscipline(int line, const QString& name);
  void tickAllStationDisciplines(int line) { program_.click(at(line, "cmdWahlAlle")); }
  void chooseGroup(int line, const QString& name);
  /// Enters additional shots by the menu of the grid, which knows 1, 2, 3, 4, 5, 9, 10, 20, 30 and 40.
  void enterExtraShots(int line, const QString& name, int count);
  void sendExtraShots(int line);

  void priceModeOn(int line);
  void sendShooter(int line);
  void signOffAndLeavePriceMode(int line);
  void freeLine(int line);

  // Open shots and what they count for; places count from 0.
  int openShots(int line);
  void waitForOpenShots(int line, int count);
  /// The last open shot is the hit of that number.
  void waitForLastHit(int line, int hit);
  void clickShot(int line, int place);
  void chooseSeriesAround(int line, int place);
  void tickAllShots(int line, bool on = true);
  /// Ticks the discipline, or takes its tick away.
  void clickDiscipline(int line, const QString& name);
  void tickCombination(int line, const QString& name);
  void transfer(int line);
  bool hasResults(int line);

  void saveAndBook(int line);
  void saveOnly(int line);
  void discardTicked(int line);
  void discardAll(int line);
  /// Closes the window; answers the questions for open shots when there are any.
  void close(bool openShotsLeft);

 private:
  static QString at(int line, const QString& control) { return QString("cLine_%1/").arg(line - 1) + control; }
  int rowOf(const QString& grid, const QString& name);
  DrivenProgram& program_;
};

}  // namespace qk
