// The fonts of a report and the widths of texts in them, in 1/1200 inch. Letters stand beside each other
// without kerning, so that a width is the sum of its letters' widths: fifty thousand rows are measured in a
// blink, and every device agrees on it.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QStringList>
#include <array>
#include <memory>
#include <vector>

#include "platform/report/definition.h"

namespace qk::report {

class Fonts {
 public:
  /// The number of a font, by which items name it.
  int number(const QString& family, double points, bool bold, bool italic);
  const QFont& font(int number) const { return known_[static_cast<size_t>(number)]->font; }

  double ascent(int font) const { return known_[static_cast<size_t>(font)]->ascent; }
  double lineHeight(int font) const { return known_[static_cast<size_t>(font)]->height; }
  double width(int font, QStringView text) const;

  /// Lines of at most that width: broken at blanks, behind hyphens, a longer word anywhere.
  QStringList wrapped(int font, const QString& text, double width) const;
  /// One line, ending in dots where it is too long.
  QString elided(int font, const QString& text, double width) const;

 private:
  struct Known {
    explicit Known(const QFont& wanted);
    QFont font;
    QFontMetricsF metrics;
    double ascent, height;
    /// Of a character that stands for itself; below 0 for any other.
    float width(char16_t c) const;
    std::array<float, 0x180> widths{};  // Latin letters
    mutable std::array<float, 0x20C0 - 0x2010>
        signs{};  // dashes, quotation marks, the Euro; 0: not asked yet
  };
  void wrapLine(int font, QStringView line, double width, QStringList& lines) const;

  std::vector<std::unique_ptr<Known>> known_;
};

}  // namespace qk::report
