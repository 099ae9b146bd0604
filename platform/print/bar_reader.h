// Reading bar codes back: whether a font draws bars at all, and whether a scanner will read a label.
#pragma once

#include <QImage>
#include <QString>

#include "platform/print/bars.h"
#include "platform/runtime/fonttext.h"

namespace qk {

/// What the bar code of that kind says, dark on light; empty when there is none to be read.
QString readBars(const QImage& image, Symbology symbology);

/// The same content, whether with or without the check digit that EAN-13 adds.
bool saysTheSame(const QString& read, const QString& content, Symbology symbology);

/// Whether the font draws the text as bars that read as the content.
bool drawsBars(const FontSpec& font, Symbology symbology, const QString& content, const QString& encoded);

QFont qtFontOf(const FontSpec& spec);

}  // namespace qk
