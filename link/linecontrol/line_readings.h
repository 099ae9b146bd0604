// What every line reads alike when it is loaded: the disciplines of the stations, of which each has a file of
// its own in a folder of the network, the lists of the competition, and which lines have open shots. Lines
// that are loaded together share one of these: the first that needs something reads it, through its own
// connection, the others take it. What couldn't be read isn't kept.
#pragma once

#include <QSet>
#include <QString>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "capture/discipline_loader.h"
#include "platform/dao/database.h"
#include "targetconfig/station_files.h"

namespace qk {

using LineGroups = std::vector<std::pair<QString, int>>;  ///< name and ID

class LineReadings {
 public:
  /// Of lines 1 to `lines`.
  explicit LineReadings(int lines) : lines_(lines) {}

  /// `folder` with its final separator. Errors pass, from here and below.
  DisciplineGrid stationDisciplines(Files& files, const QString& folder);
  const CompetitionLists& lists(dao::Database& db);
  const LineGroups& groups(dao::Database& db);
  /// False only when no shot of that line is open. Throws nothing: where the question failed, which isn't put
  /// twice, each line asks for itself and says what stands in its way.
  bool mayHaveOpenShots(dao::Database& db, int nLinie);

 private:
  int lines_;
  std::optional<DisciplineGrid> stationDisciplines_;
  std::shared_ptr<const CompetitionLists> lists_;
  std::optional<LineGroups> groups_;
  std::optional<QSet<int>> linesWithOpenShots_;
  bool askedForOpenShots_ = false;
};

}  // namespace qk
