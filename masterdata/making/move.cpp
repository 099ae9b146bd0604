#include "masterdata/making/move.h"

#include <QDateTime>
#include <QFileInfo>
#include <QThread>

#include "app/ground/unfinished_move.h"
#include "masterdata/making/draft.h"
#include "platform/dao/moving/store_copy.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

using dao::Database;

namespace {

constexpr int kCantHold = errors::kNotSupported;

void makeMark(Database& target, const QString& source) {
  target.createTable({kUnfinishedMove, {{"Quelle", dao::FieldType::Memo}}, {}});
  const auto mark = target.openRecordset(kUnfinishedMove);
  mark->addNew();
  mark->setValue("Quelle", source);
  mark->update();
}

QString originOf(const MoveRequest& request) {
  return request.origin.isEmpty() ? QFileInfo(request.from).absoluteFilePath() : request.origin;
}

/// The file appears under its name only when it bears the mark.
std::unique_ptr<Database> newFile(const MoveRequest& request) {
  const QString draft = request.to + ".umzug";
  removeDraft(draft);
  makeMark(*Database::create(draft), originOf(request));
  Files().rename(draft, request.to);
  return Database::open(request.to);
}

/// What an interrupted move left behind, except for its mark.
void clear(Database& target) {
  for (const QString& query : target.queryNames()) target.dropTable(query);
  for (const QString& table : target.tableNames())
    if (!dao::sameName(table, kUnfinishedMove)) target.dropTable(table);
}

/// A server's database that nobody has used yet is made ready for its tables by the first who asks for it.
std::unique_ptr<Database> opened(const QString& path) {
  try {
    return Database::create(path);
  } catch (const Error& error) {
    if (error.number() != errors::kStoreExists) throw;
    return Database::open(path);
  }
}

/// A connection that has just ended takes the server a moment.
void requireAlone(const Database& source) {
  constexpr int kLooks = 10, kPause = 50;
  for (int look = 0; source.isOpenElsewhere(); ++look) {
    if (look == kLooks)
      throw Error(errors::kFileInUse,
                  "Die Quelle ist noch an anderer Stelle geöffnet. Schließen Sie alle Programme, die mit ihr "
                  "arbeiten, und wiederholen Sie den Umzug.");
    QThread::msleep(kPause);
  }
}

void requireEveryCharacter(const Database& target) {
  if (const auto encoding = target.poorEncoding())
    throw Error(kCantHold,
                QString("Das Ziel speichert Zeichen als %1 und kann nicht jedes halten. Legen Sie die "
                        "Datenbank mit der Kodierung UTF8 neu an.")
                    .arg(*encoding));
}

/// Asked before it is opened for writing, which alone would change a file.
void refuseFull(const QString& path) {
  constexpr int kNotFurnished = errors::kUnknownFormat;
  try {
    const auto target = Database::open(path, true);
    if (isUnfinishedMove(*target) || (target->tableNames().isEmpty() && target->queryNames().isEmpty()))
      return;
  } catch (const Error& error) {
    if (error.number() != kNotFurnished) throw;
    return;
  }
  throw Error(errors::kStoreExists, "Das Ziel ist nicht leer, es bleibt unverändert.");
}

std::unique_ptr<Database> usableStore(const MoveRequest& request) {
  refuseFull(request.to);
  auto target = opened(request.to);
  requireEveryCharacter(*target);
  if (isUnfinishedMove(*target)) {
    if (request.again) return target;
    throw Error(kUnfinishedMoveError,
                "Am Ziel liegt ein Umzug, der nicht fertig geworden ist oder gerade läuft. Ist er "
                "abgebrochen, so wiederholen Sie den Befehl mit --von-vorn: was am Ziel liegt, wird "
                "dann verworfen.");
  }
  return target;
}

std::unique_ptr<Database> existingStore(const MoveRequest& request) {
  auto target = usableStore(request);
  if (isUnfinishedMove(*target)) {
    clear(*target);
    return target;
  }
  try {
    makeMark(*target, originOf(request));
  } catch (const Error& error) {
    if (error.number() != errors::kTableExists) throw;
    throw Error(kUnfinishedMoveError, "Ein anderer Umzug hat gerade dasselbe Ziel begonnen.");
  }
  return target;
}

class Move {
 public:
  Move(Database& source, Database& target, const std::function<void(const MoveStep&)>& watch)
      : source_(source), target_(target), tables_(source.tableNames()), watch_(watch) {}

