// The SQLite dialect: trees to SQLite's text. Needs registerSqliteFunctions() on the connection that runs it.
//
// SELECT … INTO is the engine's affair: the select is printed without it, resultColumns() tells what to
// create.
#pragma once

#include "platform/dao/sql/printing_writer.h"

namespace qk::dao::sql {

class SqliteWriter final : public PrintingWriter {
 public:
  QVariant toNative(const QVariant& value, FieldType type) const override;
  QVariant fromNative(const QVariant& native, FieldType type) const override;

 private:
  std::unique_ptr<Printer> printer(QVariantList& values, Printer::Literals literals) const override;
};

}  // namespace qk::dao::sql
