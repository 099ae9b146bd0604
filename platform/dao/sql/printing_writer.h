// The writer of an engine, made of its printer.
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
  NativeQuery bare(const Select& select) const override;
  /// Columns stand with their source's name.
  NativeQuery condition(const Expression& expression) const override;
  NativeQuery conditionInKeyOrder(const Expression& expression) const override;
  NativeQuery orderTerm(const OrderItem& item) const override;
  QString source(const Source& source, QVariantList& values) const override;
  QString identifier(const QString& name) const override;

  /// The select with its literals written out instead of "?", for what the engine keeps as text (views).
  QString plainText(const Select& select) const;

 private:
  virtual std::unique_ptr<Printer> printer(QVariantList& values, Printer::Literals literals) const = 0;
  template <class Print>
  NativeQuery printed(Print&& print) const;
};

}  // namespace qk::dao::sql
