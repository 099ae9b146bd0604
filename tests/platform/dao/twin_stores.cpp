#include "tests/platform/dao/twin_stores.h"

#include <QDateTime>
#include <QTemporaryDir>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"
#include "tests/support/postgres_server.h"

namespace qk::dao::test {
namespace {

/// A double by its fifteen digits: sums are added up in an order that each engine chooses.
QString cell(const QVariant& value) {
  if (!value.isValid()) return "NULL";
  if (value.userType() == qMetaTypeId<Money>()) return value.value<Money>().toText();
  if (value.userType() == QMetaType::Double) return numberText(value.toDouble());
  if (value.userType() == QMetaType::QDateTime) return value.toDateTime().toString(Qt::ISODateWithMs);
  if (value.userType() == QMetaType::QByteArray) return value.toByteArray().toHex();
  return value.toString();
}

QString rowText(const Recordset& rows) {
  QStringList cells;
  for (int i = 0; i < rows.fieldCount(); ++i) cells << cell(rows.value(i));
  return cells.join(" | ");
}

template <class Work>
Outcome outcomeOf(Work&& work) {
  Outcome outcome;
  try {
    work(outcome);
  } catch (const Error& error) {
    outcome = {};
    outcome.error = error.number();
    outcome.description = error.description();
  }
  return outcome;
}

/// Only what isn't the same on both.
QString shown(const Outcome& one, const Outcome& other) {
  if (one.error || one.error != other.error || one.columns != other.columns || one.affected != other.affected)
    return one.text();
  QString text = QString("%1 rows").arg(one.rows.size());
  for (qsizetype i = 0; i < one.rows.size(); ++i)
    if (one.rows[i] != other.rows.value(i)) text += QString("\n      %1: %2").arg(i + 1).arg(one.rows[i]);
  return text;
}

}  // namespace

QString Outcome::text() const {
  if (error) return QString("error %1: %2").arg(error).arg(description);
  return QString("%1 affected; %2\n      ").arg(affected).arg(columns.join(", ")) + rows.join("\n      ");
}

Outcome read(Database& database, const QString& select) {
  return outcomeOf([&](Outcome& outcome) {
    const auto rows = database.openRecordset(select);
    for (int i = 0; i < rows->fieldCount(); ++i) {
      const FieldDef& field = rows->fieldDef(i);
      outcome.columns << QString("%1:%2").arg(field.name).arg(int(field.type));
    }
    for (; !rows->eof(); rows->moveNext()) outcome.rows << rowText(*rows);
  });
}

TwinStores::TwinStores() : folder_(std::make_unique<QTemporaryDir>()) {
  const Pair paths = emptyPair();
  file_ = Database::open(paths.file, OpenOptions{.durable = false});
  server_ = Database::open(paths.server, OpenOptions{.durable = false});
}

TwinStores::~TwinStores() {
  server_.reset();
}

TwinStores::Pair TwinStores::emptyPair() {
  const Pair paths{folder_->filePath(QString("datei%1.qkk").arg(++pairs_)),
                   folder_->filePath(QString("server%1.qkk").arg(pairs_))};
  databases_.push_back(std::make_unique<qk::test::ServerDatabase>());
  databases_.back()->writeAddress(paths.server);
  for (const QString& path : {paths.file, paths.server}) Database::create(path, {.durable = false});
  return paths;
}

void TwinStores::createTable(const TableDef& table) {
  for (Database* database : {file_.get(), server_.get()}) database->createTable(table);
}

void TwinStores::createQuery(const QString& name, const QString& text) {
  for (Database* database : {file_.get(), server_.get()}) database->createQuery(name, text);
}

void TwinStores::add(const QString& table, const std::vector<std::pair<QString, QVariant>>& values) {
  for (Database* database : {file_.get(), server_.get()}) {
    const auto rows = database->openRecordset(table);
    rows->addNew();
    for (const auto& [name, value] : values) rows->setValue(name, value);
    rows->update();
  }
}

QString TwinStores::compared(const QString& text, const Outcome& file, const Outcome& server) {
  lastFailed_ = file.error != 0;
  if (file.text() == server.text()) return {};
  return QString("%1\n  file:   %2\n  server: %3").arg(text, shown(file, server), shown(server, file));
}

QString TwinStores::compareRows(const QString& select, Order order) {
  Outcome file = read(*file_, select), server = read(*server_, select);
  if (order == Order::Open) {
    for (Outcome* outcome : {&file, &server}) {
      for (QString& row : outcome->rows) row = row.toLower();
      outcome->rows.sort();
    }
  }
  return compared(select, file, server);
}

QString TwinStores::compareAction(const QString& text) {
  const auto run = [&](Database& database) {
    return outcomeOf([&](Outcome& outcome) { outcome.affected = database.execute(text); });
  };
  const Outcome file = run(*file_), server = run(*server_);
  return compared(text, file, server);
}

QString TwinStores::compareFound(const QString& select, const QString& criterion) {
  const auto run = [&](Database& database) {
    return outcomeOf([&](Outcome& outcome) {
      const auto rows = database.openRecordset(select);
      rows->findFirst(criterion);
      outcome.rows << (rows->noMatch() ? QString("none") : rowText(*rows));
    });
  };
  const Outcome file = run(*file_), server = run(*server_);
  return compared(select + " / " + criterion, file, server);
}

}  // namespace qk::dao::test
