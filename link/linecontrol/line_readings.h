// What every line reads alike when it is loaded: the disciplines of the stations, of which each has a file of
// its own in a folder of the network, and the lists of the competition. Lines that are loaded together share
// one of these: the first that needs something reads it, through its own connection, the others take it. What
// couldn't be read isn't kept.
#pragma once

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
  /// `folder` with its final separator. Errors pass, from here and below.
  DisciplineGrid stationDisciplines(Files& files, const QString& folder);
  const CompetitionLists& lists(dao::Database& db);
  const LineGroups& groups(dao::Database& db);

 private:
  std::optional<DisciplineGrid> stationDisciplines_;
  std::shared_ptr<const CompetitionLists> lists_;
  std::optional<LineGroups> groups_;
};

}  // namespace qk
