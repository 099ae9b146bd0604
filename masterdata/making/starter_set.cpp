#include "masterdata/making/starter_set.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <map>
#include <set>

#include "app/ground/temp_module.h"
#include "masterdata/rows/references.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

/// What a competition is run by, and nothing of those who take part in it.
const QStringList kTables = {"Schützenklassen",        "Waffen",           "Disziplin",
                             "DisziplinKlasse",        "DisziplinWaffen",  "Kombination_Name",
                             "Kombination_Diszi",      "MeldeDisziplin",   "MannschaftsGruppen",
                             "SchuetzenGruppen",       "Kasse_Verwaltung", "Kasse_DisziKombi",
                             "Kasse_Schuetzenklassen", "AuswertProfil",    "AwProfilDiszi",
                             "Auswert_Klassen",        "Auswert_Waffen",   "ScheibenNummern"};

qsizetype placeOf(const QString& table) {
  for (qsizetype i = 0; i < kTables.size(); ++i)
    if (dao::sameName(kTables[i], table)) return i;
  return -1;
}

/// Comment lines at the top down to an empty one, without their signs: what is below tells how the file is
/// written.
QStringList headOf(const QString& text) {
  QStringList head;
  for (const QString& line : text.split('\n')) {
    const QString said = line.mid(1).trimmed();
    if (!line.startsWith('#') || (said.isEmpty() && !head.isEmpty())) break;
    head.append(said);
  }
  return head;
}

class Rows {
 public:
  Rows(const Schema& starter, const Schema& tables) : starter_(starter), tables_(tables) {}

  std::vector<TableData> run() {
    for (const RowSection& section : starter_.rows) take(section);
    for (const auto& [place, table] : found_) requireDistinct(table);
    for (const auto& [place, table] : found_) requireNamed(table);
    std::vector<TableData> all;
    for (auto& [place, table] : found_) all.push_back(std::move(table.data));
    return all;
  }

 private:
  struct Table {
    TableData data;
    std::vector<int> lines;  ///< of the rows
  };

  [[noreturn]] void fail(int line, const QString& what) const {
    throw Error(errors::kInvalidCall, QString("%1:%2: %3").arg(starter_.source).arg(line).arg(what));
  }

  void take(const RowSection& section) {
    const qsizetype place = placeOf(section.table);
    const dao::TableDef* def = tables_.table(section.table);
    if (place < 0 || !def)
      fail(section.line, QString("»%1« gehört nicht in eine Vorlage").arg(section.table));
    if (found_.contains(place)) fail(section.line, QString("Zeilen %1 stehen schon da").arg(section.table));
    const RowSection single = oneEach(section, *def);
    Table table{typedRows(single, *def, starter_.source), {}};
    for (const TextRow& row : single.rows) table.lines.push_back(row.line);
    found_.emplace(place, std::move(table));
  }

  static bool namesRows(const dao::TableDef& def, const QString& column) {
    return std::any_of(references().begin(), references().end(), [&](const Reference& reference) {
      return dao::sameName(reference.table, def.name) && dao::sameName(reference.column, column) &&
             def.field(column) && def.field(column)->type == dao::FieldType::Long;
    });
  }

  /// Rows whose cells name several others, as a row for each of them.
  RowSection oneEach(const RowSection& section, const dao::TableDef& def) const {
    RowSection single = section;
    for (qsizetype column = 0; column < section.columns.size(); ++column) {
      if (!namesRows(def, section.columns[column])) continue;
      std::vector<TextRow> rows;
      for (const TextRow& row : single.rows)
        for (const QString& number : numbersIn(row.cells[column], row.line)) {
          rows.push_back(row);
          rows.back().cells[column] = number;
        }
      single.rows = std::move(rows);
    }
    return single;
  }

  QStringList numbersIn(const QString& cell, int line) const {
    static const QRegularExpression several(
        R"(^\d{1,6}(\s*-\s*\d{1,6})?(\s*,\s*\d{1,6}(\s*-\s*\d{1,6})?)*$)");
    if (!several.match(cell).hasMatch()) return {cell};
    QStringList numbers;
    for (const QString& part : cell.split(',')) {
      const QStringList ends = part.split('-');
      const int first = ends.first().toInt(), last = ends.last().toInt();
      constexpr int kMost = 1000;
      if (last < first || last - first >= kMost)
        fail(line, QString("»%1« ist kein Bereich").arg(part.trimmed()));
      for (int number = first; number <= last; ++number) numbers.append(QString::number(number));
    }
    return numbers;
  }

