#include "targetconfig/line_list.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace qk {

void addLine(QListWidget& list, int nLinie, int data, bool selected) {
  auto* entry = new QListWidgetItem("Linie " + QString::number(nLinie), &list);
  entry->setData(Qt::UserRole, data);
  entry->setSelected(selected);
}

int lineData(const QListWidget& list, int row) {
  return list.item(row)->data(Qt::UserRole).toInt();
}

void connectLineList(QListWidget& list, QPushButton& all, QPushButton& none, QLabel& count) {
  QObject::connect(&all, &QPushButton::clicked, &list, &QListWidget::selectAll);
  QObject::connect(&none, &QPushButton::clicked, &list, &QListWidget::clearSelection);
  const auto show = [&list, &count] {
    count.setText(QString("%1 von %2 gewählt").arg(list.selectedItems().size()).arg(list.count()));
  };
  QObject::connect(&list, &QListWidget::itemSelectionChanged, &count, show);
  QObject::connect(list.model(), &QAbstractItemModel::rowsInserted, &count, show);
  QObject::connect(list.model(), &QAbstractItemModel::modelReset, &count, show);
}

}  // namespace qk
