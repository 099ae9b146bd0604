// What every program answers when it is only asked who it is.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace qk {

/// `help` for --hilfe, --help or -h, the program's name and version for --version, wherever they stand among
/// the arguments (without the program's own name); nothing when the program is to do its work.
std::optional<QString> answerToCall(const QStringList& arguments, const QString& program,
                                    const QString& help);

/// Prints that answer; true when there was one.
bool answeredCall(const QStringList& arguments, const QString& program, const QString& help);

}  // namespace qk
