#include "masterdata/pages/row_edit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "masterdata/pages/page_query.h"
#include "masterdata/rows/references.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int kLeapYear = 2024;
constexpr int kUsualYear = 2023;

bool isEntry(ColumnKind kind) {
  return kind != ColumnKind::Flag && kind != ColumnKind::Choice && kind != ColumnKind::Reference;
}

bool isReference(ColumnKind kind) {
  return kind == ColumnKind::Reference || kind == ColumnKind::LookUp;
}

QString bracketed(const QString& name) {
  return "[" + name + "]";
}

/// The numbers that a column's type holds.
std::pair<double, double> rangeOf(dao::FieldType type) {
  using dao::FieldType;
  if (type == FieldType::Byte) return {0, 255};
  if (type == FieldType::Integer)
    return {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()};
  if (type == FieldType::Long)
    return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
  return {-1e300, 1e300};
}

bool holdsWholeNumbers(dao::FieldType type) {
  return type == dao::FieldType::Byte || type == dao::FieldType::Integer || type == dao::FieldType::Long;
}

/// "1.7." becomes "01.07."; empty for what is no day of every year.
QString dayOfYear(const QString& text) {
  if (!text.trimmed().endsWith('.') || !isDate(text.trimmed() + QString::number(kUsualYear))) return {};
  return parseDate(text.trimmed() + QString::number(kUsualYear)).toString("dd.MM.");
}

bool isLeapDay(const QString& text) {
  return isDate(text.trimmed() + QString::number(kLeapYear));
}

QString textOf(const QVariant& value) {
  if (value.typeId() == QMetaType::QDateTime) return dateText(value.toDateTime());
  if (value.typeId() == QMetaType::QString || value.isNull()) return value.toString();
  return numberText(value.toDouble());
}

QList<qint64> inOrder(const QSet<qint64>& keys) {
  QList<qint64> ordered(keys.begin(), keys.end());
  std::sort(ordered.begin(), ordered.end());
  return ordered;
}

bool same(const QVariant& a, const QVariant& b) {
  return textOf(a) == textOf(b);
}

}  // namespace

RowEdit::RowEdit(const Page& page, dao::Database& database)
    : page_(page), database_(database), table_(database.tableDef(page.table)), links_(page.links.size()) {
  for (const PageColumn& column : page.columns)
    if (table_.field(column.column)) columns_.push_back(column);
  for (size_t i = 0; i < links_.size(); ++i)
    links_[i].present =
        database.hasTable(page.links[i].table) && database.hasTable(page.links[i].source.table);
}

const PageColumn& RowEdit::columnOf(const QString& name) const {
  for (const PageColumn& column : columns_)
    if (dao::sameName(column.column, name)) return column;
  throw Error(errors::kNoSuchElement);
}

const dao::FieldDef& RowEdit::fieldOf(const PageColumn& column) const {
  return *table_.field(column.column);
}

void RowEdit::begin() {
  close();
  open_ = true;
  for (const PageColumn& column : columns_) {
    const dao::FieldDef& field = fieldOf(column);
    const bool isFlag = field.type == dao::FieldType::Boolean;
    stored_[column.column] = isFlag && field.preset.isNull() ? QVariant(0) : field.preset;
  }
  showStored();
}

bool RowEdit::read(qint64 key) {
  close();
  const auto row = database_.openRecordset("SELECT * FROM " + bracketed(page_.table) + " WHERE " +
                                           bracketed(page_.keyColumn) + " = " + QString::number(key));
  if (row->eof()) return false;
  for (const PageColumn& column : columns_) stored_[column.column] = row->value(column.column);
  open_ = true;
  key_ = key;
  showStored();
  readLinks();
  return true;
}

void RowEdit::close() {
  open_ = false;
  key_ = 0;
  stored_.clear();
  shown_.clear();
  texts_.clear();
  for (Linked& link : links_) link = {link.present, {}, {}, {}};
}

void RowEdit::becomeNew() {
  key_ = 0;
  for (QVariant& value : stored_) value = QVariant();
  for (Linked& link : links_) link.stored.clear();
}

