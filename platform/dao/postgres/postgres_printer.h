// PostgreSQL's way of what the engines print differently. postgres_printer.cpp holds the statements,
// postgres_expressions.cpp the expressions.
#pragma once

#include "platform/dao/postgres/postgres_writer.h"
#include "platform/dao/sql/printer.h"

namespace qk::dao::sql {

class PostgresPrinter final : public Printer {
 public:
  PostgresPrinter(QVariantList& values, Literals literals, const TableLookup& tables)
      : Printer(values, literals), tables_(tables) {}

  void select(const Select& select, const std::vector<Kind>& wanted = {}) override;
  void orderItem(const OrderItem& item) override;

 private:
  /// The result columns of a select that stands inside another one under the names c1, c2 …
  struct Columns {
    QStringList names;
    std::vector<Kind> kinds;
  };
  Columns columnsOf(const Select& select) const;
  void appendColumns(const Source& source, const QString& only, Columns& columns) const;

  void plain(const Select& select, const std::vector<Kind>& wanted, bool ordered);
  void order(const Select& select);
  void appendTies(const Source& source);
  void distinct(const Select& select, const std::vector<Kind>& wanted);
  void unionOf(const Select& select, const std::vector<Kind>& wanted);
  void shown(const Columns& columns);
  void distinctRows(const Columns& columns);
  void numbered(const Columns& columns, std::size_t more);
  QStringList keysOf(const Columns& columns) const;
  void numberedOrder(const Select& select, const Columns& columns, bool fromItems);
  void sortable(const Expression& expression);
  void term(const Expression& expression, bool descending);

  void core(const Select& select, const std::vector<Kind>& wanted) override;
  void star(const SelectItem& item, const Select& select) override;
  void updateOverJoin(const Update& update, const TableSource& target) override;
  void keysOverJoin(const Update& update, const TableSource& target, const QString& key) override;
  void newValues(const Update& update, const TableSource& target);
  void differs(const TableSource& target, const Assignment& assignment) override;
  void rowOfJoin(const Delete& remove, const TableSource& target) override;
  void groupOfAll() override {}
  void group(const Expression& expression) override;
  bool isGroup(const QString& printed);

  void print(const Expression& expression) override;
  void literal(const QVariant& value, Kind wanted) override;
  void truthAsValue(const Expression& expression) override;
  void valueAsTruth(const Expression& expression) override;
  void number(const Expression& expression) override;
  void quotient(const Binary& binary) override;
  void comparison(const Expression& left, BinaryOperator op, const Expression& right) override;
  void like(const Binary& binary) override;
  void rounded(const Expression& expression, Kind wanted) override;
  void list(const In& in) override;
  void textOfIn(const Expression& value) override { folded(value); }
  void selectOfTexts(const Select& select, Kind kind) override;
  void aggregate(const Expression& whole, const Call& call) override;
  void side(const Expression& expression, Kind wanted);
  void folded(const Expression& expression);
  void textOf(const Expression& expression);

  const TableLookup& tables_;
  const Select* grouped_ = nullptr;  ///< whose groups are being printed
  bool writeOut_ = false;            ///< literals stand in the text, so that a group is known by it
  int depth_ = 0;                    ///< of selects in each other
};

}  // namespace qk::dao::sql
