// A font as the settings keep it: "name;size;bold;italic;underline;strikethrough", flags "-1" or "0".
#pragma once

#include <QString>

namespace qk {

struct FontSpec {
  QString name;
  double size = 0;  ///< points
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;

  bool operator==(const FontSpec&) const = default;
};

/// Takes the fields in order; what is missing, blank or no size stays as in `current`.
FontSpec parseFontText(const QString& text, const FontSpec& current = {});
QString fontText(const FontSpec& font);

}  // namespace qk
