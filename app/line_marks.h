// The marks and texts of the line tree follow the events of the line controls.
//
// Most handlers go by the line of the event; XFreiClick goes by the selected node on purpose: when all lines
// are signed off in one go, the marks of the other lines stay as they are until they are shown.
#pragma once

#include <QObject>
#include <functional>

#include "app/line_tree.h"
#include "link/linecontrol/usercontrol1.h"
#include "platform/workplace.h"

namespace qk {

class LineMarks : public QObject {
  Q_OBJECT

 public:
  /// `lineOf` gives the control with an index in cLine, nullptr when there is none.
  LineMarks(const Workplace& workplace, LineTree& tree, std::function<UserControl1*(int)> lineOf);

  /// Follows the events of a control.
  void watch(UserControl1* line);

  /// Position of the node of a control's line, or -1.
  int GetTreeIndex(int nIndex) const;

 Q_SIGNALS:
  /// A shooter was chosen on a line.
  void shooterChosen(int nIndex);
  void sumLine(int nIndex, const QString& text);

 private:
  using Handler = void (LineMarks::*)(int);
  void follow(UserControl1* line, void (UserControl1::*raised)(int), Handler handler, const QString& name);
  void setByLine(int nIndex, const QString& image, const QString& tag);

  void preisModusGestartet(int nIndex);
  void preisModusBeendet(int nIndex);
  void schuetzeGesendet(int nIndex);
  void frei(int nIndex);
  void gruen(int nIndex);
  void stop(int nIndex);
  void work(int nIndex);

  Workplace workplace_;
  LineTree& tree_;
  std::function<UserControl1*(int)> lineOf_;
};

}  // namespace qk
