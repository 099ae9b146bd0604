// The tree of firing lines: one node per active line, with the line's state as its mark.
//
// Nodes are numbered by position from 1, so a node's position is not always its line's number.
#pragma once

#include <QObject>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

namespace qk {

/// Keys of the marks; each has a picture of its own.
namespace mark {
inline const QString Pfeil = "pfeil";  ///< free
inline const QString Go = "go";        ///< in price mode, no shooter registered
inline const QString Gruen = "gruen";  ///< shooter registered
inline const QString Stop = "stop";
}  // namespace mark

namespace tag {
inline const QString PreismodusOn = "preismodus_on";
inline const QString PreismodusOff = "preismodus_off";
}  // namespace tag

class LineTree : public QObject {
  Q_OBJECT

 public:
  /// The widget outlives this object.
  explicit LineTree(QTreeWidget* widget);

  void clear();
  void add(int nLinie);  ///< key "Linie" + number, text " " + number, mark "pfeil"
  int count() const;
  /// Position of the node whose text begins with this number, or -1.
  int positionOf(int nLinie) const;

  // Of the node at a position from 1.
  int linie(int position) const;  ///< the line that it stands for
  QString key(int position) const;
  QString text(int position) const;
  void setText(int position, const QString& text);
  QString image(int position) const;
  void setImage(int position, const QString& image);
  QString tag(int position) const;
  void setTag(int position, const QString& tag);

  /// What stands small beside the text: shots that wait to be booked, a command that waits for its station.
  void setWork(int position, int openShots, bool commandWaits);

  int selected() const;  ///< 0 when none
  /// Marks the node; the operator's own choice of a node is nodeClicked.
  void select(int position);

 Q_SIGNALS:
  void nodeClicked(int nLinie);

 private:
  QTreeWidgetItem* node(int position) const;
  void describe(int position);

  QTreeWidget* widget_;
  bool selecting_ = false;
};

}  // namespace qk
