#include "platform/grid/open_editors.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace qk {

namespace {

/// The view in whose editor the keyboard is; nothing when it is elsewhere, or in the view itself. The filter
/// cells of a header are no editors: they act with every key.
QAbstractItemView* editedView() {
  QWidget* focus = QApplication::focusWidget();
  if (!focus || qobject_cast<QAbstractItemView*>(focus)) return nullptr;
  for (QWidget* parent = focus->parentWidget(); parent; parent = parent->parentWidget())
    if (auto* view = qobject_cast<QAbstractItemView*>(parent))
      return view->viewport() == focus || qobject_cast<QHeaderView*>(view) ? nullptr : view;
  return nullptr;
}

/// Something that acts when it is pressed, whoever has the keyboard. What belongs to the view, as the list of
/// a cell that suggests something, is part of the edit.
bool acts(QObject* pressed, const QAbstractItemView* view) {
  if (!qobject_cast<QAbstractButton*>(pressed) && !qobject_cast<QMenuBar*>(pressed) &&
      !qobject_cast<QMenu*>(pressed))
    return false;
  for (QObject* part = pressed; part; part = part->parent())
    if (part == view) return false;
  return true;
}

class ActionWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  /// A box over the cell that was taken over may take down what was pressed: it then gets nothing any more.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Shortcut && event->type() != QEvent::MouseButtonPress) return false;
    const QAbstractItemView* view = editedView();
    if (!view || (event->type() == QEvent::MouseButtonPress && !acts(watched, view))) return false;
    const QPointer<QObject> receiver(watched);
    takeOverOpenEdit();
    return receiver.isNull();
  }
};

}  // namespace

void takeOverEditsBeforeActions() {
  static QPointer<ActionWatch> watch;  // a test program has one application after the other
  if (watch) return;
  watch = new ActionWatch(qApp);
  qApp->installEventFilter(watch);
}

/// The editor's own end of an edit: the keyboard goes back to its view.
void takeOverOpenEdit() {
  if (QAbstractItemView* view = editedView()) view->setFocus(Qt::OtherFocusReason);
}

}  // namespace qk
