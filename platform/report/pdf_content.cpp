#include "platform/report/pdf_content.h"

#include <charconv>
#include <cmath>

#include "platform/report/page_painter.h"

namespace qk::report {

namespace {

constexpr int kPart = 10;  // of a unit of the page
constexpr double kPointsPerInch = 72;
// What the toolkit makes of letters on the screen where a font has no such face.
constexpr auto kSlanted = "1 0 .3 1 ";
constexpr int kEmboldening = 36;  // of the height of the letters, how much thicker

long parts(double units) {
  return std::lround(units * kPart);
}

}  // namespace

PdfContent::PdfContent(const Fonts& fonts, PdfTexts& texts, NameOfPicture pictures, double height)
    : fonts_(fonts), texts_(texts), pictures_(std::move(pictures)), height_(height) {}

const std::string& PdfContent::of(const PageItems& page) {
  out_.clear();  // its room stays
  state_ = {};
  const auto scale = QByteArray::number(kPointsPerInch / kUnitsPerInch / kPart).toStdString();
  out_ += "q " + scale + " 0 0 " + scale + " 0 0 cm\n";
  for (const Item& item : page.items) std::visit(*this, item);
  endText();
  out_ += "Q\n";
  return out_;
}

void PdfContent::add(long number) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits - 1, number).ptr;
  *end = ' ';
  out_.append(digits, end + 1);
}

/// Upwards is more in a PDF file, on a page it is less.
void PdfContent::add(const QPointF& point) {
  add(parts(point.x()));
  add(parts(height_ - point.y()));
}

void PdfContent::add(const QRectF& box) {
  add(box.bottomLeft());
  add(parts(box.width()));
  add(parts(box.height()));
}

void PdfContent::colour(QRgb& known, QRgb wanted, const char* operators) {
  if (known == wanted) return;
  known = wanted;
  for (const int share : {qRed(wanted), qGreen(wanted), qBlue(wanted)})
    out_ += QByteArray::number(share / 255.0, 'f', 3).toStdString() + ' ';
  add(operators);
}

void PdfContent::width(double width) {
  const long wanted = parts(width);
  if (state_.width == wanted) return;
  add(state_.width = wanted);
  add("w\n");
}

void PdfContent::endText() {
  if (!state_.inText) return;
  add("ET\n");
  state_.inText = state_.slanted = false;
  state_.x = state_.y = 0;
}

void PdfContent::operator()(const TextItem& item) {
  const auto& strings = texts_.strings(item);
  if (strings.empty()) return;
  colour(state_.fill, item.colour.rgb(), "rg\n");
  if (!state_.inText) add("BT\n");
  state_.inText = true;
  for (const PdfString& string : strings) show(string, item);
}

void PdfContent::show(const PdfString& string, const TextItem& item) {
  font(string, item);
  if (!string.follows) place(item.base + string.from, string.slanted);
  out_ += '(';
  out_ += string.codes;
  add(")Tj\n");
}

void PdfContent::font(const PdfString& string, const TextItem& item) {
  const int size = fonts_.font(item.font).pixelSize() * kPart;
  if (state_.face != string.face || !string.face->sameName(state_.code, string.code) ||
      state_.fontSize != size) {
    state_.face = string.face;
    state_.code = string.code;
    state_.fontSize = size;
    out_ += '/' + string.face->name(string.code).toStdString() + ' ';
    add(size);
    add("Tf\n");
  }
  if (string.emboldened) {
    colour(state_.stroke, item.colour.rgb(), "RG\n");
    width(double(size) / kPart / kEmboldening);
  }
  if (string.emboldened != state_.emboldened) add(string.emboldened ? "2 Tr\n" : "0 Tr\n");
  state_.emboldened = string.emboldened;
}

void PdfContent::place(const QPointF& at, bool slanted) {
  const long x = parts(at.x()), y = parts(height_ - at.y());
  if (slanted || state_.slanted) {
    out_ += slanted ? kSlanted : "1 0 0 1 ";
    add(x);
    add(y);
    add("Tm\n");
  } else {
    add(x - state_.x);
    add(y - state_.y);
    add("Td\n");
  }
  state_.slanted = slanted;
  state_.x = x;
  state_.y = y;
}

void PdfContent::operator()(const LineItem& item) {
  endText();
  colour(state_.stroke, item.colour.rgb(), "RG\n");
  width(item.thickness);
  add(item.line.p1());
  add("m ");
  add(item.line.p2());
  add("l S\n");
}

void PdfContent::operator()(const BoxItem& item) {
  endText();
  if (item.ground.isValid()) {
    colour(state_.fill, item.ground.rgb(), "rg\n");
    add(item.place);
    add("re f\n");
  }
  if (item.thickness <= 0) return;
  colour(state_.stroke, item.colour.rgb(), "RG\n");
  width(item.thickness);
  add(item.place);
  add("re S\n");
}

void PdfContent::operator()(const PictureItem& item) {
  endText();
  add("q ");
  add(parts(item.place.width()));
  add("0 0 ");
  add(parts(item.place.height()));
  add(item.place.bottomLeft());
  out_ += "cm /" + pictures_(item.image).toStdString() + " Do Q\n";
}

void PdfContent::operator()(const BarItem& item) {
  const std::vector<bool> modules = barModules(item.kind, item.text);
  if (modules.empty()) return (*this)(whyNoBars(item, fonts_));
  endText();
  colour(state_.fill, qRgb(0, 0, 0), "rg\n");
  // Exactly as wide as they are: who renders the page puts them on whole dots, each by itself only.
  for (const QRectF& bar : barsIn(item.place, modules, 0)) {
    add(bar);
    add("re f\n");
  }
}

}  // namespace qk::report
