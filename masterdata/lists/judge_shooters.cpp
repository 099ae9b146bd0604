#include "masterdata/lists/judge_kinds.h"
#include "masterdata/lists/shooter_planning.h"

namespace qk::lists {

namespace {

/// Those of the competition and those of the list, so that a new one is nobody's.
StartNumbers takenNumbers(const StoreState& state, const std::vector<SaidOfShooter>& rows, int column) {
  StartNumbers numbers;
  for (const QVariantList& row : state.shooters.rows) numbers.take(row[column].toString());
  for (const SaidOfShooter& said : rows) numbers.take(said.text(column));
  return numbers;
}

}  // namespace

void judgeShooters(Judgement& judgement, const GoesOn& goesOn) {
  const int all = static_cast<int>(judgement.table->rows.size());
  const auto stopped = [&](int row, int half) {
    if (!goesOn || row % kRowsBetweenQuestions != 0) return false;
    return judgement.stopped = !goesOn(half * all + row, 2 * all);
  };
  const ShooterReader reader(*judgement.table, judgement.assignment, *judgement.state);
  std::vector<SaidOfShooter> rows;
  for (int row = 1; row < all; ++row) {
    if (stopped(row, 0)) return;
    if (auto said = reader.read(row)) rows.push_back(std::move(*said));
  }
  const ShooterIndex index(*judgement.state);
  const std::vector<int> matches = matchShooters(rows, reader, index);
  ShooterPlanning planning(*judgement.state, reader, index, judgement.plan,
                           takenNumbers(*judgement.state, rows, index.number));
  for (size_t i = 0; i < rows.size(); ++i) {
    if (stopped(static_cast<int>(i) + 1, 1)) return;
    judgement.rows.push_back(planning.plan(std::move(rows[i]), matches[i]));
  }
}

}  // namespace qk::lists
