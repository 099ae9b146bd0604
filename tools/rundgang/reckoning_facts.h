// What the competition says of disciplines, shooters and discipline keys, read by the second reckoning for
// itself. Numbers with one decimal are in tenths.
#pragma once

#include <QMap>
#include <QString>

namespace qk {

namespace dao {
class Database;
}

struct Rule {  ///< of a discipline
  int id = 0;
  int place = 0;  ///< in the list of disciplines
  bool rings = false, teilers = false;
  bool tenths = false, tenthDigits = false, mixed = false;  ///< what of a ring value counts
  int series = 0;
  int maximum = 0;  ///< a ring-teiler figure starts from it, tenths
  bool limited = false;
  int limit = 0;  ///< of the teiler in a ring-teiler figure, tenths
  int extra = 0;  ///< not 0: the last shot of a series counts no rings; 1: none of its own
};

struct Person {
  QString name, club;
  int clubId = 0, teamId = 0, classId = 0;
};

struct TargetKey {
  QString weapon;
  int factor = 10;  ///< tenths; the radius is divided by it
};

struct Facts {
  QMap<QString, Rule> rules;         ///< by name
  QMap<QString, Person> persons;     ///< by start number
  QMap<QString, TargetKey> targets;  ///< by discipline key
};

Facts readFacts(dao::Database& store);

}  // namespace qk
