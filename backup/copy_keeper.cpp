#include "backup/copy_keeper.h"

#include <QFileInfo>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/background_work.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

constexpr auto kBetweenLooks = std::chrono::seconds(20);
constexpr auto kUntilNextAttempt = std::chrono::minutes(2);
/// What a worker may take to notice that it was given up. One that hangs in a dead network is left to itself.
constexpr auto kPatience = std::chrono::seconds(3);

QString describe(const Evidence& evidence) {
  return QString("Geöffnet ist eine Sicherung: der Stand vom %1 von %2.")
      .arg(evidence.moment.toString("dd.MM.yyyy HH:mm"), evidence.source);
}

/// Of the competition itself, when it is a copy.
QString ownEvidence(Files& files, const QString& competition) {
  const QString path = evidencePathOf(competition);
  if (!files.exists(path)) return {};
  const auto evidence = evidenceIn(files.read(path));
  return evidence ? describe(*evidence) : QString();
}

}  // namespace

struct CopyKeeper::Outcome {
  CopyResult result;
  QDateTime begun;
  std::optional<QString> openedCopy;  ///< of a survey
  QString failure;
  bool cancelled = false;
};

/// What the thread works with. It outlives the keeper when the thread hangs.
class CopyKeeper::Worker : public std::enable_shared_from_this<Worker> {
 public:
  Worker(CopyKeeper& keeper, QString competition) : keeper_(&keeper), competition_(std::move(competition)) {}

  void start(Task task, const CopyRequest& request) {
    cancelled_ = false;
    part_ = 0;
    working_ = true;
    std::thread([self = shared_from_this(), task, request] { self->run(task, request); }).detach();
  }
  void cancel() { cancelled_ = true; }
  double part() const { return part_; }

  /// The keeper isn't told anything any more.
  void leave() {
    cancelled_ = true;
    std::unique_lock locked(mutex_);
    keeper_ = nullptr;
    ended_.wait_for(locked, kPatience, [this] { return !working_; });
  }

 private:
  void run(Task task, const CopyRequest& request) {
    stepBackThisThread();
    Outcome outcome;
    outcome.begun = request.moment;
    try {
      outcome.result = task == Task::Survey ? survey(request, outcome) : copy(request);
    } catch (const Error& error) {
      outcome.cancelled = error.number() == errors::kCancelled;
      outcome.failure = error.description();
      reader_.reset();
    } catch (const std::exception& error) {
      outcome.failure = QString::fromUtf8(error.what());
      reader_.reset();
    }
    const std::lock_guard locked(mutex_);
    if (!keeper_) reader_.reset();
    working_ = false;
    ended_.notify_all();
    if (keeper_)
      QMetaObject::invokeMethod(
          keeper_,
          [keeper = keeper_, self = shared_from_this(), outcome] {
            if (keeper->worker_ == self) keeper->finished(outcome);
          },
          Qt::QueuedConnection);
  }

  CopyResult survey(const CopyRequest& request, Outcome& outcome) {
    outcome.openedCopy = ownEvidence(files_, competition_);
    const auto copies = provenCopies(files_, request.folder, sourceOf(competition_));
    return {CopyResult::Kind::Young, copies.empty() ? std::nullopt : std::optional(copies.back())};
  }

  CopyResult copy(const CopyRequest& request) {
    if (!reader_)
      reader_ = std::make_unique<dao::SnapshotReader>(competition_, [this] { return cancelled_.load(); });
    const QString stamp = reader_->stamp();
    const bool there = known_ && QFileInfo(known_->path).path() == QFileInfo(request.folder + "/x").path() &&
                       QFileInfo(known_->path).size() == known_->evidence.size;
    if (there && stamp == stamp_) return {CopyResult::Kind::Current, known_};
    CopyResult result = makeCopy(*reader_, request, files_, [this](double part) { part_ = part; });
    // Taken before the snapshot: what came between the two makes one copy too many at most.
    const bool own = result.kind == CopyResult::Kind::Made || result.kind == CopyResult::Kind::Current;
    known_ = own ? result.copy : std::nullopt;
    stamp_ = stamp;
    return result;
  }

