#include "platform/dialog/font_convert.h"

#include <QFontInfo>

namespace qk {

QFont toFont(const FontSpec& spec) {
  QFont font;
  if (!spec.name.isEmpty()) font.setFamily(spec.name);
  if (spec.size > 0) font.setPointSizeF(spec.size);
  font.setBold(spec.bold);
  font.setItalic(spec.italic);
  font.setUnderline(spec.underline);
  font.setStrikeOut(spec.strikethrough);
  return font;
}

FontSpec fromFont(const QFont& font) {
  // A font set in pixels has no point size of its own.
  const double size = font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
  return {font.family(), size, font.bold(), font.italic(), font.underline(), font.strikeOut()};
}

QColor toColour(quint32 blueGreenRed) {
  return QColor(blueGreenRed & 0xFF, blueGreenRed >> 8 & 0xFF, blueGreenRed >> 16 & 0xFF);
}

quint32 fromColour(const QColor& colour) {
  return static_cast<quint32>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

}  // namespace qk
