#include "platform/report/measure.h"

#include <algorithm>

#include "platform/report/page_items.h"

namespace qk::report {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kLineSpacing = 1.06;  // of the height of the letters
constexpr qsizetype kLongestText = 20000;
constexpr QChar kDots = u'…';
/// A width is a sum of rounded ones.
constexpr double kTolerance = 0.5;

QFont made(const QString& family, double points, bool bold, bool italic) {
  QFont font(family);
  font.setPixelSize(std::max(1, qRound(points * kUnitsPerInch / kPointsPerInch)));
  font.setBold(bold);
  font.setItalic(italic);
  font.setKerning(false);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleHint(QFont::SansSerif);
  return font;
}

}  // namespace

Fonts::Known::Known(const QFont& wanted)
    : font(wanted), metrics(font), ascent(metrics.ascent()), height(metrics.height() * kLineSpacing) {
  for (size_t c = u' '; c < widths.size(); ++c)
    widths[c] = static_cast<float>(metrics.horizontalAdvance(QChar(static_cast<char16_t>(c))));
}

float Fonts::Known::width(char16_t c) const {
  constexpr char16_t kFirstSign = 0x2010, kLastDash = 0x2027, kFirstCurrency = 0x20A0, kLastCurrency = 0x20BF;
  if (c < widths.size()) return widths[c];
  if ((c < kFirstSign || c > kLastDash) && (c < kFirstCurrency || c > kLastCurrency)) return -1;
  float& width = signs[c - kFirstSign];
  if (width == 0) width = static_cast<float>(metrics.horizontalAdvance(QChar(c)));
  return width;
}

int Fonts::number(const QString& family, double points, bool bold, bool italic) {
  const QFont font = made(family, points, bold, italic);
  for (size_t i = 0; i < known_.size(); ++i)
    if (known_[i]->font == font) return static_cast<int>(i);
  known_.push_back(std::make_unique<Known>(font));
  return static_cast<int>(known_.size()) - 1;
}

double Fonts::width(int font, QStringView text) const {
  const Known& known = *known_[static_cast<size_t>(font)];
  double sum = 0;
  for (const QChar c : text) {
    const float width = known.width(c.unicode());
    if (width < 0) return known.metrics.horizontalAdvance(text.toString());
    sum += width;
  }
  return sum;
}

QStringList Fonts::wrapped(int font, const QString& text, double room) const {
  if (!text.contains(u'\n') && !text.contains(u'\r') && text.size() < kLongestText &&
      width(font, text) <= room + kTolerance)
    return {text};
  QStringList lines;
  QString plain = text.left(kLongestText);
  plain.replace("\r\n", "\n").replace(u'\r', u'\n');
  for (const QStringView line : QStringView(plain).split(u'\n')) wrapLine(font, line, room, lines);
  return lines;
}

void Fonts::wrapLine(int font, QStringView line, double room, QStringList& lines) const {
  room += kTolerance;
  while (width(font, line) > room && line.size() > 1) {
    // As many letters as fit, at least one; never half of a pair.
    qsizetype low = 1, high = line.size() - 1;
    while (low < high) {
      const qsizetype middle = (low + high + 1) / 2;
      if (width(font, line.first(middle)) <= room)
        low = middle;
      else
        high = middle - 1;
    }
    if (line[low - 1].isHighSurrogate()) low += low > 1 ? -1 : 1;
    qsizetype cut = low;
    while (cut > 0 && !line[cut].isSpace() && !(line[cut - 1] == u'-' && cut < low + 1)) --cut;
    if (cut == 0) cut = low;
    lines << line.first(cut).trimmed().toString();
    line = line.sliced(cut);
    while (!line.isEmpty() && line.front().isSpace()) line = line.sliced(1);
    if (line.isEmpty()) return;
  }
  lines << line.toString();
}

QString Fonts::elided(int font, const QString& text, double room) const {
  QString line = text.left(kLongestText);
  line.replace(u'\n', u' ').replace(u'\r', u' ');
  if (width(font, line) <= room + kTolerance) return line;
  qsizetype low = 0, high = line.size();
  while (low < high) {
    const qsizetype middle = (low + high + 1) / 2;
    if (width(font, QString(line.first(middle) + kDots)) <= room)
      low = middle;
    else
      high = middle - 1;
  }
  return line.first(low).trimmed() + kDots;
}

}  // namespace qk::report