  std::mutex mutex_;
  std::condition_variable ended_;
  CopyKeeper* keeper_;
  bool working_ = false;
  std::atomic<bool> cancelled_ = false;
  std::atomic<double> part_ = 0;

  // The thread's alone.
  QString competition_;
  Files files_;
  std::unique_ptr<dao::SnapshotReader> reader_;
  QString stamp_;  // when the copy below held everything
  std::optional<ProvenCopy> known_;
};

CopyKeeper::CopyKeeper(const Workplace& workplace, QObject* parent)
    : QObject(parent), workplace_(workplace), timer_(this) {
  timer_.setInterval(kBetweenLooks);
  connect(&timer_, &QTimer::timeout, this, &CopyKeeper::look);
}

CopyKeeper::~CopyKeeper() {
  if (worker_) worker_->leave();
}

void CopyKeeper::open(const QString& competition) {
  close();
  competition_ = competition;
  worker_ = std::make_shared<Worker>(*this, competition);
  timer_.start();
  start(Task::Survey, {});
}

void CopyKeeper::close() {
  timer_.stop();
  again_ = false;
  attempt_ = {};
  competition_.clear();
  if (const auto worker = std::exchange(worker_, nullptr)) worker->leave();
  change([](CopyState& state) { state = {}; });
}

bool CopyKeeper::makeNow() {
  if (!worker_ || !liesKopien(workplace_.settings).enabled) return false;
  if (isBusy())
    again_ = true;
  else
    start(Task::Copy, {});
  return true;
}

void CopyKeeper::giveUp() {
  again_ = false;
  if (worker_) worker_->cancel();
}

double CopyKeeper::partDone() const {
  return worker_ ? worker_->part() : 0;
}

void CopyKeeper::look() {
  if (!worker_ || isBusy()) return;
  const CopySettings settings = liesKopien(workplace_.settings);
  const bool elsewhere = settings.folder != state_.folder;
  if (elsewhere) return start(Task::Survey, {});
  change([&](CopyState& state) {
    state.enabled = settings.enabled;
    state.interval = settings.interval;
  });
  if (isDue()) start(Task::Copy, settings.interval);
}

bool CopyKeeper::isDue() const {
  if (!state_.enabled) return false;
  const QDateTime now = workplace_.clock.now();
  const auto isYoung = [&](const QDateTime& moment, std::chrono::seconds span) {
    return moment.isValid() && moment <= now && moment.secsTo(now) < span.count();
  };
  return !isYoung(state_.upToDate, state_.interval) &&
         !isYoung(attempt_, std::min<std::chrono::seconds>(state_.interval, kUntilNextAttempt));
}

void CopyKeeper::start(Task task, std::chrono::minutes interval) {
  const CopySettings settings = liesKopien(workplace_.settings);
  change([&](CopyState& state) {
    if (task == Task::Survey) state = {};
    state.enabled = settings.enabled;
    state.folder = settings.folder;
    state.interval = settings.interval;
    state.running = true;
  });
  worker_->start(task, {competition_, settings.folder, workplace_.clock.now(), interval});
}

void CopyKeeper::finished(const Outcome& outcome) {
  change([&](CopyState& state) {
    state.running = false;
    if (outcome.openedCopy) state.openedCopy = *outcome.openedCopy;
    if (const auto& copy = outcome.result.copy) {
      const bool current = outcome.result.kind != CopyResult::Kind::Young;
      state.lastProven = copy->evidence.moment;
      state.file = copy->path;
      state.upToDate = current ? outcome.begun : copy->evidence.moment;
    }
    if (!outcome.cancelled)
      state.trouble = outcome.failure.isEmpty() ? QString()
                                                : QString("Die Sicherung um %1 ist nicht gelungen: %2")
                                                      .arg(outcome.begun.toString("HH:mm"), outcome.failure);
  });
  const bool done = outcome.failure.isEmpty() && outcome.result.copy;
  attempt_ = done || outcome.openedCopy ? QDateTime() : outcome.begun;
  if (std::exchange(again_, false)) makeNow();
}

void CopyKeeper::change(const std::function<void(CopyState&)>& change) {
  const CopyState before = state_;
  change(state_);
  if (!(state_ == before)) Q_EMIT onState();
}

}  // namespace qk
