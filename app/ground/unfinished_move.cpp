#include "app/ground/unfinished_move.h"

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"

namespace qk {

namespace {

/// Empty when the move was interrupted before it could note it down.
QString sourceOf(dao::Database& store) {
  const auto mark = store.openRecordset(kUnfinishedMove);
  return mark->eof() ? QString() : mark->value("Quelle").toString();
}

}  // namespace

bool isUnfinishedMove(const dao::Database& store) {
  return store.hasTable(kUnfinishedMove);
}

void refuseUnfinishedMove(dao::Database& store) {
  if (!isUnfinishedMove(store)) return;
  const QString source = sourceOf(store);
  throw Error(kUnfinishedMoveError,
              "Der Umzug dieses Wettkampfs ist nicht fertig geworden, er ist unvollständig. Arbeiten Sie " +
                  (source.isEmpty() ? QString("mit dem ursprünglichen Wettkampf")
                                    : QString("mit dem ursprünglichen Wettkampf (%1)").arg(source)) +
                  " weiter, oder wiederholen Sie den Umzug mit \"qk-wettkampf umziehen ... --von-vorn\".");
}

}  // namespace qk
