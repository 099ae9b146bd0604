#include "platform/dao/sql/functions.h"

#include <algorithm>
#include <array>

namespace qk::dao::sql {
namespace {

using Result = Function::Result;
constexpr std::array kFunctions = {
    Function{u"abs", 1, 1, Result::Amount},
    Function{u"avg", 1, 1, Result::Amount, 0, true},
    Function{u"count", 1, 1, Result::Whole, 0, true},
    Function{u"datevalue", 1, 1, Result::Date},
    Function{u"day", 1, 1, Result::Whole},
    Function{u"fix", 1, 1, Result::Amount},
    Function{u"iif", 3, 3, Result::OfArgument, 1},
    Function{u"int", 1, 1, Result::Amount},
    Function{u"isnull", 1, 1, Result::Boolean},
    Function{u"lcase", 1, 1, Result::Text},
    Function{u"len", 1, 1, Result::Whole},
    Function{u"max", 1, 1, Result::OfArgument, 0, true},
    Function{u"min", 1, 1, Result::OfArgument, 0, true},
    Function{u"month", 1, 1, Result::Whole},
    Function{u"nz", 2, 2, Result::OfArgument},
    Function{u"sum", 1, 1, Result::Amount, 0, true},
    Function{u"ucase", 1, 1, Result::Text},
    Function{u"val", 1, 1, Result::Number},
    Function{u"year", 1, 1, Result::Whole},
};

}  // namespace

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
      const Function* function = findFunction(call.function);
      return (function && function->aggregate) || any(call.arguments);
    }
  };
  return std::visit(Visitor{}, expression.node);
}

}  // namespace qk::dao::sql
