// A scanner is a keyboard: what tells it from fingers is its speed.
#pragma once

#include <QDateTime>
#include <QString>

namespace qk {

/// Keys that come less than 50 ms apart, until Enter, are one scan. Fed with every key that makes a character
/// and with Enter, and with the time of each.
class ScanRun {
 public:
  static constexpr int kGapMilliseconds = 50;
  /// Fewer characters than this may be a quick hand.
  static constexpr int kLeastLength = 3;

  /// True when the key goes on with the run before it, false when it begins one.
  bool key(const QString& character, const QDateTime& now);
  /// Ends the run. Its text if it is a scan, else nothing.
  QString enter(const QDateTime& now);
  /// True while the next key, coming now, would belong to a run.
  bool runs(const QDateTime& now) const;
  const QString& text() const { return text_; }

 private:
  QString text_;
  QDateTime last_;
};

/// The start number that a scanned label names: "BC.107.1.23" gives 107. Read from behind, for start numbers
/// may hold dots. Any other text is a start number itself.
QString StartnummerAusEtikett(const QString& text);

}  // namespace qk
