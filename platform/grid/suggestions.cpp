#include "platform/grid/suggestions.h"

#include <QRegularExpression>
#include <QStringList>

namespace qk {

namespace {

Suggestion parseEntry(const QString& entry) {
  static const QRegularExpression numbered("^(#?)(-?\\d+);(.*)$",
                                           QRegularExpression::DotMatchesEverythingOption);
  const auto match = numbered.match(entry);
  if (!match.hasMatch()) return {entry, entry};
  const QString number = match.captured(2);
  const QString text = match.captured(3);
  if (match.captured(1).isEmpty()) return {text, text};
  return numberedSuggestion(number, text.split('\t'));
}

}  // namespace

Suggestion numberedSuggestion(const QString& number, const QStringList& explanations) {
  return {number, (QStringList{number} + explanations).join(" – ")};
}

Suggestions parseSuggestions(const QString& list) {
  Suggestions suggestions;
  suggestions.freeText = list.startsWith('|');
  const QString entries = list.sliced(suggestions.freeText ? 1 : 0);
  if (entries.isEmpty()) return suggestions;
  for (const QString& entry : entries.split('|')) suggestions.entries.append(parseEntry(entry));
  return suggestions;
}

}  // namespace qk
