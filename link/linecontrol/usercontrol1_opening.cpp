// How a line comes to its competition, be it at once or later.
#include <QScopedValueRollback>

#include "app/ground/settings_keys.h"
#include "link/linecontrol/usercontrol1.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/unasked.h"
#include "platform/widgets/empty_text.h"
#include "ui_usercontrol1.h"

namespace qk {

namespace {

/// Seconds between two tries that nobody asked for, of all lines together, and the longest that one of them
/// may keep the window waiting.
constexpr int kPause = 10;
constexpr int kShortPatience = 2;

const QString kNotOpen =
    "Der Wettkampf ist auf dieser Linie nicht geöffnet. Sie versucht es von selbst wieder; mit F5 sofort.";

}  // namespace

void UserControl1::Init(const QString& sWettkampf, const std::shared_ptr<LineReadings>& shared) {
  sWettkampf_ = sWettkampf;
  shared_ = shared;
  capture_.setDatabase(nullptr);
  capture_.lstDisziTarvex().clear();
  capture_.lstKombiTarvex().clear();
  db_.reset();
  stationRead_ = listsFilled_ = passwordRefused_ = false;
  act([this] { complete(report("Fehler bei Init_err!"), Asked::ByOperator); });
}

/// What of the opening is still to be done.
void UserControl1::complete(const ErrorReport& report, Asked asked) {
  if (completing_) return;
  const QScopedValueRollback completing(completing_, true);
  reported(report, [&](Steps& step) {
    if (!db_) step([&] { openDatabase(asked); });
    if (retired_) return;
    readStation();
    if (!db_ || retired_ || listsFilled_) return;
    step([&] {
      capture_.fillLists(readings()->lists(*db_));
      listsFilled_ = true;
    });
  });
  if (retired_) return;
  if (isComplete())
    timerWettkampf_->stop();
  else
    timerWettkampf_->start();
  if (ui_.areMade()) showWhetherOpen();
}

void UserControl1::openDatabase(Asked asked) {
  dao::OpenOptions options;
  if (asked == Asked::ByNobody) options.patience = kShortPatience;
  try {
    db_ = dao::Database::open(sWettkampf_, options);
  } catch (const Error& error) {
    passwordRefused_ = error.number() == errors::kNoLogin;
    throw;
  }
  capture_.setDatabase(db_.get());
}

/// A shot must cost one commit, not a second one for its number. Whoever gets a shooter will shoot, and has
/// just asked the competition for him; switching price mode must not wait for a server.
void UserControl1::reserveShotNumbers() {
  try {
    db_->reserveNumbers("Haering_Daten");
  } catch (const Error&) {
    return;  // the shot reserves it then, and says what stands in its way
  }
}

void UserControl1::readStation() {
  if (stationRead_) return;
  stationRead_ = true;
  exchange_->setNetzverzeichnis(liesText(workplace_.settings, keys::Netzverzeichnis));
  exchange_->setDatenverzeichnis(global_.Verzeichnis);
  disciplines_.read(exchange_->netzverzeichnis(), *readings());
}

std::shared_ptr<LineReadings> UserControl1::readings() const {
  const auto shared = shared_.lock();
  return shared ? shared : std::make_shared<LineReadings>(nLinie_);
}

/// Whether the line has its competition; tries to open it when it hasn't. What the operator wants gets a box.
bool UserControl1::isOpenFor(Asked asked) {
  if (!isComplete() && !completing_) {
    const bool late = !db_;
    const ErrorReport quiet = [](const Error&) { return ErrorAnswer::Abort; };
    complete(asked == Asked::ByOperator ? report("Fehler bei Init_err!") : quiet, asked);
    if (late && db_ && !retired_) restoreLine();
  }
  return db_ && !retired_;
}

/// What the main window does with a line that opens at once.
void UserControl1::restoreLine() {
  Check_Old_Schuss(nLinie_);
  if (!retired_) Fill_HaeringGruppen();
  if (!retired_) Q_EMIT workChanged(index_);
}

/// One line tries for all: while it fails the others needn't wait for the same server. A clock that was set
/// back doesn't keep them waiting.
void UserControl1::tryUnasked() {
  const QDateTime now = workplace_.clock.now();
  const QDateTime& next = global_.naechsterVersuch;
  const bool pausing = now < next && now.secsTo(next) <= kPause;
  if (passwordRefused_ || isComplete() || pausing) return;
  const Unasked unasked("Linie " + QString::number(nLinie_));
  isOpenFor(Asked::ByNobody);
  if (!retired_ && !isComplete()) global_.naechsterVersuch = workplace_.clock.now().addSecs(kPause);
}

void UserControl1::showWhetherOpen() {
  ui_->flexHaeringDiszi->setEmptyText(stationRead_ ? "Die Station bietet keine Disziplinen an." : kNotOpen);
  ui_->flex->setEmptyText(db_ ? "Keine offenen Schüsse" : kNotOpen);
  setEmptyText(ui_->m_lstDisziTarvex, listsFilled_ ? "Der Wettkampf hat keine Disziplinen." : kNotOpen);
  setEmptyText(ui_->m_lstKombiTarvex, listsFilled_ ? "Der Wettkampf hat keine Kombinationen." : kNotOpen);
}

}  // namespace qk
