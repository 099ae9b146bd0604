#include "platform/dao/qt_connection.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QUuid>

namespace qk::dao {
namespace {

constexpr int kKeptStatements = 200;

/// Qt takes a null QString for Null; in the store an empty text isn't Null.
QVariant bindable(const QVariant& value) {
  if (value.typeId() == QMetaType::QString && value.toString().isNull()) return QString("");
  return value;
}

/// Resets a statement, so that no cursor stays open, also when a row's taker throws.
class Reset {
 public:
  explicit Reset(QSqlQuery& query) : query_(query) {}
  ~Reset() { query_.finish(); }
  Reset(const Reset&) = delete;
  Reset& operator=(const Reset&) = delete;

 private:
  QSqlQuery& query_;
};

}  // namespace

QtConnection::QtConnection(const QString& driver, std::function<Error(const QSqlError&)> failure)
    : database_(QSqlDatabase::addDatabase(driver, QUuid::createUuid().toString())),
      failure_(std::move(failure)) {}

QtConnection::~QtConnection() {
  forget();
  const QString name = database_.connectionName();
  database_.close();
  database_ = {};
  QSqlDatabase::removeDatabase(name);
}

QSqlQuery& QtConnection::run(const QString& text, const QVariantList& values) {
  auto found = statements_.find(text);
  if (found == statements_.end()) {
    auto query = std::make_shared<QSqlQuery>(database_);
    query->setForwardOnly(true);
    if (!query->prepare(text)) throw failure_(query->lastError());
    if (statements_.size() >= kKeptStatements) forget();
    found = statements_.insert(text, std::move(query));
  }
  QSqlQuery& query = **found;
  for (int i = 0; i < values.size(); ++i) query.bindValue(i, bindable(values[i]));
  if (!query.exec()) {
    const Error error = failure_(query.lastError());
    query.finish();
    throw error;
  }
  return query;
}

void QtConnection::read(const QString& text, const QVariantList& values,
                        const std::function<bool(const QVariantList&)>& take) {
  QSqlQuery& query = run(text, values);
  const Reset reset(query);
  QVariantList row;
  while (query.next()) {
    const int count = row.isEmpty() ? query.record().count() : static_cast<int>(row.size());
    row.resize(count);
    for (int i = 0; i < count; ++i) {
      QVariant value = query.value(i);
      row[i] = value.isNull() ? QVariant() : std::move(value);
    }
    if (!take(row)) return;
  }
  if (query.lastError().isValid()) throw failure_(query.lastError());
}

int QtConnection::write(const QString& text, const QVariantList& values) {
  QSqlQuery& query = run(text, values);
  const Reset reset(query);
  return query.numRowsAffected();
}

qint64 QtConnection::insert(const QString& text, const QVariantList& values) {
  QSqlQuery& query = run(text, values);
  const Reset reset(query);
  return query.lastInsertId().toLongLong();
}

}  // namespace qk::dao
