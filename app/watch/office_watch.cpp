#include "app/watch/office_watch.h"

#include <QFileInfo>
#include <utility>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/shell/frmHilfe.h"
#include "app/watch/copy_source.h"
#include "app/watch/disk_source.h"
#include "app/watch/exchange_source.h"
#include "app/watch/frmWarnungen.h"
#include "app/watch/server_source.h"
#include "platform/dao/server/server_address.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

/// For a thread of its own; the window's settings belong to the window's thread.
std::function<QString()> exchangeFolderIn(const QString& settingsFile) {
  const auto settings = std::make_shared<Settings>(settingsFile);
  return [settings] { return withTrailingSeparator(liesText(*settings, keys::Netzverzeichnis)); };
}

std::function<QString()> folderOf(const QString& file) {
  return [folder = QFileInfo(file).absolutePath()] { return folder; };
}

}  // namespace

OfficeWatch::OfficeWatch(const Workplace& workplace, std::shared_ptr<Storage> storage, const Place& place)
    : workplace_(workplace),
      storage_(std::move(storage)),
      window_(place.window),
      keeper_(workplace.clock),
      line_(new WatchLine(&place.bar)),
      show_(new QAction("&Warnungen anzeigen...", &place.window)) {
  line_->setObjectName("cmdWarnungen");
  place.bar.addPermanentWidget(line_);
  show_->setObjectName("mnuEditWarnungen");
  show_->setShortcut(Qt::SHIFT | Qt::Key_F1);
  show_->setStatusTip("Zeigt, was den Betrieb bedroht, seit wann, und was zu tun ist");
  window_.addAction(show_);
  connect(line_, &QAbstractButton::clicked, show_, &QAction::trigger);
  connect(show_, &QAction::triggered, this, &OfficeWatch::showDetails);
  connect(&keeper_, &WatchKeeper::changed, this, &OfficeWatch::bookChanged);
  add(diskOf("die Einstellungen", "Einstellungen lassen sich nicht mehr speichern.",
             folderOf(workplace.settings.filePath())));
  add(diskOf("vorübergehende Dateien", "Drucken und Ansehen gehen nicht mehr.",
             [folder = TempVerzeichnis()] { return folder; }));
}

OfficeWatch::~OfficeWatch() = default;

OfficeWatch::Source OfficeWatch::add(Source source, WatchKeeper::Wanted wanted) {
  keeper_.add(source, std::move(wanted));
  return source;
}

OfficeWatch::Source OfficeWatch::diskOf(const QString& thing, const QString& consequence,
                                        std::function<QString()> folder) const {
  return std::make_shared<DiskSource>(storage_, RoomUser{thing, consequence, std::move(folder)});
}

void OfficeWatch::watchCompetition(const QString& path) {
  if (std::exchange(competition_, path) == path) return;
  for (const Source& source : std::exchange(ofCompetition_, {})) keeper_.remove(source.get());
  copySource_.reset();
  if (path.isEmpty()) return;
  watchStore();
  if (copies_) watchCopiesOf();
}

void OfficeWatch::watchStore() {
  const QString path = competition_;
  if (dao::isServerFile(path)) {
    ofCompetition_.push_back(add(std::make_shared<ServerSource>([path] { return dao::standbyOf(path); })));
    return;
  }
  ofCompetition_.push_back(
      add(diskOf("der Wettkampf",
                 "Der Wettkampf nimmt keinen Schuss mehr auf. Die Stationen halten ihre Schüsse "
                 "so lange fest.",
                 folderOf(path))));
}

void OfficeWatch::watchCopies(const CopyKeeper& copies) {
  copies_ = &copies;
  connect(copies_, &CopyKeeper::onState, this, [this] {
    if (!copySource_) return;
    copySource_->tell(copies_->state());
    keeper_.lookNow(copySource_.get());
  });
  if (!competition_.isEmpty()) watchCopiesOf();
}

void OfficeWatch::watchCopiesOf() {
  const auto source = std::make_shared<CopySource>(workplace_.clock.now());
  source->tell(copies_->state());
  copySource_ = source;
  ofCompetition_.push_back(add(source));
  // On a server nobody knows how large the next one gets.
  const auto original = [path = dao::isServerFile(competition_) ? QString() : competition_] { return path; };
  ofCompetition_.push_back(add(std::make_shared<DiskSource>(
      storage_, RoomUser{"die Sicherungen", "Neue Sicherungen entstehen nicht mehr.",
                         [source] { return source->folder(); }, original})));
}

void OfficeWatch::watchExchangeFolder(WatchKeeper::Wanted needed) {
  const QString settings = workplace_.settings.filePath();
  exchange_ = add(std::make_shared<ExchangeSource>(storage_, exchangeFolderIn(settings)), needed);
  add(diskOf("der Austauschordner",
             "Kein Befehl geht mehr an die Stationen hinaus, und sie melden keinen Schuss.",
             exchangeFolderIn(settings)),
      needed);
}

void OfficeWatch::lookAtExchangeFolder() {
  keeper_.lookNow(exchange_.get());
}

void OfficeWatch::bookChanged() {
  const ThreatBook& book = keeper_.book();
  line_->show(book);
  if (details_) details_->refresh();
  const bool deaf = std::any_of(book.standing().begin(), book.standing().end(), [](const auto& entry) {
    return entry.threat.key == ExchangeSource::Key && entry.threat.level == ThreatLevel::Grave;
  });
  if (std::exchange(deaf_, deaf) != deaf) Q_EMIT exchangeFolderChanged();
}

void OfficeWatch::showDetails() {
  if (!details_) {
    details_ = new frmWarnungen(workplace_.clock, keeper_.book(), &window_);
    connect(details_, &frmWarnungen::handbookWanted, this,
            [this](const QString& page) { frmHilfe::showBeside(workplace_, *details_, page); });
  }
  details_->show();
  details_->raise();
  details_->activateWindow();
}

}  // namespace qk
