#include "masterdata/lists/named_rows.h"

#include <algorithm>

#include "masterdata/lists/store_state.h"

namespace qk::lists {

namespace {

/// One key space for both: rows of the plan have negative keys.
qint64 handle(const RowRef& row) {
  return row.made == kNoRow ? row.key : -1 - row.made;
}

RowRef made(int planRow) {
  return {0, planRow};
}

template <class Named>
void forget(QHash<QString, std::vector<Named>>& all, int planRow) {
  for (auto& named : all)
    named.erase(std::remove_if(named.begin(), named.end(),
                               [planRow](const Named& one) { return one.row.made >= planRow; }),
                named.end());
}

template <class Named>
void forget(QHash<qint64, Named>& all, int planRow) {
  all.removeIf([planRow](const auto& entry) { return entry.value().row.made >= planRow; });
}

QString several(const QString& what, const QString& name) {
  return QString("%1 »%2« gibt es mehrmals; welche Zeile gemeint ist, steht nicht fest.").arg(what, name);
}

}  // namespace

PlannedValue plannedValue(const QString& column, const QVariant& before, const RowRef& after) {
  return {column, before, static_cast<int>(after.key), after.made};
}

QString foldedText(const QString& text) {
  return text.normalized(QString::NormalizationForm_C).simplified().toCaseFolded();
}

NamedRows::NamedRows(const StoreState& state, Plan& plan) : plan_(plan) {
  const TableRows& clubs = state.clubs;
  const int clubName = clubs.position("Name"), shortName = clubs.position("Kurzname");
  for (const QVariantList& row : clubs.rows)
    addClub({{clubs.key(row)}, row[clubName].toString(), row[shortName].toString()});
  const TableRows& teams = state.teams;
  const int teamName = teams.position("MannName"), club = teams.position("VereinID"),
            group = teams.position("GruppenID");
  for (const QVariantList& row : teams.rows)
    addTeam(
        {{teams.key(row)}, row[teamName].toString(), {row[club].toLongLong()}, {row[group].toLongLong()}});
  const auto readGroups = [](const TableRows& table, Groups& groups) {
    const int name = table.position("Bezeichnung");
    for (const QVariantList& row : table.rows)
      groups[foldedText(row[name].toString())].push_back({{table.key(row)}, row[name].toString()});
  };
  readGroups(state.teamGroups, teamGroups_);
  readGroups(state.shooterGroups, shooterGroups_);
}

void NamedRows::addClub(const Club& club) {
  clubs_[foldedText(club.name)].push_back(club);
  if (!club.shortName.isEmpty()) clubsByShortName_[foldedText(club.shortName)].push_back(club);
  clubsByKey_.insert(handle(club.row), club);
}

void NamedRows::addTeam(const Team& team) {
  teams_[foldedText(team.name)].push_back(team);
  teamsByKey_.insert(handle(team.row), team);
}

RowRef NamedRows::makeRow(const QString& table, std::vector<PlannedValue> values, const QString& remark) {
  plan_.push_back({table, 0, std::move(values)});
  remarks_ << remark;
  return made(static_cast<int>(plan_.size()) - 1);
}

FoundRow NamedRows::club(const QString& name, const QString& shortName) {
  std::vector<Club> found = name.isEmpty() ? std::vector<Club>() : clubs_.value(foldedText(name));
  if (found.size() > 1 && !shortName.isEmpty())
    found.erase(
        std::remove_if(found.begin(), found.end(),
                       [&](const Club& club) { return foldedText(club.shortName) != foldedText(shortName); }),
        found.end());
  if (found.empty()) found = clubsByShortName_.value(foldedText(name.isEmpty() ? shortName : name));
  if (found.size() > 1) return {{}, several("Den Verein", name.isEmpty() ? shortName : name)};
  if (found.size() == 1) return {found.front().row};
  const QString full = name.isEmpty() ? shortName : name;
  std::vector<PlannedValue> values = {{"Name", {}, full}};
  if (!shortName.isEmpty()) values.push_back({"Kurzname", {}, shortName});
  const RowRef row =
      makeRow("Verein", std::move(values), QString("Der Verein »%1« wird angelegt.").arg(full));
  addClub({row, full, shortName});
  return {row, {}, true};
}

FoundRow NamedRows::group(Groups& groups, const QString& table, const QString& what, const QString& name) {
  const std::vector<Group> found = groups.value(foldedText(name));
  if (found.size() > 1) return {{}, several("Die " + what, name)};
  if (found.size() == 1) return {found.front().row};
  const RowRef row =
      makeRow(table, {{"Bezeichnung", {}, name}}, QString("Die %1 »%2« wird angelegt.").arg(what, name));
  groups[foldedText(name)].push_back({row, name});
  return {row, {}, true};
}

FoundRow NamedRows::shooterGroup(const QString& name) {
  return group(shooterGroups_, "SchuetzenGruppen", "Schützengruppe", name);
}

FoundRow NamedRows::team(const TeamWords& words, const RowRef& ownClub) {
  FoundRow club{ownClub}, inGroup;
  if (words.club == NoneWord)
    club = {};
  else if (!words.club.isEmpty())
    club = this->club(words.club, {});
  if (!words.group.isEmpty() && words.group != NoneWord)
    inGroup = group(teamGroups_, "MannschaftsGruppen", "Mannschaftsgruppe", words.group);
  for (const FoundRow* said : {&club, &inGroup})
    if (!said->trouble.isEmpty()) return *said;
  std::vector<Team> found = teams_.value(foldedText(words.name));
  const auto isOwn = [&ownClub](const Team& team) { return team.club == ownClub; };
  const auto keepOnly = [&found](const auto& fits) {
    found.erase(std::remove_if(found.begin(), found.end(), std::not_fn(fits)), found.end());
  };
  if (!words.club.isEmpty()) keepOnly([&](const Team& team) { return team.club == club.row; });
  if (!words.group.isEmpty()) keepOnly([&](const Team& team) { return team.group == inGroup.row; });
  if (found.size() > 1 && words.club.isEmpty())
    if (const auto own = std::find_if(found.begin(), found.end(), isOwn);
        own != found.end() && std::none_of(own + 1, found.end(), isOwn))
      return {own->row};
  if (found.size() > 1) return {{}, several("Die Mannschaft", words.name)};
  if (found.size() == 1) return {found.front().row};
  const RowRef row = makeRow("Mannschaften",
                             {{"MannName", {}, words.name},
                              plannedValue("VereinID", {}, club.row),
                              plannedValue("GruppenID", {}, inGroup.row)},
                             QString("Die Mannschaft »%1« wird angelegt.").arg(words.name));
  addTeam({row, words.name, club.row, inGroup.row});
  return {row, {}, true};
}

void NamedRows::forgetFrom(int planRow) {
  forget(clubs_, planRow);
  forget(clubsByShortName_, planRow);
  forget(teams_, planRow);
  forget(teamGroups_, planRow);
  forget(shooterGroups_, planRow);
  forget(clubsByKey_, planRow);
  forget(teamsByKey_, planRow);
  remarks_.clear();
}

QStringList NamedRows::takeRemarks() {
  return std::exchange(remarks_, {});
}

const NamedRows::Club* NamedRows::clubOf(const RowRef& row) const {
  const auto found = clubsByKey_.constFind(handle(row));
  return found == clubsByKey_.constEnd() ? nullptr : &*found;
}

const NamedRows::Team* NamedRows::teamOf(const RowRef& row) const {
  const auto found = teamsByKey_.constFind(handle(row));
  return found == teamsByKey_.constEnd() ? nullptr : &*found;
}

QString NamedRows::clubName(const RowRef& row) const {
  const Club* club = clubOf(row);
  return club ? club->name : QString();
}

QString NamedRows::teamName(const RowRef& row) const {
  const Team* team = teamOf(row);
  return team ? team->name : QString();
}

QString NamedRows::teamGroupName(const RowRef& row) const {
  for (const auto& groups : teamGroups_)
    for (const Group& group : groups)
      if (group.row == row) return group.name;
  return {};
}

}  // namespace qk::lists
