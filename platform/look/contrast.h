// Whether a text can be read on its ground, and what to do when it can't.
#pragma once

#include <QColor>

namespace qk::look {

/// What every text of the house keeps against its ground.
inline constexpr double kLeastContrast = 4.5;

/// Contrast of two opaque colours, from 1 (the same) to 21 (black on white).
double contrast(const QColor& one, const QColor& other);

/// The colour itself where it can be read on that ground, else the nearest lighter or darker shade of its
/// hue that can.
QColor readable(const QColor& text, const QColor& ground);

}  // namespace qk::look
