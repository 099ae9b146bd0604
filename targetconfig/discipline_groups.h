// Discipline groups: named selections of the stations' disciplines, stored in the competition by title. A
// title that esa_preis.ini no longer holds stays stored until the group is saved again. No window.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/retry.h"

namespace qk {

class Files;

struct DisciplineGroup {
  int id = 0;
  QString name;
  friend bool operator==(const DisciplineGroup&, const DisciplineGroup&) = default;
};

class DisciplineGroups {
 public:
  /// The database outlives the groups.
  explicit DisciplineGroups(dao::Database& db) : db_(db) {}

  /// In the order of their names. Errors of the store pass to the caller.
  std::vector<DisciplineGroup> all();
  /// The stored titles, gone ones too.
  QSet<QString> members(int id);

  // Each statement of the store is one of `step`; what was done before an abort stays.
  /// The number of the new group, or nothing where it was ignored that it can't be stored.
  std::optional<int> add(const QString& name, Steps& step);
  void addMembers(int id, const QStringList& titles, Steps& step);
  void replaceMembers(int id, const QStringList& titles, Steps& step);
  void remove(int id, Steps& step);

 private:
  dao::Database& db_;
  std::unique_ptr<dao::Recordset> reading_;  // all groups, kept from the first reading on
};

/// A title for each line of esa_preis.ini that names one, in the order of the file. Error as of Files::read.
QStringList groupTitles(Files& files, const QString& iniPath);

}  // namespace qk
