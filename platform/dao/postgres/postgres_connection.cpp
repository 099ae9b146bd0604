#include "platform/dao/postgres/postgres_connection.h"

#include <libpq-fe.h>

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QSysInfo>
#include <QUuid>
#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cmath>

#include "platform/dao/postgres/postgres_errors.h"
#include "platform/dao/postgres/postgres_schema.h"
#include "platform/dao/server/server_wait.h"
#include "platform/dao/signs/waiting_sign.h"

namespace qk::dao {
namespace {

constexpr int kKeptStatements = 200;
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
    throw Error(errors::kConversionFailed,
                "Ein Text enthält das Zeichen NUL, das der Datenbankserver nicht speichern kann.");
  return text.toUtf8();
}

/// The fewest digits that are read as the same number again; a whole number without an exponent, which an
/// integer column would not read.
QByteArray realParameter(double number) {
  constexpr double kLongest = 1e17;
  std::array<char, 32> digits{};
  const bool whole = std::abs(number) < kLongest && number != 0 && std::trunc(number) == number;
  const auto text = whole ? std::to_chars(digits.begin(), digits.end(), static_cast<qint64>(number))
                          : std::to_chars(digits.begin(), digits.end(), number);
  return {digits.data(), text.ptr - digits.data()};
}

QByteArray parameter(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
      return QByteArray::number(value.toLongLong());
    case QMetaType::Double:
      return realParameter(value.toDouble());
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

Error errorIn(const PGresult* result) {
  return postgres::errorOf(PQresultErrorField(result, PG_DIAG_SQLSTATE),
                           messageOf(PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY)));
}

/// A name that no other connection has: workstation, process, number. The server cuts it at 63 bytes.
QByteArray newName() {
  static std::atomic<int> count = 0;
  const QByteArray number =
      QByteArray::number(QCoreApplication::applicationPid()) + '-' + QByteArray::number(++count);
  return QSysInfo::machineHostName().toUtf8().left(20) + ' ' + number + ' ' +
         QUuid::createUuid().toByteArray(QUuid::Id128).left(8);
}

}  // namespace

void PostgresConnection::Clear::operator()(pg_result* result) const {
  PQclear(result);
}

PostgresConnection::PostgresConnection(ServerAddress address, OpenOptions options)
    : address_(std::move(address)),
      options_(std::move(options)),
      patience_(
          std::chrono::seconds(std::min(address_.patience, options_.patience.value_or(address_.patience)))) {
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

QByteArray PostgresConnection::sessionSettings() const {
  QByteArray settings =
      "-c search_path=dao -c lock_timeout=5s -c datestyle=ISO,YMD -c extra_float_digits=1 -c "
      "bytea_output=hex "
      "-c standard_conforming_strings=on -c client_min_messages=error";
  // Compiling a statement takes longer than a piece of an UPDATE over a join, and is asked for at each.
  settings += " -c jit=off";
  if (options_.readOnly) settings += " -c default_transaction_read_only=on";
  if (!options_.durable) settings += " -c synchronous_commit=off";
  return settings;
}

/// A server that shuts down says good-bye to whoever asks it nothing.
void PostgresConnection::hearNotice(void* self, const pg_result* notice) {
  const char* state = PQresultErrorField(notice, PG_DIAG_SQLSTATE);
  if (state && postgres::isLoss(state)) static_cast<PostgresConnection*>(self)->ended_ = true;
}

void PostgresConnection::connect() {
  statements_.clear();
  inTransaction_ = false;
  if (WaitingSign::isShowing()) throw Error(postgres::kBusy);
  ServerMemory& memory = ServerMemory::ofProgram();
  name_ = newName();
  for (;;) {
    postgres::Answer answer =
        postgres::dial({address_, password_, name_, sessionSettings(), patience_}, memory);
    if (answer.connection) {
      connection_ = std::move(answer.connection);
      identity_ = answer.identity;
      host_ = nameOf(address_, answer.endpoint);
      waitsForStandby_ = answer.waitsForStandby;
      break;
    }
    if (answer.password == postgres::Answer::Password::Fine) throw answer.failure;
    // A password that is missing counts as used, too.
    const bool again = answer.password == postgres::Answer::Password::Wrong;
    password_ = options_.askPassword ? options_.askPassword(address_, again) : std::nullopt;
    if (!password_) throw Error(errors::kNoLogin);
  }
  held_ = memory.hold(address_, identity_);
  ended_ = false;
  PQsetnonblocking(connection_.get(), 1);
  PQsetNoticeReceiver(connection_.get(), hearNotice, this);
  endFormerOnes();
}

void PostgresConnection::noteLoss() {
  constexpr int kKept = 8;
  formerNames_.append(name_);
  while (formerNames_.size() > kKept) formerNames_.removeFirst();
  ++losses_;
}

QString PostgresConnection::formerOnes() const {
  return QString(
             " FROM pg_stat_activity WHERE usename = current_user AND application_name = ANY "
             "(string_to_array('%1', ','))")
      .arg(QString::fromUtf8(formerNames_.join(',')).replace('\'', "''"));
}

/// What a connection that was given up still has before it, it shall never do: its work is tried again over
/// this one. A server process that was stopped ends before it reads on.
void PostgresConnection::endFormerOnes() {
  constexpr int kMoment = 200;  // milliseconds
  if (formerNames_.isEmpty()) return;
  execute(QString("SELECT pg_terminate_backend(pid, %1)" + formerOnes()).arg(kMoment).toUtf8().constData());
}

void PostgresConnection::requireFormerIdle() {
  if (formerNames_.isEmpty() || value("SELECT count(*)" + formerOnes() + " AND state <> 'idle'").toInt() == 0)
    return;
  throw Error(
      errors::kConnectionLost,
      QString("Die Datenbank %1 ist noch mit dem vorigen Versuch beschäftigt.").arg(placeOf(address_)));
}

void PostgresConnection::requireAllSafe() {
  ensureAlive();
  // The smallest thing that is a commit of its own: it waits for what came before it.
  const Result result = execute("SELECT pg_logical_emit_message(true, 'qk', '')");
  if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) throw errorIn(result.get());
  unconfirmed_ = false;
}

