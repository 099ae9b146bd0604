// Article numbers as a scanner or an operator enters them.
#pragma once

#include <QString>

namespace qk {

/// The article number to look for. A text of exactly 13 characters is taken for a scanned EAN 13: its last
/// character (the check digit, not verified), a leading "4000" and then all leading zeros go.
QString ArtikelNummerAusText(const QString& text);

}  // namespace qk
