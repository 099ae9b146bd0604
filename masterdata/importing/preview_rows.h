// What becomes of each row of a list, in a grid: its line in the file, the verdict, whom it means, and what
// it brings. Rows can be narrowed to one verdict.
#pragma once

#include <QAbstractTableModel>
#include <optional>

#include "masterdata/lists/judge.h"

namespace qk {

class PreviewRows : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Line, Verdict, Who, What, Columns };

  using QAbstractTableModel::QAbstractTableModel;

  /// Kept by reference; nullptr for none. Call it again after every change of the judgement.
  void setJudgement(const lists::Judgement* judgement);
  void setVerdict(std::optional<lists::Verdict> verdict);

  /// All that is to be said of a row, line by line.
  QString details(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void choose();
  const lists::JudgedRow& at(int row) const;

  const lists::Judgement* judgement_ = nullptr;
  std::optional<lists::Verdict> verdict_;
  std::vector<int> shown_;  // positions in the judgement
};

/// "Verein: »Edelweiß« → »SG Grünau«", "Cell: why", remarks; what a row's verdict rests on.
QStringList reasonsOf(const lists::JudgedRow& row);

}  // namespace qk
