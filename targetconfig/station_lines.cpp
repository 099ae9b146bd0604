#include "targetconfig/station_lines.h"

namespace qk {

namespace {

QString without(QString line, const QString& text) {
  return line.remove(text);
}

/// Blanks only: a tab belongs to the text.
QString withoutOuterBlanks(const QString& text) {
  qsizetype first = 0, end = text.size();
  while (first < end && text[first] == u' ') ++first;
  while (end > first && text[end - 1] == u' ') --end;
  return text.sliced(first, end - first);
}

QString besideForLine(const QString& word, QString line) {
  return withoutOuterBlanks(line.remove(word).remove('=').remove('"'));
}

QString besideForCheck(const QString& word, const QString& line) {
  return withoutOuterBlanks(without(withoutOuterBlanks(without(line, word)), "="));
}

}  // namespace

bool holdsTitle(const QString& line) {
  return line.contains(TitleWord);
}

bool holdsDefinition(const QString& line) {
  return line.contains(DefinitionWord);
}

QString titleForLine(const QString& line) {
  return besideForLine(TitleWord, line);
}

QString definitionForLine(const QString& line) {
  return besideForLine(DefinitionWord, line);
}

QString titleForCheck(const QString& line) {
  return besideForCheck(TitleWord, line);
}

QString definitionForCheck(const QString& line) {
  return without(besideForCheck(DefinitionWord, line), "\"");
}

QString titleForGroups(const QString& line) {
  return withoutOuterBlanks(without(besideForCheck(TitleWord, line), "\""));
}

}  // namespace qk
