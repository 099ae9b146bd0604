#include "platform/dao/postgres/postgres_dial.h"

#include <libpq-fe.h>

#include <QDeadlineTimer>
#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "platform/dao/postgres/postgres_errors.h"
#include "platform/dao/server/server_wait.h"

namespace qk::dao::postgres {
namespace {

constexpr int kOldestServer = 150000;

/// The name of a log file begins with the timeline. Within a recovery it can't be asked for.
constexpr auto kWhoAreYou =
    "SELECT pg_is_in_recovery(), current_setting('synchronous_standby_names') <> '', "
    "(SELECT system_identifier FROM pg_control_system()), "
    "CASE WHEN NOT pg_is_in_recovery() THEN pg_walfile_name(pg_current_wal_insert_lsn()) END";
/// What any role may ask.
constexpr auto kAreYouPrimary =
    "SELECT pg_is_in_recovery(), current_setting('synchronous_standby_names') <> '', NULL, NULL";
constexpr auto kNoRight = "42501";

/// What the client library is called with; owns its texts.
class Parameters {
 public:
  Parameters(const Call& call, const ServerEndpoint& endpoint) {
    add("host", endpoint.host.toUtf8());
    add("port", QByteArray::number(endpoint.port));
    add("dbname", call.address.database.toUtf8());
    add("user", call.address.user.toUtf8());
    if (call.password) add("password", call.password->toUtf8());
    add("application_name", call.name);
    // A network that is dead says nothing: the system looks for the other end by itself.
    add("keepalives_idle", "10");
    add("keepalives_interval", "2");
    add("keepalives_count", "3");
    add("tcp_user_timeout", "10000");
    add("client_encoding", "UTF8");
    add("options", call.settings);
  }

  pg_conn* start() const {
    std::vector<const char*> keys, values;
    for (const auto& [key, value] : all_) {
      keys.push_back(key);
      values.push_back(value.constData());
    }
    keys.push_back(nullptr);
    values.push_back(nullptr);
    return PQconnectStartParams(keys.data(), values.data(), 0);
  }

 private:
  void add(const char* key, const QByteArray& value) { all_.emplace_back(key, value); }

  std::vector<std::pair<const char*, QByteArray>> all_;
};

/// The start of a connection looks up the host's name, and that of a machine which is switched off may take
/// seconds: it is done aside, and nobody waits for one that is given up.
class StartAside {
 public:
  explicit StartAside(const Parameters& parameters) : shared_(std::make_shared<Shared>()) {
    std::thread([shared = shared_, parameters] {
      shared->connection.reset(parameters.start());
      shared->done = true;
    }).detach();
  }

  bool isDone() const { return shared_->done; }
  Handle take() { return std::move(shared_->connection); }

 private:
  struct Shared {
    Handle connection;
    std::atomic<bool> done = false;
  };
  std::shared_ptr<Shared> shared_;
};

QString wordsOf(const char* text) {
  return QString::fromUtf8(text).trimmed();
}

/// One host that is asked, step by step, without a wait.
class HostCall {
 public:
  HostCall(const Call& call, qsizetype endpoint) : call_(call), endpoint_(endpoint) {
    const ServerEndpoint& called = call.address.endpoints[endpoint];
    const Parameters parameters(call, called);
    if (call.address.endpoints.size() > 1 && !called.host.startsWith(u'/'))
      aside_.emplace(parameters);
    else
      begin(Handle(parameters.start()));
  }

  bool isOver() const { return step_ == Step::Over; }
  const HostAnswer& answer() const { return answer_; }
  bool waitsForStandby() const { return waitsForStandby_; }
  Answer::Password password() const { return password_; }
  Handle take() { return std::move(connection_); }

  /// What it waits for; nothing while it is over, or waits for no socket.
  std::optional<SocketWish> wish() const {
    if (isOver() || !connection_) return {};
    const bool writes = step_ == Step::Connecting && next_ != PGRES_POLLING_READING;
    return SocketWish{PQsocket(connection_.get()), writes ? SocketUse::Write : SocketUse::Read};
  }

