// What a cell of a text grid suggests to be chosen, from the list texts of the classic grid control:
//
//   "|keine|1|2"                entries between bars; the bar at the front leaves the cell open for free text
//   "|0;Ring|1;Zehntelringe"    a number before a semicolon is a code of the reader's own: the text is chosen
//   "|#7;1.10<tab>Luftgewehr"   the number behind "#" is chosen, the rest explains it; tabs part its columns
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace qk {

struct Suggestion {
  QString value;  ///< what the cell gets
  QString shown;  ///< what the list shows
  friend bool operator==(const Suggestion&, const Suggestion&) = default;
};

struct Suggestions {
  bool freeText = false;
  QVector<Suggestion> entries;
  friend bool operator==(const Suggestions&, const Suggestions&) = default;
};

/// The number is chosen; the list shows it with what explains it.
Suggestion numberedSuggestion(const QString& number, const QStringList& explanations);

/// A list that is empty, or nothing but the bar at the front, has no entries.
Suggestions parseSuggestions(const QString& list);

}  // namespace qk
