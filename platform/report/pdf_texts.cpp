#include "platform/report/pdf_texts.h"

#include <QGlyphRun>
#include <QTextLayout>
#include <algorithm>

namespace qk::report {

namespace {

constexpr char16_t kBehindLetters = 0x2150;
constexpr int kUnknown = -1, kToBeShaped = -2;

struct ShapedGlyph {
  QRawFont font;
  quint32 index = 0;
  QString characters;
  QPointF from;
};

/// Stands for itself: it neither combines with its neighbours nor changes with them, and is written to the
/// right.
bool isLetter(char16_t c) {
  constexpr std::pair<char16_t, char16_t> kRanges[] = {
      {0x20, 0x7E},     {0xA0, 0xAC},     {0xAE, 0x2FF},    {0x370, 0x482},   {0x48A, 0x52F},
      {0x1E00, 0x1FFF}, {0x2010, 0x2027}, {0x2030, 0x205E}, {0x20A0, 0x20BF}, {0x2100, 0x214F}};
  return std::any_of(std::begin(kRanges), std::end(kRanges),
                     [c](const auto& range) { return c >= range.first && c <= range.second; });
}

/// `characters`: what the glyphs stand for. The first tells them all; empty afterwards.
void addGlyphs(const QGlyphRun& run, QString& characters, const QPointF& start,
               std::vector<ShapedGlyph>& shaped) {
  const QList<quint32> glyphs = run.glyphIndexes();
  const QList<QPointF> places = run.positions();
  for (qsizetype i = 0; i < glyphs.size(); ++i) {
    const QPointF from = places[i] - start;
    const auto known = std::find_if(shaped.begin(), shaped.end(), [&](const ShapedGlyph& other) {
      return other.index == glyphs[i] && other.from == from;
    });
    if (known == shaped.end())
      shaped.push_back({run.rawFont(), glyphs[i], characters, from});
    else
      known->characters += characters;  // it is made of both
    characters.clear();
  }
}

/// What would begin another line is a blank.
QString onOneLine(QString text) {
  for (QChar& c : text)
    if (c != u'\t' && (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
                       c.category() == QChar::Separator_Paragraph))
      c = u' ';
  return text;
}

/// From left to right, as readers expect it.
std::vector<ShapedGlyph> shaped(const QString& text, const QFont& font) {
  QTextLayout layout(text, font);
  QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setTextDirection(Qt::LayoutDirectionAuto);
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(line.naturalTextWidth());
  layout.endLayout();
  const QPointF start(line.x(), line.y() + line.ascent());
  std::vector<ShapedGlyph> glyphs;
  for (int at = 0; at < text.size();) {
    const int next = layout.nextCursorPosition(at);
    QString characters = text.mid(at, next - at);
    for (const QGlyphRun& run : layout.glyphRuns(at, next - at)) addGlyphs(run, characters, start, glyphs);
    at = next;
  }
  std::stable_sort(glyphs.begin(), glyphs.end(),
                   [](const auto& one, const auto& other) { return one.from.x() < other.from.x(); });
  return glyphs;
}

PdfString stringIn(const PdfFace& face, int code) {
  return {.face = &face,
          .code = code,
          .slanted = face.isSlantedByHand(),
          .emboldened = face.isEmboldenedByHand()};
}

}  // namespace

PdfTexts::Letters::Letters(const QFont& wanted)
    : font(QRawFont::fromFont(wanted)), codes(kBehindLetters, kUnknown) {}

const std::vector<PdfString>& PdfTexts::strings(const TextItem& item) {
  strings_.clear();
  if (addLetters(letters(item.font), item.text)) return strings_;
  strings_.clear();
  for (const ShapedGlyph& glyph : shaped(onOneLine(item.text), fonts_.font(item.font))) {
    PdfFace& shown = face(glyph.font);
    const int code = shown.code(glyph.index, glyph.characters);
    PdfString& string = strings_.emplace_back(stringIn(shown, code));
    string.from = glyph.from;
    shown.append(string.codes, code);
  }
  return strings_;
}

PdfTexts::Letters& PdfTexts::letters(int font) {
  auto known = letters_.find(font);
  if (known == letters_.end()) {
    known = letters_.try_emplace(font, fonts_.font(font)).first;
    known->second.face = &face(known->second.font);
  }
  return known->second;
}

bool PdfTexts::addLetters(Letters& letters, const QString& text) {
  const PdfFace& face = *letters.face;
  for (const QChar letter : text) {
    const int code = codeOf(letters, letter);
    if (code < 0) return false;
    if (strings_.empty() || !face.sameName(strings_.back().code, code)) {
      const bool follows = !strings_.empty();
      strings_.push_back(stringIn(face, code));
      strings_.back().follows = follows;
    }
    face.append(strings_.back().codes, code);
  }
  return true;
}

int PdfTexts::codeOf(Letters& letters, QChar letter) {
  if (letter.unicode() >= kBehindLetters) return kToBeShaped;
  int& code = letters.codes[letter.unicode()];
  if (code != kUnknown) return code;
  code = kToBeShaped;
  if (!isLetter(letter.unicode())) return code;
  const QList<quint32> glyphs = letters.font.glyphIndexesForString(QString(letter));
  if (glyphs.size() == 1 && glyphs.first() != 0) code = letters.face->code(glyphs.first(), QString(letter));
  return code;
}

PdfFace& PdfTexts::face(const QRawFont& font) {
  const QString key =
      QString("%1|%2|%3|%4").arg(font.familyName(), font.styleName()).arg(font.weight()).arg(font.style());
  const auto known = faces_.find(key);
  if (known != faces_.end()) return known->second;
  return faces_.try_emplace(key, font, static_cast<int>(faces_.size())).first->second;
}

QByteArray PdfTexts::write(PdfFile& file) const {
  QByteArray entries;
  for (const auto& [key, face] : faces_) entries += face.write(file);
  return entries;
}

}  // namespace qk::report
