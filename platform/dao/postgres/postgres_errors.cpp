#include "platform/dao/postgres/postgres_errors.h"

#include <QHash>
#include <QRegularExpression>
#include <cerrno>
#include <cstring>

#include "platform/dao/server/server_choice.h"

namespace qk::dao::postgres {

Error errorOf(const QByteArray& state, const QString& message) {
  static const QHash<QByteArray, int> numbers{
      {"23505", errors::kDuplicateKey},      // unique
      {"23502", errors::kRequiredField},     // not null
      {"23503", errors::kReferenceMissing},  // foreign key
      {"23514", errors::kValidationRule},    // check
      {"22001", errors::kTextTooLong},       // text too long
      {"22003", errors::kOverflow},          // out of range
      {"22012", errors::kDivisionByZero},    // division by zero
      {"22P02", errors::kConversionFailed},  // text is no value of the type
      {"22007", errors::kConversionFailed},  // no date
      {"22008", errors::kConversionFailed},  // date out of range
      {"22021", errors::kConversionFailed},  // character that can't be stored
      {"42P01", errors::kUnknownTable},      // no such table
      {"42703", errors::kUnknownColumn},     // no such column
      {"42P07", errors::kTableExists},       // table exists
      {"42701", errors::kFieldExists},       // column exists
      {"42501", errors::kNoReadPermission},  // no right
      {"42803", errors::kNotGrouped},        // column neither grouped nor aggregated
      {"42804", errors::kCriterionTypes},    // types don't fit
      {"42883", errors::kCriterionTypes},    // no such operator for these types
      {"42P18", errors::kCriterionTypes},    // a parameter's type is open
      {"53100", errors::kStoreDiskFull},     // disk full
      {"53200", errors::kOutOfMemory},       // out of memory
      {"54001", errors::kTooComplex},        // too complex
      {"54000", errors::kTooComplex},       {"55P03", errors::kLocked},        // lock not available
      {"40P01", errors::kLocked},                                              // deadlock
      {"40001", errors::kLocked},                                              // serialization
      {"57014", errors::kCancelled},                                           // cancelled
      {"XX001", errors::kStoreDamaged},     {"XX002", errors::kStoreDamaged},  // damaged
      {"25006", errors::kNotUpdatable},                                        // read only
  };
  const auto number = numbers.constFind(state);
  if (number == numbers.cend())
    return Error(errors::kReservedError,
                 "Reservierter Fehler (" + QString::fromLatin1(state) + "): " + message);
  // What is wrong with a statement only the server can say.
  if (state.startsWith("42")) return Error(*number, errorDescription(*number) + " (" + message + ")");
  return Error(*number);
}

bool isLoss(const QByteArray& state) {
  return state.startsWith("57P") || state.startsWith("08");
}

QByteArray stateIn(const QString& message) {
  static const QRegularExpression ending(R"(:\s+([0-9A-Z]{5})$)");
  return ending.match(message).captured(1).toLatin1();
}

bool isWrongPassword(const QByteArray& state) {
  return state == "28P01";
}

QString refusalOf(const ServerAddress& address, qsizetype endpoint, const QByteArray& state,
                  const QString& message) {
  const ServerEndpoint& asked = address.endpoints[endpoint];
  if (state == "3D000") return QString("Eine Datenbank '%1' gibt es dort nicht.").arg(address.database);
  if (state == "28000")
    return QString("Der Server lässt den Benutzer '%1' von diesem Rechner aus nicht zu.").arg(address.user);
  if (state == "42501")
    return QString("Der Benutzer '%1' darf diese Datenbank nicht öffnen.").arg(address.user);
  if (state == "53300") return "Alle Verbindungen des Servers sind belegt.";
  if (isLoss(state)) return "Der Datenbankserver startet gerade oder wird beendet.";
  // The client has no state for what the network says; both take their words from the system.
  const auto says = [&](int number) {
    return message.contains(QString::fromLocal8Bit(std::strerror(number)));
  };
  if (message.contains("translate host name") || message.contains("Hostname"))
    return QString("Ein Rechner '%1' ist im Netz nicht bekannt.").arg(asked.host);
  if (says(ECONNREFUSED) || says(ENOENT))
    return QString("Auf '%1' läuft kein Datenbankserver, der am Port %2 Verbindungen annimmt.")
        .arg(asked.host)
        .arg(asked.port);
  if (says(ETIMEDOUT) || says(EHOSTUNREACH) || says(ENETUNREACH)) return silenceOf(nameOf(address, endpoint));
  return message;
}

}  // namespace qk::dao::postgres
