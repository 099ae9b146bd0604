#include "platform/dao/postgres_connection.h"

#include <libpq-fe.h>

#include <QThread>
#include <array>
#include <charconv>

#include "platform/dao/postgres_errors.h"
#include "platform/dao/socket_ready.h"

namespace qk::dao {
namespace {

constexpr int kKeptStatements = 200;
constexpr int kOldestServer = 150000;
constexpr int kCancelSlice = 10;  // milliseconds between two looks at whether a read was given up
/// Rows that are read to the end rather than have the server told to stop.
constexpr int kDrained = 1000;

// Types of the server by their fixed numbers.
enum Type : Oid {
  Bool = 16,
  Bytes = 17,
  Int8 = 20,
  Int2 = 21,
  Int4 = 23,
  OidType = 26,
  Float4 = 700,
  Float8 = 701
};

/// "?" becomes $1, $2 …, but not within quotes.
QByteArray numbered(const QString& text) {
  QByteArray native;
  const QByteArray utf8 = text.toUtf8();
  native.reserve(utf8.size() + 32);
  char quote = 0;
  int count = 0;
  for (const char c : utf8) {
    if (quote ? c == quote : c == '\'' || c == '"') quote = quote ? 0 : c;
    if (c == '?' && !quote) {
      native += '$' + QByteArray::number(++count);
    } else {
      native += c;
    }
  }
  return native;
}

/// PostgreSQL holds no NUL character in a text.
QByteArray textParameter(const QString& text) {
  if (text.contains(QChar(u'\0')))
    throw Error(3421, "Ein Text enthält das Zeichen NUL, das der Datenbankserver nicht speichern kann.");
  return text.toUtf8();
}

QByteArray parameter(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
      return QByteArray::number(value.toLongLong());
    case QMetaType::Double:
      return QByteArray::number(value.toDouble(), 'g', 17);
    case QMetaType::QByteArray:
      return value.toByteArray();
    default:
      return textParameter(value.toString());
  }
}

/// The greatest one is none for Qt, which takes it for a rounded greater one.
float single(const QByteArray& text) {
  float value = 0;
  const auto read = std::from_chars(text.constBegin(), text.constEnd(), value);
  return read.ec == std::errc() ? value : text.toFloat();
}

QVariant cell(const PGresult* result, int column) {
  if (PQgetisnull(result, 0, column)) return {};
  const QByteArray text =
      QByteArray::fromRawData(PQgetvalue(result, 0, column), PQgetlength(result, 0, column));
  switch (PQftype(result, column)) {
    case Bool:
      return static_cast<qlonglong>(text == "t");
    case Int8:
    case Int2:
    case Int4:
    case OidType:
      return text.toLongLong();
    case Float4:
      return static_cast<double>(single(text));
    case Float8:
      return text.toDouble();
    case Bytes:
      return QByteArray::fromHex(text.mid(2));  // "\x…"
    default:
      return QString::fromUtf8(text);
  }
}

QString messageOf(const char* text) {
  return QString::fromUtf8(text).trimmed();
}

}  // namespace

void PostgresConnection::Finish::operator()(pg_conn* connection) const {
  PQfinish(connection);
}
void PostgresConnection::Clear::operator()(pg_result* result) const {
  PQclear(result);
}

PostgresConnection::PostgresConnection(ServerAddress address, OpenOptions options)
    : address_(std::move(address)), options_(std::move(options)) {
  connect();
}

OpenOptions PostgresConnection::optionsOfAnother() const {
  OpenOptions options = options_;
  if (password_)
    options.askPassword = [known = password_](const ServerAddress&, bool again) {
      return again ? std::nullopt : known;
    };
  return options;
}

