// Random statements that mean something: expressions of each kind, compared across kinds, over the tables of
// randomQueryTables(). From a seed.
#pragma once

#include <QRandomGenerator>
#include <QStringList>
#include <vector>

#include "platform/dao/values/types.h"

namespace qk::dao::test {

/// Werte and Orte with a key, Lose without one.
std::vector<TableDef> randomQueryTables();

class RandomQuery {
 public:
  explicit RandomQuery(quint32 seed) : random_(seed) {}

  struct Reading {
    QString text;
    bool ordered = false;  ///< the rows' order is defined
  };
  Reading reading();
  QString action();
  /// On "Select * from Werte".
  QString criterion();

 private:
  enum class Kind { Number, Text, Date };

  int below(int limit) { return int(random_.bounded(limit)); }
  const QString& oneOf(const QStringList& list) { return list[below(int(list.size()))]; }
  Kind kind() { return Kind(below(3)); }

  QString value(Kind kind, int depth);
  QString number(int depth);
  QString text(int depth);
  QString date(int depth);
  QString column(Kind kind);
  QString literal(Kind kind);
  QString condition(int depth);
  QString comparison(int depth);
  QString like(int depth);
  QString in(int depth);
  QString calculation(int depth);
  QString aggregate();

  Reading plain();
  Reading grouped();
  Reading joined();
  Reading unionOf();
  QString order(const QStringList& total);
  QString assignment(const QString& column);

  QRandomGenerator random_;
  QString qualifier_;  ///< "Werte." where several tables have the column
};

}  // namespace qk::dao::test
