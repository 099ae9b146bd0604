#include "platform/report/band_layout.h"

#include <QDir>
#include <QImageReader>
#include <algorithm>

namespace qk::report {

namespace {

constexpr double kSmallText = 0.8;  // of the report's font, below bars
constexpr int kMostPixels = 64 << 20;

double units(double millimetres) {
  return millimetres * kUnitsPerMillimetre;
}

QImage pictureFile(const QString& path) {
  QImageReader reader(path);
  const QSize size = reader.size();
  if (size.isValid() && qint64(size.width()) * size.height() > kMostPixels) return {};
  return reader.read();
}

}  // namespace

void BandLayout::line(PageItems& out, int font, const QString& text, const QRectF& box, Align align,
                      const QColor& colour) const {
  if (text.isEmpty()) return;
  const double width = fonts_.width(font, text);
  double left = box.left();
  if (align == Align::Right) left = box.right() - width;
  if (align == Align::Centre) left += (box.width() - width) / 2;
  const double top = box.top();
  out.items.push_back(TextItem{
      {left, top + fonts_.ascent(font)}, {left, top, width, fonts_.lineHeight(font)}, text, font, colour});
}

double BandLayout::layText(const TextElement& shape, const QRectF& box, const Known& known,
                           PageItems* out) const {
  const QString text = filled(shape.text, known);
  const int font = shape.style.font;
  const double step = fonts_.lineHeight(font);
  if (!shape.grows) {
    if (out) line(*out, font, fonts_.elided(font, text, box.width()), box, shape.align, shape.style.colour);
    return box.height();
  }
  if (text.isEmpty()) return box.height();
  const QStringList lines = fonts_.wrapped(font, text, box.width());
  QRectF place = box;
  for (const QString& one : lines) {
    if (out) line(*out, font, one, place, shape.align, shape.style.colour);
    place.translate(0, step);
  }
  return std::max(box.height(), step * static_cast<double>(lines.size()));
}

namespace {

/// What stands behind the comma.
qsizetype decimalsOf(const QString& text) {
  const qsizetype comma = text.lastIndexOf(u',');
  return comma < 0 ? 0 : text.size() - comma - 1;
}

/// Of the values that are there.
QStringList textsOf(const ValuesElement& shape, const Known& known) {
  QStringList texts;
  for (const Template& value : shape.values)
    if (const QString text = filled(value, known); !text.isEmpty()) texts << text;
  if (!shape.evenDecimals) return texts;
  qsizetype most = 0;
  for (const QString& text : texts) most = std::max(most, decimalsOf(text));
  for (QString& text : texts) {
    if (!text.back().isDigit()) continue;
    const qsizetype missing = most - decimalsOf(text);
    if (missing == most && most > 0) text += u',';
    text += QString(missing, u'0');
  }
  return texts;
}

}  // namespace

double BandLayout::layValues(const ValuesElement& shape, const QRectF& box, const Known& known,
                             PageItems* out) const {
  const double width = box.width() / shape.perRow;
  int count = 0;
  for (const QString& text : textsOf(shape, known)) {
    const QRectF place(box.left() + width * (count % shape.perRow),
                       box.top() + box.height() * (count / shape.perRow), width, box.height());
    if (out) line(*out, shape.style.font, text, place, Align::Right, shape.style.colour);
    ++count;
  }
  return box.height() * ((count + shape.perRow - 1) / shape.perRow);
}

void BandLayout::layPicture(const PictureElement& shape, const QRectF& box, const Known& known,
                            PageItems& out) {
  const QVariant source = valueOf(shape.source, known);
  QImage image;
  if (source.typeId() == QMetaType::QByteArray) {
    image = QImage::fromData(source.toByteArray());
  } else {
    const QString name = source.toString();
    if (name.trimmed().isEmpty()) return;
    const QString path = QDir(folder_).filePath(name);
    if (!pictures_.contains(path)) pictures_.insert(path, pictureFile(path));
    image = pictures_.value(path);
    if (image.isNull()) {
      const QString missing = fonts_.elided(0, "(Bild fehlt: " + name + ")", box.width());
      return line(out, 0, missing, box, Align::Left, Qt::darkGray);
    }
  }
  if (image.isNull()) return;
  const QSizeF size = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
  out.items.push_back(PictureItem{{box.topLeft(), size}, image});
}

void BandLayout::layBars(const BarElement& shape, const QRectF& box, const Known& known, PageItems& out) {
  const QString text = filled(shape.text, known);
  if (text.isEmpty()) return;
  QRectF bars = box;
  if (shape.withText) {
    const double below = fonts_.lineHeight(0) * kSmallText;
    bars.setBottom(std::max(bars.top() + 1, bars.bottom() - below));
    line(out, 0, fonts_.elided(0, text, box.width()), QRectF(box.left(), bars.bottom(), box.width(), below),
         Align::Centre, Qt::black);
  }
  out.items.push_back(BarItem{bars, shape.kind, text});
}

void BandLayout::layShape(const Element& element, const QRectF& box, const Known& known, PageItems& out) {
  if (const auto* shape = std::get_if<LineElement>(&element.shape))
    out.items.push_back(LineItem{{box.topLeft(), box.bottomRight()}, units(shape->thickness), shape->colour});
  else if (const auto* frame = std::get_if<BoxElement>(&element.shape))
    out.items.push_back(BoxItem{box, units(frame->thickness), frame->colour, frame->ground});
  else if (const auto* picture = std::get_if<PictureElement>(&element.shape))
    layPicture(*picture, box, known, out);
  else if (const auto* bars = std::get_if<BarElement>(&element.shape))
    layBars(*bars, box, known, out);
}

double BandLayout::lay(const Band& band, const Known& known, const QPointF& corner, double width,
                       PageItems* out) {
  if (band.isEmpty() || !holds(band.when, known)) return 0;
  double height = units(band.height);
  std::vector<std::pair<double, double>> pushed;  // below what, by how much
  for (const Element& element : band.elements) {
    if (!holds(element.when, known)) continue;
    const double left = units(element.place.left), top = units(element.place.top);
    double shift = 0;
    for (const auto& [below, by] : pushed)
      if (top >= below) shift = std::max(shift, by);
    const double rest = std::max(0.0, width - left);
    const QRectF box(corner.x() + left, corner.y() + top + shift,
                     element.place.width < 0 ? rest : std::min(rest, units(element.place.width)),
                     units(element.place.height));
    double own = box.height();
    if (const auto* text = std::get_if<TextElement>(&element.shape))
      own = layText(*text, box, known, out);
    else if (const auto* values = std::get_if<ValuesElement>(&element.shape))
      own = layValues(*values, box, known, out);
    else if (out)
      layShape(element, box, known, *out);
    if (own > box.height()) pushed.emplace_back(top + box.height(), shift + own - box.height());
    height = std::max(height, top + shift + own);
  }
  return height;
}

namespace {

class FontNumbers {
 public:
  FontNumbers(const TextStyle& base, Fonts& fonts) : base_(base), fonts_(fonts) { give(base_); }

  void give(TextStyle& style) const {
    style.font = fonts_.number(style.family.isEmpty() ? base_.family : style.family,
                               style.points > 0 ? style.points : base_.points, style.bold, style.italic);
  }
  void give(Band& band) const {
    for (Element& element : band.elements) {
      if (auto* text = std::get_if<TextElement>(&element.shape)) give(text->style);
      if (auto* values = std::get_if<ValuesElement>(&element.shape)) give(values->style);
    }
  }

 private:
  TextStyle base_;
  Fonts& fonts_;
};

}  // namespace

void numberFonts(Definition& report, Fonts& fonts) {
  const FontNumbers numbers(report.font, fonts);
  numbers.give(report.font);
  numbers.give(report.pageHead);
  numbers.give(report.pageFoot);
  for (Part& part : report.parts) {
    for (Band* band : {&part.start, &part.row, &part.end}) numbers.give(*band);
    for (Group& group : part.groups)
      for (Band* band : {&group.head, &group.foot}) numbers.give(*band);
  }
}

}  // namespace qk::report
