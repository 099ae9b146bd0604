#include "targetconfig/station_lines.h"

namespace qk {

namespace {

QString without(QString line, const QString& text) {
  return line.remove(text);
}

QString besideForLine(const QString& word, QString line) {
  return line.remove(word).remove('=').remove('"').trimmed();
}

QString besideForCheck(const QString& word, const QString& line) {
  return without(without(line, word).trimmed(), "=").trimmed();
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
  return without(without(without(line, TitleWord).trimmed(), "=").trimmed(), "\"").trimmed();
}

}  // namespace qk
