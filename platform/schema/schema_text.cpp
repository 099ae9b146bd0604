#include "platform/schema/schema_text.h"

#include <QHash>
#include <algorithm>
#include <optional>

#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk {

using dao::FieldDef;
using dao::FieldType;
using dao::IndexDef;
using dao::sameName;
using dao::TableDef;

namespace {

[[noreturn]] void fail(const QString& source, int line, const QString& what) {
  throw Error(errors::kInvalidCall, QStringLiteral("%1:%2: %3").arg(source).arg(line).arg(what));
}

/// Words of a line, taken one by one; "[Alter von]" is one word.
class Words {
 public:
  explicit Words(const QString& line) : rest_(line.trimmed()) {}

  bool atEnd() const { return rest_.isEmpty(); }
  const QString& rest() const { return rest_; }

  QString next() {
    const bool bracketed = rest_.startsWith('[') && rest_.contains(']');
    const qsizetype blank = rest_.indexOf(' ');
    const qsizetype end = bracketed ? rest_.indexOf(']') + 1 : (blank < 0 ? rest_.size() : blank);
    QString word = rest_.left(end);
    rest_ = rest_.mid(end).trimmed();
    return bracketed ? word.mid(1, word.size() - 2) : word;
  }
  bool takeIf(const QString& word) {
    Words ahead(*this);
    if (!sameName(ahead.next(), word)) return false;
    *this = ahead;
    return true;
  }

 private:
  QString rest_;
};

std::optional<FieldType> typeByName(const QString& name) {
  static const QHash<QString, FieldType> types = {
      {"zähler", FieldType::Long},     {"ja/nein", FieldType::Boolean},  {"byte", FieldType::Byte},
      {"integer", FieldType::Integer}, {"long", FieldType::Long},        {"single", FieldType::Single},
      {"double", FieldType::Double},   {"währung", FieldType::Currency}, {"datum", FieldType::Date},
      {"text", FieldType::Text},       {"memo", FieldType::Memo},        {"binär", FieldType::LongBinary}};
  const auto found = types.constFind(name.toLower());
  if (found == types.constEnd()) return std::nullopt;
  return *found;
}

class Parser {
 public:
  Parser(const QString& source) { schema_.source = source; }

  Schema run(const QString& text) {
    for (const QString& line : text.split('\n')) {
      ++line_;
      const QString content = line.trimmed();
      if (content.isEmpty() || content.startsWith('#')) continue;
      if (line.at(0).isSpace())
        readContent(content);
      else
        openSection(content);
    }
    closeSection();
    return std::move(schema_);
  }

 private:
  enum class Section { None, Table, Query, Rows };

  [[noreturn]] void fail(const QString& what) const { qk::fail(schema_.source, line_, what); }

  void openSection(const QString& content) {
    closeSection();
    Words words(content);
    const QString keyword = words.next();
    const QString name = words.next();
    if (name.isEmpty() || !words.atEnd()) fail("erwartet wird ein Schlüsselwort und ein Name");
    opened_ = line_;
    if (keyword == "Tabelle") {
      if (schema_.table(name)) fail(QString("Tabelle »%1« steht schon da").arg(name));
      section_ = Section::Table;
      schema_.tables.push_back({name, {}, {}});
    } else if (keyword == "Abfrage") {
      section_ = Section::Query;
      schema_.queries.push_back({name, {}});
    } else if (keyword == "Zeilen") {
      section_ = Section::Rows;
      schema_.rows.push_back({name, line_, {}, {}});
    } else {
      fail(QString("unbekanntes Schlüsselwort »%1«").arg(keyword));
    }
  }

  void closeSection() const {
    const bool empty = (section_ == Section::Table && schema_.tables.back().fields.empty()) ||
                       (section_ == Section::Query && schema_.queries.back().text.isEmpty()) ||
                       (section_ == Section::Rows && schema_.rows.back().columns.isEmpty());
    if (empty) qk::fail(schema_.source, opened_, "der Abschnitt ist leer");
  }

  void readContent(const QString& content) {
    switch (section_) {
      case Section::None:
        fail("eingerückte Zeile ohne Abschnitt");
      case Section::Table:
        readDefinition(content, schema_.tables.back());
        break;
      case Section::Query: {
        QString& text = schema_.queries.back().text;
        text += (text.isEmpty() ? "" : " ") + content;
        break;
      }
      case Section::Rows:
        readRow(content, schema_.rows.back());
        break;
    }
  }

