#include "tests/support/manners.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLayout>
#include <QMap>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QWidget>

namespace qk::test {

namespace {

QString nameOf(const QWidget& widget) {
  return widget.objectName();
}

/// The program's own controls: what a composed control is made of inside carries a name of the toolkit.
QList<QWidget*> controlsOf(QWidget& window) {
  QList<QWidget*> controls;
  for (QWidget* widget : window.findChildren<QWidget*>())
    if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_") && !widget->isWindow() &&
        !qobject_cast<QTabBar*>(widget->parentWidget()))
      controls.append(widget);
  return controls;
}

void checkMnemonics(QWidget& window, QStringList& complaints) {
  QMap<QString, QStringList> users;
  const auto note = [&](const QString& text, const QString& user) {
    const QKeySequence key = QKeySequence::mnemonic(text);
    if (!key.isEmpty()) users[key.toString()].append(user);
  };
  for (const auto* button : window.findChildren<QAbstractButton*>()) note(button->text(), nameOf(*button));
  for (const auto* label : window.findChildren<QLabel*>())
    if (label->buddy()) note(label->text(), nameOf(*label));
  for (const auto* bar : window.findChildren<QMenuBar*>())
    for (const QAction* action : bar->actions()) note(action->text(), action->objectName());
  for (auto it = users.cbegin(); it != users.cend(); ++it)
    if (it->size() > 1) complaints.append(it.key() + " is used by " + it->join(", "));
}

void checkOkAndCancel(QWidget& window, QStringList& complaints) {
  const auto* ok = window.findChild<QPushButton*>("cmdOK");
  const auto* cancel = window.findChild<QPushButton*>("cmdCancel");
  if (ok && !ok->isDefault()) complaints.append("Enter doesn't press cmdOK");
  if (ok && cancel && ok->mapTo(&window, QPoint()).x() >= cancel->mapTo(&window, QPoint()).x())
    complaints.append("cmdOK doesn't stand left of cmdCancel");
}

/// Completing while somebody types stores what he didn't mean.
void checkCompleters(QWidget& window, QStringList& complaints) {
  for (const auto* box : window.findChildren<QComboBox*>())
    if (box->isEditable() && box->completer()) complaints.append(nameOf(*box) + " completes what is typed");
}

void checkNames(const QList<QWidget*>& controls, QStringList& complaints) {
  for (QWidget* control : controls) {
    if (control->focusPolicy() == Qt::NoFocus) continue;
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
    if (!reader || reader->text(QAccessible::Name).trimmed().isEmpty())
      complaints.append(nameOf(*control) + " has no accessible name");
  }
}

/// Nested layouts tell their new size one level at a time.
void settle(QWidget& window) {
  QSize before;
  do {
    before = window.minimumSizeHint();
    for (int level = 0; level < 10; ++level) QCoreApplication::processEvents();
  } while (window.minimumSizeHint() != before);
}

void checkSizes(QWidget& window, const QList<QWidget*>& controls, QStringList& complaints) {
  for (const QWidget* control : controls)
    if (control->minimumWidth() == control->maximumWidth() ||
        control->minimumHeight() == control->maximumHeight())
      complaints.append(nameOf(*control) + " has a fixed size");

  const QFont usual = window.font();
  const QSize size = window.size();
  QFont large = usual;
  large.setPointSizeF(2 * usual.pointSizeF());
  window.setFont(large);
  if (window.layout()) window.layout()->activate();
  window.adjustSize();
  settle(window);
  for (const QWidget* control : controls) {
    const bool shows = qobject_cast<const QAbstractButton*>(control) || qobject_cast<const QLabel*>(control);
    if (!shows || !control->isVisible()) continue;
    const QSize needed = control->minimumSizeHint();
    if (control->width() < needed.width() || control->height() < needed.height())
      complaints.append(nameOf(*control) + " is cut with a larger font");
  }
  window.setFont(usual);
  window.resize(size);
  QCoreApplication::processEvents();
}

}  // namespace

QStringList badManners(QWidget& window) {
  QStringList complaints;
  const QList<QWidget*> controls = controlsOf(window);
  checkMnemonics(window, complaints);
  checkOkAndCancel(window, complaints);
  checkCompleters(window, complaints);
  checkNames(controls, complaints);
  checkSizes(window, controls, complaints);
  return complaints;
}

}  // namespace qk::test
