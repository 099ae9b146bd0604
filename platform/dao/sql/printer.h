// Prints one statement. What all engines print alike stands here; what one of them has its own way for is a
// hook, whose usual form is SQLite's where it has one. printer.cpp holds the statements,
// printer_expressions.cpp the expressions.
#pragma once

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

void appendIdentifier(QString& text, const QString& name);

class Printer {
 public:
  /// Parameters travel as "?"; written out is for what the engine keeps as text (views).
  enum class Literals { AsParameters, WrittenOut };
  Printer(QVariantList& values, Literals literals);
  virtual ~Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;

  QString take() { return std::move(text_); }

  virtual void select(const Select& select, const std::vector<Kind>& wanted = {});
  /// Items and sources alone: a condition may follow.
  void bare(const Select& select);
  /// The same with columns that are printed already.
  void columnsOf(const QStringList& columns, const std::vector<SourcePtr>& sources);
  void update(const Update& update);
  /// A select of the keys of the rows that the update over a join would change.
  void keysToChange(const Update& update, const QString& key);
  void remove(const Delete& remove);
  void insert(const Insert& insert);
  virtual void orderItem(const OrderItem& item) = 0;

  /// From now on nothing is printed that is only there to lead the engine to an index.
  void keepToKeys() { keepsToKeys_ = true; }
  /// Where a truth is asked for.
  void condition(const Expression& expression);
  /// Where a value is asked for; a literal takes the form of the wanted kind.
  void value(const Expression& expression, Kind wanted = Kind::Unknown);

 protected:
  // --- hooks: statements
  virtual void core(const Select& select, const std::vector<Kind>& wanted);
  /// What stands for "*" or "t.*".
  virtual void star(const SelectItem& item, const Select& select) = 0;
  virtual void updateOverJoin(const Update& update, const TableSource& target) = 0;
  virtual void keysOverJoin(const Update& update, const TableSource& target, const QString& key) = 0;
  /// Whether a stored value is another one than its new value, letter by letter; Null equals Null.
  virtual void differs(const TableSource& target, const Assignment& assignment) = 0;
  /// The condition "its row is one of those that the join brings".
  virtual void rowOfJoin(const Delete& remove, const TableSource& target) = 0;
  /// HAVING without GROUP BY: the whole result is one group.
  virtual void groupOfAll() = 0;
  /// A term of GROUP BY.
  virtual void group(const Expression& expression) { value(expression); }
  /// A value of a result.
  virtual void resultValue(const Expression& expression, Kind wanted) { assigned(expression, wanted); }

  // --- hooks: expressions
  virtual void literal(const QVariant& value, Kind wanted) = 0;
  /// A condition as the value -1 or 0, and a value as a condition.
  virtual void truthAsValue(const Expression& expression) = 0;
  virtual void valueAsTruth(const Expression& expression) = 0;
  /// One side of a calculation.
  virtual void number(const Expression& expression) = 0;
  virtual void quotient(const Binary& binary) = 0;
  /// A number on its way into a column of whole numbers or of money, where the column itself doesn't see to
  /// it.
  virtual void rounded(const Expression& expression, Kind wanted) = 0;
  virtual void comparison(const Expression& left, BinaryOperator op, const Expression& right) = 0;
  virtual void like(const Binary& binary) = 0;
  /// A list that something else than a constant is looked for in.
  virtual void list(const In& in) = 0;
  void inSelect(const In& in);
  void inConstant(const In& in);
  /// IN's value as text, and its select with a column of texts.
  virtual void textOfIn(const Expression& value) = 0;
  virtual void selectOfTexts(const Select& select, Kind kind) = 0;
  virtual void aggregate(const Expression& whole, const Call& call) = 0;