  qsizetype keyColumn(const Table& table) const {
    const dao::IndexDef* primary = tables_.table(table.data.table)->primary();
    return primary && primary->fields.size() == 1 ? table.data.columns.indexOf(primary->fields.first()) : -1;
  }

  void requireDistinct(const Table& table) const {
    const qsizetype column = keyColumn(table);
    std::set<int> seen;
    for (size_t i = 0; column >= 0 && i < table.data.rows.size(); ++i) {
      const int number = table.data.rows[i][column].toInt();
      if (!seen.insert(number).second)
        fail(table.lines[i], QString("die Nummer %1 steht schon da").arg(number));
    }
  }

  /// Every number that names a row of another table has one there; 0 stands for none.
  void requireNamed(const Table& table) const {
    for (const Reference& reference : references()) {
      if (!dao::sameName(reference.table, table.data.table)) continue;
      const qsizetype column = table.data.columns.indexOf(reference.column, 0);
      const auto target = found_.find(placeOf(reference.target));
      if (column < 0 || placeOf(reference.target) < 0 || !namesByKey(reference)) continue;
      for (size_t i = 0; i < table.data.rows.size(); ++i) {
        const int number = table.data.rows[i][column].toInt();
        if (number == 0 || !applies(reference, table, i)) continue;
        if (target == found_.end() || !stands(target->second, number))
          fail(table.lines[i], QString("%1 %2 gibt es nicht unter »Zeilen %3«")
                                   .arg(reference.column)
                                   .arg(number)
                                   .arg(reference.target));
      }
    }
  }

  bool namesByKey(const Reference& reference) const {
    const dao::TableDef* def = tables_.table(reference.target);
    return def && def->primary() && dao::sameName(def->primary()->fields.first(), reference.by);
  }
  static bool applies(const Reference& reference, const Table& table, size_t row) {
    return std::all_of(reference.onlyWhere.begin(), reference.onlyWhere.end(), [&](const auto& condition) {
      const qsizetype column = table.data.columns.indexOf(condition.first);
      return column >= 0 && table.data.rows[row][column].toInt() == condition.second;
    });
  }
  bool stands(const Table& target, int number) const {
    const qsizetype column = keyColumn(target);
    return std::any_of(target.data.rows.begin(), target.data.rows.end(),
                       [&](const QVariantList& row) { return column < 0 || row[column].toInt() == number; });
  }

  const Schema& starter_;
  const Schema& tables_;
  std::map<qsizetype, Table> found_;  ///< by place in kTables
};

}  // namespace

QString starterFolder() {
  return Programmverzeichnis() + withTrailingSeparator("starter");
}

std::vector<StarterSet> starterSets(Files& files, const QString& folder) {
  std::vector<StarterSet> sets;
  for (const QString& file : files.list(folder, "*.txt")) {
    const QString path = withTrailingSeparator(folder) + file;
    QStringList head;
    try {
      head = headOf(QString::fromUtf8(files.read(path)));
    } catch (const Error&) {
      continue;
    }
    const QString name = QFileInfo(file).completeBaseName();
    sets.push_back(
        {name, head.value(0).isEmpty() ? name : head.first(), head.mid(1).join(' ').simplified(), path});
  }
  std::sort(sets.begin(), sets.end(), [](const StarterSet& one, const StarterSet& other) {
    return QString::localeAwareCompare(one.title, other.title) < 0;
  });
  return sets;
}

std::vector<TableData> starterRows(const QString& text, const QString& source, const Schema& tables) {
  const Schema starter = parseSchema(text, source);
  if (!starter.tables.empty() || !starter.queries.empty())
    throw Error(
        5, QString("%1:1: eine Vorlage hat nur »Zeilen«, keine »Tabelle« und keine »Abfrage«").arg(source));
  return Rows(starter, tables).run();
}

}  // namespace qk
