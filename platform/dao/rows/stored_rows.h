// Rows without keys (unions, groups, stored queries …): read whole when first walked, and never changed.
#pragma once

#include <vector>

#include "platform/dao/rows/row_source.h"

namespace qk::dao {

/// A row's key is its place in the list.
class StoredRows final : public RowSource {
 public:
  StoredRows(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan);

  bool readKeys(KeyList& keys) override;
  bool readRow(const Key& key, QVariantList& row) override;
  void find(const QString& criterion, const std::function<bool(const Key&)>& take) override;
  bool mayCome(const Key& key) const override;
  bool ascending() const override { return true; }
  void restart() override;
  void orderBy(const IndexDef& index) override;
  std::optional<Key> seek(const QString& comparison, const QVariantList& values) override;

 private:
  void readRows();

  std::shared_ptr<Engine> engine_;
  std::shared_ptr<const SelectPlan> plan_;
  bool read_ = false;
  bool listed_ = false;
  std::vector<QVariantList> rows_;
};

}  // namespace qk::dao
