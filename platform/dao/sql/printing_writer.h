// The writer of an engine, made of its printer. printing_writer.cpp holds what is written of trees,
// printing_rows.cpp the selects in parts and the rows of one table.
#pragma once

#include <memory>

#include "platform/dao/sql/printer.h"
#include "platform/dao/sql/writer.h"

namespace qk::dao::sql {

class PrintingWriter : public Writer {
 public:
  NativeQuery statement(const Statement& statement) const override;
  NativeQuery keysToChange(const Update& update, const QString& key) const override;
  NativeQuery select(const Select& select) const override;
  /// Columns stand with their source's name.
  NativeQuery condition(const Expression& expression) const override;
  NativeQuery conditionInKeyOrder(const Expression& expression) const override;
  NativeQuery orderTerm(const OrderItem& item) const override;

  NativeQuery bare(const Select& select) const override;
  NativeQuery columnsOf(const QStringList& columns, const std::vector<SourcePtr>& sources) const override;
  NativeQuery count(const std::vector<SourcePtr>& sources) const override;
  NativeQuery chosen(const NativeQuery& rows, const Choice& choice) const override;
  NativeQuery atKey(const NativeQuery& rows, const QStringList& columns, const Key& key) const override;
  NativeQuery first(const NativeQuery& query, int most) const override;
  QString column(const QString& source, const QString& name) const override;
  NativeQuery within(const QString& column, std::optional<qint64> above, qint64 upTo) const override;
  std::vector<NativeQuery> keyOrder(const QString& column, FieldType type, bool outer) const override;
  NativeQuery descending(const NativeQuery& term) const override;

  QString insertRow(const TableInfo& table, const QStringList& columns) const override;
  QString insertRows(const TableDef& table, int rows) const override;
  QString updateRow(const TableInfo& table, const QStringList& columns) const override;
  QString deleteRow(const TableInfo& table) const override;
  QString readRow(const TableInfo& table, const QStringList& columns) const override;
  QString holdRow(const TableInfo& table, const QStringList& columns) const override;
  NativeQuery page(const TableInfo& table, const Key& behind, int most) const override;
  QString endOfKeys(const TableInfo& table, End end) const override;

  /// The select with its literals written out instead of "?", for what the engine keeps as text (views).
  QString plainText(const Select& select) const;

 private:
  virtual std::unique_ptr<Printer> printer(QVariantList& values, Printer::Literals literals) const = 0;
  /// Behind a select from one table, within a transaction: nobody else changes the rows until its end.
  virtual QString holdingRows() const { return {}; }
  template <class Print>
  NativeQuery printed(Print&& print) const;
};

}  // namespace qk::dao::sql
