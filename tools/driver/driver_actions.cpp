#include "tools/driver/driver_actions.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QJsonArray>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QTabWidget>
#include <QTimer>
#include <functional>

#include "tools/driver/widget_finder.h"

namespace qk::driver {

namespace {

QJsonObject good(const QJsonValue& value = {}) {
  return {{"ok", true}, {"value", value}};
}
QJsonObject bad(const QString& problem) {
  return {{"ok", false}, {"problem", problem}};
}

void mouse(QWidget* widget, QEvent::Type type, QPoint at, Qt::MouseButton button) {
  const bool pressed = type != QEvent::MouseButtonRelease;
  QMouseEvent event(type, at, widget->mapToGlobal(at), button, pressed ? button : Qt::NoButton,
                    Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

void postClick(QWidget* widget, QPoint at, bool twice = false) {
  QTimer::singleShot(0, widget, [widget = QPointer<QWidget>(widget), at, twice] {
    const auto send = [&](QEvent::Type type) {
      if (widget) mouse(widget, type, at, Qt::LeftButton);
    };
    send(QEvent::MouseButtonPress);
    send(QEvent::MouseButtonRelease);
    if (!twice) return;
    send(QEvent::MouseButtonDblClick);
    send(QEvent::MouseButtonRelease);
  });
}

void key(QWidget* widget, int code, Qt::KeyboardModifiers modifiers, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, code, modifiers, text);
  QApplication::sendEvent(widget, &press);
  QKeyEvent release(QEvent::KeyRelease, code, modifiers, text);
  QApplication::sendEvent(widget, &release);
}

QString boxText(QWidget* window) {
  if (auto* box = qobject_cast<QMessageBox*>(window)) return box->text();
  if (auto* label = window->findChild<QLabel*>()) return label->text();
  return {};
}

/// Tells boxes apart that follow each other at one address with one text.
int serialOf(QWidget* window) {
  constexpr const char* kProperty = "qkDriverSerial";
  static int last = 0;
  if (!window->property(kProperty).isValid()) window->setProperty(kProperty, ++last);
  return window->property(kProperty).toInt();
}

QJsonObject modal(const QJsonObject&) {
  QWidget* window = QApplication::activeModalWidget();
  if (!window) return good();
  QJsonArray buttons;
  for (auto* button : window->findChildren<QAbstractButton*>())
    if (button->isVisible()) buttons << button->text().remove('&');
  return good(QJsonObject{{"id", serialOf(window)},
                          {"class", window->metaObject()->className()},
                          {"name", window->objectName()},
                          {"title", window->windowTitle()},
                          {"text", boxText(window)},
                          {"buttons", buttons}});
}

QJsonObject answer(const QJsonObject& request) {
  QWidget* window = QApplication::activeModalWidget();
  // The box that was meant is gone: another one isn't to get its answer.
  if (request.contains("id") && (!window || serialOf(window) != request["id"].toInt())) return good();
  if (!window) return bad("no modal window");
  for (auto* button : window->findChildren<QAbstractButton*>())
    if (button->isVisible() && button->text().remove('&') == request["button"].toString()) {
      postClick(button, button->rect().center());
      return good();
    }
  return bad("no such button in: " + boxText(window));
}

QJsonObject typeBlindly(const QJsonObject& request) {
  for (const QChar c : request["text"].toString())
    QTimer::singleShot(0, qApp, [c] {
      QWidget* focus = QApplication::focusWidget();
      if (!focus) focus = QApplication::activeWindow();
      if (!focus) return;
      const bool enter = c == u'\n';
      key(focus, enter ? int(Qt::Key_Return) : c.toUpper().unicode(), Qt::NoModifier,
          enter ? QString("\r") : QString(c));
    });
  return good();
}

QJsonObject click(const Found& found, const QJsonObject&) {
  if (found.action) {
    if (!found.action->isEnabled()) return bad("disabled");
    QTimer::singleShot(0, found.action, &QAction::trigger);
    return good();
  }
  if (!found.widget->isEnabled()) return bad("disabled");
  postClick(found.widget, found.widget->rect().center());
  return good();
}

QJsonObject type(const Found& found, const QJsonObject& request) {
  if (!found.widget) return bad("not a control");
  found.widget->setFocus(Qt::OtherFocusReason);
  if (auto* edit = qobject_cast<QLineEdit*>(found.widget)) edit->selectAll();
  for (const QChar c : request["text"].toString())
    key(found.widget, c.unicode() < 0x80 ? c.toUpper().unicode() : 0, Qt::NoModifier, QString(c));
  return good();
}

QJsonObject press(const Found& found, const QJsonObject& request) {
  const QKeySequence sequence(request["key"].toString());
  if (!found.widget || sequence.isEmpty()) return bad("no control or no key");
  const QKeyCombination combination = sequence[0];
  QTimer::singleShot(0, found.widget, [widget = found.widget, combination] {
    key(widget, combination.key(), combination.keyboardModifiers(), {});
  });
  return good();
}

QJsonObject property(const Found& found, const QJsonObject& request) {
  QObject* object = found.action ? static_cast<QObject*>(found.action) : found.widget;
  const QVariant value = object->property(request["name"].toString().toUtf8().constData());
  return value.isValid() ? good(QJsonValue::fromVariant(value)) : bad("no such property");
}

QJsonArray itemsBelow(const QAbstractItemModel& model, const QModelIndex& parent) {
  QJsonArray rows;
  for (int row = 0; row < model.rowCount(parent); ++row) {
    QJsonArray cells;
    for (int column = 0; column < model.columnCount(parent); ++column) {
      const QModelIndex index = model.index(row, column, parent);
      const QVariant tick = index.data(Qt::CheckStateRole);
      cells << QJsonObject{{"text", index.data(Qt::DisplayRole).toString()},
                           {"ticked", tick.isValid() && tick.toInt() == Qt::Checked},
                           {"data", QJsonValue::fromVariant(index.data(Qt::UserRole))}};
    }
    rows << cells;
    if (model.hasChildren(model.index(row, 0, parent)))
      for (const QJsonValue& child : itemsBelow(model, model.index(row, 0, parent))) rows << child;
  }
  return rows;
}

QAbstractItemView* viewOf(const Found& found) {
  if (auto* combo = qobject_cast<QComboBox*>(found.widget)) return combo->view();
  return qobject_cast<QAbstractItemView*>(found.widget);
}

QJsonObject items(const Found& found, const QJsonObject&) {
  QAbstractItemView* view = viewOf(found);
  return view && view->model() ? good(itemsBelow(*view->model(), view->rootIndex())) : bad("not a list");
}

QJsonObject cell(const Found& found, const QJsonObject& request) {
  auto* view = qobject_cast<QAbstractItemView*>(found.widget);
  if (!view || !view->model()) return bad("not a list");
  const QModelIndex index = view->model()->index(request["row"].toInt(), request["column"].toInt());
  if (!index.isValid()) return bad("no such cell");
  view->scrollTo(index);
  const QRect place = view->visualRect(index);
  // A tick box stands at the left of its cell.
  const bool tick = index.flags().testFlag(Qt::ItemIsUserCheckable);
  const QPoint at =
      tick && !request["beside"].toBool()
          ? QPoint(place.left() + qMin(place.width() / 2, place.height() / 2), place.center().y())
          : place.center();
  postClick(view->viewport(), at, request["twice"].toBool());
  return good();
}

QJsonObject choose(const Found& found, const QJsonObject& request) {
  const QString text = request["text"].toString();
  if (auto* combo = qobject_cast<QComboBox*>(found.widget)) {
    const int position = combo->findText(text);
    if (position < 0) return bad("no entry " + text);
    combo->setCurrentIndex(position);
    QTimer::singleShot(0, combo, [combo, position] { Q_EMIT combo->activated(position); });
    return good();
  }
  auto* tabs = qobject_cast<QTabWidget*>(found.widget);
  if (!tabs) return bad("neither a combo box nor tabs");
  for (int i = 0; i < tabs->count(); ++i) {
    if (tabs->tabText(i).remove('&') != text) continue;
    tabs->setCurrentIndex(i);
    return good();
  }
  return bad("no tab " + text);
}

QJsonObject grab(const QJsonObject& request) {
  QWidget* window = QApplication::activeModalWidget();
  if (!window) window = QApplication::activeWindow();
  if (const QString path = request["object"].toString(); !path.isEmpty()) window = find(path).widget;
  for (QWidget* top : QApplication::topLevelWidgets())
    if (!window && top->isVisible() && top->isWindow()) window = top;
  if (!window) return bad("no window to grab");
  return window->grab().save(request["file"].toString()) ? good() : bad("the picture can't be written");
}

using OnControl = QJsonObject (*)(const Found&, const QJsonObject&);
using Free = QJsonObject (*)(const QJsonObject&);

}  // namespace

QJsonObject perform(const QJsonObject& request) {
  static const QHash<QString, Free> free{
      {"modal", modal}, {"answer", answer}, {"typeBlindly", typeBlindly}, {"grab", grab}};
  static const QHash<QString, OnControl> onControl{{"click", click},  {"type", type},   {"press", press},
                                                   {"get", property}, {"items", items}, {"cell", cell},
                                                   {"choose", choose}};
  const QString what = request["do"].toString();
  if (const Free act = free.value(what)) return act(request);
  const OnControl act = onControl.value(what);
  if (!act) return bad("unknown request " + what);
  const Found found = find(request["object"].toString());
  return found.problem.isEmpty() ? act(found, request) : bad(found.problem);
}

}  // namespace qk::driver