void RowEdit::showStored() {
  for (const PageColumn& column : columns_)
    shown_[column.column] = shownOf(column, stored_.value(column.column));
}

QVariant RowEdit::shownOf(const PageColumn& column, const QVariant& stored) const {
  if (!isEntry(column.kind)) return stored;
  if (column.kind != ColumnKind::LookUp) return textOf(stored);
  const qint64 key = stored.toLongLong();
  return key == 0 ? QString() : codeOf(database_, column.reference, key);
}

void RowEdit::readLinks() {
  for (size_t i = 0; i < links_.size(); ++i) {
    const LinkedList& list = page_.links[i];
    if (!links_[i].present) continue;
    const auto rows = database_.openRecordset("SELECT " + bracketed(list.member) + " AS Glied FROM " +
                                              bracketed(list.table) + " WHERE " + bracketed(list.owner) +
                                              " = " + QString::number(key_));
    QSet<qint64>& members = links_[i].stored;
    members.clear();
    for (; !rows->eof(); rows->moveNext()) members.insert(rows->value("Glied").toLongLong());
    links_[i].now = members;
  }
}

QString RowEdit::entry(const QString& column) const {
  return shown_.value(columnOf(column).column).toString();
}

void RowEdit::setEntry(const QString& column, const QString& text) {
  shown_[columnOf(column).column] = text;
}

QVariant RowEdit::value(const QString& column) const {
  return shown_.value(columnOf(column).column);
}

void RowEdit::setValue(const QString& column, const QVariant& value, const QString& text) {
  const QString& name = columnOf(column).column;
  shown_[name] = value;
  texts_[name] = text;
}

QString RowEdit::lookedUpText(const QString& column) const {
  const auto found = lookedUp(database_, columnOf(column).reference, entry(column).trimmed());
  return found ? found->text : QString();
}

void RowEdit::setMember(int link, qint64 member, bool on, const QString& text) {
  QSet<qint64>& members = links_[size_t(link)].now;
  links_[size_t(link)].texts.insert(member, text);
  if (on)
    members.insert(member);
  else
    members.remove(member);
}

bool RowEdit::isEdited(const PageColumn& column) const {
  const QVariant now = shown_.value(column.column);
  const QVariant before = shownOf(column, stored_.value(column.column));
  if (isEntry(column.kind)) return now.toString() != before.toString();
  if (column.kind == ColumnKind::Choice && now.isNull() != before.isNull()) return !now.toString().isEmpty();
  if (column.kind == ColumnKind::Choice) return now.toString() != before.toString();
  return now.toLongLong() != before.toLongLong();
}

QStringList RowEdit::changedLabels() const {
  QStringList labels;
  if (!open_) return labels;
  for (const PageColumn& column : columns_)
    if (isEdited(column)) labels << column.label;
  for (size_t i = 0; i < links_.size(); ++i)
    if (links_[i].now != links_[i].stored) labels << page_.links[i].name;
  return labels;
}

bool RowEdit::isChanged() const {
  return !changedLabels().isEmpty();
}

std::variant<QVariant, QString> RowEdit::readNumber(const PageColumn& column, const QString& text) const {
  if (text.isEmpty()) return QVariant(0);
  if (!isNumeric(text)) return "»" + text + "« ist keine Zahl.";
  const double number = parseStrict(text);
  const dao::FieldType type = fieldOf(column).type;
  if (holdsWholeNumbers(type) && number != std::floor(number)) return "»" + text + "« ist keine ganze Zahl.";
  const auto [lowest, highest] = rangeOf(type);
  const double smallest = std::max(lowest, column.smallest);
  if (number < smallest) return "ist kleiner als " + numberText(smallest) + ".";
  if (number > highest) return "ist größer als " + numberText(highest) + ".";
  return QVariant(number);
}