  // --- what the dialects build with
  virtual void print(const Expression& expression);
  void operand(const Expression& expression, Kind wanted = Kind::Unknown);
  /// A value made one of that kind: a date counts its days where a number is wanted, and is German text where
  /// a text is.
  void converted(const Expression& expression, Kind wanted);
  /// A value on its way into a column of that kind.
  void assigned(const Expression& expression, Kind wanted);
  /// The same where the column is a stored one: a yes/no column holds no Null.
  void stored(const Expression& expression, Kind wanted);
  void asText(const Expression& expression);
  void call(const char* function, const Expression& argument, const char* tail = ")");
  void qualify(const Select& select);
  void where(const ExpressionPtr& expression);
  void source(const Source& source);
  /// The join of an update and its condition, after which another one follows. An update leaves out the rows
  /// that are right already: writing them would cost, and lock others out. A row with several partners is
  /// right if one of them gives what stands there; else each run would write the values of another one.
  void joinOf(const Update& update, const TableSource& target);
  /// What follows the name of a key, before another condition.
  void within(const KeyRange& range);
  /// The condition that a row of the join gives other values than stand in its target.
  void givesOthers(const Update& update, const TableSource& target);
  void storedColumn(const TableSource& target, const QString& column);
  void groups(const Select& select);
  void items(const Select& select, const std::vector<Kind>& wanted);
  void from(const std::vector<SourcePtr>& sources);
  void name(const QString& name) { appendIdentifier(text_, name); }
  /// An item of the list: the value, and its name where it has one.
  virtual void item(const SelectItem& item, const Select& select, Kind wanted);

  QString text_;
  QVariantList& values_;
  const Literals literals_;
  bool qualified_ = true;  ///< whether columns stand with their source's name
  bool storing_ = false;   ///< the rows of the select go into a table
  bool keepsToKeys_ = false;
  int unnamed_ = 0;  ///< names given to subselects that have none

 private:
  void bracketed(const Source& source);
  void tableSource(const TableSource& table);

  void node(const Expression& whole, const Literal& literal);
  void node(const Expression& whole, const Column& column);
  void node(const Expression& whole, const Unary& unary);
  void node(const Expression& whole, const Binary& binary);
  void node(const Expression& whole, const Between& between);
  void node(const Expression& whole, const In& in);
  void node(const Expression& whole, const IsNull& isNull);
  void node(const Expression& whole, const Call& call);
  void numberCall(const char* function, const Expression& argument, const char* tail = ")");
  void textCall(const char* function, const Expression& argument);
  void choice(const Call& iif, Kind wanted);
  void firstOf(const Call& nz, Kind wanted);
  void logic(const Binary& binary);
  void sum(const Expression& whole, const Binary& binary);
};

// What the dialects ask of a tree.

template <typename Node>
const Node* as(const Expression& expression) {
  return std::get_if<Node>(&expression.node);
}
inline const TableSource* tableOf(const Source& source) {
  return std::get_if<TableSource>(&source.node);
}
inline bool isJoin(const Source& source) {
  return std::holds_alternative<Join>(source.node);
}
/// The name under which a table stands in its statement.
inline const QString& nameOf(const TableSource& table) {
  return table.alias.isEmpty() ? table.name : table.alias;
}
/// Whether the expression is a condition by itself, whose value is -1 or 0.
bool isTruth(const Expression& expression);
bool isComposite(const Expression& expression);
/// Whether it is the sum or the mean of a group.
bool addsUp(const Call& aggregate);
bool hasForeignLetter(const Expression& expression);
const char* symbolOf(BinaryOperator op);
/// What a literal beside an expression of this kind is meant as.
Kind wantedBeside(const Expression& other);
bool isNumeric(Kind kind);
bool isWhole(Kind kind);
/// The kind as which two values are compared: a literal takes that of the other side, texts make texts of
/// what they meet, and numbers make days of dates.
Kind comparedAs(const Expression& left, const Expression& right);
/// The kinds of the columns of a union, which those of its first part are; none where a star hides them.
std::vector<Kind> kindsOfItems(const Select& select);
/// A list of whole numbers so long that it is written out: parameters are limited, and lists of keys may be
/// long.
bool isLongList(const In& in);

/// The side that follows the word JOIN in print: a RIGHT JOIN is turned round, for SQLite has indexes at hand
/// only for the right side.
const Source& printedRight(const Join& join);
const Source& printedLeft(const Join& join);

}  // namespace qk::dao::sql
