#include <QDate>
#include <QDateTime>
#include <QRegularExpression>

#include "platform/report/report_control.h"
#include "platform/runtime/error.h"

namespace qk::report {

void readParameter(const QString& text, QHash<QString, QVariant>& parameters) {
  static const QRegularExpression date("^Date\\(\\s*(\\d{4})\\s*,\\s*(\\d{1,2})\\s*,\\s*(\\d{1,2})\\s*\\)$",
                                       QRegularExpression::CaseInsensitiveOption);
  if (text.isEmpty()) return;
  const QStringList parts = text.split(u';');
  const auto fail = [&] {
    throw Error(errors::kInvalidCall, "Der Parameter \"" + text + "\" ist nicht zu verstehen.");
  };
  if (parts.size() < 3 || parts[0].trimmed().isEmpty()) fail();
  if (parts[2].trimmed().compare("TRUE", Qt::CaseInsensitive) != 0) return;
  const QString value = parts[1].trimmed();
  if (const auto match = date.match(value); match.hasMatch()) {
    const QDate day(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    if (!day.isValid()) fail();
    parameters.insert(parts[0].trimmed(), QDateTime(day, QTime(0, 0)));
  } else {
    parameters.insert(parts[0].trimmed(), value);
  }
}

}  // namespace qk::report
