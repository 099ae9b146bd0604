#include "app/shell/frmHilfe.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QUrl>

#include "app/ground/temp_module.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmHilfe.h"

namespace qk {

namespace {

constexpr int kFileRole = Qt::UserRole;

/// Lines and heads of tables in the colours of the window, light or dark.
QString styleOf(const QPalette& look) {
  return QString(
             "h1, h2 { font-weight: 600; } td, th { padding: 4px 8px; } th { text-align: left; "
             "background-color: %1; } td { border-bottom: 1px solid %2; } table { border-collapse: collapse; "
             "} "
             "a { color: %3; }")
      .arg(look.color(QPalette::AlternateBase).name(), look.color(QPalette::Mid).name(),
           look.color(QPalette::Link).name());
}

}  // namespace

frmHilfe::frmHilfe(const Workplace& workplace, const QString& folder, QWidget* parent)
    : QDialog(parent), handbook_(workplace.files, folder), ui_(std::make_unique<Ui::frmHilfe>()) {
  ui_->setupUi(this);
  setEmptyText(ui_->lstInhalt, "Nichts gefunden");
  ui_->splitter->setStretchFactor(1, 1);
  const int character = fontMetrics().averageCharWidth();
  ui_->splitter->setSizes({26 * character, 90 * character});
  resize(120 * character, 46 * fontMetrics().lineSpacing());
  connect(ui_->lstInhalt, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item) open(item->data(kFileRole).toString());
  });
  connect(ui_->txtSeite, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
    open(url.path().isEmpty() ? visited_[size_t(at_)].file : url.path(), url.fragment());
  });
  connect(ui_->cmdZurueck, &QPushButton::clicked, this, [this] { go(-1); });
  connect(ui_->cmdVor, &QPushButton::clicked, this, [this] { go(1); });
  connect(ui_->txtSuche, &QLineEdit::textChanged, this, &frmHilfe::listPages);
  makeKeys();
  listPages();
  open(Handbook::Contents);
  ui_->lstInhalt->setFocus();
}

frmHilfe::~frmHilfe() = default;

void frmHilfe::showBeside(const Workplace& workplace, QWidget& window, const QString& page) {
  auto* help = window.findChild<frmHilfe*>({}, Qt::FindDirectChildrenOnly);
  if (!help) help = new frmHilfe(workplace, Programmverzeichnis() + "handbuch", &window);
  if (!page.isEmpty()) help->open(page.section('#', 0, 0), page.section('#', 1));
  help->show();
  help->raise();
  help->activateWindow();
}

void frmHilfe::makeKeys() {
  const auto key = [this](const QKeySequence& sequence, auto routine) {
    connect(new QShortcut(sequence, this), &QShortcut::activated, this, routine);
  };
  key(Qt::CTRL | Qt::Key_F, [this] {
    ui_->txtSuche->setFocus(Qt::ShortcutFocusReason);
    ui_->txtSuche->selectAll();
  });
  key(Qt::ALT | Qt::Key_Left, [this] { go(-1); });
  key(Qt::ALT | Qt::Key_Right, [this] { go(1); });
  key(Qt::Key_F6, [this] {
    QWidget* next = ui_->lstInhalt->hasFocus() ? static_cast<QWidget*>(ui_->txtSeite) : ui_->lstInhalt;
    next->setFocus(Qt::ShortcutFocusReason);
  });
}

void frmHilfe::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && ui_->txtSuche->hasFocus()) return findNext();
  QDialog::keyPressEvent(event);
}

void frmHilfe::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && at_ >= 0) showPlace();
}

void frmHilfe::open(const QString& file, const QString& anchor) {
  if (at_ >= 0 && visited_[size_t(at_)].file == file && visited_[size_t(at_)].anchor == anchor) return;
  visited_.resize(size_t(at_ + 1));
  visited_.push_back({file, anchor});
  go(1);
}

void frmHilfe::go(int step) {
  if (at_ + step < 0 || at_ + step >= int(visited_.size())) return;
  at_ += step;
  showPlace();
}

void frmHilfe::showPlace() {
  const Place& place = visited_[size_t(at_)];
  ui_->txtSeite->document()->setDefaultStyleSheet(styleOf(palette()));
  ui_->txtSeite->document()->setDocumentMargin(2 * fontMetrics().averageCharWidth());
  ui_->txtSeite->setHtml(handbook_.html(place.file));
  if (!place.anchor.isEmpty()) ui_->txtSeite->scrollToAnchor(place.anchor);
  ui_->cmdZurueck->setEnabled(at_ > 0);
  ui_->cmdVor->setEnabled(at_ + 1 < int(visited_.size()));
  const QSignalBlocker quiet(ui_->lstInhalt);
  for (int row = 0; row < ui_->lstInhalt->count(); ++row)
    if (ui_->lstInhalt->item(row)->data(kFileRole).toString() == place.file)
      ui_->lstInhalt->setCurrentRow(row);
}

/// Lists the pages that hold the word searched for.
void frmHilfe::listPages() {
  const QSignalBlocker quiet(ui_->lstInhalt);
  ui_->lstInhalt->clear();
  for (const HandbookPage& page : handbook_.pages()) {
    const QString word = ui_->txtSuche->text().simplified();
    if (!(page.title + ' ' + page.text).contains(word, Qt::CaseInsensitive)) continue;
    auto* item = new QListWidgetItem(page.title, ui_->lstInhalt);
    item->setData(kFileRole, page.file);
    if (at_ >= 0 && page.file == visited_[size_t(at_)].file) ui_->lstInhalt->setCurrentItem(item);
  }
}

/// The next place of the word on this page, else the next page of the list that holds it.
void frmHilfe::findNext() {
  const QString word = ui_->txtSuche->text().simplified();
  if (word.isEmpty() || ui_->txtSeite->find(word)) return;
  const int pages = ui_->lstInhalt->count();
  if (pages == 0) return;
  open(ui_->lstInhalt->item((ui_->lstInhalt->currentRow() + 1) % pages)->data(kFileRole).toString());
  ui_->txtSeite->moveCursor(QTextCursor::Start);
  ui_->txtSeite->find(word);
}

}  // namespace qk