void PostgresConnection::withPatience(int times, const std::function<void()>& body) {
  const QScopedValueRollback longer(patience_, patience_ * times);
  body();
}

void PostgresConnection::throwLost(Loss loss) {
  connection_.reset();
  statements_.clear();
  noteLoss();
  const QString place = placeOf(address_);
  if (loss == Loss::Ended)
    throw Error(errors::kConnectionLost,
                QString("Die Verbindung zur Datenbank %1 ist unterbrochen.").arg(place));
  const QString why =
      waitsForStandby_
          ? QString(
                "Entweder gibt der Rechner '%1' keine Antwort, oder er wartet auf seinen Ersatzserver, ohne "
                "den er nichts speichert.")
                .arg(host_)
          : silenceOf(host_);
  throw Error(errors::kConnectionLost, QString("Die Datenbank %1 antwortet nicht: %2").arg(place, why));
}

/// A connection that the server has ended says so before anything is sent; one to a server that another has
/// overtaken is given up.
void PostgresConnection::ensureAlive() {
  if (WaitingSign::isShowing()) throw Error(postgres::kBusy);
  if (connection_) {
    const int socket = PQsocket(connection_.get());
    while (isReady(socket, SocketUse::Read, 0) && PQconsumeInput(connection_.get()))
      PQisBusy(connection_.get());
    const bool overtaken = ServerMemory::ofProgram().isOvertaken(identity_);
    if (PQstatus(connection_.get()) == CONNECTION_OK && !ended_ && !overtaken) return;
  }
  if (inTransaction_) throwLost();
  if (connection_) noteLoss();
  connect();
}

