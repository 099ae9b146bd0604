#include "masterdata/lists/headings.h"

#include <QHash>

#include "platform/settings/settings.h"

namespace qk::lists {

namespace {

constexpr QStringView Application = u"Stammdaten";
constexpr QStringView NotRead = u"-";  // a remembered column that isn't to be read

QString section(ListKind kind) {
  return "Spalten " + kindName(kind);
}

/// By headingKey; what stands earlier in the list of columns goes first.
QHash<QString, QString> namesOf(ListKind kind) {
  QHash<QString, QString> names;
  const auto add = [&names](const QString& word, const QString& column) {
    const QString key = headingKey(word);
    if (!key.isEmpty() && !names.contains(key)) names.insert(key, column);
  };
  for (const ListColumn& column : columnsOf(kind)) add(column.heading, column.heading);
  for (const ListColumn& column : columnsOf(kind)) {
    add(asStored(column.heading), asStored(column.heading));
    add(column.column, column.heading);
    for (const QString& synonym : column.synonyms) add(synonym, column.heading);
  }
  return names;
}

/// Twice the same column can't be meant: the first one has it.
void keepFirst(Assignment& assignment) {
  for (qsizetype i = 0; i < assignment.size(); ++i)
    if (!assignment[i].isEmpty() && assignment.indexOf(assignment[i]) < i) assignment[i].clear();
}

/// A list with first names calls the family name just "Name".
void nameBesideFirstName(ListKind kind, Assignment& assignment) {
  if (kind != ListKind::Shooters || assignment.contains(heading::Surname) ||
      !assignment.contains(heading::FirstName))
    return;
  const qsizetype name = assignment.indexOf(heading::Name);
  if (name >= 0) assignment[name] = heading::Surname;
}

Assignment byWords(ListKind kind, const QStringList& headings) {
  const QHash<QString, QString> names = namesOf(kind);
  Assignment assignment;
  for (const QString& heading : headings) assignment << names.value(headingKey(heading));
  return assignment;
}

/// What was remembered for a heading: a column, NotRead, or nothing.
QString remembered(ListKind kind, const QString& heading, const Settings& settings) {
  const QString key = headingKey(heading);
  return key.isEmpty() ? QString() : settings.value(Application.toString(), section(kind), key);
}

bool isColumn(ListKind kind, const QString& name) {
  return namesOf(kind).values().contains(name);
}

}  // namespace

Assignment recognised(ListKind kind, const QStringList& headings) {
  Assignment assignment = byWords(kind, headings);
  keepFirst(assignment);
  nameBesideFirstName(kind, assignment);
  return assignment;
}

Assignment recognised(ListKind kind, const QStringList& headings, const Settings& settings) {
  Assignment assignment = recognised(kind, headings);
  Assignment byHand(headings.size());
  for (qsizetype i = 0; i < headings.size(); ++i) {
    const QString told = remembered(kind, headings[i], settings);
    if (told == NotRead) assignment[i].clear();
    if (isColumn(kind, told)) byHand[i] = told;
  }
  keepFirst(byHand);
  for (qsizetype i = 0; i < headings.size(); ++i) {
    if (!byHand[i].isEmpty())
      assignment[i] = byHand[i];
    else if (byHand.contains(assignment[i]))
      assignment[i].clear();
  }
  return assignment;
}

void remember(ListKind kind, const QStringList& headings, const Assignment& byHand, Settings& settings) {
  const Assignment own = recognised(kind, headings);
  for (qsizetype i = 0; i < headings.size(); ++i) {
    const QString key = headingKey(headings[i]);
    if (key.isEmpty()) continue;
    const QString told = byHand[i] == own[i]   ? QString()
                         : byHand[i].isEmpty() ? NotRead.toString()
                                               : byHand[i];
    if (told != remembered(kind, headings[i], settings))
      settings.setValue(Application.toString(), section(kind), key, told);
  }
}

QString missingColumns(ListKind kind, const Assignment& assignment) {
  switch (kind) {
    case ListKind::Shooters: {
      const bool named = assignment.contains(heading::Surname) || assignment.contains(heading::Name) ||
                         assignment.contains(asStored(heading::Name));
      if (named || assignment.contains(heading::StartNumber) || assignment.contains(heading::Licence))
        return {};
      return "Keine Spalte sagt, wer gemeint ist. Bitte Nachname, Name, Startnummer oder Ausweisnummer "
             "zuordnen.";
    }
    case ListKind::Clubs:
      return assignment.contains(heading::Club) ? QString() : "Bitte die Spalte mit dem Verein zuordnen.";
    case ListKind::Teams:
      return assignment.contains(heading::Team) ? QString() : "Bitte die Spalte mit der Mannschaft zuordnen.";
  }
  return {};
}

}  // namespace qk::lists
