// The rows behind a report: each part's query is read in a thread of its own as soon as the part is reached;
// the values for heads and feet are read at once.
#pragma once

#include <QHash>
#include <functional>
#include <map>
#include <memory>

#include "platform/dao/values/types.h"
#include "platform/report/definition.h"
#include "platform/report/row_buffer.h"

namespace qk::dao {
class Database;
class RowReader;
}  // namespace qk::dao

namespace qk::report {

/// A table in memory as data.
struct TableRows {
  QStringList names;
  std::vector<QVariantList> rows;
};

/// What a report is run on.
struct Input {
  QString dataFile;
  QHash<QString, QString> partFiles;  ///< data files of single parts, by their names
  QHash<QString, QVariant> parameters;
  std::shared_ptr<const TableRows> table;  ///< in place of the query of the first part
  QDateTime now;
};

class ReportData {
 public:
  /// Opens the data and checks every query. Errors name the data file, or the report's file and the line.
  /// `grown` is called in any thread.
  ReportData(const Definition& report, Input input, std::function<void()> grown);
  ~ReportData();

  const std::vector<dao::FieldDef>& fields(size_t part) const { return sources_[part].fields; }
  /// Begins to read them at the first call.
  const RowBuffer& rows(size_t part);

  /// Names that are known everywhere, and their values.
  const QStringList& fixedNames() const { return fixedNames_; }
  const QVariantList& fixedValues() const { return fixedValues_; }

 private:
  struct Source {
    std::vector<dao::FieldDef> fields;
    std::unique_ptr<RowBuffer> rows;
    std::unique_ptr<dao::RowReader> reader;  // after what it fills: goes before it
    bool started = false;
  };

  dao::Database& database(const QString& path);
  QString literalOf(const QString& parameter, int line) const;
  QString withParameters(const QString& query, int line) const;
  void readValues(const ValueQuery& values);
  void addFixed(const QString& name, const QVariant& value);
  Source open(const Part& part);
  Source ofTable() const;
  QString pathFor(const Part& part) const;

  QString file_;
  Input input_;
  QStringList parameterNames_;
  std::function<void()> grown_;
  std::map<QString, std::unique_ptr<dao::Database>> databases_;
  QStringList fixedNames_;
  QVariantList fixedValues_;
  std::vector<Source> sources_;  // after the databases
};

}  // namespace qk::report
