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

}  // namespace qk::dao::sql
