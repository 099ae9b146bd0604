#include "app/line_tree.h"

#include <QHeaderView>
#include <QTreeWidget>

#include "data/icons/icons.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int kKeyRole = Qt::UserRole;
constexpr int kImageRole = Qt::UserRole + 1;
constexpr int kTagRole = Qt::UserRole + 2;
constexpr int kWorkRole = Qt::UserRole + 3;  // in words
constexpr int kLineRole = Qt::UserRole + 4;
constexpr int kWorkColumn = 1;

/// What a screen reader, and the pointer, say of a mark.
QString markText(const QString& image) {
  if (image == mark::Go) return "im Preismodus";
  if (image == mark::Gruen) return "Schütze angemeldet";
  if (image == mark::Stop) return "gestoppt";
  return "frei";
}

}  // namespace

LineTree::LineTree(QTreeWidget* widget) : widget_(widget) {
  widget_->setColumnCount(2);
  widget_->header()->setStretchLastSection(false);
  widget_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  widget_->header()->setSectionResizeMode(kWorkColumn, QHeaderView::ResizeToContents);
  const auto tell = [this](QTreeWidgetItem* item) {
    if (item && !selecting_) Q_EMIT nodeClicked(item->data(0, kLineRole).toInt());
  };
  connect(widget_, &QTreeWidget::currentItemChanged, this, tell);  // by keyboard
  connect(widget_, &QTreeWidget::itemClicked, this, tell);
}

void LineTree::clear() {
  selecting_ = true;
  widget_->clear();
  selecting_ = false;
}

void LineTree::add(int nLinie) {
  auto* item = new QTreeWidgetItem;
  item->setText(0, " " + QString::number(nLinie));
  item->setData(0, kKeyRole, "Linie" + QString::number(nLinie));
  item->setData(0, kLineRole, nLinie);
  selecting_ = true;
  widget_->addTopLevelItem(item);
  selecting_ = false;
  setImage(count(), mark::Pfeil);
}

int LineTree::count() const {
  return widget_->topLevelItemCount();
}

int LineTree::positionOf(int nLinie) const {
  for (int position = 1; position <= count(); ++position)
    if (parsePrefix(text(position)) == nLinie) return position;
  return -1;
}

QTreeWidgetItem* LineTree::node(int position) const {
  QTreeWidgetItem* item = widget_->topLevelItem(position - 1);
  if (!item) throw Error(errors::kIndexOutOfRange);
  return item;
}

int LineTree::linie(int position) const {
  return node(position)->data(0, kLineRole).toInt();
}
QString LineTree::key(int position) const {
  return node(position)->data(0, kKeyRole).toString();
}
QString LineTree::text(int position) const {
  return node(position)->text(0);
}
void LineTree::setText(int position, const QString& text) {
  node(position)->setText(0, text);
}
QString LineTree::image(int position) const {
  return node(position)->data(0, kImageRole).toString();
}
QString LineTree::tag(int position) const {
  return node(position)->data(0, kTagRole).toString();
}
void LineTree::setTag(int position, const QString& tag) {
  node(position)->setData(0, kTagRole, tag);
}

void LineTree::setImage(int position, const QString& image) {
  QTreeWidgetItem* item = node(position);
  item->setData(0, kImageRole, image);
  item->setIcon(0, icon(image));
  describe(position);
}

void LineTree::setWork(int position, int openShots, bool commandWaits) {
  QStringList shown, words;
  if (commandWaits) shown << "wartet";
  if (openShots > 0) shown << QString::number(openShots);
  if (openShots > 0)
    words << QString::number(openShots) + (openShots == 1 ? " offener Schuss" : " offene Schüsse");
  if (commandWaits) words << "wartet auf die Station";
  QTreeWidgetItem* item = node(position);
  QFont small = widget_->font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  small.setBold(commandWaits);
  item->setFont(kWorkColumn, small);
  item->setTextAlignment(kWorkColumn, Qt::AlignRight | Qt::AlignVCenter);
  item->setText(kWorkColumn, shown.join("  "));
  item->setData(0, kWorkRole, words);
  describe(position);
}

void LineTree::describe(int position) {
  QTreeWidgetItem* item = node(position);
  const QString words =
      (QStringList{markText(image(position))} + item->data(0, kWorkRole).toStringList()).join(", ");
  item->setData(0, Qt::AccessibleDescriptionRole, words);
  for (int column : {0, kWorkColumn})
    item->setStatusTip(column, QString("Linie %1: ").arg(linie(position)) + words);
}

int LineTree::selected() const {
  return widget_->indexOfTopLevelItem(widget_->currentItem()) + 1;
}

void LineTree::select(int position) {
  selecting_ = true;
  widget_->setCurrentItem(position > 0 ? node(position) : nullptr);
  selecting_ = false;
}

}  // namespace qk
