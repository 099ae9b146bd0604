#include "masterdata/counter/shooter_storing.h"

#include "masterdata/counter/shooter_check.h"
#include "masterdata/people/birth_date.h"
#include "platform/dialog/dialogs.h"

namespace qk {

namespace {

const QString kTitle = "Schützen";

}  // namespace

bool ShooterStoring::resolve(Part part, const QString& text, qint32& id, bool& make) {
  const bool club = part == Part::Club;
  const NameList& names = club ? counter_.clubs() : counter_.teams();
  // Untouched, it may even stand for a row that is gone.
  if (text.simplified() == names.shown(id)) return true;
  if (const auto found = names.idOf(text)) {
    id = *found;
    return true;
  }
  if (names.isAmbiguous(text)) {
    dialogs_.note(QString("»%1« gibt es mehrmals. Bitte %2 aus der Liste wählen.")
                      .arg(text.simplified(), club ? "den Verein" : "die Mannschaft"),
                  BoxIcon::Exclamation, kTitle);
    return false;
  }
  make = dialogs_.show(
             {.text = QString(club ? "Den Verein »%1« gibt es noch nicht.\nSoll er angelegt werden?"
                                   : "Die Mannschaft »%1« gibt es noch nicht.\nSoll sie angelegt werden?")
                          .arg(text.simplified()),
              .title = kTitle,
              .icon = BoxIcon::Question,
              .buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
  return make;
}

/// What was offered may be taken by now; nobody asked for that very number.
void ShooterStoring::renumberProposed(ShooterEntry& entry) {
  if (entry.id == 0 && entry.proposed && !counter_.holdersOf(entry.data.startnummer, 0).empty())
    entry.data.startnummer = counter_.nextStartNumber();
}

StoringResult ShooterStoring::store(ShooterEntry entry) {
  StoringResult result;
  reported(fehlerReport(dialogs_, "Der Schütze konnte nicht gespeichert werden."), [&](Steps&) {
    result = {};
    ShooterEntry wanted = entry;
    renumberProposed(wanted);
    if (const ShooterTrouble trouble = troubleWith(wanted.data, wanted.before, wanted.id, counter_);
        !trouble.text.isEmpty()) {
      dialogs_.note(trouble.text, BoxIcon::Exclamation, kTitle);
      result.column = trouble.column;
      return;
    }
    if (changedValues(wanted.data, wanted.before).contains("Gebdat"))
      wanted.data.gebDat = readBirthDate(wanted.data.gebDat, counter_.classes().refDatum()).stored;
    bool makeClub = false, makeTeam = false;
    if (!resolve(Part::Club, wanted.club, wanted.data.vereinsID, makeClub)) {
      result.column = "VereinsID";
      return;
    }
    if (!resolve(Part::Team, wanted.team, wanted.data.mannID, makeTeam)) {
      result.column = "lMannID";
      return;
    }
    const QString question = namesakeQuestion(wanted.data, wanted.before, wanted.id, counter_);
    if (!question.isEmpty() && dialogs_.show({.text = question,
                                              .title = kTitle,
                                              .icon = BoxIcon::Exclamation,
                                              .buttons = BoxButtons::YesNo,
                                              .preset = BoxAnswer::No}) != BoxAnswer::Yes) {
      result.column = "Name";
      return;
    }
    result = write(wanted, makeClub, makeTeam);
  });
  return result;
}

StoringResult ShooterStoring::write(ShooterEntry& entry, bool makeClub, bool makeTeam) {
  dao::Changes changes(counter_.database());
  if (makeClub)
    entry.data.vereinsID = static_cast<qint32>(changes.insert("Verein", {{"Name", entry.club.simplified()}}));
  if (makeTeam)
    entry.data.mannID = static_cast<qint32>(changes.insert(
        "Mannschaften", {{"MannName", entry.team.simplified()}, {"VereinID", entry.data.vereinsID}}));
  const dao::RowValues changed = changedValues(entry.data, entry.before);
  if (entry.id != 0 && changed.isEmpty()) return {StoringResult::Outcome::Unchanged, entry.id, {}, {}};
  qint64 id = entry.id;
  if (id == 0) {
    id = changes.insert("Schützen", changed);
  } else {
    dao::RowValues old;
    for (auto it = changed.begin(); it != changed.end(); ++it)
      old.insert(it.key(), entry.before.value(it.key()));
    changes.expect("Schützen", id, old);
    changes.update("Schützen", id, changed);
  }
  if (changed.contains("Startnummer")) refuseTakenNumber(changes, entry);
  try {
    changes.write();
  } catch (const dao::RowChanged& other) {
    if (!overwrites(entry, other.found())) return {StoringResult::Outcome::Reload, entry.id, {}, {}};
    entry.before = counter_.row(entry.id);
    return write(entry, makeClub, makeTeam);
  } catch (const Error& error) {
    return writingFailed(error, entry, makeClub, makeTeam);
  }
  if (makeClub || makeTeam) counter_.refresh();
  return {StoringResult::Outcome::Stored,
          id,
          {},
          QString("Gespeichert: %1  %2").arg(entry.data.startnummer, storedName(entry.data.person).name)};
}

QString ShooterStoring::shownValue(const QString& column, const QVariant& value) const {
  if (column == "VereinsID") return counter_.clubs().shown(value.toInt());
  if (column == "lMannID") return counter_.teams().shown(value.toInt());
  if (column == "KlassenID") return counter_.classes().nameOf(value.toInt());
  if (column == "bGebKlasseManuell") return value.toInt() != 0 ? "ja" : "nein";
  return value.toString();
}

/// The other one's values beside one's own, column by column.
bool ShooterStoring::overwrites(const ShooterEntry& entry, const dao::RowValues& found) {
  const dao::RowValues mine = changedValues(entry.data, entry.before);
  QStringList lines, columns = found.keys();
  columns.sort();
  for (const QString& column : columns)
    lines << QString("%1: dort jetzt »%2«, hier »%3«")
                 .arg(titleOf(column), shownValue(column, found.value(column)),
                      shownValue(column, mine.value(column)));
  return dialogs_.show({.text = "Diesen Schützen hat inzwischen jemand anderes geändert.\n\n" +
                                lines.join('\n') + "\n\nSoll gelten, was hier steht?",
                        .title = kTitle,
                        .icon = BoxIcon::Exclamation,
                        .buttons = BoxButtons::YesNo,
                        .preset = BoxAnswer::No}) == BoxAnswer::Yes;
}

/// Two counters may be given the same number within the same moment: the second one learns it before anything
/// is written.
void ShooterStoring::refuseTakenNumber(dao::Changes& changes, const ShooterEntry& entry) {
  changes.hold("Schützen");
  changes.require([this, number = entry.data.startnummer, id = entry.id] {
    if (const auto others = counter_.holdersOf(number, id); !others.empty())
      throw Error(errors::kDuplicateKey, numberIsTaken(number, others.front()));
  });
}

StoringResult ShooterStoring::writingFailed(const Error& error, ShooterEntry& entry, bool makeClub,
                                            bool makeTeam) {
  if (error.number() == errors::kRecordDeleted) {
    dialogs_.note("Diesen Schützen hat inzwischen jemand anderes gelöscht.", BoxIcon::Exclamation, kTitle);
    return {StoringResult::Outcome::Reload, 0, {}, {}};
  }
  if (error.number() != errors::kDuplicateKey) throw error;
  if (entry.id == 0 && entry.proposed) {
    entry.data.startnummer = counter_.nextStartNumber();
    return write(entry, makeClub, makeTeam);
  }
  dialogs_.note(error.description(), BoxIcon::Exclamation, kTitle);
  return {StoringResult::Outcome::Refused, entry.id, "Startnummer", {}};
}

}  // namespace qk
