// The two tables of stored results, teilers and ring series: how a shooter's rows are read, corrected and
// moved to another discipline, and what is asked before.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/grid/filtered_query.h"
#include "platform/runtime/retry.h"

namespace qk {

namespace dao {
class Database;
}

enum class ResultKind { Teiler, Serien };

/// Columns of a reading, in the order of the grid; DisziID, SchussID and SDID are read but not shown.
namespace result {
constexpr int Ergebnis = 0, Waffe = 1, Disziplin = 2, Datum = 3;
}
const QStringList& resultColumns();

/// The reading of a shooter's results, in the order of disciplines and the best first. A title sorts dates by
/// day and time, though they are stored as text.
FilteredQuery resultQuery(ResultKind kind, const QString& sStartnummer);

/// The count below a grid: the same word for both kinds, and nothing for no rows.
QString resultCount(int rows);

/// "Teiler" or "Serien".
QString resultTitle(ResultKind kind);

/// The question before `count` marked rows go, or, for one, the row that shows `Ergebnis`.
QString deleteQuestion(ResultKind kind, qsizetype count, const QString& Ergebnis);
/// What became of it, in one line.
QString deleteNews(ResultKind kind, qsizetype wanted, qsizetype removed);

/// A change of discipline as it was chosen.
struct DisciplineChange {
  ResultKind kind = ResultKind::Teiler;
  QString sStartnummer = {};
  qint32 from = 0;
  qint32 to = 0;
  bool bCopy = false;
  bool bChangeAll = false;     ///< all results of the shooter in `from`; else those of the list
  QList<qint32> results = {};  ///< by their IDs
};

/// bChangeAll and bCopy choose the words. "Alle" are those in the old discipline, whatever the words say.
QString changeQuestion(const DisciplineChange& change);
/// The one statement that does it. `columns` are those that a copy keeps.
QString changeStatement(const DisciplineChange& change, const QStringList& columns);
/// All columns of the table but its ID and the discipline.
QStringList keptColumns(dao::Database& database, ResultKind kind);
/// Runs it; how many rows were copied or moved.
int changeDiscipline(dao::Database& database, Steps& step, const DisciplineChange& change);
/// What became of it, in one line.
QString changeNews(const DisciplineChange& change, int rows, const QString& discipline);

}  // namespace qk
