#include "masterdata/lists/export.h"

#include <optional>

#include "masterdata/lists/registration_text.h"
#include "masterdata/lists/shooter_cells.h"
#include "masterdata/lists/shooter_index.h"
#include "masterdata/people/person_name.h"
#include "platform/runtime/formula_guard.h"

namespace qk::lists {

namespace {

QString guardedCell(const QVariant& value, const dao::FieldDef& field) {
  const QString cell = cellOf(value, field);
  const bool isText = field.type == dao::FieldType::Text || field.type == dao::FieldType::Memo;
  return isText && !cell.isEmpty() ? guarded(cell) : cell;
}

/// The words for a row that is referred to: a name, "-" for none, nothing for one that is gone.
QString wordFor(qint64 key, const QString& name) {
  if (key == 0) return NoneWord;
  return name.isEmpty() ? QString() : guarded(name);
}

class ShooterExport {
 public:
  explicit ShooterExport(const StoreState& state) : state_(state), index_(state), names_(state, noPlan_) {
    for (const ListColumn& column : columnsOf(ListKind::Shooters))
      columns_.push_back({column, positionOf(column)});
    for (const Column& column : columns_)
      if (column.list.heading != heading::Name) headings_ << column.list.heading;
    collectGroups();
    collectRegistrations();
  }

  std::vector<QStringList> rows() {
    CsvTable table;
    table.rows.push_back(headings_);
    table.lines.push_back(1);
    for (const QVariantList& row : state_.shooters.rows) {
      table.rows.push_back(cells(row));
      table.lines.push_back(static_cast<int>(table.rows.size()));
    }
    addExactColumns(table);
    return std::move(table.rows);
  }

 private:
  QString text(const QVariantList& row, int column) const { return row[column].toString(); }

  void collectGroups() {
    QHash<qint64, QString> groupNames;
    const int name = state_.shooterGroups.position("Bezeichnung");
    for (const QVariantList& row : state_.shooterGroups.rows)
      groupNames.insert(state_.shooterGroups.key(row), text(row, name));
    const int shooter = state_.groupMembers.position("SchuetzeID"),
              group = state_.groupMembers.position("GruppenID");
    for (const QVariantList& row : state_.groupMembers.rows)
      if (const QString found = groupNames.value(row[group].toLongLong()); !found.isEmpty())
        groups_[row[shooter].toLongLong()] << found;
  }

  void collectRegistrations() {
    const TableRows& disciplines = state_.reportedDisciplines;
    QHash<qint64, QString> disciplineNames;
    const int name = disciplines.position("MeldeDisziplin");
    for (const QVariantList& row : disciplines.rows)
      disciplineNames.insert(disciplines.key(row), text(row, name));
    const TableRows& all = state_.registrations;
    const int shooter = all.position("SchuetzeID"), discipline = all.position("SPOID"),
              key = all.position("SPOKey"), team = all.position("MannID");
    for (const QVariantList& row : all.rows) {
      RegistrationText registration{row[discipline].toLongLong(), {}, text(row, key), {}, {}};
      registration.name = disciplineNames.value(registration.discipline);
      if (registration.name.isEmpty()) continue;
      if (row[team].toLongLong() != 0) registration.team = teamWords(row[team].toLongLong());
      registrations_[row[shooter].toLongLong()] << registrationLine(registration);
    }
  }

  TeamWords teamWords(qint64 key) const {
    const NamedRows::Team* team = names_.teamOf({key});
    if (!team) return {};
    return {team->name, wordFor(team->club.key, names_.clubName(team->club)),
            wordFor(team->group.key, names_.teamGroupName(team->group))};
  }

  QString classWord(qint64 key) const {
    const auto id = static_cast<qint32>(key);
    const QString shortKey = state_.classes.keyOf(id), name = state_.classes.nameOf(id);
    if (shortKey.isEmpty() && name.isEmpty()) return NoneWord;
    const bool byKey = state_.classes.idOf(shortKey) == id || state_.classes.idOf(name) != id;
    return guarded(byKey ? shortKey : name);
  }

