// The functions of the query language.
#pragma once

#include <QStringView>
#include <span>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

/// All that is known of a function but how it is printed (Printer::node of a Call, which names each) and,
/// where that is a function of our own ("qk_…"), what each engine computes (sqlite_functions,
/// postgres_functions).
struct Function {
  enum class Id {
    Abs,
    Avg,
    Count,
    DateValue,
    Day,
    Fix,
    IIf,
    Int,
    IsNull,
    LCase,
    Len,
    Max,
    Min,
    Month,
    Nz,
    Sum,
    UCase,
    Val,
    Year
  };
  enum class Result { OfArgument, Amount, Boolean, Whole, Number, Date, Text };  ///< Amount: Number or Money
  Id id;
  std::u16string_view name;  ///< in lower case
  int least, most;           ///< number of arguments
  Result result;
  int argument = 0;  ///< whose kind the result has
  bool aggregate = false;
};

std::span<const Function> allFunctions();

/// By its name in lower case; nullptr for an unknown one.
const Function* findFunction(QStringView name);

/// Whether a function over groups stands in it.
bool hasAggregate(const Expression& expression);

}  // namespace qk::dao::sql
