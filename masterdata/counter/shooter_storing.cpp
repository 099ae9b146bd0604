#include "masterdata/counter/shooter_storing.h"

#include <algorithm>
#include <functional>

#include "masterdata/counter/shooter_check.h"
#include "masterdata/people/birth_date.h"
#include "masterdata/rows/references.h"
#include "platform/dao/values/types.h"
#include "platform/dialog/dialogs.h"

namespace qk {

namespace {

const QString kTitle = "Schützen";

/// While the operator was asked whether it is to be made, somebody else made it.
class MadeMeanwhile : public Error {
 public:
  MadeMeanwhile() : Error(errors::kChangedMeanwhile) {}
};

}  // namespace

const QStringList kClassColumns = {"Gebdat", "Geschlecht", "bGebKlasseManuell", "KlassenID"};

/// A shooter on his way into the table. What was changed here follows from `entry` alone, however often the
/// row turns out to be another one.
struct ShooterStoring::Writing {
  ShooterEntry entry;
  QString shownClass;         ///< what the form calls the class
  dao::RowValues found = {};  ///< what is known to stand in the row now
  bool makeClub = false, makeTeam = false;

  /// A shooter without a club, or whose club is gone, gets a team without one.
  qint32 clubOfTeam() const { return entry.club.simplified().isEmpty() ? 0 : entry.data.vereinsID; }

  /// What the class follows from, and the class: all of it is asked about when any of it is changed here.
  QStringList expected(const dao::RowValues& changed) const {
    QStringList columns = changed.keys();
    const auto isChanged = [&](const QString& column) { return changed.contains(column); };
    if (std::any_of(kClassColumns.begin(), kClassColumns.end(), isChanged))
      for (const QString& column : kClassColumns)
        if (!changed.contains(column) && entry.before.contains(column)) columns.append(column);
    return columns;
  }

