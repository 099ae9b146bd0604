// The functions of the query language.
#pragma once

#include <QStringView>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

struct Function {
  enum class Result { OfArgument, Amount, Boolean, Whole, Number, Date, Text };  ///< Amount: Number or Money
  std::u16string_view name;                                                      ///< in lower case
  int least, most;                                                               ///< number of arguments
  Result result;
  int argument = 0;  ///< whose kind the result has
  bool aggregate = false;
};

/// By its name in lower case; nullptr for an unknown one.
const Function* findFunction(QStringView name);

/// Whether a function over groups stands in it.
bool hasAggregate(const Expression& expression);

}  // namespace qk::dao::sql
