#include "tools/rundgang/reckoning_figures.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>
#include <cmath>

#include "platform/runtime/money.h"
#include "tools/rundgang/reckoning_log.h"

namespace qk {

namespace {

constexpr int kFieldWidth = 8;
constexpr double kNearly = 1e-6;

bool isRest(const QString& field) {
  static const QRegularExpression rest("^(0{7}|9{7})\\d$");
  return rest.match(field).hasMatch();
}

QString cleanField(int tenths) {
  return tenthsText(tenths).rightJustified(kFieldWidth, '0').right(kFieldWidth);
}

QDateTime momentOf(const QVariant& stored) {
  if (stored.typeId() == QMetaType::QDateTime) return stored.toDateTime();
  return QDateTime::fromString(stored.toString(), "dd.MM.yyyy HH:mm:ss");
}

QDateTime wholeSecond(const QDateTime& moment) {
  return moment.addMSecs(-moment.time().msec());
}

}  // namespace

QString centsText(qint64 cents) {
  const QString text = QString::number(std::abs(cents)).rightJustified(3, '0');
  return (cents < 0 ? "-" : "") + text.chopped(2) + "," + text.right(2);
}

Figure text(const QString& column, const QString& expected) {
  return {column, expected, [expected](const QVariant& stored) { return stored.toString() == expected; }};
}

Figure number(const QString& column, qint64 expected) {
  return {column, QString::number(expected), [expected](const QVariant& stored) {
            if (stored.typeId() == QMetaType::Bool) return stored.toBool() == (expected != 0);
            return stored.toDouble() == static_cast<double>(expected);
          }};
}

Figure tenths(const QString& column, int expected) {
  return {column, tenthsText(expected), [expected](const QVariant& stored) {
            return std::fabs(stored.toDouble() * 10 - expected) < kNearly;
          }};
}

Figure cents(const QString& column, qint64 expected) {
  return {column, centsText(expected), [expected](const QVariant& stored) {
            return stored.metaType() == QMetaType::fromType<Money>() &&
                   stored.value<Money>().units() == expected * 100;
          }};
}

Figure moment(const QString& column, const QDateTime& from, const QDateTime& to) {
  return {column, from.toString("HH:mm:ss") + " bis " + to.toString("HH:mm:ss"),
          [from, to](const QVariant& stored) {
            const QDateTime found = momentOf(stored);
            return found.isValid() && found >= wholeSecond(from) && found <= to;
          }};
}

Figure never(const QString& column) {
  return {column, "nie", [](const QVariant& stored) {
            return !stored.isValid() || stored.toDateTime() == QDateTime(QDate(1899, 12, 30), QTime(0, 0));
          }};
}

Figure blockSums(const QString& column, const QList<int>& tenths, bool exact) {
  QStringList clean;
  for (int sum : tenths) clean << cleanField(sum);
  return {column, clean.join(' '), [clean, exact](const QVariant& stored) {
            const QString all = stored.toString();
            if (all.size() != clean.size() * kFieldWidth) return false;
            for (int i = 0; i < clean.size(); ++i) {
              const QString field = all.mid(i * kFieldWidth, kFieldWidth);
              if (field != clean[i] && (exact || !isRest(field))) return false;
            }
            return true;
          }};
}

int binaryRests(const QString& blockSums) {
  int rests = 0;
  for (qsizetype at = 0; at < blockSums.size(); at += kFieldWidth)
    rests += isRest(blockSums.mid(at, kFieldWidth));
  return rests;
}

QStringList differences(const ExpectedRow& expected, const StoredRow& stored) {
  QStringList found;
  for (const Figure& figure : expected.figures) {
    if (!stored.contains(figure.column)) {
      found << figure.column + " fehlt";
    } else if (const QVariant value = stored[figure.column]; !figure.agrees(value)) {
      found << figure.column + " " + value.toString() + " statt " + figure.expected;
    }
  }
  return found;
}

}  // namespace qk
