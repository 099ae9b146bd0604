// The grid of text cells on the screen: a view on a TextTable, all by keyboard.
#pragma once

#include <QTableView>

#include "platform/grid/text_table.h"

namespace qk {

class TextGrid : public QTableView {
  Q_OBJECT

 public:
  explicit TextGrid(QWidget* parent = nullptr);

  /// Its own table, until another is set. Not owned when set from outside.
  TextTable* table() const { return table_; }
  void setTable(TextTable* table);

  int currentRow() const;  ///< counted with the header; 0 when there is none
  void setCurrentRow(int row);
  void showRow(int row);
  /// What an empty grid says in its middle.
  void setEmptyText(const QString& text);

 Q_SIGNALS:
  void clickedAt(int row, int column);        ///< rows counted with the header
  void doubleClickedAt(int row, int column);
  void contextMenuAt(const QPoint& globalPosition);
  void afterEdit(int row, int column);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;  ///< blank ticks, Enter edits, menu key opens the popup
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void applySizes();
  TextTable* table_ = nullptr;
  QString emptyText_;
};

}  // namespace qk
