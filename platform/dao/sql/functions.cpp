#include "platform/dao/sql/functions.h"

#include <algorithm>
#include <array>

namespace qk::dao::sql {
namespace {

using Id = Function::Id;
using Result = Function::Result;
constexpr std::array kFunctions = {
    Function{Id::Abs, u"abs", 1, 1, Result::Amount},
    Function{Id::Avg, u"avg", 1, 1, Result::Amount, 0, true},
    Function{Id::Count, u"count", 1, 1, Result::Whole, 0, true},
    Function{Id::DateValue, u"datevalue", 1, 1, Result::Date},
    Function{Id::Day, u"day", 1, 1, Result::Whole},
    Function{Id::Fix, u"fix", 1, 1, Result::Amount},
    Function{Id::IIf, u"iif", 3, 3, Result::OfArgument, 1},
    Function{Id::Int, u"int", 1, 1, Result::Amount},
    Function{Id::IsNull, u"isnull", 1, 1, Result::Boolean},
    Function{Id::LCase, u"lcase", 1, 1, Result::Text},
    Function{Id::Len, u"len", 1, 1, Result::Whole},
    Function{Id::Max, u"max", 1, 1, Result::OfArgument, 0, true},
    Function{Id::Min, u"min", 1, 1, Result::OfArgument, 0, true},
    Function{Id::Month, u"month", 1, 1, Result::Whole},
    Function{Id::Nz, u"nz", 2, 2, Result::OfArgument},
    Function{Id::Sum, u"sum", 1, 1, Result::Amount, 0, true},
    Function{Id::UCase, u"ucase", 1, 1, Result::Text},
    Function{Id::Val, u"val", 1, 1, Result::Number},
    Function{Id::Year, u"year", 1, 1, Result::Whole},
};

}  // namespace

std::span<const Function> allFunctions() {
  return kFunctions;
}

const Function* findFunction(QStringView name) {
  const std::u16string_view wanted(name.utf16(), std::size_t(name.size()));
  const auto found = std::find_if(kFunctions.begin(), kFunctions.end(),
                                  [&](const Function& function) { return function.name == wanted; });
  return found == kFunctions.end() ? nullptr : &*found;
}

bool hasAggregate(const Expression& expression) {
  struct Visitor {
    bool any(const ExpressionPtr& part) const { return part && hasAggregate(*part); }
    bool any(const std::vector<ExpressionPtr>& parts) const {
      return std::any_of(parts.begin(), parts.end(), [this](const ExpressionPtr& part) { return any(part); });
    }
    bool operator()(const Literal&) const { return false; }
    bool operator()(const Column&) const { return false; }
    bool operator()(const Unary& unary) const { return any(unary.operand); }
    bool operator()(const Binary& binary) const { return any(binary.left) || any(binary.right); }
    bool operator()(const Between& between) const {
      return any(between.value) || any(between.low) || any(between.high);
    }
    bool operator()(const In& in) const { return any(in.value) || any(in.list); }
    bool operator()(const IsNull& isNull) const { return any(isNull.value); }
    bool operator()(const Call& call) const {
      const Function* function = findFunction(call.name);
      return (function && function->aggregate) || any(call.arguments);
    }
  };
  return std::visit(Visitor{}, expression.node);
}

}  // namespace qk::dao::sql
