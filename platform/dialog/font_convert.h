// Between a font of the settings and a font of the toolkit. Colours are numbers in blue-green-red order.
#pragma once

#include <QColor>
#include <QFont>

#include "platform/runtime/fonttext.h"

namespace qk {

QFont toFont(const FontSpec& spec);
FontSpec fromFont(const QFont& font);

QColor toColour(quint32 blueGreenRed);
quint32 fromColour(const QColor& colour);

}  // namespace qk