  /// Does what can be done just now.
  void goOn() {
    if (aside_ && aside_->isDone()) {
      begin(aside_->take());
      aside_.reset();
    }
    while (connection_ && step_ == Step::Connecting && isWishFulfilled()) connectOn();
    while (connection_ && step_ == Step::Asking && isWishFulfilled()) hearOn();
  }

 private:
  enum class Step { Connecting, Asking, Over };

  bool isWishFulfilled() const { return isReady(wish()->socket, wish()->use, 0); }

  void begin(Handle connection) {
    connection_ = std::move(connection);
    // The state alone: the server's words are in whatever language it was set up in.
    PQsetErrorVerbosity(connection_.get(), PQERRORS_SQLSTATE);
    if (PQstatus(connection_.get()) == CONNECTION_BAD) refuse();
  }

  void connectOn() {
    next_ = PQconnectPoll(connection_.get());
    if (next_ == PGRES_POLLING_FAILED) return refuse();
    if (next_ != PGRES_POLLING_OK) return;
    PQsetErrorVerbosity(connection_.get(), PQERRORS_DEFAULT);
    if (PQserverVersion(connection_.get()) < kOldestServer) return end(HostAnswer::Kind::TooOld);
    ask(kWhoAreYou);
  }

  void ask(const char* question) {
    step_ = Step::Asking;
    if (!PQsendQuery(connection_.get(), question)) refuse();
  }

  void hearOn() {
    if (!PQconsumeInput(connection_.get())) return refuse();
    while (!PQisBusy(connection_.get())) {
      const std::unique_ptr<pg_result, decltype(&PQclear)> result(PQgetResult(connection_.get()), PQclear);
      if (!result) return believe();
      read(result.get());
    }
  }

  void read(const pg_result* result) {
    if (PQresultStatus(result) != PGRES_TUPLES_OK) {
      state_ = PQresultErrorField(result, PG_DIAG_SQLSTATE);
      return;
    }
    state_.clear();
    isPrimary_ = qstrcmp(PQgetvalue(result, 0, 0), "f") == 0;
    waitsForStandby_ = qstrcmp(PQgetvalue(result, 0, 1), "t") == 0;
    constexpr int kDigits = 8, kHexadecimal = 16;
    answer_.identity.system = QString::fromLatin1(PQgetvalue(result, 0, 2));
    answer_.identity.timeline =
        QByteArray(PQgetvalue(result, 0, 3)).left(kDigits).toInt(nullptr, kHexadecimal);
  }

  void believe() {
    if (state_ == kNoRight && !askedLess_) {
      askedLess_ = true;
      return ask(kAreYouPrimary);
    }
    if (!state_.isEmpty()) return refuse();
    end(isPrimary_ ? HostAnswer::Kind::Primary : HostAnswer::Kind::Standby);
  }

  void refuse() {
    const QString words = wordsOf(PQerrorMessage(connection_.get()));
    if (state_.isEmpty()) state_ = stateIn(words);
    answer_.refusal = refusalOf(call_.address, endpoint_, state_, words);
    if (PQconnectionNeedsPassword(connection_.get()))
      password_ = Answer::Password::Wanted;
    else if (isWrongPassword(state_))
      password_ = Answer::Password::Wrong;
    end(HostAnswer::Kind::Refused);
  }

  void end(HostAnswer::Kind kind) {
    answer_.kind = kind;
    step_ = Step::Over;
  }

  const Call& call_;
  qsizetype endpoint_;
  std::optional<StartAside> aside_;
  Handle connection_;
  Step step_ = Step::Connecting;
  PostgresPollingStatusType next_ = PGRES_POLLING_WRITING;
  QByteArray state_;
  bool isPrimary_ = false, waitsForStandby_ = false, askedLess_ = false;
  HostAnswer answer_;
  Answer::Password password_ = Answer::Password::Fine;
};

class Round {
 public:
  Round(const Call& call, ServerMemory& memory)
      : call_(call),
        memory_(memory),
        known_{memory.systemHeld(call.address),
               [&memory](const QString& system) { return memory.timelineOf(system); }} {
    for (qsizetype i = 0; i < call.address.endpoints.size(); ++i) hosts_.emplace_back(call, i);
  }

