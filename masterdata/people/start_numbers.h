// The start numbers of a competition: which are taken, and which comes next. They are texts; those that are
// whole numbers are counted on.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace qk {

/// The value of a start number that is nothing but digits; 0 for any other, and for one that no counting goes
/// on from (ten digits and more).
qint64 countedStartNumber(const QString& number);

class StartNumbers {
 public:
  StartNumbers() = default;
  explicit StartNumbers(const QStringList& taken);

  /// Capitals and small letters are one, as in the store.
  bool isTaken(const QString& number) const;
  void take(const QString& number);
  /// Behind the highest; gaps stay, for they were somebody's yesterday.
  QString next() const { return QString::number(highest_ + 1); }

 private:
  QSet<QString> taken_;
  qint64 highest_ = 0;
};

}  // namespace qk
