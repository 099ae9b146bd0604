// Drives a real window by object names, as an operator would: what is hidden or disabled can't be used.
// Each helper throws DriveError, which ends the test program: a test can't go on without its control.
#pragma once

#include <QWidget>
#include <stdexcept>

class QAction;
class QListWidget;

namespace qk::test {

class DriveError : public std::runtime_error {
 public:
  explicit DriveError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// Complains unless there is exactly one.
[[noreturn]] void throwNotOne(const QString& name, const char* type, qsizetype count);

/// The one object of that name and type below the root (or the root itself).
template <class T>
T& the(QWidget& root, const QString& name) {
  QList<T*> found = root.findChildren<T*>(name);
  if constexpr (std::is_base_of_v<QWidget, T>)
    if (T* self = qobject_cast<T*>(&root); self && root.objectName() == name) found.prepend(self);
  if (found.size() != 1) throwNotOne(name, T::staticMetaObject.className(), found.size());
  return *found.front();
}

/// A mouse click in the middle of a visible, enabled control.
void click(QWidget& root, const QString& name);
void doubleClick(QWidget& root, const QString& name);
/// A menu entry or toolbar action, visible and enabled.
void trigger(QWidget& root, const QString& actionName);
/// Sets the tick of the one entry with that text; for a list without ticks, its selection.
void tick(QWidget& root, const QString& listName, const QString& entry, bool on = true);
/// Replaces what stands in a line edit or combo box, by key events, a character each; umlauts too.
void type(QWidget& root, const QString& name, const QString& text);
/// The same for whatever has the focus, as a scanner does; nothing is replaced.
void typeInto(QWidget& target, const QString& text);
void press(QWidget& root, const QString& name, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace qk::test
