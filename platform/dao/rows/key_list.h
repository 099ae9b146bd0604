// The keys of a recordset's rows, in its order, with tombstones for deleted rows.
#pragma once

#include <QVariantList>
#include <vector>

#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class KeyList {
 public:
  /// integer: every key is one whole number (8 bytes a key instead of a QVariant per column).
  KeyList(int width, bool integer) : width_(width), integer_(integer) {}

  bool isInteger() const { return integer_; }
  int width() const { return width_; }
  qsizetype size() const;
  /// Room for so many keys and no more, where their count is known before: growing takes up to three times
  /// that.
  void reserve(qsizetype keys);
  void append(const Key& key);
  void append(const KeyList& more);  ///< of the same kind
  void replace(qsizetype index, const Key& key);
  void remove(qsizetype first, qsizetype count);  ///< only of a list without tombstones
  Key at(qsizetype index) const;
  /// -1 when it isn't there. Fast where keys ascend, as pages of a table do.
  qsizetype indexOf(const Key& key) const;
  /// First index whose key is not less than this one; only where keys ascend (integer lists read in pages).
  qsizetype lowerBound(const Key& key) const;

  void bury(qsizetype index);
  bool isLive(qsizetype index) const;
  /// First live index from `index` on, size() when there is none; deleting first rows one by one stays
  /// linear.
  qsizetype nextLive(qsizetype index) const;
  /// Last live index up to `index`, -1 when there is none.
  qsizetype previousLive(qsizetype index) const;

 private:
  bool equals(qsizetype index, const Key& key) const;

  int width_;
  bool integer_;
  std::vector<qint64> numbers_;   // integer lists
  std::vector<QVariant> values_;  // all others, width_ values a key
  qsizetype ascending_ = 0;       // length of the ascending beginning of numbers_
  std::vector<bool> dead_;        // shorter than the list while its end has no tombstone
  qsizetype firstLive_ = 0;
};

}  // namespace qk::dao