std::variant<QVariant, QString> RowEdit::read(const PageColumn& column) const {
  const QVariant shown = shown_.value(column.column);
  if (!isEntry(column.kind)) return shown;
  const QString text = column.kind == ColumnKind::Memo ? shown.toString() : shown.toString().trimmed();
  switch (column.kind) {
    case ColumnKind::Number:
      return readNumber(column, text);
    case ColumnKind::Day:
      if (text.isEmpty()) return QVariant();
      if (!isDate(text)) return "»" + text + "« ist kein Datum. Richtig ist TT.MM.JJJJ.";
      return QVariant(parseDate(text));
    case ColumnKind::DayOfYear:
      if (text.isEmpty()) return QVariant(QString());
      if (const QString day = dayOfYear(text); !day.isEmpty()) return QVariant(day);
      if (isLeapDay(text)) return "»" + text + "« gibt es nicht jedes Jahr.";
      return "»" + text + "« ist kein Tag. Richtig ist TT.MM. mit Punkt am Ende.";
    case ColumnKind::LookUp:
      if (text.isEmpty()) return QVariant(0);
      if (const auto found = lookedUp(database_, column.reference, text)) return QVariant(found->key);
      return "»" + text + "« gibt es nicht.";
    default: {
      const dao::FieldDef& field = fieldOf(column);
      const int room = field.type == dao::FieldType::Memo ? 0 : (field.size > 0 ? field.size : 255);
      if (room > 0 && text.size() > room)
        return QString("hat %1 Zeichen; höchstens %2 gehen hinein.").arg(text.size()).arg(room);
      return QVariant(text);
    }
  }
}

std::vector<RowTrouble> RowEdit::troubles() const {
  std::vector<RowTrouble> found;
  for (const PageColumn& column : columns_) {
    const auto read = this->read(column);
    if (const QString* wrong = std::get_if<QString>(&read)) {
      if (isEdited(column)) found.push_back({column.column, column.label + ": " + *wrong});
      continue;
    }
    const QVariant& value = std::get<QVariant>(read);
    const bool missing =
        isReference(column.kind) ? value.toLongLong() == 0 : value.toString().trimmed().isEmpty();
    if (column.required && missing && (isNew() || isEdited(column)))
      found.push_back({column.column, column.label + ": fehlt."});
    if (column.unique && !missing && isEdited(column) && standsElsewhere(column, value.toString()))
      found.push_back({column.column, column.label + ": »" + value.toString() + "« gibt es schon."});
  }
  if (found.empty() && page_.check)
    for (const QString& line : page_.check(values())) found.push_back({{}, line});
  return found;
}

bool RowEdit::standsElsewhere(const PageColumn& column, const QString& text) const {
  const auto other =
      database_.openRecordset(QString("SELECT TOP 1 [%1] AS Nummer FROM [%2] WHERE [%3] = %4 AND [%1] <> %5")
                                  .arg(page_.keyColumn, page_.table, column.column, dao::sql::quoted(text))
                                  .arg(key_));
  return !other->eof();
}

dao::RowValues RowEdit::values() const {
  dao::RowValues all;
  for (const PageColumn& column : columns_) {
    const auto value = read(column);
    if (const QVariant* good = std::get_if<QVariant>(&value)) all[column.column] = *good;
  }
  return all;
}

qint64 RowEdit::store() {
  dao::Changes changes(database_);
  dao::RowValues edited;
  for (const PageColumn& column : columns_)
    if (isEdited(column)) edited[column.column] = valueToStore(column);
  keepOfReferences(edited);
  qint64 key = key_;
  if (isNew()) {
    key = changes.insert(page_.table, edited);
  } else {
    changes.expect(page_.table, key, stored_);
    if (!edited.isEmpty()) changes.update(page_.table, key, edited);
  }
  // Before the tables of its links, as whoever imports does it: else two could wait for each other.
  const auto isLinked = [](const Linked& link) { return !(link.now - link.stored).isEmpty(); };
  if (!edited.isEmpty() && std::any_of(links_.begin(), links_.end(), isLinked)) changes.hold(page_.table);
  requireReferences(changes, edited);
  changeLinks(changes, key);
  if (page_.follow)
    for (const QString& action : page_.follow(key, values())) changes.execute(action);
  changes.write();
  read(key);
  return key;
}

/// What was looked up a moment ago may be gone; nothing else becomes unreadable by itself.
QVariant RowEdit::valueToStore(const PageColumn& column) const {
  const auto value = read(column);
  if (const QVariant* good = std::get_if<QVariant>(&value)) return *good;
  throw ReferenceGone({page_.table,
                       column.column,
                       column.reference.table,
                       column.label,
                       {{0, shown_.value(column.column).toString().trimmed()}}},
                      0);
}

