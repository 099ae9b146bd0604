// What an operator says of a new competition, and what is made of it: a competition in a file, or on a server
// whose address goes into a file.
#pragma once

#include <QString>

#include "masterdata/making/competition.h"
#include "platform/dao/server/server_address.h"
#include "platform/workplace.h"

namespace qk {

struct CompetitionPlan {
  QString name, secondLine, place;
  QString refDatum;   ///< as typed, in any common form
  QString yearBegin;  ///< "01.01.", as typed; empty: as the set or the earlier competition has it
  enum class Source { Starter, Earlier, Empty } source = Source::Starter;
  QString starter;  ///< path of a starter set
  QString earlier;  ///< path of a competition
  bool withClubs = false, withTeams = false, withShooters = false;
  QString path;  ///< of the competition's file, or of the file that names the server
  bool onServer =
      false;      ///< the file at `path` is written with this address; one that is there stays as it is
  QString hosts;  ///< of the server, as typed: "erster, zweiter:5433"
  int port = dao::kUsualPort;
  QString database, user;
};

struct PlanTrouble {
  QString field;  ///< name of the member it is about: "name", "refDatum", "path" …
  QString text;   ///< a German sentence; empty when all is well
};

/// What is missing or can't be. Looks whether files are there, opens nothing.
PlanTrouble troubleWith(const CompetitionPlan& plan, Files& files);

/// "1.1." and "01.01" become "01.01."; empty for what is no day of a year.
QString yearBeginOf(const QString& typed);

/// Makes it. Nothing is left behind by a failure: not even the file that names the server, where this call
/// has written it. Error 5 with a German text for trouble, else those of makeCompetition().
MakingResult makePlanned(const CompetitionPlan& plan, Files& files, const MakingWatch& watch);

}  // namespace qk