  QStringList cells(const QVariantList& row) const {
    const PersonName person = personName({text(row, index_.name), text(row, index_.firstName)});
    const RowRef club{row[index_.club].toLongLong()};
    const NamedRows::Club* clubRow = names_.clubOf(club);
    const qint64 team = row[index_.team].toLongLong(), key = state_.shooters.key(row);
    const TeamWords words = team == 0 ? TeamWords() : teamWords(team);
    const auto word = [](const QString& said) { return said.isEmpty() ? QString() : guarded(said); };
    const QHash<QString, QString> special = {
        {heading::Surname, word(person.last)},
        {heading::Class, classWord(row[index_.classId].toLongLong())},
        {heading::Club, clubRow ? word(clubRow->name) : QString()},
        {heading::ClubShort, clubRow ? word(clubRow->shortName) : QString()},
        {heading::Team, word(words.name)},
        {heading::TeamClub, words.club},
        {heading::TeamGroup, words.group},
        {heading::Groups, word(groups_.value(key).join(u'\n'))},
        {heading::Registrations, word(registrations_.value(key).join(u'\n'))}};
    QStringList cells;
    for (const auto& [column, position] : columns_) {
      if (column.heading == heading::Name) continue;
      if (column.column.isEmpty())
        cells << special.value(column.heading);
      else if (position < 0)
        cells << QString();
      else
        cells << guardedCell(row[position], state_.shooters.def.fields[static_cast<size_t>(position)]);
    }
    return cells;
  }

  int positionOf(const ListColumn& column) const {
    for (size_t i = 0; i < state_.shooters.def.fields.size(); ++i)
      if (dao::sameName(state_.shooters.def.fields[i].name, column.column)) return static_cast<int>(i);
    return -1;
  }

  /// Reads the rows as an import will, and gives what it wouldn't find again in columns of its own.
  void addExactColumns(CsvTable& table) const {
    const ShooterReader reader(table, headings_, state_);
    std::vector<std::optional<SaidOfShooter>> read;
    for (size_t i = 1; i < table.rows.size(); ++i) read.push_back(reader.read(static_cast<int>(i)));
    for (const auto& [column, position] : columns_) {
      if (position < 0 || column.heading == heading::StartNumber) continue;
      const dao::FieldDef& field = state_.shooters.def.fields[static_cast<size_t>(position)];
      QStringList exact;
      bool needed = false;
      for (size_t i = 0; i < read.size(); ++i) {
        const QVariant& stored = state_.shooters.rows[i][position];
        const bool lost = !read[i] || !comesBack(*read[i], position, state_.shooters.rows[i]);
        needed = needed || lost;
        exact << (lost ? guardedCell(stored, field) : QString());
      }
      if (!needed) continue;
      table.rows[0] << asStored(column.heading);
      for (size_t i = 0; i < read.size(); ++i) table.rows[i + 1] << exact[static_cast<qsizetype>(i)];
    }
  }

  bool comesBack(const SaidOfShooter& said, int position, const QVariantList& row) const {
    const QVariant& stored = row[position];
    if (position == index_.name || position == index_.firstName) {
      const StoredName name = storedName({said.surname, said.firstName});
      if (position == index_.name) return name.name == stored.toString() && stored.isValid();
      return name.vorname == stored.toString() && said.firstName.isNull() == !stored.isValid();
    }
    const QVariant* value = said.value(position);
    if (!value) return !stored.isValid() && position != index_.birthDate;
    return stored.isValid() && value->toString() == stored.toString();
  }

  struct Column {
    const ListColumn& list;
    int position;  ///< in the table of shooters; -1 for none
  };

  const StoreState& state_;
  ShooterIndex index_;
  Plan noPlan_;  // nothing is made while exporting
  NamedRows names_;
  std::vector<Column> columns_;
  QStringList headings_;
  QHash<qint64, QStringList> groups_, registrations_;
};

std::vector<QStringList> exportedClubs(const StoreState& state) {
  const int name = state.clubs.position("Name"), shortName = state.clubs.position("Kurzname");
  std::vector<QStringList> rows = {{heading::Club, heading::ClubShort}};
  const auto cell = [&](const QVariantList& row, int column) {
    return guardedCell(row[column], state.clubs.def.fields[static_cast<size_t>(column)]);
  };
  for (const QVariantList& row : state.clubs.rows) rows.push_back({cell(row, name), cell(row, shortName)});
  return rows;
}

std::vector<QStringList> exportedTeams(const StoreState& state) {
  Plan noPlan;
  const NamedRows names(state, noPlan);
  std::vector<QStringList> rows = {{heading::Team, heading::TeamClub, heading::TeamGroup}};
  for (const QVariantList& row : state.teams.rows) {
    const NamedRows::Team* team = names.teamOf({state.teams.key(row)});
    rows.push_back({guarded(team->name), wordFor(team->club.key, names.clubName(team->club)),
                    wordFor(team->group.key, names.teamGroupName(team->group))});
  }
  return rows;
}

}  // namespace

std::vector<QStringList> exportedRows(ListKind kind, const StoreState& state) {
  switch (kind) {
    case ListKind::Clubs:
      return exportedClubs(state);
    case ListKind::Teams:
      return exportedTeams(state);
    case ListKind::Shooters:
      break;
  }
  return ShooterExport(state).rows();
}

QByteArray exportedCsv(ListKind kind, const StoreState& state) {
  return writeCsv(exportedRows(kind, state));
}

}  // namespace qk::lists
