// How a routine without a handler of its own runs: a failure shows one box, and the program goes on.
#pragma once

#include <functional>

#include "platform/workplace.h"

namespace qk {

void versuche(const Workplace& workplace, const std::function<void()>& routine);

}  // namespace qk