void RowEdit::requireReferences(dao::Changes& changes, const dao::RowValues& edited) const {
  for (const PageColumn& column : columns_) {
    const qint64 key = edited.value(column.column).toLongLong();
    if (!isReference(column.kind) || key == 0) continue;
    const QString text = column.kind == ColumnKind::LookUp ? shown_.value(column.column).toString().trimmed()
                                                           : texts_.value(column.column);
    requireThere(database_, changes,
                 {page_.table, column.column, column.reference.table, column.label, {{key, text}}});
  }
  for (size_t i = 0; i < links_.size(); ++i) {
    const LinkedList& list = page_.links[i];
    NewReferences added{list.table, list.member, list.source.table, list.name, {}};
    for (const qint64 member : links_[i].now - links_[i].stored)
      added.names.insert(member, links_[i].texts.value(member));
    if (!added.names.isEmpty()) requireThere(database_, changes, added);
  }
}

void RowEdit::keepOfReferences(dao::RowValues& edited) const {
  for (const PageColumn& column : columns_) {
    if (column.keeper.isEmpty() || !edited.contains(column.column) || edited.contains(column.keeper))
      continue;
    RowSource kept = column.reference;
    kept.code = column.kept;
    edited[column.keeper] = codeOf(database_, kept, edited.value(column.column).toLongLong());
  }
}

/// Somebody else may have linked the same meanwhile: what is there already isn't added again. In the order of
/// the members: what reads the links by their keys (the stations' files) shall not go by chance.
void RowEdit::changeLinks(dao::Changes& changes, qint64 key) const {
  for (size_t i = 0; i < links_.size(); ++i) {
    const LinkedList& list = page_.links[i];
    const QList<qint64> removed = inOrder(links_[i].stored - links_[i].now);
    const QList<qint64> added = inOrder(links_[i].now - links_[i].stored);
    for (const qint64 member : removed + added)
      changes.execute(QString("DELETE FROM [%1] WHERE [%2] = %3 AND [%4] = %5")
                          .arg(list.table, list.owner)
                          .arg(key)
                          .arg(list.member)
                          .arg(member));
    for (const qint64 member : added) {
      dao::RowValues values{{list.owner, key}, {list.member, member}};
      if (!list.copied.isEmpty()) {
        RowSource copied = list.source;
        copied.code = list.copied;
        values[list.copied] = codeOf(database_, copied, member);
      }
      changes.insert(list.table, values);
    }
  }
}

void RowEdit::takeOver(const dao::RowValues& found) {
  for (const PageColumn& column : columns_) {
    const auto value = found.constFind(column.column);
    if (value == found.constEnd()) continue;
    const bool edited = isEdited(column);
    stored_[column.column] = *value;
    if (!edited) shown_[column.column] = shownOf(column, *value);
  }
}

namespace {

QString spoken(const PageColumn& column, const QVariant& value, dao::Database& database) {
  QString text = gridText(column, value);
  const bool refers = isReference(column.kind);
  if (refers && value.toLongLong() != 0)
    text = referredText(database, column.reference, value.toLongLong()).value_or("Nr. " + value.toString());
  if (refers && value.toLongLong() == 0) text.clear();
  if (column.kind == ColumnKind::Flag && text.isEmpty()) text = "nein";
  return text.isEmpty() ? "(leer)" : "»" + text + "«";
}

}  // namespace

QString changedMeanwhileText(const RowEdit& row, const dao::RowValues& found, dao::Database& database) {
  QStringList lines;
  const dao::RowValues mine = row.values();
  for (const PageColumn& column : row.columns()) {
    const auto theirs = found.constFind(column.column);
    if (theirs == found.constEnd()) continue;
    QString line = column.label + ": dort jetzt " + spoken(column, *theirs, database);
    if (mine.contains(column.column) && !same(mine.value(column.column), *theirs))
      line += ", hier " + spoken(column, mine.value(column.column), database);
    lines << line;
  }
  return lines.join('\n');
}

}  // namespace qk
