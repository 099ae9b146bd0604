#include "cash/scan_watch.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <utility>

#include "platform/grid/text_grid.h"
#include "platform/runtime/clock.h"

namespace qk {

namespace {

const char* const kAmountField = "betragsfeld";

QLineEdit* editOf(QWidget* widget) {
  if (auto* box = qobject_cast<QComboBox*>(widget)) return box->lineEdit();
  return qobject_cast<QLineEdit*>(widget);
}

bool isTyped(const QWidget* widget) {
  const auto* edit = editOf(const_cast<QWidget*>(widget));
  return (edit && !edit->isReadOnly()) || qobject_cast<const QPlainTextEdit*>(widget);
}

/// The editor of a cell, or the grid itself, which opens one at the first figure.
TextGrid* gridOf(QWidget* widget) {
  for (; widget; widget = widget->parentWidget())
    if (auto* grid = qobject_cast<TextGrid*>(widget)) return grid;
  return nullptr;
}

void send(QWidget& target, Qt::Key key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Return ? "\r" : QString());
  QCoreApplication::sendEvent(&target, &press);
}

}  // namespace

ScanWatch::ScanWatch(const Workplace& workplace, QWidget& window) : workplace_(workplace), window_(window) {
  qApp->installEventFilter(this);
}

ScanWatch::~ScanWatch() {
  qApp->removeEventFilter(this);
}

void ScanWatch::markAmountField(QWidget& field) {
  field.setProperty(kAmountField, true);
}

bool ScanWatch::refuses(const QWidget& field) const {
  if (field.property(kAmountField).toBool()) return true;
  if (field.window() == &window_ && gridOf(const_cast<QWidget*>(&field))) return true;
  return allowed_ == 0 && qobject_cast<QInputDialog*>(field.window());
}

bool ScanWatch::elsewhere(const QWidget& receiver) const {
  return origin_ && origin_->window() != receiver.window();
}

bool ScanWatch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && enterDue_ && qobject_cast<QDialog*>(watched))
    QTimer::singleShot(0, this, [this] { handBack(); });
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  auto& receiver = static_cast<QWidget&>(*watched);
  // A key that nobody takes comes by again with every parent.
  if (QApplication::focusWidget() && &receiver != QApplication::focusWidget()) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) return entered(receiver);
  return keyPressed(receiver, key);
}

bool ScanWatch::keyPressed(QWidget& receiver, const QKeyEvent& key) {
  const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (command || key.text().isEmpty() || !key.text().at(0).isPrint()) return false;
  // A grid hands the key that opens an editor on to it.
  if (std::exchange(handedOn_, false) && &receiver != origin_ && gridOf(&receiver) == origin_) return false;
  if (!run_.key(key.text(), workplace_.clock.now()) || !origin_) {
    origin_ = &receiver;
    handedOn_ = qobject_cast<TextGrid*>(&receiver);
    const QLineEdit* edit = editOf(&receiver);
    before_ = edit ? edit->text() : QString();
    enterDue_ = false;
    return false;
  }
  if (!elsewhere(receiver)) return false;
  if (QLineEdit* edit = editOf(origin_)) edit->insert(key.text());
  return true;
}

bool ScanWatch::entered(QWidget& receiver) {
  const bool caught = run_.runs(workplace_.clock.now()) && elsewhere(receiver);
  const QString scan = run_.enter(workplace_.clock.now());
  if (caught) {
    enterDue_ = true;
    return true;
  }
  if (scan.isEmpty() || !origin_) return false;
  if (refuses(*origin_)) {
    if (QWidget* focus = QApplication::focusWidget(); focus && gridOf(focus) && focus != gridOf(focus))
      send(*focus, Qt::Key_Escape);
    if (QLineEdit* edit = editOf(origin_)) edit->setText(before_);
    Q_EMIT refused(scan);
    return true;
  }
  if (isTyped(origin_) || origin_->window() != &window_) return false;
  Q_EMIT homeless(scan);
  return true;
}

void ScanWatch::handBack() {
  const QWidget* modal = QApplication::activeModalWidget();
  const bool inTheWay = modal && origin_ && modal != origin_->window();
  if (inTheWay || !std::exchange(enterDue_, false) || !origin_) return;
  origin_->setFocus();
  send(*origin_, Qt::Key_Return);
}

}  // namespace qk
