// The official: works the windows of the evaluation, and notes in the journal what becomes of stored results.
// Nothing is read back from what the program has stored.
#pragma once

#include "tools/driver/driven_program.h"
#include "tools/rundgang/result_journal.h"

namespace qk {

/// The results of the shooter on the current line.
class Official {
 public:
  enum class Tab { Teiler, Serien };

  /// Opens the window for the shooter.
  Official(DrivenProgram& program, ResultJournal& journal, const QString& shooter);

  void show(Tab tab);
  void picture(const QString& file) { program_.grab(file); }

  /// What the program asks about a value that the discipline hardly knows.
  enum class Doubt { None, Overruled };
  /// Types into a column of the first result in the discipline that no other equals.
  void change(const QString& discipline, const QString& column, const QString& typed,
              Doubt doubt = Doubt::None);
  void remove(const QString& discipline);
  void move(const QString& discipline, const QString& target, bool all);
  void copy(const QString& discipline, const QString& target, bool all);
  void close();

 private:
  enum Column { Result, Weapon, Discipline, Date };

  QString grid() const;
  /// Stands on the row; notes its result.
  int goTo(const QString& discipline, ResultAct& act);
  void toDiscipline(ResultAct::Kind kind, const QString& discipline, const QString& target, bool all);
  void waitForRows(qsizetype rows);

  DrivenProgram& program_;
  ResultJournal& journal_;
  QString shooter_;
  Tab tab_ = Tab::Teiler;
};

}  // namespace qk