  dao::RowValues changed() const {
    dao::RowValues values = changedValues(entry.data, entry.before);
    // Both say who somebody is: one changed here and one changed there would make a third person.
    if (entry.id != 0 && (values.contains("Name") || values.contains("Vorname")))
      for (const char* column : {"Name", "Vorname"})
        if (!values.contains(column) && entry.before.contains(column))
          values.insert(column, entry.before.value(column));
    return values;
  }
};

/// What only somebody else changed, and one's own class follows from.
void ShooterStoring::takeOver(ShooterEntry& entry, const QString& column, const QVariant& value) {
  entry.before.insert(column, value);
  const ShooterData there = shooterData(entry.before);
  if (column == "Gebdat") entry.data.gebDat = there.gebDat;
  if (column == "Geschlecht") entry.data.geschlecht = there.geschlecht;
  if (column == "bGebKlasseManuell") entry.data.klasseManuell = there.klasseManuell;
  if (column == "KlassenID") entry.data.klassenID = there.klassenID;
}

/// The form may have worked the class out by limits that somebody has corrected since.
void ShooterStoring::followClass(ShooterEntry& entry) const {
  const dao::RowValues changed = changedValues(entry.data, entry.before);
  const bool touched = entry.id == 0 || changed.contains("Gebdat") || changed.contains("Geschlecht") ||
                       changed.contains("bGebKlasseManuell");
  if (touched && !entry.data.klasseManuell)
    entry.data.klassenID = counter_.classes().determine(entry.data.gebDat, entry.data.geschlecht).id;
}

/// What was offered may be taken by now; nobody asked for that very number.
void ShooterStoring::renumberProposed(ShooterEntry& entry) {
  if (entry.id == 0 && entry.proposed && !counter_.holdersOf(entry.data.startnummer, 0).empty())
    entry.data.startnummer = counter_.nextStartNumber();
}

bool ShooterStoring::resolve(Writing& writing, Part part) {
  const bool club = part == Part::Club;
  ShooterEntry& entry = writing.entry;
  const QString text = (club ? entry.club : entry.team).simplified();
  qint32& id = club ? entry.data.vereinsID : entry.data.mannID;
  bool& make = club ? writing.makeClub : writing.makeTeam;
  // Untouched, it may even stand for a row that is gone.
  if (text == (club ? entry.shownClub : entry.shownTeam)) return true;
  const NameList& names = club ? counter_.clubs() : counter_.teams();
  if (!names.knows(text)) counter_.refresh();  // somebody else may have made it since
  if (const auto found = names.idOf(text)) {
    id = *found;
    make = false;
    return true;
  }
  if (names.isAmbiguous(text)) {
    dialogs_.note(QString("»%1« gibt es mehrmals. Bitte %2 aus der Liste wählen.")
                      .arg(text, club ? "den Verein" : "die Mannschaft"),
                  BoxIcon::Exclamation, kTitle);
    return false;
  }
  if (make) return true;  // asked already
  make = dialogs_.show(
             {.text = QString(club ? "Den Verein »%1« gibt es noch nicht.\nSoll er angelegt werden?"
                                   : "Die Mannschaft »%1« gibt es noch nicht.\nSoll sie angelegt werden?")
                          .arg(text),
              .title = kTitle,
              .icon = BoxIcon::Question,
              .buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
  return make;
}

QString ShooterStoring::unresolved(Writing& writing) {
  if (!resolve(writing, Part::Club)) return "VereinsID";
  if (!resolve(writing, Part::Team)) return "lMannID";
  return {};
}

StoringResult ShooterStoring::store(ShooterEntry entry) {
  StoringResult result;
  const QString shownClass = counter_.classes().nameOf(entry.data.klassenID);
  reported(fehlerReport(dialogs_, "Der Schütze konnte nicht gespeichert werden."), [&](Steps&) {
    result = {};
    counter_.refreshClasses();
    Writing writing{entry, shownClass};
    ShooterEntry& wanted = writing.entry;
    renumberProposed(wanted);
    if (const ShooterTrouble trouble = troubleWith(wanted.data, wanted.before, wanted.id, counter_);
        !trouble.text.isEmpty()) {
      result = refused(wanted, trouble.text, trouble.column);
      return;
    }
    if (changedValues(wanted.data, wanted.before).contains("Gebdat"))
      wanted.data.gebDat = readBirthDate(wanted.data.gebDat, counter_.classes().refDatum()).stored;
    followClass(wanted);
    result.column = unresolved(writing);
    if (!result.column.isEmpty()) return;
    const QString question = namesakeQuestion(wanted.data, wanted.before, wanted.id, counter_);
    if (!question.isEmpty() && dialogs_.show({.text = question,
                                              .title = kTitle,
                                              .icon = BoxIcon::Exclamation,
                                              .buttons = BoxButtons::YesNo,
                                              .preset = BoxAnswer::No}) != BoxAnswer::Yes) {
      result.column = "Name";
      return;
    }
    result = write(writing);
  });
  return result;
}

/// Until it is written, or somebody says no: what another desk does meanwhile is asked about, or gone along
/// with.
StoringResult ShooterStoring::write(Writing& writing) {
  ShooterEntry& entry = writing.entry;
  while (true) {
    try {
      return writeOnce(writing);
    } catch (const dao::RowChanged& other) {
      if (!overwrites(writing, other)) return {StoringResult::Outcome::Reload, entry.id, {}};
      followClass(entry);
    } catch (const MadeMeanwhile&) {
      // The operator wanted a shooter of that club, and there it is: no reason to bother him.
      counter_.refresh();
      if (const QString column = unresolved(writing); !column.isEmpty())
        return {StoringResult::Outcome::Refused, entry.id, column};
    } catch (const ReferenceGone& gone) {
      counter_.refresh();
      return refused(entry, gone.description(), gone.column() == "VereinID" ? "VereinsID" : gone.column());
    } catch (const Error& error) {
      if (error.number() == errors::kRecordDeleted) {
        dialogs_.note("Diesen Schützen hat inzwischen jemand anderes gelöscht.", BoxIcon::Exclamation,
                      kTitle);
        return {StoringResult::Outcome::Reload, 0, {}};
      }
      if (error.number() != errors::kDuplicateKey) throw;
      if (entry.id != 0 || !entry.proposed) return refused(entry, error.description(), "Startnummer");
      entry.data.startnummer = counter_.nextStartNumber();
    }
  }
}

StoringResult ShooterStoring::writeOnce(Writing& writing) {
  ShooterEntry& entry = writing.entry;
  dao::Changes changes(counter_.database());
  if (writing.makeClub)
    entry.data.vereinsID = static_cast<qint32>(changes.insert("Verein", {{"Name", entry.club.simplified()}}));
  if (writing.makeTeam)
    entry.data.mannID = static_cast<qint32>(changes.insert(
        "Mannschaften", {{"MannName", entry.team.simplified()}, {"VereinID", writing.clubOfTeam()}}));
  const dao::RowValues changed = writing.changed();
  if (entry.id != 0 && changed.isEmpty()) return {StoringResult::Outcome::Unchanged, entry.id, {}};
  qint64 id = entry.id;
  if (id == 0) {
    id = changes.insert("Schützen", changed);
  } else {
    dao::RowValues there;
    for (const QString& column : writing.expected(changed))
      there.insert(column, writing.found.value(column, entry.before.value(column)));
    changes.expect("Schützen", id, there);
    changes.update("Schützen", id, changed);
  }
  requireNew(changes, writing);
  requireReferences(changes, writing, changed);
  if (changed.contains("Startnummer")) requireFreeNumber(changes, entry);
  changes.write();
  return {StoringResult::Outcome::Stored, id, {}};
}

/// None of that name, as the lists compare names, when it is made.
void ShooterStoring::requireNew(dao::Changes& changes, const Writing& writing) {
  using Read = std::function<NameList(dao::Database&)>;
  const auto require = [&](const QString& table, const QString& name, const Read& read) {
    changes.hold(table);
    changes.require([this, name, read] {
      if (read(counter_.database()).knows(name)) throw MadeMeanwhile();
    });
  };
  const auto readTeams = [club = writing.clubOfTeam()](dao::Database& database) {
    return readTeamsOf(database, club);  // another club's may be called the same
  };
  // Every writer that holds several tables begins with the shooters, so that none waits for another in turn.
  if (writing.makeClub || writing.makeTeam) changes.hold("Schützen");
  if (writing.makeClub) require("Verein", writing.entry.club, readClubs);
  if (writing.makeTeam) require("Mannschaften", writing.entry.team, readTeams);
}

/// What was chosen may be gone by now. What nobody touched isn't asked about.
void ShooterStoring::requireReferences(dao::Changes& changes, const Writing& writing,
                                       const dao::RowValues& changed) {
  const ShooterEntry& entry = writing.entry;
  const auto require = [&](const QString& column, const QString& target, qint64 key, const QString& name) {
    if (changed.contains(column) && key != 0)
      requireThere(counter_.database(), changes,
                   {"Schützen", column, target, titleOf(column), {{key, name.simplified()}}});
  };
  const QString known = counter_.classes().nameOf(entry.data.klassenID);
  require("KlassenID", "Schützenklassen", entry.data.klassenID, known.isEmpty() ? writing.shownClass : known);
  if (!writing.makeTeam) require("lMannID", "Mannschaften", entry.data.mannID, entry.team);
  if (writing.makeClub) return;
  require("VereinsID", "Verein", entry.data.vereinsID, entry.club);
  if (writing.makeTeam && writing.clubOfTeam() != 0)
    requireThere(counter_.database(), changes,
                 {"Mannschaften",
                  "VereinID",
                  "Verein",
                  titleOf("VereinsID"),
                  {{entry.data.vereinsID, entry.club.simplified()}}});
}

QString ShooterStoring::shownValue(const QString& column, const QVariant& value) const {
  if (column == "VereinsID") return counter_.clubs().shown(value.toInt());
  if (column == "lMannID") return counter_.teams().shown(value.toInt());
  if (column == "KlassenID") return counter_.classes().nameOf(value.toInt());
  if (column == "bGebKlasseManuell") return value.toInt() != 0 ? "ja" : "nein";
  return value.toString();
}

bool ShooterStoring::overwrites(Writing& writing, const dao::RowChanged& other) {
  counter_.refresh();  // what stands there now may be new, too
  const dao::RowValues mine = writing.changed();
  QStringList lines, columns = mine.keys();
  columns.sort();
  for (const QString& column : kClassColumns)
    for (auto theirs = other.found().begin(); theirs != other.found().end(); ++theirs) {
      if (!dao::sameName(theirs.key(), column) || mine.contains(column)) continue;
      takeOver(writing.entry, column, theirs.value());
      lines << QString("%1: dort jetzt »%2«, das bleibt")
                   .arg(titleOf(column), shownValue(column, theirs.value()));
    }
  for (const QString& column : columns)
    for (auto theirs = other.found().begin(); theirs != other.found().end(); ++theirs) {
      if (!dao::sameName(theirs.key(), column)) continue;
      writing.found.insert(column, theirs.value());
      QString here = shownValue(column, mine.value(column));
      if (column == "VereinsID" && writing.makeClub) here = writing.entry.club.simplified();
      if (column == "lMannID" && writing.makeTeam) here = writing.entry.team.simplified();
      lines << QString("%1: dort jetzt »%2«, hier »%3«")
                   .arg(titleOf(column), shownValue(column, theirs.value()), here);
    }
  return dialogs_.show({.text = "Diesen Schützen hat inzwischen jemand anderes geändert.\n\n" +
                                lines.join('\n') + "\n\nSoll gelten, was hier steht?",
                        .title = kTitle,
                        .icon = BoxIcon::Exclamation,
                        .buttons = BoxButtons::YesNo,
                        .preset = BoxAnswer::No}) == BoxAnswer::Yes;
}

/// Two counters may be given the same number within the same moment: the second one learns it before anything
/// is written.
void ShooterStoring::requireFreeNumber(dao::Changes& changes, const ShooterEntry& entry) {
  changes.hold("Schützen");
  changes.require([this, number = entry.data.startnummer, id = entry.id] {
    if (const auto others = counter_.holdersOf(number, id); !others.empty())
      throw Error(errors::kDuplicateKey, numberIsTaken(number, others.front()));
  });
}

StoringResult ShooterStoring::refused(const ShooterEntry& entry, const QString& why, const QString& column) {
  dialogs_.note(why, BoxIcon::Exclamation, kTitle);
  return {StoringResult::Outcome::Refused, entry.id, column};
}

}  // namespace qk
