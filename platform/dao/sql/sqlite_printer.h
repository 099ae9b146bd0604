// Prints one statement for SQLite; sqlite_writer.cpp holds the statements, sqlite_expressions.cpp the
// expressions.
#pragma once

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

void appendIdentifier(QString& text, const QString& name);

class SqlitePrinter {
 public:
  enum class Literals { AsParameters, WrittenOut };
  explicit SqlitePrinter(QVariantList& values, Literals literals = Literals::AsParameters);

  QString take() { return std::move(text_); }

  void select(const Select& select, const std::vector<Kind>& wanted = {});
  void source(const Source& source);
  void update(const Update& update);
  void remove(const Delete& remove);
  void insert(const Insert& insert);
  void orderItem(const OrderItem& item);

  /// Where a truth is asked for: SQLite's 1/0.
  void condition(const Expression& expression);
  /// Where a value is asked for; a literal takes the form of the wanted kind.
  void value(const Expression& expression, Kind wanted = Kind::Unknown);

 private:
  void core(const Select& select, const std::vector<Kind>& wanted);
  void item(const SelectItem& item, const Select& select, Kind wanted);
  void from(const std::vector<SourcePtr>& sources);
  void bracketed(const Source& source);
  void tableSource(const TableSource& table);
  void updateOverJoin(const Update& update);
  void where(const ExpressionPtr& expression);

  void node(const Expression& whole, const Literal& literal);
  void node(const Expression& whole, const Column& column);
  void node(const Expression& whole, const Unary& unary);
  void node(const Expression& whole, const Binary& binary);
  void node(const Expression& whole, const Between& between);
  void node(const Expression& whole, const In& in);
  void node(const Expression& whole, const IsNull& isNull);
  void node(const Expression& whole, const Call& call);

  void comparison(const Binary& binary);
  void like(const Binary& binary);
  void logic(const Binary& binary);
  void sum(const Expression& whole, const Binary& binary);
  void operand(const Expression& expression, Kind wanted = Kind::Unknown);
  void compared(const Expression& expression, const Expression& other);
  void serial(const Expression& expression);
  void asText(const Expression& expression);
  void call(const char* function, const Expression& argument, const char* tail = ")");
  void literal(const QVariant& value, Kind wanted);
  void name(const QString& name) { appendIdentifier(text_, name); }

  QString text_;
  QVariantList& values_;
  const Literals literals_;
  bool qualified_ = true;  ///< whether columns stand with their source's name
};

}  // namespace qk::dao::sql
