#include "platform/runtime/program_call.h"

#include <QTextStream>

namespace qk {

std::optional<QString> answerToCall(const QStringList& arguments, const QString& program,
                                    const QString& help) {
  for (const QString option : {"--hilfe", "--help", "-h"})
    if (arguments.contains(option)) return help;
  if (arguments.contains("--version")) return program + " " QK_VERSION "\n";
  return std::nullopt;
}

bool answeredCall(const QStringList& arguments, const QString& program, const QString& help) {
  const std::optional<QString> answer = answerToCall(arguments, program, help);
  if (answer) QTextStream(stdout) << *answer << Qt::flush;
  return answer.has_value();
}

}  // namespace qk
