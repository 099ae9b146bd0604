// One connection to a PostgreSQL server, with its prepared statements kept by text.
//
// Works on the client library itself, as the SQLite side does: values travel beside the text in one round
// trip, a read can be given up while it runs, and the state of an error comes with it.
//
// A connection that is lost is made anew by the next call. What is certain to have changed nothing is then
// done again by itself: a read that has brought no row yet, and whatever finds the connection dead before it
// was sent. Else the call fails with 3043, and what it was asked to store may be stored or not.
//
// A server that says nothing for longer than the address's patience counts as lost, too. What it may still be
// about is ended by the next connection, so that nothing is stored behind the back of whoever tries again.
//
// Where the address names several hosts, each connection is made to the one that is the primary then; and a
// connection to a primary that was overtaken by another counts as lost.
//
// A server that waits for its standby with each commit has stored a row before the standby has it. When that
// wait is given up, the row stands there to be seen, and would be gone if the standby took over now: so
// before anything that was lost on the way is taken for stored, the standby must have all of it.
#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QVariantList>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/dao/engine/open_options.h"
#include "platform/dao/postgres/postgres_dial.h"
#include "platform/runtime/error.h"

struct pg_result;

namespace qk::dao {

class PostgresConnection {
 public:
  using Take = std::function<bool(const QVariantList&)>;

  /// Connects; asks for a password where one is wanted and none found.
  PostgresConnection(ServerAddress address, OpenOptions options);
  PostgresConnection(const PostgresConnection&) = delete;
  PostgresConnection& operator=(const PostgresConnection&) = delete;

  const ServerAddress& address() const { return address_; }
  /// Options that open another connection without a question.
  OpenOptions optionsOfAnother() const;
  /// Reads end with 3059 as soon as this says so.
  void cancelWhen(std::function<bool()> cancelled) { cancelled_ = std::move(cancelled); }
  /// Hears of each statement before it is sent.
  void listen(std::function<void(const QString& text)> listener) { listener_ = std::move(listener); }

  /// Hands over row after row until `take` says false; Null is an invalid QVariant, a whole number a
  /// qlonglong, a fixed-point number its text. Parameters stand as "?".
  void read(const QString& text, const QVariantList& values, const Take& take);
  /// The one value of a query's first row.
  QVariant value(const QString& text, const QVariantList& values = {});
  /// Affected rows. With `take` for what a statement returns.
  int write(const QString& text, const QVariantList& values = {}, const Take& take = {});

  /// From now on each transaction leaves a mark, a row of its own in a table that is there
  /// (postgres::kMarksTable), by which its fate is told when the answer to its commit gets lost. A number of
  /// the server's could be somebody else's after a crash or on a standby; this row can only be ours.
  void leaveMarks() { marks_ = true; }
  void begin();
  /// Fails unless the server has confirmed it, or the mark is there. When neither can be learned now,
  /// takeDoubt() gives the mark to ask with later.
  void commit();
  void rollback();
  bool inTransaction() const { return inTransaction_; }
  /// The mark of the last commit where its fate is open, once; else empty.
  QString takeDoubt() { return std::exchange(doubt_, {}); }
  /// Whether the transaction of the mark is stored. When it isn't, it never will be. 3043 when it can't be
  /// learned.
  bool isStored(const QString& mark);

  /// How often the connection was lost.
  int losses() const { return losses_; }
  /// Fails with 3043 while a connection that was lost is still at work on the server.
  void requireFormerIdle();
  /// Whatever can be seen of the store now is safe when this comes back: a standby that the server waits for
  /// has it, too. Outside of a transaction.
  void requireAllSafe();
  /// Runs `body` with so many times the patience, for what a server is long silent about.
  void withPatience(int times, const std::function<void()>& body);

 private:
  struct Statement {
    QByteArray native;  // with $1, $2 …
    QByteArray name;    // empty while it isn't prepared
    bool used = false;
  };
  struct Outcome {
    int affected = 0;
    bool anyRow = false;
    std::optional<Error> failure;
    QByteArray state;
  };

  struct Clear {
    void operator()(pg_result* result) const;
  };
  using Result = std::unique_ptr<pg_result, Clear>;
  enum class Loss { Ended, Silent };
  static void hearNotice(void* self, const pg_result* notice);
  void connect();
  QByteArray sessionSettings() const;
  QString formerOnes() const;
  void endFormerOnes();
  void noteLoss();
  void ensureAlive();
  [[noreturn]] void throwLost(Loss loss = Loss::Ended);
  Result execute(const char* text);
  Result lastResult();
  Statement& statementOf(const QString& text);
  void send(Statement& statement, const QVariantList& values, bool rowByRow);
  Outcome collect(const Take& take);
  Result nextResult();
  void waitForAnswer();
  void cancelStatement();
  void drain();
  int run(const QString& text, const QVariantList& values, const Take& take, bool repeatable);

  ServerAddress address_;
  OpenOptions options_;
  std::optional<QString> password_;
  std::function<bool()> cancelled_;
  std::function<void(const QString&)> listener_;
  postgres::Handle connection_;
  ServerIdentity identity_;
  std::shared_ptr<void> held_;  // the server of this address
  QString host_;                // that is connected, for messages
  bool waitsForStandby_ = false;
  QHash<QString, Statement> statements_;
  int named_ = 0;
  bool ended_ = false;  // by the server, while nobody asked it anything
  bool inTransaction_ = false;
  std::optional<Error> transactionFailure_;
  bool marks_ = false;
  QString mark_;        // of the transaction that runs
  QString formerMark_;  // of one whose fate is known: its row isn't needed any more
  QString doubt_;
  QByteArray name_;             // by which the server lists this connection
  QByteArrayList formerNames_;  // of those that were lost
  int losses_ = 0;
  bool unconfirmed_ = false;  // a lost one was about to store something
  std::chrono::milliseconds patience_;
};

}  // namespace qk::dao
