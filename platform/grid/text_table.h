// The data of a grid of text cells, without a window: what the logic of a view works on.
//
// Row 0 is the fixed header; data rows begin at 1. Every cell is text. A row carries a hidden text (row
// data). Asking for a cell, row or column outside, or taking the header row away, is Error 9. Adding a row
// costs amortised constant time.
#pragma once

#include <QAbstractTableModel>
#include <QBrush>
#include <QFont>
#include <QHash>
#include <QString>
#include <QVector>
#include <functional>
#include <optional>

namespace qk {

class TextTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit TextTable(int columns = 0, QObject* parent = nullptr);

  int rows() const;  ///< with the header row: at least 1
  int columns() const;
  void setRows(int count);     ///< with the header row; new cells are empty
  void setColumns(int count);  ///< keeps what fits
  int addRow(const QStringList& cells = {}, const QString& rowData = {});  ///< its row number
  void removeRow(int row);

  QString text(int row, int column) const;
  void setText(int row, int column, const QString& text);
  QString rowData(int row) const;
  void setRowData(int row, const QString& data);
  int findRow(const QString& rowData) const;  ///< first data row with that row data, or -1
  /// Empties the texts of that cell and of all to its right and below.
  void clearCells(int firstRow, int firstColumn);

  /// Widths and heights in twips (1/1440 inch); 0 hides; -1 is the grid's own choice.
  int columnWidth(int column) const;
  void setColumnWidth(int column, int twips);
  int rowHeight(int row) const;
  void setRowHeight(int row, int twips);

  /// Columns of ticks show a check box, ticked for "-1" or "1", unticked for anything else, the empty text
  /// too.
  bool isTickColumn(int column) const;
  /// The text a tick writes; its absence writes "0". The operator may tick, until setEditable(column, false).
  void setTickColumn(int column, const QString& tickedText);
  bool isTicked(int row, int column) const;
  /// What the operator may change; columns refuse until told otherwise.
  bool isEditable(int column) const;
  void setEditable(int column, bool editable);
  bool isRightAligned(int column) const;
  void setRightAligned(int column, bool right);
  /// How the texts of a column are shown; the cells keep theirs, and an editor begins with it. Not for ticks.
  void setDisplay(int column, std::function<QString(const QString& text)> display);

  struct CellLook {
    std::optional<QFont> font;
    std::optional<QColor> fore, back;
  };
  CellLook cellLook(int row, int column) const;
  void setCellLook(int row, int column, const CellLook& look);
  /// Rows that ask for a height of their own, by a given height or by a cell's font: few, as a rule.
  QVector<int> rowsWithOwnHeight() const;

  // QAbstractTableModel: data rows only; header row 0 is the horizontal header.
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 Q_SIGNALS:
  void sizesChanged();  ///< widths, heights or fonts
  /// After the operator (not setText) changed a cell, in rows counted with the header.
  void edited(int row, int column);

 private:
  struct Row {
    QStringList cells;
    QString data;
    int height = -1;
    QHash<int, CellLook> looks;
  };
  struct ColumnTraits {
    int width = -1;
    QString tick;
    bool editable = false;
    bool right = false;
    std::function<QString(const QString&)> display;
  };
  Row& rowAt(int row);
  const Row& rowAt(int row) const;
  void checkColumn(int column) const;
  bool isOn(int row, int column) const;
  void cellChanged(int row, int column, const QList<int>& roles = {});

  QVector<Row> rows_;
  QVector<ColumnTraits> columns_;
};

}  // namespace qk
