#include "masterdata/counter/shooter_check.h"

#include "masterdata/people/birth_date.h"

namespace qk {

namespace {

QString tooLong(const QString& column, int length) {
  return QString("Der Text in »%1« ist zu lang: höchstens %2 Zeichen.").arg(titleOf(column)).arg(length);
}

}  // namespace

QString numberIsTaken(const QString& number, const PresentShooter& holder) {
  return QString("Die Startnummer %1 ist vergeben:\n%2").arg(number, lineOf(holder));
}

ShooterTrouble troubleWith(const ShooterData& data, const dao::RowValues& before, qint64 id,
                           const Counter& counter) {
  const dao::RowValues changed = changedValues(data, before);
  if (data.startnummer.trimmed().isEmpty()) return {"Startnummer", "Es fehlt die Startnummer."};
  if (data.person.last.trimmed().isEmpty() && data.person.first.trimmed().isEmpty())
    return {"Name", "Es fehlt der Name."};
  if (changed.contains("Gebdat"))
    if (const BirthDate date = readBirthDate(data.gebDat, counter.classes().refDatum()); !date.ok())
      return {"Gebdat", "Das Geburtsdatum stimmt nicht.\n" + date.trouble};
  for (auto it = changed.begin(); it != changed.end(); ++it)
    if (const int length = counter.lengthOf(it.key()); length > 0 && it.value().toString().size() > length)
      return {it.key(), tooLong(it.key(), length)};
  if (changed.contains("Startnummer"))
    if (const auto holders = counter.holdersOf(data.startnummer, id); !holders.empty())
      return {"Startnummer", numberIsTaken(data.startnummer.trimmed(), holders.front())};
  return {};
}

QString namesakeQuestion(const ShooterData& data, const dao::RowValues& before, qint64 id,
                         const Counter& counter) {
  const dao::RowValues changed = changedValues(data, before);
  if (!changed.contains("Name") && !changed.contains("Gebdat")) return {};
  const QString name = storedName(data.person).name;
  const auto others = counter.namesakes(name, data.gebDat, id);
  if (others.empty()) return {};
  QString there;
  for (const PresentShooter& other : others) there += "\nvorhanden: " + lineOf(other);
  const PresentShooter here{0, data.startnummer, name, data.gebDat, counter.clubs().shown(data.vereinsID)};
  return QString("Diesen Namen mit diesem Geburtsdatum gibt es schon.\n\n%1: %2%3\n\nTrotzdem speichern?")
      .arg(id == 0 ? "neu" : "geändert", lineOf(here), there);
}

}  // namespace qk
