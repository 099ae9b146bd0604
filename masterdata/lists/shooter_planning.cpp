#include "masterdata/lists/shooter_planning.h"

#include <algorithm>

#include "masterdata/lists/registration_text.h"
#include "masterdata/people/birth_date.h"
#include "masterdata/people/person_name.h"

namespace qk::lists {

struct ShooterPlanning::Work {
  SaidOfShooter said;
  int match = kNobody;
  qint64 key = 0;
  const QVariantList* stored = nullptr;  ///< of a known shooter
  int planSize = 0;
  qsizetype matchRemarks = 0;  ///< how many remarks there were before anything was planned
  PlannedRow row = {};
  std::vector<PlannedRow> further = {};  ///< rows that name the shooter; the key comes when all is well
  std::vector<CellChange> changes = {};
  RowRef club = {};

  bool isNew() const { return stored == nullptr; }
  QString text(int column) const { return stored ? (*stored)[column].toString() : QString(); }
  QVariant before(int column) const { return stored ? (*stored)[column] : QVariant(); }
  qint64 number(int column) const { return stored ? (*stored)[column].toLongLong() : 0; }
  void fault(const ShooterReader& reader, const QString& column, const QString& why) {
    said.judged.faults.push_back({reader.cellOf(column), column, why});
  }
  void change(const QString& heading, PlannedValue value, const QString& before, const QString& after) {
    changes.push_back({heading, before, after});
    row.values.push_back(std::move(value));
  }
  /// A text column; nothing happens where it holds that already. Null and empty are one for a known shooter.
  void text(const QString& heading, const dao::FieldDef& field, int column, const QString& after) {
    if (stored ? text(column) == after : after.isNull()) return;
    change(heading, {field.name, before(column), after}, text(column), after);
  }
};

namespace {

/// Whether a value says what stands there already.
bool isSame(const QVariant& before, const QVariant& after, const dao::FieldDef& field) {
  const bool isText = field.type == dao::FieldType::Text || field.type == dao::FieldType::Memo;
  return isText ? before.toString() == after.toString() : before.toLongLong() == after.toLongLong();
}

RowRef refOf(qint64 key) {
  return {key};
}

/// What a row says of the name, put together with what stood there. Columns as stored go first, then family
/// and first name, then one name for both.
StoredName nameAfter(const SaidOfShooter& said, const StoredName& before, const ShooterIndex& index,
                     bool isNew) {
  const QVariant* name = said.value(index.name);
  const QVariant* first = said.value(index.firstName);
  if (name || first)
    return {name ? name->toString() : before.name, first                      ? first->toString()
                                                   : said.firstName.isEmpty() ? before.vorname
                                                                              : said.firstName};
  PersonName person = personName(before);
  if (said.surname.isEmpty() && !said.fullName.isEmpty()) {
    person = personNameOf(said.fullName);
    if (person.first.isEmpty()) person.first = said.firstName;
    if (person.first.isEmpty()) person = personName({person.last, before.vorname});
    return storedName(person);
  }
  if (!said.surname.isEmpty()) person.last = said.surname;
  if (!said.firstName.isEmpty()) person.first = said.firstName;
  return isNew || person != personName(before) ? storedName(person) : before;
}

}  // namespace

ShooterPlanning::ShooterPlanning(const StoreState& state, const ShooterReader& reader,
                                 const ShooterIndex& index, Plan& plan, StartNumbers numbers)
    : state_(state),
      reader_(reader),
      index_(index),
      plan_(plan),
      names_(state, plan),
      numbers_(std::move(numbers)) {
  for (const ListColumn& column : columnsOf(ListKind::Shooters))
    for (size_t i = 0; i < state.shooters.def.fields.size(); ++i)
      if (dao::sameName(state.shooters.def.fields[i].name, column.column))
        headings_.insert(static_cast<int>(i), column.heading);
  const TableRows& members = state.groupMembers;
  const int member = members.position("SchuetzeID"), group = members.position("GruppenID");
  for (const QVariantList& row : members.rows)
    groupsOf_[row[member].toLongLong()].push_back(row[group].toLongLong());
  const TableRows& registrations = state.registrations;
  const int shooter = registrations.position("SchuetzeID"), discipline = registrations.position("SPOID"),
            team = registrations.position("MannID");
  for (const QVariantList& row : registrations.rows)
    registrationsOf_[row[shooter].toLongLong()].push_back(
        {row[discipline].toLongLong(), refOf(row[team].toLongLong())});
}

JudgedRow ShooterPlanning::plan(SaidOfShooter said, int match) {
  Work work{std::move(said), match};
  work.planSize = static_cast<int>(plan_.size());
  work.matchRemarks = work.said.judged.remarks.size();
  work.row.table = state_.shooters.def.name;
  if (match != kNobody) {
    work.stored = &index_.row(match);
    work.key = state_.shooters.key(*work.stored);
  }
  if (work.said.judged.faults.empty()) {
    planStartNumber(work);
    planName(work);
    planValues(work);
    planClub(work);
    planClass(work);
    planGroups(work);
    planRegistrations(work);
  }
  commit(work);
  return std::move(work.said.judged);
}

void ShooterPlanning::planStartNumber(Work& work) {
  work.said.judged.who = work.said.text(index_.number);
  if (!work.isNew()) work.said.judged.who = work.text(index_.number);
  if (!work.isNew()) return;
  QString number = work.said.text(index_.number);
  if (number.isEmpty()) {
    number = numbers_.next();
    numbers_.take(number);
    work.said.judged.who = number;
    work.said.judged.remarks << QString("Bekommt die Startnummer %1.").arg(number);
  }
  work.text(heading::StartNumber, fieldAt(index_.number), index_.number, number);
}

void ShooterPlanning::planName(Work& work) const {
  const SaidOfShooter& said = work.said;
  StoredName after =
      nameAfter(said, {work.text(index_.name), work.text(index_.firstName)}, index_, work.isNew());
  const bool firstSaid = !said.firstName.isNull() || said.value(index_.firstName);
  if (after.vorname.isEmpty()) after.vorname = firstSaid ? QString("") : QString();
  if (after.name.isEmpty() && work.isNew() && !said.value(index_.name))
    work.fault(reader_, heading::Surname, "Der Name fehlt.");
  for (const auto& [text, column] : {std::pair(after.name, index_.name), {after.vorname, index_.firstName}}) {
    const dao::FieldDef& field = fieldAt(column);
    const QString trouble = tooLong(text, field.size == 0 ? 255 : field.size);
    if (!trouble.isEmpty()) work.fault(reader_, heading::Surname, trouble);
    work.text(headings_.value(column), field, column, text);
  }
  work.said.judged.who += " " + after.name;
}

/// Whether a known shooter keeps what he has: the value says the same in other words, or nothing at all.
bool ShooterPlanning::saysNothingNew(const SaidOfShooter& said, int column, const QVariant& before,
                                     const QVariant& value) const {
  const QString text = value.toString();
  if (isSame(before, value, fieldAt(column))) return true;
  if (text.isEmpty()) return column != index_.sex || !said.sexSaid;
  if (said.exact.contains(column)) return false;
  if (column == index_.sex) return before.toString().toUpper() == text;
  return column == index_.birthDate &&
         (text == kUnknownBirthDate || index_.birthKey(before.toString()) == index_.birthKey(text));
}

void ShooterPlanning::planValues(Work& work) const {
  const QList<int> elsewhere = {index_.name, index_.firstName, index_.number, index_.byHand};
  for (const auto& [column, value] : work.said.values) {
    const QVariant before = work.before(column);
    if (elsewhere.contains(column)) continue;
    if (!work.isNew() && saysNothingNew(work.said, column, before, value)) continue;
    const dao::FieldDef& field = fieldAt(column);
    work.change(headings_.value(column), {field.name, before, value},
                work.isNew() ? QString() : cellOf(before, field), cellOf(value, field));
  }
  if (work.isNew() && !work.said.value(index_.birthDate) && !reader_.hasExact(heading::BirthDate))
    work.text(heading::BirthDate, fieldAt(index_.birthDate), index_.birthDate, kUnknownBirthDate.toString());
}

void ShooterPlanning::planClub(Work& work) {
  const auto refer = [this, &work](const QString& heading, int column, const RowRef& after, auto&& nameOf) {
    const RowRef before = refOf(work.number(column));
    if (after == before) return;
    const QString name = fieldAt(column).name;
    work.change(heading, plannedValue(name, work.before(column), after), nameOf(before), nameOf(after));
  };
  const SaidOfShooter& said = work.said;
  work.club = refOf(work.number(index_.club));
  if (!said.club.isEmpty() || !said.clubShort.isEmpty()) {
    const FoundRow found = said.club == NoneWord ? FoundRow() : names_.club(said.club, said.clubShort);
    if (!found.trouble.isEmpty()) work.fault(reader_, heading::Club, found.trouble);
    work.club = found.row;
    refer(heading::Club, index_.club, work.club,
          [this](const RowRef& club) { return names_.clubName(club); });
  }
  if (said.team.name.isEmpty()) return;
  const FoundRow found = said.team.name == NoneWord ? FoundRow() : names_.team(said.team, work.club);
  if (!found.trouble.isEmpty()) work.fault(reader_, heading::Team, found.trouble);
  refer(heading::Team, index_.team, found.row, [this](const RowRef& team) { return names_.teamName(team); });
}

/// The class that the row says, else the one by age and sex where these are new or the class is no longer by
/// hand; nothing where the row names an unknown one.
std::optional<ShooterPlanning::ClassChoice> ShooterPlanning::chosenClass(Work& work,
                                                                         const ClassChoice& before) const {
  const auto after = [&](int column) {
    for (const PlannedValue& value : work.row.values)
      if (value.column == fieldAt(column).name) return value.after.toString();
    return work.text(column);
  };
  const QString birth = after(index_.birthDate), sex = after(index_.sex);
  const QVariant* byHandSaid = work.said.value(index_.byHand);
  ClassChoice choice{before.id, byHandSaid ? byHandSaid->toInt() != 0 : before.byHand};
  const QString& word = work.said.className;
  if (!word.isEmpty()) {
    const auto told = word == NoneWord ? std::optional<qint32>(0) : state_.classes.idOf(word);
    if (!told) return {};
    choice.id = *told;
    if (!byHandSaid && (work.isNew() || choice.id != before.id))
      choice.byHand = choice.id != state_.classes.determine(birth, sex).id;
    return choice;
  }
  const bool isOther = work.isNew() || birth != work.text(index_.birthDate) || sex != work.text(index_.sex);
  if (choice.byHand || (!isOther && !before.byHand)) return choice;
  const DeterminedClass determined = state_.classes.determine(birth, sex);
  choice.id = determined.id;
  if (choice.id == 0) work.said.judged.remarks << determined.why;
  return choice;
}

void ShooterPlanning::planClass(Work& work) const {
  const ClassChoice before{static_cast<qint32>(work.number(index_.classId)), work.number(index_.byHand) != 0};
  const auto choice = chosenClass(work, before);
  if (!choice)
    return work.fault(reader_, heading::Class,
                      QString("Die Klasse »%1« gibt es im Wettkampf nicht oder mehrmals.")
                          .arg(shownText(work.said.className)));
  const auto name = [this](qint32 of) {
    const QString key = state_.classes.keyOf(of);
    return key.isEmpty() ? state_.classes.nameOf(of) : key;
  };
  if (choice->id != before.id)
    work.change(heading::Class, {fieldAt(index_.classId).name, work.before(index_.classId), choice->id},
                name(before.id), name(choice->id));
  if (choice->byHand == before.byHand) return;
  const auto yesNo = [](bool yes) { return QString(yes ? "Ja" : "Nein"); };
  work.change(heading::ClassByHand,
              {fieldAt(index_.byHand).name, work.before(index_.byHand), choice->byHand ? -1 : 0},
              work.isNew() ? QString() : yesNo(before.byHand), yesNo(choice->byHand));
}

void ShooterPlanning::planGroups(Work& work) {
  QStringList added;
  std::vector<RowRef> seen;
  for (const QString& line : work.said.groups.split(u'\n', Qt::SkipEmptyParts)) {
    const QString name = line.simplified();
    if (name.isEmpty()) continue;
    if (const QString trouble = tooLong(name, 255); !trouble.isEmpty())
      return work.fault(reader_, heading::Groups, trouble);
    const FoundRow group = names_.shooterGroup(name);
    if (!group.trouble.isEmpty()) work.fault(reader_, heading::Groups, group.trouble);
    const std::vector<qint64> present = groupsOf_.value(work.key);
    const bool known = !work.isNew() && std::any_of(present.begin(), present.end(),
                                                    [&](qint64 key) { return refOf(key) == group.row; });
    if (known || std::find(seen.begin(), seen.end(), group.row) != seen.end()) continue;
    seen.push_back(group.row);
    added << name;
    work.further.push_back({"SchuetzenGruppenZuordnung", 0, {plannedValue("GruppenID", {}, group.row)}});
  }
  if (!added.isEmpty()) work.changes.push_back({heading::Groups, {}, "+ " + added.join(", ")});
}

void ShooterPlanning::planRegistrations(Work& work) {
  QStringList added;
  std::vector<Registration> present =
      work.isNew() ? std::vector<Registration>() : registrationsOf_.value(work.key);
  for (const QString& line : work.said.registrations.split(u'\n', Qt::SkipEmptyParts)) {
    const RegistrationText text = readRegistration(line, state_.reportedDisciplines);
    if (!text.trouble.isEmpty()) return work.fault(reader_, heading::Registrations, text.trouble);
    const FoundRow team = text.team.name.isEmpty() ? FoundRow() : names_.team(text.team, work.club);
    if (!team.trouble.isEmpty()) return work.fault(reader_, heading::Registrations, team.trouble);
    const Registration registration{text.discipline, team.row};
    if (std::find(present.begin(), present.end(), registration) != present.end()) continue;
    present.push_back(registration);
    added << text.name;
    work.further.push_back({"Schuetzen_SPO_Anmeldungen",
                            0,
                            {{"SPOID", {}, static_cast<int>(text.discipline)},
                             {"SPOKey", {}, text.key},
                             plannedValue("MannID", {}, team.row)}});
  }
  if (!added.isEmpty()) work.changes.push_back({heading::Registrations, {}, "+ " + added.join(", ")});
}

void ShooterPlanning::commit(Work& work) {
  JudgedRow& judged = work.said.judged;
  judged.who = shownText(judged.who.trimmed());
  if (!judged.faults.empty()) {
    judged.verdict = Verdict::Faulty;
    judged.remarks.resize(work.matchRemarks);
    if (static_cast<int>(plan_.size()) > work.planSize) {
      plan_.resize(static_cast<size_t>(work.planSize));
      names_.forgetFrom(work.planSize);
    }
    return;
  }
  judged.remarks << names_.takeRemarks();
  judged.changes = std::move(work.changes);
  RowRef self = refOf(work.key);
  if (work.isNew() || !work.row.values.empty()) {
    work.row.key = work.key;
    plan_.push_back(std::move(work.row));
    if (work.isNew()) self = {0, static_cast<int>(plan_.size()) - 1};
  }
  for (PlannedRow& row : work.further) {
    row.values.push_back(plannedValue("SchuetzeID", {}, self));
    plan_.push_back(std::move(row));
  }
  judged.verdict = work.isNew() ? Verdict::New : judged.changes.empty() ? Verdict::Known : Verdict::Changed;
}

}  // namespace qk::lists
