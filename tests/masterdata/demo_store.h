// A demo competition of a test's own, with the tables of open shots and station groups that the office
// program adds, on the engine of the run.
#pragma once

#include <QTemporaryDir>
#include <memory>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"

namespace qk::test {

class DemoStore {
 public:
  DemoStore();

  dao::Database& database() const { return *database_; }
  QString path() const;
  std::unique_ptr<dao::Database> another() const { return dao::Database::open(path()); }

  /// One row; its key.
  qint64 add(const QString& table, const dao::RowValues& values) const;
  QVariant value(const QString& table, qint64 key, const QString& column) const;
  /// Rows that meet the condition; all without one.
  qint64 count(const QString& table, const QString& condition = {}) const;
  /// One open shot on a line.
  qint64 addShot(const QString& number, int line, int place) const;

 private:
  QTemporaryDir folder_;
  std::unique_ptr<dao::Database> database_;
};

}  // namespace qk::test
