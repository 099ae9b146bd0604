// A tree of numbered paper targets: a root for each discipline (or each combination), a child for each target
// that is handed out but not yet booked. The data of a tree view, without the view.
//
// A root's key is "Diszi" + id in either tree. A child's key is "Stapel" + stack id + "-" + number + "-" +
// time stamp; a number that belongs to no stack has the negative time stamp in place of the stack's id.
#pragma once

#include <QHash>
#include <QStandardItemModel>
#include <functional>
#include <vector>

#include "cash/diszi_kombi.h"

namespace qk {

class TargetTree : public QStandardItemModel {
  Q_OBJECT

 public:
  explicit TargetTree(QObject* parent = nullptr);

  void setRoots(const std::vector<DisziKombi>& entries);

  static QString keyOf(const QModelIndex& node);
  /// True for a child that stands for a target.
  static bool isTarget(const QModelIndex& node);
  /// The root with that discipline or combination; not valid without one.
  QModelIndex root(qint32 id) const;
  /// The node itself where it is a root, else its parent.
  static QModelIndex rootOf(const QModelIndex& node);

  /// Adds a target below a root. `stapelId` 0 is a number of no stack; `zusatz` stands behind the number.
  /// Error 35601 for a root that this tree doesn't hold.
  QModelIndex add(const QModelIndex& root, qint32 stapelId, qint32 nummer, const QString& zusatz,
                  qint32 stempel);
  void removeTarget(const QModelIndex& target);
  /// Puts a target below another root of the tree; false for what can't be moved.
  bool move(const QModelIndex& target, const QModelIndex& to);

  /// A target whose row is stored already: a booking that failed behind it keeps the tree.
  static bool isStored(const QModelIndex& target);
  void markStored(const QModelIndex& target);

  void forEachTarget(const std::function<void(const QModelIndex& target)>& call) const;

  // Dragging a target inside the tree; the key travels.
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& nodes) const override;
  bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                       const QModelIndex& onto) const override;
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                    const QModelIndex& onto) override;

 private:
  QModelIndex target(const QString& key) const;

  QHash<QString, QStandardItem*> byKey_;  // the targets; the model owns them
};

// What a target's node says.
qint32 stapelIdOf(const QModelIndex& target);      ///< below 1 for a number of no stack
qint32 nummerOf(const QModelIndex& target);        ///< of the text: it may have been changed by hand
qint32 diszikombiIdOf(const QModelIndex& target);  ///< of the root above it

}  // namespace qk
