// Makes competitions as the competition application does: all its tables and its stored query.
#pragma once

#include <QDate>
#include <QString>
#include <functional>

#include "platform/schema/schema_text.h"

namespace qk {

/// The texts of data/schema that stand inside the program; Error 53 for an unknown name.
Schema embeddedSchema(const QString& name);

struct CompetitionTitle {
  QString name = "Neuer Wettkampf";
  QString place;
  QDate referenceDate = QDate(2026, 1, 1);
  QString secondLine = {};
};

struct CompetitionRequest {
  /// A file to make, or one that names an empty store on a server.
  QString path;
  CompetitionTitle title = {};
  /// Day and month on which a class year begins, "01.07."; empty: 01.01., or as in the earlier competition.
  QString yearBegin = {};
  /// Path of a starter set (starter_set.h), or empty. Not together with an earlier competition.
  QString starter = {};
  /// Path of a competition that it is to be like, or empty.
  QString earlier = {};
  bool withClubs = false, withTeams = false, withShooters = false;  ///< of the earlier one
  /// Begins anew over what an interrupted making or move left on the server. Nothing else is ever removed.
  bool again = false;
};

/// How far the making is.
struct MakingStep {
  QString text;               ///< "Kopieren: Schützen", German
  int number = 0, steps = 0;  ///< from 1, of so many
  qint64 rows = 0;            ///< of this step, so far
};
/// False stops the making, which leaves nothing behind.
using MakingWatch = std::function<bool(const MakingStep&)>;

struct MakingResult {
  qint64 shooters = 0;      ///< taken over
  qint64 newClasses = 0;    ///< of them: the reference date gave another class
  qint64 withoutClass = 0;  ///< of them: it gave none, though the birth date is known
};

/// A new competition. Without starter set and earlier competition it is empty: nothing but the one row of
/// Wettkampf and of Klassenwechsel, no column TeilerfaktorESA and no Haering table, for QK-Intarso's own
/// opening adds them.
///
/// Under its name it stands whole or not at all, also when the program is killed: a file is made under
/// another name beside it, a store on a server bears the mark of an unfinished move until it is whole.
///
/// Errors with German texts: 3204 a competition is there, 3059 stopped, 5 a fault in the starter set (its
/// file and line), or an earlier competition that is none, 3356 an unfinished move (see `again`); and those
/// of the stores.
MakingResult makeCompetition(const CompetitionRequest& request, const MakingWatch& watch = {});

/// The same, empty.
void makeCompetition(const QString& path, const CompetitionTitle& title);

/// A competition filled with the rows of demoRows and the standard discipline keys with their teiler factors.
void makeDemoCompetition(const QString& path);

}  // namespace qk
