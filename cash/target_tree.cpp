#include "cash/target_tree.h"

#include <QBrush>
#include <QFont>
#include <QMimeData>

#include "app/ground/temp_module.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {
namespace {

constexpr int kKeyRole = Qt::UserRole;
constexpr int kStoredRole = Qt::UserRole + 1;
constexpr int kNoSuchNode = 35601;
const QString kRoot = "Diszi";
const QString kTarget = "Stapel";
const QString kMimeType = "application/x-scheibe";
const QColor kBlue(0, 0, 255);

QStandardItem* node(const QString& key, const QString& text) {
  auto* item = new QStandardItem(text);
  item->setData(key, kKeyRole);
  item->setEditable(false);
  return item;
}

}  // namespace

TargetTree::TargetTree(QObject* parent) : QStandardItemModel(parent) {}

void TargetTree::setRoots(const std::vector<DisziKombi>& entries) {
  clear();
  byKey_.clear();
  for (const DisziKombi& entry : entries) appendRow(node(kRoot + QString::number(entry.id), entry.name));
}

QString TargetTree::keyOf(const QModelIndex& node) {
  return node.data(kKeyRole).toString();
}

bool TargetTree::isTarget(const QModelIndex& node) {
  return keyOf(node).startsWith(kTarget, Qt::CaseInsensitive);
}

QModelIndex TargetTree::root(qint32 id) const {
  const QString key = kRoot + QString::number(id);
  for (int row = 0; row < rowCount(); ++row)
    if (keyOf(index(row, 0)) == key) return index(row, 0);
  return {};
}

QModelIndex TargetTree::rootOf(const QModelIndex& node) {
  return node.parent().isValid() ? node.parent() : node;
}

QModelIndex TargetTree::add(const QModelIndex& root, qint32 stapelId, qint32 nummer, const QString& zusatz,
                            qint32 stempel) {
  if (!root.isValid() || root.model() != this)
    throw Error(kNoSuchNode, "Die Disziplin oder Kombination steht nicht im Baum.");
  const qint32 belongsTo = stapelId > 0 ? stapelId : -stempel;
  QString key;
  // Two targets of one moment with the same number: the stamp counts on, so that keys stay unique.
  do {
    key = QString("%1%2-%3-%4").arg(kTarget).arg(belongsTo).arg(nummer).arg(stempel++);
  } while (byKey_.contains(key));
  QStandardItem* item = node(key, QString::number(nummer) + zusatz);
  item->setForeground(kBlue);
  itemFromIndex(root)->appendRow(item);
  byKey_.insert(key, item);
  return item->index();
}

void TargetTree::removeTarget(const QModelIndex& target) {
  byKey_.remove(keyOf(target));
  removeRow(target.row(), target.parent());
}

bool TargetTree::move(const QModelIndex& moved, const QModelIndex& to) {
  const QModelIndex root = rootOf(to);
  if (!isTarget(moved) || !root.isValid() || root.model() != this) return false;
  QStandardItem* taken = itemFromIndex(moved.parent())->takeRow(moved.row()).first();
  itemFromIndex(root)->appendRow(taken);
  return true;
}

bool TargetTree::isStored(const QModelIndex& target) {
  return target.data(kStoredRole).toBool();
}

void TargetTree::markStored(const QModelIndex& target) {
  QStandardItem* item = itemFromIndex(target);
  item->setData(true, kStoredRole);
  QFont font = item->font();
  font.setItalic(true);
  item->setFont(font);
  item->setToolTip("Diese Scheibe ist schon gespeichert.");
}

void TargetTree::forEachTarget(const std::function<void(const QModelIndex&)>& call) const {
  for (int row = 0; row < rowCount(); ++row) {
    const QModelIndex root = index(row, 0);
    for (int child = 0; child < rowCount(root); ++child) call(index(child, 0, root));
  }
}

QModelIndex TargetTree::target(const QString& key) const {
  const QStandardItem* item = byKey_.value(key);
  return item ? item->index() : QModelIndex();
}

Qt::ItemFlags TargetTree::flags(const QModelIndex& index) const {
  const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!index.isValid()) return Qt::NoItemFlags;  // dropped nowhere, a target stays
  return usual | Qt::ItemIsDropEnabled | (isTarget(index) ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

QStringList TargetTree::mimeTypes() const {
  return {kMimeType};
}

QMimeData* TargetTree::mimeData(const QModelIndexList& nodes) const {
  if (nodes.isEmpty() || !isTarget(nodes.first())) return nullptr;
  auto* data = new QMimeData;
  data->setData(kMimeType, keyOf(nodes.first()).toUtf8());
  return data;
}

bool TargetTree::canDropMimeData(const QMimeData* data, Qt::DropAction action, int, int,
                                 const QModelIndex& onto) const {
  return action == Qt::MoveAction && onto.isValid() && data && data->hasFormat(kMimeType);
}

bool TargetTree::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                              const QModelIndex& onto) {
  if (!canDropMimeData(data, action, row, column, onto)) return false;
  move(target(QString::fromUtf8(data->data(kMimeType))), onto);
  return false;  // moved already: the view has nothing to remove
}

qint32 stapelIdOf(const QModelIndex& target) {
  return toInt32(ZahlAusText(TargetTree::keyOf(target).mid(kTarget.size())));
}

qint32 nummerOf(const QModelIndex& target) {
  return toInt32(ZahlAusText(target.data(Qt::DisplayRole).toString()));
}

qint32 diszikombiIdOf(const QModelIndex& target) {
  return toInt32(ZahlAusText(TargetTree::keyOf(target.parent()).mid(kRoot.size())));
}

}  // namespace qk
