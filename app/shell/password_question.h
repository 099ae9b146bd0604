// Asks for the password of a competition's server.
#pragma once

#include <QString>
#include <functional>

#include "platform/dao/shared_passwords.h"

namespace qk {

/// Shows a masked input box; the empty text when it was cancelled.
using PasswordBox = std::function<QString(const QString& prompt, const QString& title)>;

dao::SharedPasswords::Ask passwordQuestion(PasswordBox box);

}  // namespace qk
