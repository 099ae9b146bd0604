#include "masterdata/people/person_name.h"

namespace qk {

StoredName storedName(const PersonName& person) {
  const QString first = person.first.simplified();
  return {(person.last.simplified() + " " + first).trimmed(), first};
}

PersonName personName(const StoredName& stored) {
  const QString name = stored.name.simplified();
  const QString first = stored.vorname.simplified();
  if (first.isEmpty()) return {name, {}};
  if (name.compare(first, Qt::CaseInsensitive) == 0) return {{}, first};
  if (name.endsWith(" " + first, Qt::CaseInsensitive)) return {name.chopped(first.size() + 1), first};
  if (name.startsWith(first + " ", Qt::CaseInsensitive)) return {name.mid(first.size() + 1), first};
  return {name, first};
}

PersonName personNameOf(const QString& text) {
  const qsizetype comma = text.indexOf(',');
  if (comma < 0) return {text.simplified(), {}};
  return {text.left(comma).simplified(), text.mid(comma + 1).simplified()};
}

}  // namespace qk