bool PostgresConnection::tryConnect(QString& message) {
  const QByteArray host = address_.host.toUtf8(), database = address_.database.toUtf8();
  const QByteArray user = address_.user.toUtf8(), password = password_.value_or(QString()).toUtf8();
  const QByteArray port = QByteArray::number(address_.port);
  QByteArray settings =
      "-c search_path=dao -c lock_timeout=5s -c datestyle=ISO,YMD -c extra_float_digits=1 -c "
      "bytea_output=hex "
      "-c standard_conforming_strings=on -c client_min_messages=error";
  if (options_.readOnly) settings += " -c default_transaction_read_only=on";
  if (!options_.durable) settings += " -c synchronous_commit=off";
  const std::array keys{"host",
                        "port",
                        "dbname",
                        "user",
                        "password",
                        "connect_timeout",
                        "keepalives_idle",
                        "keepalives_interval",
                        "keepalives_count",
                        "tcp_user_timeout",
                        "client_encoding",
                        "options",
                        static_cast<const char*>(nullptr)};
  const std::array values{host.constData(),
                          port.constData(),
                          database.constData(),
                          user.constData(),
                          password_ ? password.constData() : nullptr,
                          "5",
                          "10",
                          "2",
                          "3",
                          "10000",
                          "UTF8",
                          settings.constData(),
                          static_cast<const char*>(nullptr)};
  connection_.reset(PQconnectdbParams(keys.data(), values.data(), 0));
  if (PQstatus(connection_.get()) == CONNECTION_OK) {
    ended_ = false;
    PQsetNoticeReceiver(connection_.get(), hearNotice, this);
    return true;
  }
  message = messageOf(PQerrorMessage(connection_.get()));
  return false;
}

/// A server that shuts down says good-bye to whoever asks it nothing.
void PostgresConnection::hearNotice(void* self, const pg_result* notice) {
  const char* state = PQresultErrorField(notice, PG_DIAG_SQLSTATE);
  if (state && postgres::isLoss(state)) static_cast<PostgresConnection*>(self)->ended_ = true;
}

void PostgresConnection::connect() {
  statements_.clear();
  inTransaction_ = false;
  QString message;
  while (!tryConnect(message)) {
    const bool wanted = PQconnectionNeedsPassword(connection_.get());
    const bool wrong = !wanted && PQconnectionUsedPassword(connection_.get());
    connection_.reset();
    if (!wanted && !wrong)
      throw Error(postgres::kConnectionLost,
                  QString("Die Datenbank %1 ist nicht erreichbar: %2").arg(placeOf(address_), message));
    // A password that is missing counts as used, too.
    password_ = options_.askPassword ? options_.askPassword(address_, !wanted) : std::nullopt;
    if (!password_) throw Error(postgres::kNoLogin);
  }
  if (PQserverVersion(connection_.get()) < kOldestServer) {
    connection_.reset();
    throw Error(3343,
                "Der Datenbankserver " + address_.host + " ist zu alt: PostgreSQL 15 oder neuer ist nötig.");
  }
}

void PostgresConnection::throwLost() {
  connection_.reset();
  statements_.clear();
  throw Error(postgres::kConnectionLost,
              QString("Die Verbindung zur Datenbank %1 ist unterbrochen.").arg(placeOf(address_)));
}

/// A connection that the server has ended says so before anything is sent.
void PostgresConnection::ensureAlive() {
  if (connection_) {
    const int socket = PQsocket(connection_.get());
    while (isReadable(socket, 0) && PQconsumeInput(connection_.get())) PQisBusy(connection_.get());
    if (PQstatus(connection_.get()) == CONNECTION_OK && !ended_) return;
  }
  if (inTransaction_) throwLost();
  connect();
}

PostgresConnection::Statement& PostgresConnection::statementOf(const QString& text) {
  auto found = statements_.find(text);
  if (found == statements_.end()) {
    if (statements_.size() >= kKeptStatements) {
      PQclear(PQexec(connection_.get(), "DEALLOCATE ALL"));
      statements_.clear();
    }
    found = statements_.insert(text, {numbered(text), {}, false});
  }
  return *found;
}

