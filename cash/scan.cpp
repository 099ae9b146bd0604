#include "cash/scan.h"

#include <QRegularExpression>

namespace qk {

bool ScanRun::runs(const QDateTime& now) const {
  if (text_.isEmpty()) return false;
  const qint64 gap = last_.msecsTo(now);
  return gap >= 0 && gap < kGapMilliseconds;
}

bool ScanRun::key(const QString& character, const QDateTime& now) {
  const bool goesOn = runs(now);
  if (!goesOn) text_.clear();
  text_ += character;
  last_ = now;
  return goesOn;
}

QString ScanRun::enter(const QDateTime& now) {
  const bool scan = runs(now) && text_.size() >= kLeastLength;
  const QString text = scan ? text_ : QString();
  text_.clear();
  return text;
}

QString StartnummerAusEtikett(const QString& text) {
  static const QRegularExpression label("^BC\\.(.+)\\.[12]\\.[0-9]+$",
                                        QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = label.match(text.trimmed());
  return match.hasMatch() ? match.captured(1) : text;
}

}  // namespace qk
