// The order of German texts: without regard to case, umlauts beside their base letters, "ß" beside "ss".
//
// It is QCollator's order. But sorting a million rows compares twenty million times, so texts of the usual
// letters are compared by the ranks of their letters, and QCollator is asked only where marks decide or other
// letters stand.
#pragma once

#include <QByteArrayView>
#include <QCollator>

namespace qk::dao::sql {

class LetterRanks;

/// Copies share nothing but constants; one object belongs to one thread at a time.
class GermanOrder {
 public:
  GermanOrder();
  /// Less than, equal to or greater than 0. The texts are UTF-8.
  int compare(QByteArrayView left, QByteArrayView right) const;

 private:
  QCollator collator_;
  const LetterRanks& ranks_;
};

}  // namespace qk::dao::sql
