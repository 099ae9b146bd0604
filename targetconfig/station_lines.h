// What the three readers of esa_preis.ini take from one of its lines. Each has its own way with "=", quotes
// and blanks, and none may change: the firing line's titles choose disciplines at the stations, the groups'
// titles are stored in competitions, and the checker shows a line as it stands. All look for their word
// anywhere in the line, and case matters. To trim takes blanks away, nothing else.
#pragma once

#include <QString>

namespace qk {

inline const QString TitleWord = "Bezeichnung";
inline const QString DefinitionWord = "Definition";

bool holdsTitle(const QString& line);
bool holdsDefinition(const QString& line);

/// The firing line: everything but the word, "=" and quotes, then trimmed.
QString titleForLine(const QString& line);
QString definitionForLine(const QString& line);

/// The checker: without the word trimmed, without "=" trimmed. A title keeps its quotes; a definition loses
/// them, and keeps the blanks inside them.
QString titleForCheck(const QString& line);
QString definitionForCheck(const QString& line);

/// The groups: without the word trimmed, without "=" trimmed, without quotes trimmed.
QString titleForGroups(const QString& line);

}  // namespace qk
