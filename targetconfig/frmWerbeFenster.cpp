#include "targetconfig/frmWerbeFenster.h"

#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QStyle>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/retry.h"
#include "platform/widgets/empty_text.h"
#include "platform/widgets/picture_loader.h"
#include "platform/widgets/picture_view.h"
#include "targetconfig/line_choice.h"
#include "targetconfig/line_list.h"
#include "ui_frmWerbeFenster.h"

namespace qk {

namespace {

constexpr QSize kPreviewSize(1024, 768);
constexpr int kIconLines = 3;
/// Of an entry: set when its small picture is there, or known to be none.
constexpr int kIconIsThere = Qt::UserRole + 1;

QString sizeText(const QSize& size) {
  return size.isEmpty() ? QString() : QString("%1 × %2 Pixel").arg(size.width()).arg(size.height());
}

}  // namespace

frmWerbeFenster::frmWerbeFenster(const Workplace& workplace, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::frmWerbeFenster>()),
      icons_(new PictureLoader("bmp", this)),
      preview_(new PictureLoader("bmp", this)) {
  ui_->setupUi(this);
  connectLineList(*ui_->List1, *ui_->cmdAlleWaehlen, *ui_->cmdKeineWaehlen, *ui_->lblAnzahl);
  setEmptyText(ui_->List1, "Keine Linien");
  setEmptyText(ui_->lstBilder, "Keine Bilder (*.bmp) im Austauschordner");
  connect(ui_->lstBilder, &QListWidget::itemSelectionChanged, this, &frmWerbeFenster::showPreview);
  sight_.setSingleShot(true);
  connect(&sight_, &QTimer::timeout, this, &frmWerbeFenster::loadVisibleIcons);
  connect(ui_->lstBilder->verticalScrollBar(), &QScrollBar::valueChanged, &sight_,
          qOverload<>(&QTimer::start));
  connect(icons_, &PictureLoader::loaded, this,
          [this](int position, const SmallPicture& picture) { showIcon(iconRows_.at(position), picture); });
  connect(preview_, &PictureLoader::loaded, this, [this](int, const SmallPicture& picture) {
    if (picture.image.isNull())
      ui_->picVorschau->setText(picture.fault);
    else
      ui_->picVorschau->setImage(picture.image);
    ui_->lblGroesse->setText(sizeText(picture.size));
  });
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmWerbeFenster::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmWerbeFenster::~frmWerbeFenster() = default;

/// What opening has to say is said before the window is there.
void frmWerbeFenster::setVisible(bool visible) {
  if (visible && !isVisible()) Form_Load();
  QDialog::setVisible(visible);
}

void frmWerbeFenster::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  sight_.start();
}

void frmWerbeFenster::Form_Load() {
  bOK_ = false;
  sBildName_.clear();
  ui_->List1->clear();
  if (bEinzel_)
    addLine(*ui_->List1, aktLinie_, 0, true);
  else
    for (const int line : aktiveLinien(liesText(workplace_.settings, keys::LinienAktiv)))
      addLine(*ui_->List1, line, line, true);
  for (QWidget* choice : {static_cast<QWidget*>(ui_->List1), static_cast<QWidget*>(ui_->cmdAlleWaehlen),
                          static_cast<QWidget*>(ui_->cmdKeineWaehlen)})
    choice->setEnabled(!bEinzel_);

  folder_ = withTrailingSeparator(liesText(workplace_.settings, keys::Netzverzeichnis));
  const int height = kIconLines * fontMetrics().height();
  ui_->lstBilder->setIconSize({height * 4 / 3, height});
  // Entries keep their height and the place of their text while their pictures are still on the way.
  const QPixmap blank = blankIcon();
  ui_->lstBilder->clear();
  for (const QString& name : workplace_.files.list(folder_, "*.bmp"))
    new QListWidgetItem(QIcon(blank), name, ui_->lstBilder);
  ui_->lstBilder->setCurrentRow(0);
  ui_->lstBilder->setFocus();
  showPreview();
  sight_.start();
}

QString frmWerbeFenster::pathOf(const QListWidgetItem& entry) const {
  return workplace_.files.resolve(folder_ + entry.text());
}

void frmWerbeFenster::cmdOK_Click() {
  if (ui_->List1->selectedItems().isEmpty())
    return workplace_.dialogs.note("Bitte mindestens eine Linie wählen!");
  QString choice;
  const auto chooseAll = [&](Steps& step) {
    for (int row = 0; row < ui_->List1->count(); ++row) {
      if (!ui_->List1->item(row)->isSelected()) continue;
      QString picture;
      step([&] { picture = nextPicture(); });
      choice += bildEintrag(lineData(*ui_->List1, row), picture);
    }
  };
  if (!reported(fehlerReport(workplace_.dialogs, "Fehler bei cmdOK_Click_err!"), chooseAll)) return;
  sBildName_ = choice;
  bOK_ = true;
  accept();
}

QString frmWerbeFenster::nextPicture() {
  const QListWidget& pictures = *ui_->lstBilder;
  if (!ui_->chkZufall->isChecked()) {
    const QList<QListWidgetItem*> chosen = pictures.selectedItems();
    return chosen.isEmpty() ? QString() : chosen.front()->text();
  }
  const QListWidgetItem* drawn = pictures.item(static_cast<int>(pictures.count() * workplace_.random.next()));
  if (!drawn) throw Error(errors::kIndexOutOfRange);
  return drawn->text();
}

void frmWerbeFenster::reject() {
  bOK_ = false;
  QDialog::reject();
}

// --- the pictures

/// Only what is in sight is read: the folder may hold hundreds, at the other end of a network.
void frmWerbeFenster::loadVisibleIcons() {
  QListWidget& list = *ui_->lstBilder;
  const QRect sight = list.viewport()->rect();
  QStringList paths;
  iconRows_.clear();
  for (int row = 0; row < list.count(); ++row) {
    const QListWidgetItem& entry = *list.item(row);
    if (entry.data(kIconIsThere).toBool() || !list.visualItemRect(&entry).intersects(sight)) continue;
    iconRows_.append(row);
    paths.append(pathOf(entry));
  }
  icons_->load(paths, list.iconSize() * devicePixelRatio());
}

QPixmap frmWerbeFenster::blankIcon() const {
  QPixmap blank(ui_->lstBilder->iconSize() * devicePixelRatio());
  blank.setDevicePixelRatio(devicePixelRatio());
  blank.fill(Qt::transparent);
  return blank;
}

void frmWerbeFenster::showIcon(int row, const SmallPicture& picture) {
  QListWidgetItem& entry = *ui_->lstBilder->item(row);
  entry.setData(kIconIsThere, true);
  entry.setToolTip(picture.fault.isEmpty() ? sizeText(picture.size) : picture.fault);
  if (picture.image.isNull()) {
    // In the middle of the room that pictures have: names stand below each other.
    QPixmap icon = blankIcon();
    QPainter painter(&icon);
    style()
        ->standardIcon(QStyle::SP_MessageBoxWarning)
        .paint(&painter, {QPoint(), ui_->lstBilder->iconSize()});
    painter.end();
    entry.setIcon(icon);
    return;
  }
  QPixmap icon = QPixmap::fromImage(picture.image);
  icon.setDevicePixelRatio(devicePixelRatio());
  entry.setIcon(icon);
}

void frmWerbeFenster::showPreview() {
  const QList<QListWidgetItem*> chosen = ui_->lstBilder->selectedItems();
  ui_->lblGroesse->clear();
  ui_->picVorschau->setText(chosen.isEmpty() ? "Kein Bild gewählt" : "Das Bild wird geladen …");
  QStringList paths;
  if (!chosen.isEmpty()) paths.append(pathOf(*chosen.front()));
  preview_->load(paths, kPreviewSize);
}

}  // namespace qk
