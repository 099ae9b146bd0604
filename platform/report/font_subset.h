// Cuts a TrueType face down to the glyphs that are used.
#pragma once

#include <QByteArray>
#include <QRawFont>
#include <optional>
#include <vector>

namespace qk::report {

struct FontSubset {
  QByteArray program;                ///< a TrueType file
  std::vector<quint16> glyphs = {};  ///< of the wanted ones, in it
};

/// Nothing where the face has no TrueType outlines, varies, or can't be cut.
std::optional<FontSubset> cutDown(const QRawFont& face, const std::vector<quint32>& wanted);

}  // namespace qk::report
