#include "platform/report/pdf_face.h"

#include <QtEndian>
#include <algorithm>

#include "platform/report/font_subset.h"

namespace qk::report {

namespace {

constexpr double kThousandths = 1000;  // of the height of the letters: the unit of widths in a PDF file

QByteArray number(double value, int decimals = 3) {
  return QByteArray::number(value, 'f', decimals);
}

quint16 at(const QByteArray& table, qsizetype place) {
  return table.size() < place + 2 ? quint16(0) : qFromBigEndian<quint16>(table.constData() + place);
}

/// Its maker forbids that it is embedded.
bool isKeptBack(const QRawFont& font) {
  constexpr quint16 kKinds = 0x000F, kForbidden = 0x0002;
  return (at(font.fontTable("OS/2"), 8) & kKinds) == kForbidden;
}

QByteArray nameOf(const QRawFont& font, int number) {
  QByteArray name;
  for (const char c : (font.familyName() + "-" + font.styleName()).toLatin1())
    if (isalnum(static_cast<unsigned char>(c)) || c == '-') name += c;
  QByteArray subset = "AAAAAA";  // six letters mark a part of a face, others for each
  for (qsizetype i = subset.size() - 1; number > 0; number /= 26)
    subset[i--] = static_cast<char>('A' + number % 26);
  return subset + "+" + name;
}

/// Of letters only: readers take a number in it for a character.
QByteArray drawingName(size_t code) {
  return QByteArray("/qk") + static_cast<char>('a' + code / 16) + static_cast<char>('a' + code % 16);
}

}  // namespace

PdfFace::PdfFace(const QRawFont& font, int number) : font_(font), number_(number) {
  font_.setPixelSize(font.unitsPerEm());
  drawn_ = isKeptBack(font_) || !cutDown(font_, {0});
  used_.push_back({});  // code 0 is that of a missing glyph
  if (drawn_) return;
  constexpr quint16 kBold = 1, kItalic = 2;
  const quint16 style = at(font_.fontTable("head"), 44);
  slantedByHand_ = font.style() != QFont::StyleNormal && !(style & kItalic);
  emboldenedByHand_ = font.weight() >= QFont::DemiBold && !(style & kBold);
}

int PdfFace::code(quint32 glyph, const QString& characters) {
  int& code = codes_[{glyph, characters}];
  if (code == 0) {
    code = static_cast<int>(used_.size());
    const QList<QPointF> advance = font_.advancesForGlyphIndexes({glyph});
    used_.push_back({glyph, characters, advance.isEmpty() ? 0 : advance.first().x()});
  }
  return code;
}

QByteArray PdfFace::name(int code) const {
  const QByteArray name = "F" + QByteArray::number(number_);
  return drawn_ ? name + "." + QByteArray::number(code / kDrawnCodes) : name;
}

void PdfFace::append(std::string& string, int code) const {
  const auto add = [&string](int byte) {
    const char c = static_cast<char>(byte);
    if (c == '(' || c == ')' || c == '\\') string += '\\';
    if (c == '\r')
      string += "\\r";  // a bare one would be read as the end of a line
    else
      string += c;
  };
  if (!drawn_) add(code / kDrawnCodes);
  add(code % kDrawnCodes);
}

QByteArray PdfFace::write(PdfFile& file) const {
  QByteArray entries;
  if (!drawn_) return writeEmbedded(file);
  for (size_t first = 0; first < used_.size(); first += kDrawnCodes) entries += writeDrawn(file, first);
  return entries;
}

QByteArray PdfFace::writeEmbedded(PdfFile& file) const {
  std::vector<quint32> glyphs;
  for (const Used& used : used_) glyphs.push_back(used.glyph);
  const auto subset = cutDown(font_, glyphs);
  const double unit = kThousandths / font_.unitsPerEm();
  QByteArray widths, toGlyphs;
  for (size_t code = 0; code < used_.size(); ++code) {
    widths += number(used_[code].advance * unit) + " ";
    const quint16 glyph = qToBigEndian(subset->glyphs[code]);
    toGlyphs.append(reinterpret_cast<const char*>(&glyph), sizeof glyph);
  }
  const QByteArray name = nameOf(font_, number_);
  const int program =
      file.putStream("/Length1 " + QByteArray::number(subset->program.size()), subset->program);
  const int described = file.put(descriptor(name, program));
  const int mapped = file.putStream({}, toGlyphs);
  const int face =
      file.put("<</Type/Font/Subtype/CIDFontType2/BaseFont/" + name +
               "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor " +
               PdfFile::reference(described) + "/CIDToGIDMap " + PdfFile::reference(mapped) + "/W[0[" +
               widths + "]]>>");
  const int characters = writeCharacters(file, 0, used_.size());
  const int font =
      file.put("<</Type/Font/Subtype/Type0/BaseFont/" + name + "/Encoding/Identity-H/DescendantFonts[" +
               PdfFile::reference(face) + "]/ToUnicode " + PdfFile::reference(characters) + ">>");
  return "/" + this->name(0) + " " + PdfFile::reference(font);
}

QByteArray PdfFace::descriptor(const QByteArray& name, int program) const {
  const double unit = kThousandths / font_.unitsPerEm();
  const QByteArray head = font_.fontTable("head");
  QByteArray box;
  for (const int place : {36, 38, 40, 42}) box += number(static_cast<qint16>(at(head, place)) * unit) + " ";
  constexpr const char* kSymbolic = "4";  // its codes aren't those of an alphabet
  return "<</Type/FontDescriptor/FontName/" + name + "/Flags " + kSymbolic + "/FontBBox[" + box +
         "]/ItalicAngle 0/Ascent " + number(font_.ascent() * unit) + "/Descent " +
         number(-font_.descent() * unit) + "/CapHeight " + number(font_.capHeight() * unit) +
         "/StemV 80/FontFile2 " + PdfFile::reference(program) + ">>";
}

QByteArray PdfFace::writeDrawn(PdfFile& file, size_t first) const {
  const size_t end = std::min(used_.size(), first + kDrawnCodes);
  QByteArray names, drawings, widths;
  QRectF all;
  for (size_t code = first; code < end; ++code) {
    QRectF bounds;
    const int drawn = file.putStream({}, drawing(used_[code], bounds));
    all |= bounds;
    const QByteArray name = drawingName(code - first);
    names += name;
    drawings += name + " " + PdfFile::reference(drawn);
    widths += number(used_[code].advance) + " ";
  }
  const int characters = writeCharacters(file, first, end);
  const QByteArray scale = number(1 / font_.unitsPerEm(), 9);
  const int font =
      file.put("<</Type/Font/Subtype/Type3/FontMatrix[" + scale + " 0 0 " + scale + " 0 0]/FontBBox[" +
               number(all.left()) + " " + number(-all.bottom()) + " " + number(all.right()) + " " +
               number(-all.top()) + "]/Encoding<</Type/Encoding/Differences[0" + names + "]>>/CharProcs<<" +
               drawings + ">>/FirstChar 0/LastChar " + QByteArray::number(end - first - 1) + "/Widths[" +
               widths + "]/ToUnicode " + PdfFile::reference(characters) + "/Resources<<>>>>");
  return "/" + name(static_cast<int>(first)) + " " + PdfFile::reference(font);
}

/// Upwards is more here, on the screen it is less.
QByteArray PdfFace::drawing(const Used& used, QRectF& bounds) const {
  const QPainterPath path = font_.pathForGlyph(used.glyph);
  bounds = path.boundingRect();
  QByteArray drawn = number(used.advance) + " 0 " + number(bounds.left()) + " " + number(-bounds.bottom()) +
                     " " + number(bounds.right()) + " " + number(-bounds.top()) + " d1\n";
  const auto point = [&](int i) {
    return number(path.elementAt(i).x) + " " + number(-path.elementAt(i).y) + " ";
  };
  for (int i = 0; i < path.elementCount(); ++i) {
    switch (path.elementAt(i).type) {
      case QPainterPath::MoveToElement:
        drawn += point(i) + "m\n";
        break;
      case QPainterPath::LineToElement:
        drawn += point(i) + "l\n";
        break;
      case QPainterPath::CurveToElement:
        drawn += point(i) + point(i + 1) + point(i + 2) + "c\n";
        break;
      case QPainterPath::CurveToDataElement:
        break;  // belongs to the curve before
    }
  }
  return drawn + "f\n";
}

/// Which characters the codes stand for, in blocks of a hundred, as the format wants them.
int PdfFace::writeCharacters(PdfFile& file, size_t first, size_t end) const {
  constexpr qsizetype kBlock = 100;
  const int digits = drawn_ ? 2 : 4;
  const auto hex = [&](size_t code) {
    return "<" + QByteArray::number(code, 16).rightJustified(digits, '0') + ">";
  };
  QList<QByteArray> lines;
  for (size_t code = first; code < end; ++code)
    if (!used_[code].characters.isEmpty())
      lines << hex(code - first) + "<" + pdfHex(used_[code].characters) + ">\n";
  QByteArray map =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo<</Registry(Adobe)/"
      "Ordering(UCS)/Supplement 0>>def\n/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n" +
      hex(0) + "<" + QByteArray(digits, 'F') + ">\nendcodespacerange\n";
  for (qsizetype at = 0; at < lines.size(); at += kBlock) {
    const QList<QByteArray> block = lines.sliced(at, std::min(kBlock, lines.size() - at));
    map += QByteArray::number(block.size()) + " beginbfchar\n" + block.join() + "endbfchar\n";
  }
  return file.putStream({}, map + "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n");
}

}  // namespace qk::report
