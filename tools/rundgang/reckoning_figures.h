// A row as it should stand in the competition, figure by figure, and how it is found there.
//
// The office adds binary fractions, this side counts in tenths. A stored number agrees when it is nearer than
// a millionth to the tenths. A text of sums (`Folge`) carries the fractions as they are: where a sum isn't
// exact in binary, the last eight characters of its fifteen digits are a rest of noughts or nines that holds
// nothing of the sum. Such a rest is accepted as what it is and counted; the sum itself stands, unrounded, in
// the result and is compared there.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

namespace qk {

struct Figure {
  QString column;
  QString expected;  ///< for the report
  std::function<bool(const QVariant& stored)> agrees;
};

/// "-12,50"
QString centsText(qint64 cents);

Figure text(const QString& column, const QString& expected);  ///< an empty text may be Null
Figure number(const QString& column, qint64 expected);        ///< 0 may be Null, yes is -1
Figure tenths(const QString& column, int expected);
Figure cents(const QString& column, qint64 expected);
Figure moment(const QString& column, const QDateTime& from, const QDateTime& to);
/// A moment that never was: Null or the zero date.
Figure never(const QString& column);
/// Sums in blocks of eight characters; `exact` where no fraction can be left.
Figure blockSums(const QString& column, const QList<int>& tenths, bool exact);
/// How many fields of the text are a binary rest.
int binaryRests(const QString& blockSums);

using StoredRow = QHash<QString, QVariant>;

struct ExpectedRow {
  std::vector<Figure> figures;
  std::vector<ExpectedRow> children;  ///< in order
};

/// The columns that don't agree, with both values; empty when all do.
QStringList differences(const ExpectedRow& expected, const StoredRow& stored);

}  // namespace qk
