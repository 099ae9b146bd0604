// What an official did to stored results, in order, so that it can be reckoned again.
#pragma once

#include <QString>
#include <vector>

namespace qk {

struct ResultAct {
  enum class Kind { Change, Delete, Move, Copy };
  Kind kind = Kind::Change;
  bool teiler = true;  ///< a teiler of table Schuss, else a series
  QString shooter;
  QString discipline;
  int tenths = 0;         ///< the result it was done to
  bool all = false;       ///< Move, Copy: everything the shooter has in `discipline`
  QString column, typed;  ///< Change: what was typed where
  QString target;         ///< Move, Copy: to this discipline
};

using ResultJournal = std::vector<ResultAct>;

}  // namespace qk
