#include "masterdata/lists/shooter_cells.h"

#include <algorithm>

#include "masterdata/lists/store_state.h"
#include "masterdata/people/birth_date.h"
#include "masterdata/people/sex.h"
#include "platform/runtime/formula_guard.h"

namespace qk::lists {

namespace {

constexpr int LongestWord = 255;

using Word = QString* (*)(SaidOfShooter&);

/// Where the text of a column goes that isn't one of the table's.
const QHash<QString, Word>& words() {
  static const QHash<QString, Word> all = {
      {heading::Surname, [](SaidOfShooter& said) { return &said.surname; }},
      {heading::FirstName, [](SaidOfShooter& said) { return &said.firstName; }},
      {heading::Name, [](SaidOfShooter& said) { return &said.fullName; }},
      {heading::Class, [](SaidOfShooter& said) { return &said.className; }},
      {heading::Club, [](SaidOfShooter& said) { return &said.club; }},
      {heading::ClubShort, [](SaidOfShooter& said) { return &said.clubShort; }},
      {heading::Team, [](SaidOfShooter& said) { return &said.team.name; }},
      {heading::TeamClub, [](SaidOfShooter& said) { return &said.team.club; }},
      {heading::TeamGroup, [](SaidOfShooter& said) { return &said.team.group; }},
      {heading::Groups, [](SaidOfShooter& said) { return &said.groups; }},
      {heading::Registrations, [](SaidOfShooter& said) { return &said.registrations; }}};
  return all;
}

bool isBlank(const QStringList& cells) {
  return std::all_of(cells.begin(), cells.end(), [](const QString& cell) {
    return std::all_of(cell.begin(), cell.end(), [](QChar c) { return c.isSpace(); });
  });
}

}  // namespace

const QVariant* SaidOfShooter::value(int position) const {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [position](const auto& value) { return value.first == position; });
  return found == values.end() ? nullptr : &found->second;
}

QString SaidOfShooter::text(int position) const {
  const QVariant* found = value(position);
  return found ? found->toString() : QString();
}

ShooterReader::ShooterReader(const CsvTable& table, const Assignment& assignment, const StoreState& state)
    : table_(table), assignment_(assignment), shooters_(state.shooters), refDatum_(state.classes.refDatum()) {
  for (const QString& assigned : assignment) columns_.push_back(columnFor(assigned));
}

ShooterReader::Column ShooterReader::columnFor(const QString& assigned) const {
  using Role = Column::Role;
  for (const ListColumn& column : columnsOf(ListKind::Shooters)) {
    const bool exact = assigned == asStored(column.heading);
    if (assigned != column.heading && !exact) continue;
    Column found{Role::Plain, column.heading};
    if (const Word word = exact ? nullptr : words().value(column.heading)) {
      found.word = word;
      const bool lines = column.heading == heading::Groups || column.heading == heading::Registrations;
      found.role = lines ? Role::Lines : Role::Word;
      return found;
    }
    const bool inTable =
        std::any_of(shooters_.def.fields.begin(), shooters_.def.fields.end(),
                    [&](const dao::FieldDef& field) { return dao::sameName(field.name, column.column); });
    if (inTable) found.position = shooters_.position(column.column);
    if (exact) found.role = Role::Exact;
    if (!exact && column.heading == heading::BirthDate) found.role = Role::BirthDate;
    if (!exact && column.heading == heading::Sex) found.role = Role::Sex;
    return found;
  }
  return {};
}

std::optional<SaidOfShooter> ShooterReader::read(int row) const {
  const QStringList& cells = table_.rows[static_cast<size_t>(row)];
  if (isBlank(cells)) return {};
  SaidOfShooter said;
  said.judged.row = row;
  said.judged.line = table_.lines[static_cast<size_t>(row)];
  // What is given as stored goes before what is given for people to read.
  for (const bool exact : {true, false})
    for (int i = 0; i < cells.size() && i < assignment_.size(); ++i)
      if ((columns_[static_cast<size_t>(i)].role == Column::Role::Exact) == exact)
        readInto(said, i, cells[i]);
  if (!isBlank(cells.mid(assignment_.size())))
    said.judged.faults.push_back({-1,
                                  {},
                                  QString("Die Zeile hat %1 Zellen, die Überschrift nur %2.")
                                      .arg(cells.size())
                                      .arg(assignment_.size())});
  return said;
}

void ShooterReader::readInto(SaidOfShooter& said, int cell, const QString& text) const {
  const Column& column = columns_[static_cast<size_t>(cell)];
  if (column.role == Column::Role::Ignored || text.isNull()) return;
  if (column.role != Column::Role::Exact && said.exact.contains(column.position)) return;
  CellValue read{{}, troubleOf(text)};
  if (read.trouble.isEmpty()) read = valueOf(column, text, said);
  if (!read.trouble.isEmpty())
    said.judged.faults.push_back({cell, column.heading, read.trouble});
  else if (read.value.isValid() && column.position >= 0)
    said.values.emplace_back(column.position, read.value);
  if (column.role == Column::Role::Exact) said.exact << column.position;
}

CellValue ShooterReader::valueOf(const Column& column, const QString& cell, SaidOfShooter& said) const {
  using Role = Column::Role;
  const QString text = plainText(cell);
  if (column.word) {
    *column.word(said) = column.role == Role::Lines ? unguarded(cell.trimmed()) : text;
    return {{}, column.role == Role::Lines ? QString() : tooLong(text, LongestWord)};
  }
  if (column.position < 0)
    return {{}, text.isEmpty() ? QString() : "Die Schützen dieses Wettkampfs haben keine solche Spalte."};
  const dao::FieldDef& field = shooters_.def.fields[static_cast<size_t>(column.position)];
  if (column.role == Role::Exact) return readExactly(cell, field);
  if (column.role == Role::BirthDate && !text.isEmpty()) {
    const BirthDate date = readBirthDate(shownText(text), refDatum_);
    return {date.ok() ? QVariant(date.stored) : QVariant(), date.trouble};
  }
  if (column.role == Role::Sex && !text.isEmpty()) {
    said.sexSaid = text.at(0).toLower() == u'd' || text.at(0).toLower() == u'x';
    const auto sex = sexOf(text);
    return {sex ? QVariant(*sex) : QVariant(),
            sex ? QString() : QString("»%1« ist kein Geschlecht (m, w, d).").arg(shownText(text))};
  }
  return readCell(cell, field);
}

}  // namespace qk::lists
