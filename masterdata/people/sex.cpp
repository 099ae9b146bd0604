#include "masterdata/people/sex.h"

#include <QHash>

namespace qk {

std::optional<QString> sexOf(const QString& text) {
  static const QHash<QString, QString> words = [] {
    QHash<QString, QString> all;
    for (const char* word :
         {"m", "mann", "männl", "männlich", "maennlich", "male", "herr", "herren", "junge"})
      all.insert(word, "M");
    for (const char* word :
         {"w", "f", "frau", "weibl", "weiblich", "female", "dame", "damen", "mädchen", "maedchen"})
      all.insert(word, "W");
    for (const char* word : {"", "d", "div", "divers", "x", "-", "?", "unbekannt", "offen", "keine angabe"})
      all.insert(word, "");
    return all;
  }();
  QString plain = text.simplified().toLower();
  if (plain.size() > 1 && plain.endsWith('.')) plain.chop(1);
  const auto found = words.find(plain);
  if (found == words.end()) return {};
  return *found;
}

}  // namespace qk
