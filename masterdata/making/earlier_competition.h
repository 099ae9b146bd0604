// A new competition like an earlier one: all its tables with all their columns, and of the rows what a
// competition is run by.
#pragma once

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"

namespace qk {

/// Copies into an empty store: classes, disciplines, weapons, combinations, stakes, profiles, discipline
/// keys, groups of stations, and stacks of targets, which begin at their first number again; shooters with
/// registrations and groups, clubs, teams as `request` wants them. What names a club or team that stays
/// behind names none. Never results, pictures, shots, payments, issued targets, a profile's days, nor rows of
/// tables that nobody here knows. Tables and columns of other programs come along as they are.
///
/// Error 5 when the source is no competition, 3356 when it is an unfinished move; what `watch` throws passes.
void copyEarlier(dao::Database& source, dao::Database& target, const CompetitionRequest& request,
                 const std::function<void(const MakingStep&)>& watch);

/// Gives each shooter of whom a birth date is known, and no class set by hand, the class that the
/// competition's reference date makes of it.
MakingResult classifyShooters(dao::Database& competition);

}  // namespace qk
