#include "tests/platform/dao/twin_rows.h"

#include <QDateTime>
#include <QRandomGenerator>

#include "platform/runtime/money.h"

namespace qk::dao::test {
namespace {

const QStringList kTexts{"Müller",     "MÜLLER", "Mueller", "müller",     "Straße", "STRASSE", "Ärger",
                         "arg",        "Äpfel",  "apfel",   "österreich", "Öl",     "Zoë",     "O'Neill",
                         "a*b",        "[x]",    "100%",    "under_line", "\\",     "",        "  vorn",
                         "20.11.2026", "-1",     "PC1;PC2", "LG",         "Z",      "ẞ"};
const QStringList kNumbers{"107", "108", "9", "10", "10a", "9,5", "9.5", " 7", "-3", "1e3", "", "0107"};
constexpr double kDoubles[] = {0, -0.5, 9.5, 10.4, 1e-7, 123456789.25, -3, 2.5, 1.0 / 3, 1e15};
constexpr qint64 kUnits[] = {0, 10000, 12345, -99999, 123456789, 1, 25000, 899999999999};

/// qHash differs from run to run.
quint32 markOf(const QString& name) {
  quint32 mark = 0;
  for (const QChar c : name) mark = mark * 31 + c.unicode();
  return mark;
}

QDateTime dateOf(quint32 choice) {
  const QDate day = QDate(2026, 11, 18).addDays(choice % 5);
  switch (choice % 7) {
    case 0:
      return QDateTime(QDate(1899, 12, 30), QTime(0, 0));
    case 1:
      return QDateTime(QDate(1899, 12, 30), QTime(10, 30, 15));
    case 2:
      return QDateTime(day, QTime(23, 59, 59));
    case 3:
      return QDateTime(day.addMonths(-3), QTime(0, 0));
    default:
      return QDateTime(day, QTime(0, 0));
  }
}

}  // namespace

QVariant sampleValue(const FieldDef& field, int row, quint32 seed) {
  QRandomGenerator random(seed + quint32(row) * 7919u + markOf(field.name));
  const quint32 choice = random.generate() % 100000;
  const bool reference = field.name.endsWith("ID", Qt::CaseInsensitive);
  if (!reference && choice % 8 == 3) return {};
  switch (field.type) {
    case FieldType::Boolean:
      return choice % 2 ? -1 : 0;
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
      return reference ? int(choice % 6) : int(choice % 12) - 3;
    case FieldType::Currency:
      return QVariant::fromValue(Money::fromUnits(kUnits[choice % std::size(kUnits)]));
    case FieldType::Single:
    case FieldType::Double:
      return kDoubles[choice % std::size(kDoubles)];
    case FieldType::Date:
      return dateOf(choice);
    default: {
      const bool numbers = field.name.contains("nummer", Qt::CaseInsensitive) || field.name.startsWith("Nr");
      const QStringList& pool = numbers ? kNumbers : kTexts;
      return pool[qsizetype(choice) % pool.size()];
    }
  }
}

void fill(TwinStores& twins, const TableDef& table, int rows, quint32 seed) {
  for (int row = 1; row <= rows; ++row) {
    std::vector<std::pair<QString, QVariant>> values;
    for (const FieldDef& field : table.fields)
      if (!field.autoNumber) values.emplace_back(field.name, sampleValue(field, row, seed));
    twins.add(table.name, values);
  }
}

}  // namespace qk::dao::test
