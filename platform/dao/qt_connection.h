// A Qt SQL connection that keeps its prepared statements: what engines on Qt SQL have in common.
#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariantList>
#include <functional>
#include <memory>

#include "platform/runtime/error.h"

namespace qk::dao {

class QtConnection {
 public:
  /// failure: the Error for what has just gone wrong on the connection.
  QtConnection(const QString& driver, std::function<Error(const QSqlError&)> failure);
  ~QtConnection();
  QtConnection(const QtConnection&) = delete;
  QtConnection& operator=(const QtConnection&) = delete;

  QSqlDatabase& database() { return database_; }

  /// Hands over row after row until `take` says false; Null is an invalid QVariant. The statement is reset
  /// afterwards.
  void read(const QString& text, const QVariantList& values,
            const std::function<bool(const QVariantList&)>& take);
  /// Affected rows.
  int write(const QString& text, const QVariantList& values = {});
  /// Inserts one row; the number that the database assigned to it.
  qint64 insert(const QString& text, const QVariantList& values);
  /// Forgets the prepared statements.
  void forget() { statements_.clear(); }

 private:
  QSqlQuery& run(const QString& text, const QVariantList& values);

  QSqlDatabase database_;
  std::function<Error(const QSqlError&)> failure_;
  QHash<QString, std::shared_ptr<QSqlQuery>> statements_;
};

}  // namespace qk::dao
