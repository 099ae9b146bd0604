// The judges of each kind of list; judge.h is their face.
#pragma once

#include "masterdata/lists/judge.h"

namespace qk::lists {

/// Rows between two questions whether to go on.
inline constexpr int kRowsBetweenQuestions = 200;

void judgeShooters(Judgement& judgement, const GoesOn& goesOn);
void judgeClubs(Judgement& judgement, const GoesOn& goesOn);
void judgeTeams(Judgement& judgement, const GoesOn& goesOn);

}  // namespace qk::lists
