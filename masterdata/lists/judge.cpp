#include "masterdata/lists/judge.h"

#include <algorithm>

#include "masterdata/lists/judge_kinds.h"

namespace qk::lists {

QString verdictName(Verdict verdict) {
  switch (verdict) {
    case Verdict::New:
      return "neu";
    case Verdict::Known:
      return "bekannt";
    case Verdict::Changed:
      return "geändert";
    case Verdict::Faulty:
      return "fehlerhaft";
  }
  return {};
}

int Judgement::count(Verdict verdict) const {
  return static_cast<int>(std::count_if(rows.begin(), rows.end(),
                                        [verdict](const JudgedRow& row) { return row.verdict == verdict; }));
}

Judgement judge(ListKind kind, std::shared_ptr<const CsvTable> table, const Assignment& assignment,
                std::shared_ptr<const StoreState> state, const GoesOn& goesOn) {
  Judgement judgement;
  judgement.kind = kind;
  judgement.table = std::move(table);
  judgement.assignment = assignment;
  judgement.state = std::move(state);
  switch (kind) {
    case ListKind::Shooters:
      judgeShooters(judgement, goesOn);
      break;
    case ListKind::Clubs:
      judgeClubs(judgement, goesOn);
      break;
    case ListKind::Teams:
      judgeTeams(judgement, goesOn);
      break;
  }
  if (judgement.stopped) {
    judgement.rows.clear();
    judgement.plan.clear();
  }
  return judgement;
}

}  // namespace qk::lists
