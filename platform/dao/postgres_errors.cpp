#include "platform/dao/postgres_errors.h"

#include <QHash>
#include <QRegularExpression>
#include <cerrno>
#include <cstring>

namespace qk::dao::postgres {

Error errorOf(const QByteArray& state, const QString& message) {
  static const QHash<QByteArray, int> numbers{
      {"23505", 3022},                   // unique
      {"23502", 3314},                   // not null
      {"23503", 3201},                   // foreign key
      {"23514", 3317},                   // check
      {"22001", 3163},                   // text too long
      {"22003", 6},                      // out of range
      {"22012", 11},                     // division by zero
      {"22P02", 3421},                   // text is no value of the type
      {"22007", 3421},                   // no date
      {"22008", 3421},                   // date out of range
      {"22021", 3421},                   // character that can't be stored
      {"42P01", 3078},                   // no such table
      {"42703", 3061},                   // no such column
      {"42P07", 3010},                   // table exists
      {"42701", 3191},                   // column exists
      {"42501", 3112},                   // no right
      {"42803", 3122},                   // column neither grouped nor aggregated
      {"42804", 3464},                   // types don't fit
      {"42883", 3464},                   // no such operator for these types
      {"42P18", 3464},                   // a parameter's type is open
      {"53100", 3026},                   // disk full
      {"53200", 7},                      // out of memory
      {"54001", 3360},                   // too complex
      {"54000", 3360}, {"55P03", 3260},  // lock not available
      {"40P01", 3260},                   // deadlock
      {"40001", 3260},                   // serialization
      {"57014", 3059},                   // cancelled
      {"XX001", 3049}, {"XX002", 3049},  // damaged
      {"25006", 3027},                   // read only
  };
  const auto number = numbers.constFind(state);
  if (number == numbers.cend())
    return Error(3000, "Reservierter Fehler (" + QString::fromLatin1(state) + "): " + message);
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

QString silenceOf(const QString& host) {
  return QString("Der Rechner '%1' gibt keine Antwort. Ist er eingeschaltet, und ist das Netz in Ordnung?")
      .arg(host);
}

}  // namespace qk::dao::postgres
