// The number of the Error that a call throws, 0 when it goes through.
#pragma once

#include "platform/runtime/error.h"

namespace qk::test {

template <class Call>
int errorOf(Call&& call) {
  try {
    call();
    return 0;
  } catch (const Error& error) {
    return error.number();
  }
}

}  // namespace qk::test
