// What the driver can do to a control and read from it. Every act goes through the events that an operator's
// keyboard and mouse make; one that may open a modal window is only posted, so that the answer doesn't wait.
#pragma once

#include <QJsonObject>

namespace qk::driver {

/// Carries out one request {"do": …} and gives {"ok": true, "value": …} or {"ok": false, "problem": "…"}.
QJsonObject perform(const QJsonObject& request);

}  // namespace qk::driver
