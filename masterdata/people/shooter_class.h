// The classes of a competition, read once, and what they say about one person.
#pragma once

#include "shooters/class_rule.h"

namespace qk {

namespace dao {
class Database;
}

struct DeterminedClass {
  qint32 id = 0;  ///< 0: none
  QString why;    ///< a German sentence that says why there is none; empty with a class
};

class ShooterClasses {
 public:
  struct Entry {
    AgeClass limits;
    QString name, key;
  };

  ShooterClasses() = default;
  /// `classes` by their lowest age, then by id.
  ShooterClasses(std::vector<Entry> classes, QString yearBegin, const QDate& refDatum);

  const std::vector<Entry>& all() const { return classes_; }
  const QDate& refDatum() const { return rule_.refDatum; }

  /// By age and sex. `gebDat` as it is stored.
  DeterminedClass determine(const QString& gebDat, const QString& geschlecht) const;
  /// By short key, else by name, whatever their case; nothing where no class or several are called so.
  std::optional<qint32> idOf(const QString& text) const;
  QString nameOf(qint32 id) const;  ///< empty for none
  QString keyOf(qint32 id) const;

 private:
  const Entry* find(qint32 id) const;

  std::vector<Entry> classes_;
  ClassRule rule_;
};

/// What stands in the competition now. Errors of the store pass.
ShooterClasses readShooterClasses(dao::Database& database);

}  // namespace qk