  void readDefinition(const QString& content, TableDef& table) const {
    Words words(content);
    if (words.takeIf("Index"))
      table.indexes.push_back(readIndex(words, table));
    else
      table.fields.push_back(readField(words, table));
  }

  FieldDef readField(Words words, const TableDef& table) const {
    FieldDef field;
    field.name = words.next();
    if (table.field(field.name)) fail(QString("Spalte »%1« steht schon da").arg(field.name));
    const QString typeName = words.next();
    const auto type = typeByName(typeName);
    if (!type) fail(QString("unbekannter Typ »%1«").arg(typeName));
    field.type = *type;
    field.autoNumber = sameName(typeName, "Zähler");
    if (field.type == FieldType::Text) field.size = readSize(words);
    field.required = words.takeIf("Pflicht");
    field.allowZeroLength = !words.takeIf("nichtleer");
    if (words.takeIf("Vorgabe")) {
      field.preset = cellValue(words.rest(), field, schema_.source, line_);
      if (!field.preset.isValid()) fail("hinter »Vorgabe« fehlt der Wert");
    } else if (!words.atEnd()) {
      fail(QString("unerwartet: »%1«").arg(words.rest()));
    }
    return field;
  }

  int readSize(Words& words) const {
    if (words.atEnd() || !words.rest().at(0).isDigit()) return 0;
    bool ok = false;
    const int size = words.next().toInt(&ok);
    if (!ok || size < 1 || size > 255) fail("ein Text hat 1 bis 255 Zeichen");
    return size;
  }

  IndexDef readIndex(Words words, const TableDef& table) const {
    IndexDef index;
    index.name = words.next();
    for (const IndexDef& other : table.indexes)
      if (sameName(other.name, index.name)) fail(QString("Index »%1« steht schon da").arg(index.name));
    index.primary = words.takeIf("primär");
    index.unique = words.takeIf("eindeutig") || index.primary;
    index.required = words.takeIf("pflicht") || index.primary;
    for (const QString& part : words.rest().split(',')) {
      const FieldDef* field = table.field(Words(part).next());
      if (!field) fail(QString("Index »%1«: keine Spalte »%2«").arg(index.name, part.trimmed()));
      index.fields << field->name;
    }
    return index;
  }

  void readRow(const QString& content, RowSection& section) const {
    QStringList cells = content.split('|');
    for (QString& cell : cells) cell = cell.trimmed();
    if (section.columns.isEmpty()) {
      section.columns = cells;
      return;
    }
    if (cells.size() != section.columns.size())
      fail(QString("%1 Werte für %2 Spalten").arg(cells.size()).arg(section.columns.size()));
    section.rows.push_back({line_, cells});
  }

  Schema schema_;
  Section section_ = Section::None;
  int line_ = 0;
  int opened_ = 0;
};

QVariant booleanCell(const QString& cell) {
  if (sameName(cell, "ja")) return -1;
  if (sameName(cell, "nein")) return 0;
  throw Error(errors::kTypeMismatch);
}

}  // namespace

const TableDef* Schema::table(const QString& name) const {
  const auto found = std::find_if(tables.begin(), tables.end(),
                                  [&name](const TableDef& table) { return sameName(table.name, name); });
  return found == tables.end() ? nullptr : &*found;
}

Schema parseSchema(const QString& text, const QString& source) {
  return Parser(source).run(text);
}

QVariant cellValue(const QString& cell, const FieldDef& field, const QString& source, int line) {
  if (cell.isEmpty()) return {};
  try {
    switch (field.type) {
      case FieldType::Boolean:
        return booleanCell(cell);
      case FieldType::Byte:
      case FieldType::Integer:
        return static_cast<int>(toInt16(parseStrict(cell)));
      case FieldType::Long:
        return static_cast<int>(toInt32(parseStrict(cell)));
      case FieldType::Single:
      case FieldType::Double:
        return parseStrict(cell);
      case FieldType::Currency:
        return QVariant::fromValue(Money::fromDouble(parseStrict(cell)));
      case FieldType::Date:
        return parseDate(cell);
      case FieldType::Text:
      case FieldType::Memo:
        return cell == "\"\"" ? QString("") : cell;
      case FieldType::LongBinary:
        return QByteArray::fromHex(cell.toLatin1());
    }
  } catch (const Error& error) {
    fail(source, line, QString("Spalte »%1«, Wert »%2«: %3").arg(field.name, cell, error.description()));
  }
  return {};
}

}  // namespace qk
