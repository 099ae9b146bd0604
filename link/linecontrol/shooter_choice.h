// Choosing the shooter of a firing line, with the question about open shots. Needs no window.
#pragma once

#include <QString>
#include <memory>

#include "capture/line_capture.h"
#include "platform/dao/database.h"
#include "platform/workplace.h"

namespace qk {

struct ShooterChoice {
  enum class Outcome {
    Unknown,  ///< no such start number
    Refused,  ///< the operator keeps the shooter because of the open shots
    Chosen
  };
  Outcome outcome = Outcome::Unknown;
  std::shared_ptr<const Schuetze> shooter;  ///< set when chosen
};

/// Looks the number up; with open shots on the line asks, and on Yes gives them to the new shooter, in memory
/// and in their rows. Errors of the store pass to the caller.
ShooterChoice chooseShooter(const Workplace& workplace, dao::Database& db, LineCapture& capture,
                            const QString& sNummer);

}  // namespace qk
