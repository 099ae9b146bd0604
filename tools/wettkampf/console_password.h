// Asks for a password on the terminal, without showing what is typed.
#pragma once

#include <QTextStream>

#include "platform/dao/shared_passwords.h"

namespace qk {

/// Asks only where somebody sits at a terminal; otherwise nobody gives a password.
dao::SharedPasswords::Ask passwordOnTerminal(QTextStream& out);

}  // namespace qk