  Answer run() {
    askAll();
    for (size_t i = 0; i < hosts_.size(); ++i)
      memory_.noteSilence(call_.address.endpoints[static_cast<qsizetype>(i)], !hosts_[i].isOver());
    const std::vector<HostAnswer> answers = heard();
    for (const HostAnswer& answer : answers)
      if (answer.kind == HostAnswer::Kind::Primary) memory_.learn(answer.identity);
    const std::optional<size_t> chosen = primaryAmong(answers, known_);
    return chosen ? answerOf(*chosen) : failureOf(answers);
  }

 private:
  /// Until all have answered; or until one will do, and the others had their time to say better. One that
  /// said nothing a moment ago is waited for no longer than that.
  void askAll() {
    ServerWait wait(call_.patience);
    QDeadlineTimer end(QDeadlineTimer::Forever);
    for (;;) {
      for (HostCall& host : hosts_) host.goOn();
      const std::vector<qsizetype> open = openOnes();
      if (open.empty() || end.hasExpired() || wait.isOver()) return;
      if (end.isForever()) end = endFor(open);
      std::vector<SocketWish> wishes;
      for (const HostCall& host : hosts_)
        if (const auto wish = host.wish()) wishes.push_back(*wish);
      wait.isAnyReady(wishes);
    }
  }

  QDeadlineTimer endFor(const std::vector<qsizetype>& open) const {
    constexpr std::chrono::seconds kTimeOfOthers(2);
    const bool wereSilent = std::all_of(open.begin(), open.end(), [this](qsizetype host) {
      return memory_.wasSilent(call_.address.endpoints[host]);
    });
    if (primaryAmong(heard(), known_))
      return QDeadlineTimer(wereSilent ? std::chrono::seconds(0) : kTimeOfOthers);
    return wereSilent && open.size() < hosts_.size() ? QDeadlineTimer(kTimeOfOthers)
                                                     : QDeadlineTimer(QDeadlineTimer::Forever);
  }

  std::vector<qsizetype> openOnes() const {
    std::vector<qsizetype> open;
    for (size_t i = 0; i < hosts_.size(); ++i)
      if (!hosts_[i].isOver()) open.push_back(static_cast<qsizetype>(i));
    return open;
  }

  std::vector<HostAnswer> heard() const {
    std::vector<HostAnswer> answers;
    for (const HostCall& host : hosts_) answers.push_back(host.answer());
    return answers;
  }

  Answer answerOf(size_t chosen) {
    Answer answer;
    answer.connection = hosts_[chosen].take();
    answer.endpoint = static_cast<qsizetype>(chosen);
    answer.identity = hosts_[chosen].answer().identity;
    answer.waitsForStandby = hosts_[chosen].waitsForStandby();
    return answer;
  }

  Answer failureOf(const std::vector<HostAnswer>& answers) const {
    Answer answer;
    for (const HostCall& host : hosts_) answer.password = std::max(answer.password, host.password());
    const bool tooOld = std::all_of(answers.begin(), answers.end(), [](const HostAnswer& other) {
      return other.kind == HostAnswer::Kind::TooOld;
    });
    const QString why = whyNoPrimary(call_.address, answers, known_);
    answer.failure =
        tooOld ? Error(errors::kUnknownFormat, why)
               : Error(errors::kConnectionLost,
                       QString("Die Datenbank %1 ist nicht erreichbar: %2").arg(placeOf(call_.address), why));
    return answer;
  }

  const Call& call_;
  ServerMemory& memory_;
  ServerKnowledge known_;
  std::vector<HostCall> hosts_;
};

}  // namespace

void Finish::operator()(pg_conn* connection) const {
  PQfinish(connection);
}

Answer dial(const Call& call, ServerMemory& memory) {
  return Round(call, memory).run();
}

}  // namespace qk::dao::postgres
