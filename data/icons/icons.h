// The pictures of marks and buttons, by their key: "pfeil", "go", "gruen", "stop", "Speichern" …
// Two tones that stand out on light and on dark ground; each mark has a shape of its own beside its colour.
#pragma once

#include <QIcon>
#include <QString>

namespace qk {

/// An empty icon for an unknown key. Each is read once a run; in the window's thread only.
QIcon icon(const QString& key);

}  // namespace qk