PostgresConnection::Statement& PostgresConnection::statementOf(const QString& text) {
  auto found = statements_.find(text);
  if (found == statements_.end()) {
    if (statements_.size() >= kKeptStatements) {
      execute("DEALLOCATE ALL");
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
    if (!PQsendPrepare(connection_.get(), name.constData(), statement.native.constData(), 0, nullptr))
      throwLost();
    const Result prepared = lastResult();
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

/// Sends what is still to be sent, and waits until a result is complete or the patience is at its end.
void PostgresConnection::waitForAnswer() {
  ServerWait wait(patience_);
  bool told = false;
  for (;;) {
    const int unsent = PQflush(connection_.get());
    if (unsent < 0) throwLost();
    if (unsent == 0 && !PQisBusy(connection_.get())) return;
    const bool ready =
        wait.isReady(PQsocket(connection_.get()), unsent > 0 ? SocketUse::Both : SocketUse::Read);
    if (cancelled_ && !told && cancelled_()) {
      cancelStatement();
      told = true;
    }
    if (!ready) {
      if (wait.isOver()) throwLost(Loss::Silent);
      continue;
    }
    if (!PQconsumeInput(connection_.get())) throwLost();
    wait.heard();
  }
}

PostgresConnection::Result PostgresConnection::nextResult() {
  waitForAnswer();
  return Result(PQgetResult(connection_.get()));
}

/// The first failure, else the last result.
PostgresConnection::Result PostgresConnection::lastResult() {
  Result last;
  while (Result result = nextResult()) {
    const bool failed = PQresultStatus(last.get()) == PGRES_FATAL_ERROR && last;
    if (!failed) last = std::move(result);
  }
  const bool lost = !last || PQstatus(connection_.get()) != CONNECTION_OK ||
                    postgres::isLoss(PQresultErrorField(last.get(), PG_DIAG_SQLSTATE));
  if (lost) throwLost();
  return last;
}

/// Statements without values, with one answer for all of them.
PostgresConnection::Result PostgresConnection::execute(const char* text) {
  if (!PQsendQuery(connection_.get(), text)) throwLost();
  return lastResult();
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
            if (given) outcome.failure = Error(errors::kCancelled);
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
  const bool stores = !repeatable && !inTransaction_;
  for (int attempt = 0;; ++attempt) {
    ensureAlive();
    if (stores && unconfirmed_) requireAllSafe();
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
      const bool lost = error.number() == errors::kConnectionLost && !connection_;
      if (lost && stores && !options_.readOnly) unconfirmed_ = true;
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

void PostgresConnection::begin() {
  ensureAlive();
  if (unconfirmed_) requireAllSafe();
  doubt_.clear();
  mark_ = marks_ && !options_.readOnly ? QUuid::createUuid().toString(QUuid::WithoutBraces) : QString();
  QString text = "BEGIN";
  if (!mark_.isEmpty()) {
    // Those of others that never came to it are of no use after a day.
    const QString used =
        formerMark_.isEmpty() ? "made < now() - interval '1 day'" : "mark = '" + formerMark_ + "'";
    text += QString(
                "; DELETE FROM %1 WHERE mark IN (SELECT mark FROM %1 WHERE %2 FOR UPDATE SKIP LOCKED); "
                "INSERT INTO %1 VALUES ('%3')")
                .arg(postgres::kMarksTable, used, mark_);
  }
  const Result result = execute(text.toUtf8().constData());
  if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) {
    const Error failure = errorIn(result.get());
    execute("ROLLBACK");
    throw failure;
  }
  transactionFailure_.reset();
  inTransaction_ = true;
}

void PostgresConnection::commit() {
  if (transactionFailure_) throw *transactionFailure_;
  std::optional<Error> lost;
  try {
    const Result result = execute("COMMIT");
    if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) throw errorIn(result.get());
    if (qstrcmp(PQcmdStatus(result.get()), "COMMIT") != 0) throw postgres::errorOf("25P02", {});
  } catch (const Error& error) {
    if (connection_) throw;
    lost = error;
  }
  inTransaction_ = false;
  const QString mark = std::exchange(mark_, {});
  if (!lost) {
    formerMark_ = mark;
    return;
  }
  unconfirmed_ = !options_.readOnly;
  if (mark.isEmpty()) throw *lost;
  doubt_ = mark;
  const bool stored = isStored(mark);
  doubt_.clear();
  if (!stored) throw *lost;
}

/// Putting the mark there ourselves waits for a transaction that is just about to end, and shuts out one that
/// would come later. Ours is told from that of the transaction by a time far ahead: the answer to this
/// question may get lost, too.
bool PostgresConnection::isStored(const QString& mark) {
  try {
    const int added = write("INSERT INTO " + postgres::kMarksTable +
                                " VALUES (?::uuid, now() + interval '100 years') ON CONFLICT DO NOTHING",
                            {mark});
    const bool stored = added == 0 && value("SELECT made < now() + interval '50 years' FROM " +
                                                postgres::kMarksTable + " WHERE mark = ?::uuid",
                                            {mark})
                                          .toBool();
    formerMark_ = mark;
    return stored;
  } catch (const Error& error) {
    // Whatever it was that the question failed by, the fate of the commit is open.
    throw error.number() == errors::kConnectionLost ? error
                                                    : Error(errors::kConnectionLost, error.description());
  }
}

void PostgresConnection::rollback() {
  inTransaction_ = false;
  transactionFailure_.reset();
  if (!connection_) return;
  try {
    execute("ROLLBACK");
  } catch (const Error&) {
    return;  // what a lost connection had begun is undone
  }
}

}  // namespace qk::dao
