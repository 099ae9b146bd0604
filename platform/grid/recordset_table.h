// A recordset as the data of a view: a row is read from the store when the view shows it, so that a long list
// costs no more than what stands on the screen.
//
// All columns of the recordset are columns here, in their order; the view hides what it doesn't show. Nothing
// can be edited. Dates and numbers stand in their German text form, Null is empty.
#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <QHash>
#include <QStringList>
#include <memory>

namespace qk::dao {
class Recordset;
}

namespace qk {

class RecordsetTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit RecordsetTable(QObject* parent = nullptr);
  ~RecordsetTable() override;

  /// Takes the recordset and counts its rows. Where that fails, the Error reaches the caller and the former
  /// rows stay. The database must outlive it.
  void setRecordset(std::unique_ptr<dao::Recordset> recordset);
  bool hasRecordset() const { return recordset_ != nullptr; }
  /// What stands above a column instead of the field's name.
  void setTitles(const QHash<int, QString>& titles);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  /// A row that somebody else has deleted meanwhile reads "#Gelöscht".
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const QStringList& cellsOf(int row) const;
  void standOn(int row) const;

  std::unique_ptr<dao::Recordset> recordset_;
  QHash<int, QString> titles_;
  int rows_ = 0;
  int columns_ = 0;
  mutable int place_ = 0;  // the row that the recordset stands on
  mutable QCache<int, QStringList> read_;
};

}  // namespace qk