/// What comes a second time is prepared; most texts of a session come once.
void PostgresConnection::send(Statement& statement, const QVariantList& values, bool rowByRow) {
  std::vector<QByteArray> kept(static_cast<size_t>(values.size()));
  std::vector<const char*> pointers(kept.size());
  std::vector<int> lengths(kept.size()), formats(kept.size());
  for (size_t i = 0; i < kept.size(); ++i) {
    const QVariant& value = values[static_cast<qsizetype>(i)];
    if (!value.isValid() || value.isNull()) continue;
    kept[i] = parameter(value);
    pointers[i] = kept[i].constData();
    lengths[i] = static_cast<int>(kept[i].size());
    formats[i] = value.typeId() == QMetaType::QByteArray;
  }
  const int count = static_cast<int>(kept.size());
  if (statement.used && statement.name.isEmpty()) {
    const QByteArray name = "q" + QByteArray::number(++named_);
    const Result prepared(
        PQprepare(connection_.get(), name.constData(), statement.native.constData(), 0, nullptr));
    if (PQresultStatus(prepared.get()) == PGRES_COMMAND_OK) statement.name = name;
  }
  statement.used = true;
  const int sent = statement.name.isEmpty()
                       ? PQsendQueryParams(connection_.get(), statement.native.constData(), count, nullptr,
                                           pointers.data(), lengths.data(), formats.data(), 0)
                       : PQsendQueryPrepared(connection_.get(), statement.name.constData(), count,
                                             pointers.data(), lengths.data(), formats.data(), 0);
  if (!sent) throwLost();
  if (rowByRow) PQsetSingleRowMode(connection_.get());
}

void PostgresConnection::cancelStatement() {
  PGcancel* cancel = PQgetCancel(connection_.get());
  std::array<char, 256> unused{};
  PQcancel(cancel, unused.data(), static_cast<int>(unused.size()));
  PQfreeCancel(cancel);
}

void PostgresConnection::waitForAnswer() {
  bool told = false;
  while (PQisBusy(connection_.get())) {
    const bool ready = isReadable(PQsocket(connection_.get()), cancelled_ && !told ? kCancelSlice : -1);
    if (cancelled_ && !told && cancelled_()) {
      cancelStatement();
      told = true;
    }
    if (ready && !PQconsumeInput(connection_.get())) throwLost();
  }
}

PostgresConnection::Result PostgresConnection::nextResult() {
  waitForAnswer();
  return Result(PQgetResult(connection_.get()));
}

/// Leaves the connection ready for the next statement.
void PostgresConnection::drain() {
  int rows = 0;
  while (const Result result = nextResult())
    if (++rows == kDrained && !inTransaction_) cancelStatement();
}

PostgresConnection::Outcome PostgresConnection::collect(const Take& take) {
  Outcome outcome;
  QVariantList row;
  while (const Result result = nextResult()) {
    switch (PQresultStatus(result.get())) {
      case PGRES_SINGLE_TUPLE:
        outcome.anyRow = true;
        row.resize(PQnfields(result.get()));
        for (int i = 0; i < row.size(); ++i) row[i] = cell(result.get(), i);
        try {
          const bool given = cancelled_ && cancelled_();
          if (given || !take(row)) {
            drain();
            if (given) outcome.failure = Error(3059);
            return outcome;
          }
        } catch (...) {
          drain();
          throw;
        }
        break;
      case PGRES_TUPLES_OK:
      case PGRES_COMMAND_OK:
        outcome.affected = QByteArray(PQcmdTuples(result.get())).toInt();
        if (inTransaction_ && qstrcmp(PQcmdStatus(result.get()), "ROLLBACK") == 0) outcome.state = "ROLLBACK";
        break;
      default:
        outcome.state = PQresultErrorField(result.get(), PG_DIAG_SQLSTATE);
        outcome.failure = postgres::errorOf(
            outcome.state, messageOf(PQresultErrorField(result.get(), PG_DIAG_MESSAGE_PRIMARY)));
    }
  }
  return outcome;
}

