#include "tools/driver/widget_finder.h"

#include <QAction>
#include <QApplication>
#include <QWidget>

namespace qk::driver {

namespace {

QList<QObject*> below(const QList<QObject*>& parents, const QString& name) {
  QList<QObject*> found;
  for (QObject* parent : parents) {
    if (parent->objectName() == name && !found.contains(parent)) found << parent;
    for (QObject* child : parent->findChildren<QObject*>(name))
      if (!found.contains(child)) found << child;
  }
  return found;
}

QList<QObject*> visibleOnly(const QList<QObject*>& objects) {
  QList<QObject*> visible;
  for (QObject* object : objects)
    if (auto* widget = qobject_cast<QWidget*>(object); widget && widget->isVisible()) visible << object;
  return visible;
}

}  // namespace

Found find(const QString& path) {
  QList<QObject*> objects;
  for (QWidget* window : QApplication::topLevelWidgets()) objects << window;
  for (const QString& name : path.split('/')) {
    objects = below(objects, name);
    // Qt gives helper objects of a control names of their own; only controls and actions count.
    objects.removeIf(
        [](QObject* object) { return !qobject_cast<QWidget*>(object) && !qobject_cast<QAction*>(object); });
  }
  if (objects.size() > 1) objects = visibleOnly(objects);
  if (objects.size() != 1)
    return {nullptr, nullptr, QString("%1 controls named \"%2\"").arg(objects.size()).arg(path)};
  return {qobject_cast<QWidget*>(objects.first()), qobject_cast<QAction*>(objects.first()), {}};
}

}  // namespace qk::driver
