#include "backup/frmSicherung.h"

#include <QEventLoop>
#include <QPushButton>

#include "ui_frmSicherung.h"

namespace qk {

namespace {

constexpr auto kMoment = std::chrono::milliseconds(400);
constexpr auto kBetweenPictures = std::chrono::milliseconds(100);

/// Waits for the end of what is being made, but not longer. Nobody can do anything meanwhile.
bool endsInAMoment(CopyKeeper& keeper) {
  QEventLoop loop;
  QObject::connect(&keeper, &CopyKeeper::onState, &loop, [&] {
    if (!keeper.isBusy()) loop.quit();
  });
  QTimer::singleShot(kMoment, &loop, &QEventLoop::quit);
  if (keeper.isBusy()) loop.exec(QEventLoop::ExcludeUserInputEvents);
  return !keeper.isBusy();
}

}  // namespace

frmSicherung::frmSicherung(CopyKeeper& keeper, QWidget* parent)
    : QDialog(parent), keeper_(keeper), ui_(std::make_unique<Ui::frmSicherung>()), progress_(this) {
  ui_->setupUi(this);
  connect(ui_->cmdOhne, &QPushButton::clicked, this, &frmSicherung::reject);
  connect(ui_->cmdNochmal, &QPushButton::clicked, this, &frmSicherung::begin);
  connect(&keeper_, &CopyKeeper::onState, this, &frmSicherung::look);
  connect(&progress_, &QTimer::timeout, this, &frmSicherung::look);
  progress_.setInterval(kBetweenPictures);
}

frmSicherung::~frmSicherung() = default;

void frmSicherung::run() {
  progress_.start();
  look();
  if (result() != Accepted) exec();
}

void frmSicherung::begin() {
  keeper_.makeNow();
  look();
}

void frmSicherung::look() {
  const bool busy = keeper_.isBusy();
  const QString& trouble = keeper_.state().trouble;
  if (!busy && trouble.isEmpty()) return accept();
  ui_->lblStand->setText(busy ? "Der Wettkampf wird vor dem Beenden gesichert und die Sicherung geprüft ..."
                              : trouble + "\n\nDer Wettkampf selbst ist davon nicht betroffen.");
  ui_->barStand->setVisible(busy);
  ui_->barStand->setValue(static_cast<int>(keeper_.partDone() * ui_->barStand->maximum()));
  ui_->cmdNochmal->setVisible(!busy);
}

void frmSicherung::reject() {
  progress_.stop();
  keeper_.giveUp();
  QDialog::reject();
}

void makeClosingCopy(CopyKeeper& keeper, QWidget* parent) {
  if (!keeper.makeNow()) return;
  if (endsInAMoment(keeper) && keeper.state().trouble.isEmpty()) return;
  frmSicherung(keeper, parent).run();
}

}  // namespace qk