int PostgresConnection::run(const QString& text, const QVariantList& values, const Take& take,
                            bool repeatable) {
  if (inTransaction_ && transactionFailure_) throw *transactionFailure_;
  for (int attempt = 0;; ++attempt) {
    ensureAlive();
    if (listener_) listener_(text);
    const bool again = attempt == 0 && !inTransaction_;
    bool anyRow = false;
    try {
      Statement& statement = statementOf(text);
      const bool prepared = !statement.name.isEmpty();
      send(statement, values, take != nullptr);
      const Outcome outcome = collect(take ? [&](const QVariantList& row) {
        anyRow = true;
        return take(row);
      } : Take());
      if (PQstatus(connection_.get()) != CONNECTION_OK || postgres::isLoss(outcome.state)) throwLost();
      if (!outcome.failure) return outcome.affected;
      // Somebody has changed a table, and the plan that is kept doesn't fit it any more.
      const bool stale = prepared && (outcome.state == "0A000" || outcome.state == "26000");
      statements_.remove(text);
      if (stale && again && !anyRow) continue;
      if (inTransaction_) transactionFailure_ = *outcome.failure;
      throw *outcome.failure;
    } catch (const Error& error) {
      const bool lost = error.number() == postgres::kConnectionLost && !connection_;
      if (!lost || !repeatable || !again || anyRow) throw;
    }
  }
}

void PostgresConnection::read(const QString& text, const QVariantList& values, const Take& take) {
  run(text, values, take, true);
}

QVariant PostgresConnection::value(const QString& text, const QVariantList& values) {
  QVariant found;
  read(text, values, [&](const QVariantList& row) {
    found = row.first();
    return false;
  });
  return found;
}

int PostgresConnection::write(const QString& text, const QVariantList& values, const Take& take) {
  return run(text, values, take, false);
}

/// The transaction's number is asked for at once, so that its fate can be asked for if the answer gets lost.
void PostgresConnection::begin() {
  ensureAlive();
  const char* text = options_.readOnly ? "BEGIN" : "BEGIN; SELECT pg_current_xact_id()::text";
  const Result result(PQexec(connection_.get(), text));
  if (PQstatus(connection_.get()) != CONNECTION_OK) throwLost();
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
    const Error failure = postgres::errorOf(PQresultErrorField(result.get(), PG_DIAG_SQLSTATE),
                                            messageOf(PQresultErrorMessage(result.get())));
    PQclear(PQexec(connection_.get(), "ROLLBACK"));
    throw failure;
  }
  transactionId_ = status == PGRES_TUPLES_OK ? QString(PQgetvalue(result.get(), 0, 0)) : QString();
  transactionFailure_.reset();
  inTransaction_ = true;
}

void PostgresConnection::commit() {
  if (transactionFailure_) throw *transactionFailure_;
  const Result result(PQexec(connection_.get(), "COMMIT"));
  const bool answered = PQstatus(connection_.get()) == CONNECTION_OK;
  if (answered && qstrcmp(PQcmdStatus(result.get()), "COMMIT") == 0) {
    inTransaction_ = false;
    return;
  }
  if (answered) {
    const char* state = PQresultErrorField(result.get(), PG_DIAG_SQLSTATE);
    throw postgres::errorOf(state ? state : "25P02", messageOf(PQresultErrorMessage(result.get())));
  }
  inTransaction_ = false;
  connection_.reset();
  constexpr int kLooks = 50;
  for (int look = 0; look < kLooks; ++look) {
    const QString fate = value("SELECT pg_xact_status(?::xid8)", {transactionId_}).toString();
    if (fate == "committed") return;
    if (fate != "in progress") break;
    QThread::msleep(kCancelSlice);
  }
  throwLost();
}

void PostgresConnection::rollback() {
  inTransaction_ = false;
  transactionFailure_.reset();
  if (connection_) PQclear(PQexec(connection_.get(), "ROLLBACK"));
}

}  // namespace qk::dao
