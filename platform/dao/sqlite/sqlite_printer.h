// SQLite's way of what the engines print differently.
#pragma once

#include "platform/dao/sql/printer.h"

namespace qk::dao::sql {

class SqlitePrinter final : public Printer {
 public:
  using Printer::Printer;
  void orderItem(const OrderItem& item) override;

 private:
  void star(const SelectItem& item, const Select& select) override;
  void updateOverJoin(const Update& update, const TableSource& target) override;
  void keysOverJoin(const Update& update, const TableSource& target, const QString& key) override;
  void joinOfWrongRows(const Update& update, const TableSource& target);
  void differs(const TableSource& target, const Assignment& assignment) override;
  void rowOfJoin(const Delete& remove, const TableSource& target) override;
  void groupOfAll() override;
  void group(const Expression& expression) override;
  void resultValue(const Expression& expression, Kind wanted) override;

  void literal(const QVariant& value, Kind wanted) override;
  void truthAsValue(const Expression& expression) override;
  void valueAsTruth(const Expression& expression) override { number(expression); }
  void number(const Expression& expression) override;
  void quotient(const Binary& binary) override;
  void comparison(const Expression& left, BinaryOperator op, const Expression& right) override;
  void like(const Binary& binary) override;
  static QByteArray beginningOf(const Binary& like);
  void matches(const Binary& like);
  void rounded(const Expression& expression, Kind wanted) override;
  void list(const In& in) override;
  void textOfIn(const Expression& value) override;
  void selectOfTexts(const Select& select, Kind kind) override;
  void aggregate(const Expression& whole, const Call& call) override;
  void side(const Expression& expression, Kind wanted);
};

}  // namespace qk::dao::sql
