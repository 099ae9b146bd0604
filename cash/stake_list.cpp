#include "cash/stake_list.h"

#include <QListWidget>
#include <QShortcut>

namespace qk {

void connectStakes(QListWidget& list, const std::function<void()>& take) {
  QObject::connect(&list, &QListWidget::itemDoubleClicked, &list, take);
  for (int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(QKeySequence(key), &list);
    enter->setContext(Qt::WidgetShortcut);
    enter->setAutoRepeat(false);  // held, it takes one
    QObject::connect(enter, &QShortcut::activated, &list, take);
  }
}

}  // namespace qk
