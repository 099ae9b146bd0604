#include "platform/look/contrast.h"

#include <algorithm>
#include <cmath>

namespace qk::look {

namespace {

constexpr int kSteps = 100;  // from black to white

double luminance(const QColor& colour) {
  const auto channel = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
         0.0722 * channel(colour.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& text, const QColor& ground) {
  if (contrast(text, ground) >= kLeastContrast) return text;
  // Black or white can be read on any ground, so the walk ends.
  const int step = contrast(Qt::white, ground) > contrast(Qt::black, ground) ? 1 : -1;
  const float hue = std::max(0.0F, text.hslHueF());  // a grey has none
  int lightness = static_cast<int>(std::lround(text.lightnessF() * kSteps));
  QColor shade = text;
  while (contrast(shade, ground) < kLeastContrast && lightness + step >= 0 && lightness + step <= kSteps) {
    lightness += step;
    shade = QColor::fromHslF(hue, text.hslSaturationF(), static_cast<float>(lightness) / kSteps);
  }
  return shade;
}

}  // namespace qk::look
