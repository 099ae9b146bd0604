// How far a move is, on a console.
#pragma once

#include <QTextStream>

#include "masterdata/making/move.h"

namespace qk {

/// One line for each table, and for a long one how far it is.
class ProgressLines {
 public:
  explicit ProgressLines(QTextStream& out) : out_(out) {}

  void show(const MoveStep& step);

 private:
  QTextStream& out_;
  qint64 shown_ = 0;
};

/// "12.345"
QString counted(qint64 rows);

/// Moves, and tells how far it is and what was compared.
void moveWithLines(const MoveRequest& request, QTextStream& out);

}  // namespace qk
