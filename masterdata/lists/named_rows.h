// Clubs, teams and groups by their names, those of the competition and those that come with the list.
#pragma once

#include <QHash>
#include <QStringList>
#include <vector>

#include "masterdata/lists/plan.h"

namespace qk::lists {

struct StoreState;

/// A row of the competition, a row of the plan, or none.
struct RowRef {
  qint64 key = 0;
  int made = kNoRow;
  bool isNone() const { return key == 0 && made == kNoRow; }
  friend bool operator==(const RowRef&, const RowRef&) = default;
};

/// A reference on its way into a column.
PlannedValue plannedValue(const QString& column, const QVariant& before, const RowRef& after);

/// The letters in which two texts are one for the competition.
QString foldedText(const QString& text);

struct FoundRow {
  RowRef row;
  QString trouble = {};  ///< several are called so; a German sentence, empty when all is well
  bool made = false;
};

/// What is said of a team beside its name. "-" says: none.
struct TeamWords {
  QString name;
  QString club, group;  ///< Null: nothing said
};

/// The word that says "none" where an empty cell says nothing.
inline const QString NoneWord = QStringLiteral("-");

class NamedRows {
 public:
  /// New rows go to the end of the plan. Both outlive this.
  NamedRows(const StoreState& state, Plan& plan);

  /// By its name, else by its short name; of several with one name the short name tells. An unknown one is
  /// made.
  FoundRow club(const QString& name, const QString& shortName);
  /// By name and by what is said of club and group; where nothing is said and there are several, the one of
  /// `ownClub`. An unknown one is made, in `ownClub` where nothing else is said.
  FoundRow team(const TeamWords& words, const RowRef& ownClub);
  FoundRow shooterGroup(const QString& name);

  /// The plan was cut back: what was made behind that row is unknown again.
  void forgetFrom(int planRow);
  /// "Der Verein »…« wird angelegt.", since the last call.
  QStringList takeRemarks();

  QString clubName(const RowRef& row) const;
  QString teamName(const RowRef& row) const;
  QString teamGroupName(const RowRef& row) const;

  struct Club {
    RowRef row;
    QString name, shortName;
  };
  struct Team {
    RowRef row;
    QString name;
    RowRef club, group;
  };
  /// Those of that name.
  std::vector<Club> clubsCalled(const QString& name) const { return clubs_.value(foldedText(name)); }
  std::vector<Team> teamsCalled(const QString& name) const { return teams_.value(foldedText(name)); }
  const Team* teamOf(const RowRef& row) const;
  const Club* clubOf(const RowRef& row) const;

 private:
  struct Group {
    RowRef row;
    QString name;
  };
  using Groups = QHash<QString, std::vector<Group>>;

  FoundRow group(Groups& groups, const QString& table, const QString& what, const QString& name);
  RowRef makeRow(const QString& table, std::vector<PlannedValue> values, const QString& remark);
  void addClub(const Club& club);
  void addTeam(const Team& team);

  Plan& plan_;
  QHash<QString, std::vector<Club>> clubs_, clubsByShortName_;
  QHash<QString, std::vector<Team>> teams_;
  Groups teamGroups_, shooterGroups_;
  QHash<qint64, Club> clubsByKey_;
  QHash<qint64, Team> teamsByKey_;
  QStringList remarks_;
};

}  // namespace qk::lists
