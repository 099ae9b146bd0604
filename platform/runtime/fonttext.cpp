#include "platform/runtime/fonttext.h"

#include <QStringList>

#include "platform/runtime/numbers.h"

namespace qk {

FontSpec parseFontText(const QString& text, const FontSpec& current) {
  FontSpec font = current;
  const QStringList fields = text.split(u';');
  // A size may carry a decimal comma or point, whichever workstation wrote it.
  const auto number = [&](int position) {
    return readPrefix(QString(fields.value(position)).replace(u',', u'.'));
  };
  const auto flag = [&](int position, bool& value) {
    if (const auto read = number(position)) value = *read != 0;
  };
  if (!fields.value(0).trimmed().isEmpty()) font.name = fields[0].trimmed();
  if (const auto size = number(1); size && *size > 0) font.size = *size;
  flag(2, font.bold);
  flag(3, font.italic);
  flag(4, font.underline);
  flag(5, font.strikethrough);
  return font;
}

QString fontText(const FontSpec& font) {
  const auto flag = [](bool value) { return QString(value ? "-1" : "0"); };
  return QStringList{font.name,         numberText(font.size), flag(font.bold),
                     flag(font.italic), flag(font.underline),  flag(font.strikethrough)}
      .join(u';');
}

}  // namespace qk
