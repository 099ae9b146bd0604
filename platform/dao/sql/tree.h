// The tree of a statement of the query language (grammar.md). Nodes own their children.
//
// The parser leaves names as written. resolve() (resolver.h) fills what is marked "resolved".
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/dao/values/types.h"

namespace qk::dao::sql {

struct Expression;
struct Function;
struct Select;
using ExpressionPtr = std::unique_ptr<Expression>;
using SelectPtr = std::unique_ptr<Select>;

/// What a value is compared and printed as. The last three are only of columns that values are stored in.
enum class Kind { Unknown, Boolean, Number, Money, Date, Text, Byte, Integer, Long };

struct Literal {
  QVariant value;  ///< qlonglong, double, QString, QDateTime, bool; invalid for Null
};
struct Column {
  QString table;    ///< as written, or empty; resolved: the name or alias of its source
  QString name;     ///< resolved: in its stored spelling; a stored query's column may be "Orte.Name"
  int source = -1;  ///< resolved: position of its source in the FROM clause of its Select, depth first
};
enum class UnaryOperator { Not, Minus };
struct Unary {
  UnaryOperator op;
  ExpressionPtr operand;
};
enum class BinaryOperator {
  Or,
  And,
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  Like,
  Add,
  Subtract,
  Concat,
  Multiply,
  Divide,
  IntegerDivide,
  Modulo
};
struct Binary {
  BinaryOperator op;
  ExpressionPtr left, right;
};
struct Between {
  ExpressionPtr value, low, high;
  bool negated = false;
};
struct In {
  ExpressionPtr value;
  std::vector<ExpressionPtr> list;
  SelectPtr select;  ///< instead of a list
  bool negated = false;
};
struct IsNull {
  ExpressionPtr value;
  bool negated = false;
};
struct Call {
  QString name;  ///< in lower case
  std::vector<ExpressionPtr> arguments;
  bool star = false;                   ///< Count(*)
  const Function* function = nullptr;  ///< resolved
};

struct Expression {
  std::variant<Literal, Column, Unary, Binary, Between, In, IsNull, Call> node;
  Kind kind = Kind::Unknown;  ///< resolved
};

struct TableSource {
  QString name;   ///< resolved: in its stored spelling
  QString alias;  ///< empty without one
  QString file;   ///< FROM t IN 'file'
};
struct SelectSource {
  SelectPtr select;
  QString alias;
};
struct Source;
using SourcePtr = std::unique_ptr<Source>;
enum class JoinKind { Inner, Left, Right };
struct Join {
  JoinKind kind;
  SourcePtr left, right;
  ExpressionPtr on;
};
struct Source {
  std::variant<TableSource, SelectSource, Join> node;
};

struct SelectItem {
  ExpressionPtr expression;  ///< null for a star
  QString starTable;         ///< "t" of "t.*"; empty for "*"
  QString alias;
};
struct OrderItem {
  ExpressionPtr expression;
  bool descending = false;
};

struct Select {
  bool distinct = false;
  std::optional<int> top;
  std::vector<SelectItem> items;
  QString into, intoFile;       ///< SELECT … INTO t IN 'file'
  std::vector<SourcePtr> from;  ///< comma separated
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
  std::vector<OrderItem> orderBy;  ///< of the whole union where there is one
  SelectPtr unionNext;             ///< UNION [ALL] the next one
  bool unionAll = false;
};
struct Assignment {
  Column column;
  ExpressionPtr value;
  Kind kind = Kind::Unknown;  ///< resolved: of the column
};
/// Rows of a table by its key of one whole number.
struct KeyRange {
  QString key;
  qint64 low = 0, high = 0;       ///< both among them
  std::vector<qint64> keys = {};  ///< only these of them; all when empty
};
struct Update {
  SourcePtr source;
  std::vector<Assignment> set;
  ExpressionPtr where;
  /// Resolved, over a join: only these rows of the table that is changed.
  std::optional<KeyRange> piece = {};
};
struct Delete {
  SourcePtr source;
  QString starTable;  ///< "t" of "Delete t.* from …"; resolved: the source that loses rows
  ExpressionPtr where;
};
struct Insert {
  QString table;
  QStringList columns;
  std::vector<ExpressionPtr> values;  ///< VALUES (…)
  SelectPtr select;                   ///< or INSERT … SELECT
  std::vector<Kind> kinds;            ///< resolved: of the columns
};
using Statement = std::variant<Select, Update, Delete, Insert>;

ExpressionPtr clone(const Expression& expression);
SelectPtr clone(const Select& select);
SourcePtr clone(const Source& source);

/// All columns of one source.
Select everythingOf(decltype(Source::node) source);

}  // namespace qk::dao::sql
