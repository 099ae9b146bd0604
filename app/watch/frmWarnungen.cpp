#include "app/watch/frmWarnungen.h"

#include <QEvent>
#include <QScrollBar>
#include <QUrl>

#include "app/watch/watch_texts.h"
#include "ui_frmWarnungen.h"

namespace qk {

frmWarnungen::frmWarnungen(const Clock& clock, const ThreatBook& book, QWidget* parent)
    : QDialog(parent), clock_(clock), book_(book), ui_(std::make_unique<Ui::frmWarnungen>()) {
  ui_->setupUi(this);
  resize(80 * fontMetrics().averageCharWidth(), 26 * fontMetrics().lineSpacing());
  connect(ui_->cmdSchliessen, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->txtWarnungen, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& url) { Q_EMIT handbookWanted(url.toString()); });
  refresh();
}

frmWarnungen::~frmWarnungen() = default;

void frmWarnungen::refresh() {
  const int at = ui_->txtWarnungen->verticalScrollBar()->value();
  ui_->txtWarnungen->document()->setDocumentMargin(2 * fontMetrics().averageCharWidth());
  ui_->txtWarnungen->setHtml(detailsHtml(book_, clock_.now().date(), palette().color(QPalette::AlternateBase),
                                         palette().color(QPalette::Link)));
  ui_->txtWarnungen->verticalScrollBar()->setValue(at);
}

void frmWarnungen::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) refresh();
}

}  // namespace qk
