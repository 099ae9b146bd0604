#include "masterdata/people/shooter_class.h"

#include <algorithm>

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"

namespace qk {

ShooterClasses::ShooterClasses(std::vector<Entry> classes, QString yearBegin, const QDate& refDatum)
    : classes_(std::move(classes)), rule_{{}, std::move(yearBegin), refDatum} {
  for (const Entry& entry : classes_) rule_.classes.push_back(entry.limits);
}

DeterminedClass ShooterClasses::determine(const QString& gebDat, const QString& geschlecht) const {
  if (classes_.empty()) return {0, "Der Wettkampf hat noch keine Klassen."};
  if (!isKnownBirthDate(gebDat)) return {0, "Ohne Geburtsdatum keine Klasse."};
  try {
    if (const auto taken = classByAge(rule_, gebDat, geschlecht)) return {*taken, {}};
  } catch (const Error&) {
    return {0, QString("Der Tag des Klassenwechsels, »%1«, ist kein Tag (TT.MM.).").arg(rule_.yearBegin)};
  }
  const QString who = geschlecht.toUpper() == "M"   ? "männlich"
                      : geschlecht.toUpper() == "W" ? "weiblich"
                                                    : "ohne Geschlecht";
  return {0, QString("Keine Klasse nimmt Jahrgang %1, %2.")
                 .arg(birthDateOf(gebDat, rule_.refDatum).year())
                 .arg(who)};
}

std::optional<qint32> ShooterClasses::idOf(const QString& text) const {
  const QString wanted = text.simplified();
  for (const auto column : {&Entry::key, &Entry::name}) {
    std::optional<qint32> found;
    bool several = false;
    for (const Entry& entry : classes_) {
      if ((entry.*column).simplified().compare(wanted, Qt::CaseInsensitive) != 0) continue;
      several = several || found;
      found = entry.limits.id;
    }
    if (found && !wanted.isEmpty()) return several ? std::nullopt : found;
  }
  return {};
}

const ShooterClasses::Entry* ShooterClasses::find(qint32 id) const {
  const auto found = std::find_if(classes_.begin(), classes_.end(),
                                  [&](const Entry& entry) { return entry.limits.id == id; });
  return found == classes_.end() ? nullptr : &*found;
}

QString ShooterClasses::nameOf(qint32 id) const {
  const Entry* entry = find(id);
  return entry ? entry->name : QString();
}

QString ShooterClasses::keyOf(qint32 id) const {
  const Entry* entry = find(id);
  return entry ? entry->key : QString();
}

ShooterClasses readShooterClasses(dao::Database& database) {
  std::vector<ShooterClasses::Entry> classes;
  const auto rows = database.openRecordset("Select * from Schützenklassen order by [Alter von], ID");
  for (; !rows->eof(); rows->moveNext())
    classes.push_back({{FeldWert(*rows, "ID").toInt(), FeldWert(*rows, "Alter von").toInt(),
                        FeldWert(*rows, "Alter bis").toInt(), FeldWert(*rows, "Geschlecht").toInt()},
                       FeldWert(*rows, "Klasse").toString(),
                       FeldWert(*rows, "KZ").toString()});
  const auto year = database.openRecordset("Klassenwechsel");
  const auto head = database.openRecordset("Select * from Wettkampf");
  const QVariant date = head->eof() ? QVariant() : FeldWert(*head, "RefDatum");
  return {std::move(classes), year->eof() ? QString() : FeldWert(*year, "wechseldatumneu").toString(),
          date.userType() == QMetaType::QDateTime ? date.toDateTime().date() : dateZero().date()};
}

}  // namespace qk
