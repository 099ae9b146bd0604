#include "masterdata/importing/preview_rows.h"

namespace qk {

QStringList reasonsOf(const lists::JudgedRow& row) {
  QStringList reasons;
  for (const lists::Fault& fault : row.faults)
    reasons << (fault.column.isEmpty() ? fault.why : fault.column + ": " + fault.why);
  for (const lists::CellChange& change : row.changes)
    reasons << (change.before.isEmpty()
                    ? QString("%1: %2").arg(change.column, change.after)
                    : QString("%1: »%2« → »%3«").arg(change.column, change.before, change.after));
  return reasons + row.remarks;
}

void PreviewRows::setJudgement(const lists::Judgement* judgement) {
  judgement_ = judgement;
  choose();
}

void PreviewRows::setVerdict(std::optional<lists::Verdict> verdict) {
  verdict_ = verdict;
  choose();
}

void PreviewRows::choose() {
  beginResetModel();
  shown_.clear();
  if (judgement_)
    for (size_t i = 0; i < judgement_->rows.size(); ++i)
      if (!verdict_ || judgement_->rows[i].verdict == *verdict_) shown_.push_back(static_cast<int>(i));
  endResetModel();
}

const lists::JudgedRow& PreviewRows::at(int row) const {
  return judgement_->rows[static_cast<size_t>(shown_[static_cast<size_t>(row)])];
}

QString PreviewRows::details(int row) const {
  if (row < 0 || row >= rowCount()) return {};
  const lists::JudgedRow& judged = at(row);
  return QString("Zeile %1, %2: %3\n").arg(judged.line).arg(verdictName(judged.verdict), judged.who) +
         reasonsOf(judged).join('\n');
}

int PreviewRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int PreviewRows::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QVariant PreviewRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::TextAlignmentRole && index.column() == Line)
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  const lists::JudgedRow& row = at(index.row());
  switch (index.column()) {
    case Line:
      return row.line;
    case Verdict:
      return verdictName(row.verdict);
    case Who:
      return row.who;
    default:
      return reasonsOf(row).join("; ");
  }
}

QVariant PreviewRows::headerData(int section, Qt::Orientation orientation, int role) const {
  static const QStringList titles = {"Zeile", "Urteil", "Wer", "Was"};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return titles.value(section);
}

}  // namespace qk
