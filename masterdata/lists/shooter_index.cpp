#include "masterdata/lists/shooter_index.h"

#include "masterdata/lists/named_rows.h"
#include "masterdata/people/birth_date.h"

namespace qk::lists {

namespace {

const Positions& found(const QHash<QString, Positions>& index, const QString& key) {
  static const Positions none;
  const auto at = index.constFind(key);
  return at == index.constEnd() ? none : *at;
}

}  // namespace

ShooterIndex::ShooterIndex(const StoreState& state)
    : number(state.shooters.position("Startnummer")),
      name(state.shooters.position("Name")),
      firstName(state.shooters.position("Vorname")),
      birthDate(state.shooters.position("Gebdat")),
      sex(state.shooters.position("Geschlecht")),
      licence(state.shooters.position("AusweisNr")),
      club(state.shooters.position("VereinsID")),
      team(state.shooters.position("lMannID")),
      classId(state.shooters.position("KlassenID")),
      byHand(state.shooters.position("bGebKlasseManuell")),
      state_(state) {
  const auto add = [](QHash<QString, Positions>& index, const QString& key, int position) {
    if (!key.isEmpty()) index[key].push_back(position);
  };
  for (size_t i = 0; i < state.shooters.rows.size(); ++i) {
    const int position = static_cast<int>(i);
    add(numbers_, foldedText(text(position, number)), position);
    add(licences_, foldedText(text(position, licence)), position);
    add(names_, foldedText(text(position, name)), position);
    if (!text(position, name).isEmpty())
      add(persons_, personKey(text(position, name), text(position, birthDate)), position);
  }
}

const Positions& ShooterIndex::byNumber(const QString& wanted) const {
  return found(numbers_, foldedText(wanted));
}

const Positions& ShooterIndex::byLicence(const QString& wanted) const {
  return found(licences_, foldedText(wanted));
}

const Positions& ShooterIndex::byPerson(const QString& wantedName, const QString& wantedDate) const {
  return found(persons_, personKey(wantedName, wantedDate));
}

const Positions& ShooterIndex::byName(const QString& wanted) const {
  return found(names_, foldedText(wanted));
}

QString ShooterIndex::birthKey(const QString& date) const {
  if (date.trimmed().isEmpty()) return {};
  const BirthDate read = readBirthDate(date, state_.classes.refDatum());
  if (!read.ok()) return date.trimmed();
  return read.stored == kUnknownBirthDate ? QString() : read.stored;
}

QString ShooterIndex::personKey(const QString& ofName, const QString& date) const {
  return foldedText(ofName) + u'\n' + birthKey(date);
}

QString ShooterIndex::describe(int position) const {
  const QString date = birthKey(text(position, birthDate));
  return QString("%1 (Startnummer %2%3)")
      .arg(text(position, name), text(position, number), date.isEmpty() ? QString() : ", geb. " + date);
}

}  // namespace qk::lists
