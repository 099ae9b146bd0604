// Which competition is to be opened, as the operator says it.
#pragma once

#include <QString>
#include <functional>

#include "app/ground/global_variablen.h"
#include "platform/workplace.h"

namespace qk {

/// The open dialog, in the folder of `current`; empty when cancelled.
QString chosenCompetition(const Workplace& workplace, const QString& current);

/// For a start without a competition (`missing` is the one that isn't there any more, or empty): says so and
/// offers a file of one's own or the demo, and a new one where `makeNew` makes it and gives its path. Empty
/// for none.
QString offeredCompetition(const Workplace& workplace, const GlobalVariablen& global, const QString& missing,
                           const std::function<QString()>& makeNew = {});

}  // namespace qk