  MoveResult run() {
    MoveResult result{static_cast<int>(tables_.size()), 0};
    for (const QString& table : tables_) {
      const qint64 rows = copyTable(source_, target_, table, progress(MoveStep::Kind::Copying, table));
      finished(MoveStep::Kind::Copying, table, rows);
      result.rows += rows;
    }
    copyQueries(source_, target_);
    verifyNames();
    for (const QString& table : tables_) verify(table);
    return result;
  }

 private:
  MoveStep step(MoveStep::Kind kind, const QString& table) const {
    return {kind, table, static_cast<int>(tables_.indexOf(table)) + 1, static_cast<int>(tables_.size())};
  }
  dao::RowProgress progress(MoveStep::Kind kind, const QString& table) const {
    return [this, now = step(kind, table)](qint64 rows) mutable {
      now.rows = rows;
      watch_(now);
    };
  }
  void finished(MoveStep::Kind kind, const QString& table, qint64 rows) const {
    MoveStep now = step(kind, table);
    now.rows = rows;
    now.done = true;
    watch_(now);
  }

  static void refuse(const QString& what, const QString& difference) {
    if (difference.isEmpty()) return;
    throw Error(
        errors::kChangedMeanwhile,
        QString("Quelle und Ziel stimmen nicht überein, %1: %2. Wurde während des Umzugs in der Quelle "
                "gearbeitet? Schließen Sie alle Programme und wiederholen Sie ihn.")
            .arg(what, difference));
  }

  void verifyNames() const {
    QStringList found = target_.tableNames();
    found.removeIf([](const QString& name) { return dao::sameName(name, kUnfinishedMove); });
    const auto list = [](QStringList names) {
      names.sort();
      return names.join(", ");
    };
    if (list(found) != list(source_.tableNames())) refuse("Tabellen", list(found));
    if (list(target_.queryNames()) != list(source_.queryNames()))
      refuse("Abfragen", list(target_.queryNames()));
  }

  void verify(const QString& table) const {
    const dao::TableDef expected = source_.tableDef(table);
    const QString what = QString("Tabelle »%1«").arg(table);
    refuse(what, differenceOf(expected, target_.tableDef(table)));
    const auto watched = progress(MoveStep::Kind::Verifying, table);
    const dao::TableFigures there = figuresOf(target_, table, watched);
    refuse(what, differenceOf(expected, figuresOf(source_, table, watched), there));
    finished(MoveStep::Kind::Verifying, table, there.rows);
  }

  Database& source_;
  Database& target_;
  QStringList tables_;
  const std::function<void(const MoveStep&)>& watch_;
};

}  // namespace

void clearUnfinishedMove(const QString& path) {
  const auto target = Database::open(path);
  if (!isUnfinishedMove(*target)) return;
  clear(*target);
  target->dropTable(kUnfinishedMove);
}

void refuseUsedTarget(const QString& path, bool again) {
  usableStore({{}, path, again});
}

MoveResult moveCompetition(const MoveRequest& request, const std::function<void(const MoveStep&)>& watch) {
  const auto source = Database::open(request.from, true);
  refuseUnfinishedMove(*source);
  requireAlone(*source);
  const auto target = QFileInfo::exists(request.to) ? existingStore(request) : newFile(request);
  const MoveResult result = Move(*source, *target, watch).run();
  target->dropTable(kUnfinishedMove);
  return result;
}

}  // namespace qk
