#include "masterdata/lists/cells.h"

#include <algorithm>

#include "masterdata/lists/csv_text.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"
#include "platform/runtime/formula_guard.h"

namespace qk::lists {

namespace {

constexpr int LongestCell = 65'535;  // what a memo of the classic engine shows
constexpr int LongestShown = 60;

bool isControl(QChar c) {
  const ushort code = c.unicode();
  const bool lineOrTab = code == '\n' || code == '\r' || code == '\t';
  return (code < 0x20 && !lineOrTab) || (code >= 0x7F && code < 0xA0) || code == 0xFFFD;
}

CellValue yesOrNo(const QString& text) {
  static const QStringList yes = {"ja", "j", "x", "1", "-1", "wahr", "true"};
  static const QStringList no = {"nein", "n", "0", "falsch", "false"};
  if (yes.contains(text.toLower())) return {-1, {}};
  if (no.contains(text.toLower())) return {0, {}};
  return {{}, QString("»%1« ist weder Ja noch Nein.").arg(shownText(text))};
}

CellValue number(const QString& text, const dao::FieldDef& field) {
  try {
    return {dao::convertedValue(text, field), {}};
  } catch (const Error&) {
    return {{}, QString("»%1« ist keine passende Zahl.").arg(shownText(text))};
  }
}

CellValue textOfSize(const QString& text, const dao::FieldDef& field) {
  if (field.type == dao::FieldType::Memo) return {text, {}};
  const QString trouble = tooLong(text, field.size == 0 ? 255 : field.size);
  return trouble.isEmpty() ? CellValue{text, {}} : CellValue{{}, trouble};
}

bool isText(const dao::FieldDef& field) {
  return field.type == dao::FieldType::Text || field.type == dao::FieldType::Memo;
}

}  // namespace

QString plainText(const QString& cell) {
  if (cell.isNull()) return {};
  const bool broken = std::any_of(cell.begin(), cell.end(), [](QChar c) { return c == u'\n' || c == u'\r'; });
  const QString text = unguarded(broken ? cell.simplified() : cell.trimmed());
  return text.isNull() ? QString("") : text;
}

QString troubleOf(const QString& cell) {
  if (cell.size() > LongestCell) return tooLong(cell, LongestCell);
  const auto control = std::find_if(cell.begin(), cell.end(), isControl);
  if (control == cell.end()) return {};
  return QString("An der %1. Stelle steht ein Zeichen, das kein Text ist.").arg(control - cell.begin() + 1);
}

CellValue readCell(const QString& cell, const dao::FieldDef& field) {
  if (field.type == dao::FieldType::Memo) return readExactly(cell, field);
  const QString text = plainText(cell);
  if (text.isNull()) return {};
  if (isText(field)) return textOfSize(text, field);
  if (text.isEmpty()) return {};
  return field.type == dao::FieldType::Boolean ? yesOrNo(text) : number(text, field);
}

CellValue readExactly(const QString& cell, const dao::FieldDef& field) {
  if (cell.isNull()) return {};
  if (!isText(field)) return readCell(cell, field);
  return textOfSize(unguarded(cell), field);
}

QString tooLong(const QString& text, int size) {
  if (text.size() <= size) return {};
  return QString("Der Text hat %1 Zeichen; höchstens %2 haben Platz.").arg(text.size()).arg(size);
}

QString cellOf(const QVariant& value, const dao::FieldDef& field) {
  if (!value.isValid()) return {};
  if (field.type == dao::FieldType::Boolean) return value.toInt() != 0 ? "Ja" : "Nein";
  const QString text = value.toString();
  return text.isNull() ? QString("") : text;
}

QString shownText(const QString& text) {
  return text.size() > LongestShown ? text.left(LongestShown) + "…" : text;
}

}  // namespace qk::lists
