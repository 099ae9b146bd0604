// A tool tip for text from outside: shown as it stands, whatever it looks like.
#pragma once

#include <QString>

namespace qk {

/// Empty stays empty: no tip. Escaped text alone isn't enough: a tip without a tag shows "&amp;" as it
/// stands.
inline QString plainTip(const QString& text) {
  return text.isEmpty() ? QString() : "<qt>" + text.toHtmlEscaped() + "</qt>";
}

}  // namespace qk
