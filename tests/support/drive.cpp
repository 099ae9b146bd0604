#include "tests/support/drive.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace qk::test {

namespace {

QWidget& usable(QWidget& root, const QString& name) {
  QWidget& widget = the<QWidget>(root, name);
  if (!widget.isVisible()) throw DriveError(name + " is hidden");
  if (!widget.isEnabled()) throw DriveError(name + " is disabled");
  return widget;
}

QListWidgetItem& entryOf(QListWidget& list, const QString& text) {
  const QList<QListWidgetItem*> found = list.findItems(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (found.size() != 1) throwNotOne(text, "entry", found.size());
  return *found.front();
}

}  // namespace

void throwNotOne(const QString& name, const char* type, qsizetype count) {
  throw DriveError(QString("%1 %2 named \"%3\", expected one").arg(count).arg(type).arg(name));
}

void click(QWidget& root, const QString& name) {
  QTest::mouseClick(&usable(root, name), Qt::LeftButton);
}

void doubleClick(QWidget& root, const QString& name) {
  QTest::mouseDClick(&usable(root, name), Qt::LeftButton);
}

void trigger(QWidget& root, const QString& actionName) {
  QAction& action = the<QAction>(root, actionName);
  if (!action.isVisible()) throw DriveError(actionName + " is hidden");
  if (!action.isEnabled()) throw DriveError(actionName + " is disabled");
  action.trigger();
}

void tick(QWidget& root, const QString& listName, const QString& entry, bool on) {
  usable(root, listName);
  QListWidgetItem& item = entryOf(the<QListWidget>(root, listName), entry);
  if (!(item.flags() & Qt::ItemIsEnabled)) throw DriveError(entry + " is disabled");
  if (item.flags() & Qt::ItemIsUserCheckable && item.data(Qt::CheckStateRole).isValid())
    item.setCheckState(on ? Qt::Checked : Qt::Unchecked);
  else
    item.setSelected(on);
}

void typeInto(QWidget& target, const QString& text) {
  // The test library's own keyClicks() stops at a letter that no key code stands for.
  for (const QChar c : text) {
    const int key = c.unicode() < 0x80 ? c.toUpper().unicode() : 0;
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
    QApplication::sendEvent(&target, &down);
    QApplication::sendEvent(&target, &up);
  }
}

void type(QWidget& root, const QString& name, const QString& text) {
  QWidget& widget = usable(root, name);
  auto* edit = qobject_cast<QLineEdit*>(&widget);
  if (auto* combo = qobject_cast<QComboBox*>(&widget)) edit = combo->lineEdit();
  if (!edit) throw DriveError(name + " takes no text");
  if (edit->isReadOnly()) throw DriveError(name + " is read only");
  edit->setFocus();
  edit->selectAll();
  if (text.isEmpty()) QTest::keyClick(edit, Qt::Key_Delete);
  typeInto(*edit, text);
}

void press(QWidget& root, const QString& name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWidget& widget = usable(root, name);
  widget.setFocus();
  QTest::keyClick(&widget, key, modifiers);
}

}  // namespace qk::test
