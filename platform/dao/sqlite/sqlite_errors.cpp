#include "platform/dao/sqlite/sqlite_errors.h"

#include <sqlite3.h>

namespace qk::dao::sqlite {
namespace {

int constraintNumber(int code) {
  switch (code) {
    case SQLITE_CONSTRAINT_NOTNULL:
      return errors::kRequiredField;
    case SQLITE_CONSTRAINT_CHECK:
      return errors::kValidationRule;
    case SQLITE_CONSTRAINT_FOREIGNKEY:
    case SQLITE_CONSTRAINT_TRIGGER:
      return errors::kReferenceMissing;
    default:
      return errors::kDuplicateKey;
  }
}

}  // namespace

Error errorOf(int code, const QString& message) {
  switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
      return Error(constraintNumber(code));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Error(errors::kLocked);
    case SQLITE_FULL:
      return Error(errors::kStoreDiskFull);
    case SQLITE_READONLY:
      return Error(errors::kNotUpdatable);
    case SQLITE_IOERR:
      return Error(errors::kConnectionLost);
    case SQLITE_CORRUPT:
      return Error(errors::kStoreDamaged);
    case SQLITE_NOTADB:
      return Error(errors::kUnknownFormat);
    case SQLITE_CANTOPEN:
      return Error(errors::kStoreNotOpened);
    case SQLITE_INTERRUPT:
      return Error(errors::kCancelled);
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return Error(errors::kNoReadPermission);
    case SQLITE_NOMEM:
      return Error(errors::kOutOfMemory);
    case SQLITE_TOOBIG:
      return Error(errors::kTextTooLong);
    case SQLITE_MISMATCH:
      return Error(errors::kConversionFailed);
    default:
      break;
  }
  if (message.contains("integer overflow")) return Error(errors::kOverflow);
  if (message.contains("no such table"))
    return Error(errors::kUnknownTable, errorDescription(errors::kUnknownTable) + " (" + message + ")");
  if (message.contains("no such column"))
    return Error(errors::kUnknownColumn, errorDescription(errors::kUnknownColumn) + " (" + message + ")");
  return Error(errors::kReservedError, "Reservierter Fehler (" + QString::number(code) + "): " + message);
}

}  // namespace qk::dao::sqlite
