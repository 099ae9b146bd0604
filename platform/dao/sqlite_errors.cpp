#include "platform/dao/sqlite_errors.h"

#include <sqlite3.h>

namespace qk::dao::sqlite {
namespace {

int constraintNumber(int code) {
  switch (code) {
    case SQLITE_CONSTRAINT_NOTNULL:
      return 3314;
    case SQLITE_CONSTRAINT_CHECK:
      return 3317;
    case SQLITE_CONSTRAINT_FOREIGNKEY:
    case SQLITE_CONSTRAINT_TRIGGER:
      return 3201;
    default:
      return 3022;
  }
}

}  // namespace

Error errorOf(int code, const QString& message) {
  switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
      return Error(constraintNumber(code));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Error(3260);
    case SQLITE_FULL:
      return Error(3026);
    case SQLITE_READONLY:
      return Error(3027);
    case SQLITE_IOERR:
      return Error(3043);
    case SQLITE_CORRUPT:
      return Error(3049);
    case SQLITE_NOTADB:
      return Error(3343);
    case SQLITE_CANTOPEN:
      return Error(3051);
    case SQLITE_INTERRUPT:
      return Error(3059);
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return Error(3112);
    case SQLITE_NOMEM:
      return Error(7);
    case SQLITE_TOOBIG:
      return Error(3163);
    case SQLITE_MISMATCH:
      return Error(3421);
    default:
      break;
  }
  if (message.contains("integer overflow")) return Error(6);
  if (message.contains("no such table")) return Error(3078, errorDescription(3078) + " (" + message + ")");
  if (message.contains("no such column")) return Error(3061, errorDescription(3061) + " (" + message + ")");
  return Error(3000, "Reservierter Fehler (" + QString::number(code) + "): " + message);
}

}  // namespace qk::dao::sqlite
