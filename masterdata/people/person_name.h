// Who somebody is, as people say it and as the table of shooters holds it: its column `Name` is what lists,
// labels and sheets show, so it carries the whole name, family name first; `Vorname` holds the first name
// once more.
#pragma once

#include <QString>

namespace qk {

struct PersonName {
  QString last, first;
  friend bool operator==(const PersonName&, const PersonName&) = default;
};

struct StoredName {
  QString name, vorname;
  friend bool operator==(const StoredName&, const StoredName&) = default;
};

StoredName storedName(const PersonName& person);
/// Back from the table. A `Name` without the first name in it is the family name.
PersonName personName(const StoredName& stored);
/// From one text: "Müller, Jörg" has both; without a comma nobody knows where one ends, and all of it is
/// `last`.
PersonName personNameOf(const QString& text);

}  // namespace qk
