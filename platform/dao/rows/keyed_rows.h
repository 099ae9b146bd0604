// Rows of base tables, listed by key and read one by one.
#pragma once

#include "platform/dao/rows/row_source.h"

namespace qk::dao {

class KeyedRows final : public RowSource {
 public:
  KeyedRows(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan);

  bool readKeys(KeyList& keys) override;
  bool readRow(const Key& key, QVariantList& row) override;
  void find(const QString& criterion, const std::function<bool(const Key&)>& take) override;
  bool mayCome(const Key& key) const override;
  bool ascending() const override { return paged(); }
  void restart() override;
  void orderBy(const IndexDef& index) override;
  std::optional<Key> seek(const QString& comparison, const QVariantList& values) override;

 private:
  bool paged() const { return plan_->paged && indexFields_.isEmpty(); }
  void fixUpperLimit();
  bool readPage(KeyList& keys);
  void readWhole(KeyList& keys);
  std::vector<sql::NativeQuery> order(bool backwards = false) const;
  sql::ExpressionPtr indexColumn(const QString& name) const;
  sql::NativeQuery seekCondition(const QString& comparison, const QVariantList& values) const;
  void readFirst(const sql::NativeQuery& condition, bool backwards,
                 const std::function<bool(const Key&)>& take);

  std::shared_ptr<Engine> engine_;
  std::shared_ptr<const SelectPlan> plan_;
  QStringList indexFields_;
  bool listed_ = false;  // a list that isn't paged has been read
  std::optional<qint64>
      limit_;  // greatest key when the first page was read: rows that others add later stay out
  std::optional<qint64> last_;  // greatest key listed
  int pageSize_ = 0;
  QString rowText_;  // of readRow() for a key without Nulls
};

}  // namespace qk::dao
