#include "masterdata/lists/registration_text.h"

#include "masterdata/lists/cells.h"
#include "masterdata/lists/store_state.h"

namespace qk::lists {

namespace {

struct Discipline {
  qint64 id = 0;
  QString name, key;
};

std::vector<Discipline> disciplinesCalled(const QString& word, const TableRows& table) {
  const int name = table.position("MeldeDisziplin"), key = table.position("MeldeKZ");
  std::vector<Discipline> byName, byKey;
  for (const QVariantList& row : table.rows) {
    const Discipline discipline{table.key(row), row[name].toString(), row[key].toString()};
    if (foldedText(discipline.name) == foldedText(word)) byName.push_back(discipline);
    if (foldedText(discipline.key) == foldedText(word)) byKey.push_back(discipline);
  }
  return byName.empty() ? byKey : byName;
}

}  // namespace

RegistrationText readRegistration(const QString& line, const TableRows& disciplines) {
  QStringList parts;
  for (const QString& part : line.split(u'|')) parts << part.simplified();
  const auto part = [&parts](int i) {
    return i < parts.size() && !parts[i].isEmpty() ? parts[i] : QString();
  };
  RegistrationText result{0, part(0), part(1), {part(2), part(3), part(4)}, {}};
  std::vector<Discipline> found = disciplinesCalled(part(0), disciplines);
  if (found.size() > 1)
    std::erase_if(found,
                  [&](const Discipline& one) { return foldedText(one.key) != foldedText(result.key); });
  if (found.size() != 1 || part(0).isEmpty()) {
    result.trouble =
        QString("Die Meldedisziplin »%1« gibt es im Wettkampf nicht oder mehrmals.").arg(shownText(part(0)));
    return result;
  }
  result.discipline = found.front().id;
  result.name = found.front().name;
  if (parts.size() < 2) result.key = found.front().key;
  result.trouble = tooLong(result.key, 50);
  if (result.trouble.isEmpty()) result.trouble = tooLong(result.team.name, 255);
  return result;
}

QString registrationLine(const RegistrationText& registration) {
  QStringList parts = {registration.name, registration.key, registration.team.name, registration.team.club,
                       registration.team.group};
  while (parts.size() > 2 && parts.last().isEmpty()) parts.removeLast();
  return parts.join(" | ");
}

}  // namespace qk::lists
