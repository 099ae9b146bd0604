// Random statements and random garbage, from a seed.
#pragma once

#include <QRandomGenerator>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql::test {

class RandomText {
 public:
  explicit RandomText(quint32 seed) : random_(seed) {}
  Statement statement();
  ExpressionPtr expression(int depth);
  /// Tokens of the language in any order, and now and then characters of none.
  QString garbage();
  /// A text with a few characters lost, doubled or replaced.
  QString damaged(QString text);
  int below(int limit) { return int(random_.bounded(limit)); }

 private:
  Select select(int depth);
  SourcePtr source(int depth);
  Column column();
  Literal literal();
  std::vector<ExpressionPtr> expressions(int count, int depth);

  QRandomGenerator random_;
};

}  // namespace qk::dao::sql::test
