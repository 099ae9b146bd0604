#include "tests/support/bar_font.h"

#include <QMap>
#include <algorithm>
#include <vector>

#include "platform/print/bars.h"
#include "tests/support/expectations.h"

namespace qk::test {

namespace {

// At 96 pixels a module is two of them.
constexpr int kEm = 960, kModule = 20, kHeight = 700, kAscent = 760, kDescent = 200;
constexpr int kSymbol128 = 11, kStop128 = 13;

using Modules = std::vector<bool>;
using Glyphs = QMap<ushort, Modules>;  // by character

Modules part(const Modules& all, size_t from, size_t count) {
  return {all.begin() + static_cast<qsizetype>(from), all.begin() + static_cast<qsizetype>(from + count)};
}

Modules fromText(const char* text) {
  Modules modules;
  for (; *text; ++text) modules.push_back(*text == '1');
  return modules;
}

ushort character128(int value) {
  return static_cast<ushort>(value < 95 ? value + 32 : value + 105);
}

/// Cut out of whole symbols: two digits are a value, and so is the check sum.
Glyphs glyphs128() {
  Glyphs glyphs;
  for (int value = 0; value < 100; ++value) {
    const Modules all =
        barModules(Symbology::Code128, QString("%1%2").arg(value, 2, 10, QChar('0')).arg("00"));
    glyphs[character128(value)] = part(all, kSymbol128, kSymbol128);
    const int check = (105 + value) % 103;
    if (check >= 100) glyphs[character128(check)] = part(all, 3 * kSymbol128, kSymbol128);
  }
  for (int low = 0; low < 100 && !(glyphs.contains(character128(101)) && glyphs.contains(character128(102)) &&
                                   glyphs.contains(character128(100)));
       ++low) {
    const Modules all = barModules(Symbology::Code128, QString("00%1").arg(low, 2, 10, QChar('0')));
    const int check = (105 + 2 * low) % 103;
    if (check >= 100) glyphs[character128(check)] = part(all, 3 * kSymbol128, kSymbol128);
  }
  const Modules letters = barModules(Symbology::Code128, "A"),
                digits = barModules(Symbology::Code128, "0000");
  glyphs[209] = part(letters, 0, kSymbol128);
  glyphs[210] = part(digits, 0, kSymbol128);
  glyphs[211] = part(digits, digits.size() - kStop128, kStop128);
  return glyphs;
}

Glyphs glyphs39() {
  Glyphs glyphs;
  const size_t width = barModules(Symbology::Code39, "AA").size() - barModules(Symbology::Code39, "A").size();
  for (const QChar c : QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"))
    glyphs[c.unicode()] = part(barModules(Symbology::Code39, QString(c)), width, width);
  glyphs['*'] = part(barModules(Symbology::Code39, "A"), 0, width);
  return glyphs;
}

Glyphs glyphs13() {
  const char* const odd[] = {"0001101", "0011001", "0010011", "0111101", "0100011",
                             "0110001", "0101111", "0111011", "0110111", "0001011"};
  Glyphs glyphs;
  for (ushort digit = 0; digit < 10; ++digit) {
    const Modules left = fromText(odd[digit]);
    Modules right = left;
    right.flip();
    glyphs['0' + digit] = fromText("101");
    glyphs['A' + digit] = left;
    glyphs['K' + digit] = Modules(right.rbegin(), right.rend());
    glyphs['a' + digit] = right;
  }
  glyphs['*'] = fromText("01010");
  glyphs['+'] = fromText("101");
  return glyphs;
}

class Bytes {
 public:
  Bytes& u8(int value) { return data_.append(static_cast<char>(value)), *this; }
  Bytes& u16(int value) { return u8(value >> 8).u8(value); }
  Bytes& u32(qint64 value) { return u16(static_cast<int>(value >> 16)).u16(static_cast<int>(value)); }
  Bytes& add(const QByteArray& more) { return data_.append(more), *this; }
  const QByteArray& data() const { return data_; }

 private:
  QByteArray data_;
};

/// Each run of ink is a rectangle.
QByteArray outline(const Modules& modules) {
  std::vector<std::pair<int, int>> bars;
  for (size_t i = 0; i < modules.size();) {
    size_t end = i;
    while (end < modules.size() && modules[end] == modules[i]) ++end;
    if (modules[i]) bars.push_back({static_cast<int>(i) * kModule, static_cast<int>(end) * kModule});
    i = end;
  }
  Bytes glyph;
  glyph.u16(static_cast<int>(bars.size()))
      .u16(bars.front().first)
      .u16(0)
      .u16(bars.back().second)
      .u16(kHeight);
  for (size_t i = 0; i < bars.size(); ++i) glyph.u16(static_cast<int>(4 * i) + 3);
  glyph.u16(0);                                              // no instructions
  for (size_t i = 0; i < 4 * bars.size(); ++i) glyph.u8(1);  // points on the curve, two bytes each way
  int x = 0;
  for (const auto& [left, right] : bars) {
    glyph.u16(left - x).u16(0).u16(right - left).u16(0);
    x = right;
  }
  for (size_t i = 0; i < bars.size(); ++i) glyph.u16(0).u16(kHeight).u16(0).u16(-kHeight);
  return glyph.data();
}

QByteArray characterMap(const Glyphs& glyphs) {
  const int segments = static_cast<int>(glyphs.size()) + 1;
  Bytes ends, starts, deltas, ranges;
  int glyph = 1;
  for (auto it = glyphs.cbegin(); it != glyphs.cend(); ++it, ++glyph) {
    ends.u16(it.key());
    starts.u16(it.key());
    deltas.u16(glyph - it.key());
    ranges.u16(0);
  }
  ends.u16(0xFFFF), starts.u16(0xFFFF), deltas.u16(1), ranges.u16(0);
  Bytes map;
  map.u16(0).u16(1).u16(3).u16(1).u32(12);
  map.u16(4).u16(16 + 8 * segments).u16(0).u16(2 * segments).u16(0).u16(0).u16(0);
  return map.add(ends.data()).u16(0).add(starts.data()).add(deltas.data()).add(ranges.data()).data();
}

QByteArray names(const QString& family) {
  const QList<std::pair<int, QString>> entries = {
      {1, family}, {2, "Regular"}, {4, family}, {6, QString(family).remove(' ')}};
  Bytes table, text;
  table.u16(0).u16(static_cast<int>(entries.size())).u16(6 + 12 * static_cast<int>(entries.size()));
  for (const auto& [id, value] : entries) {
    table.u16(3)
        .u16(1)
        .u16(0x409)
        .u16(id)
        .u16(static_cast<int>(2 * value.size()))
        .u16(static_cast<int>(text.data().size()));
    for (const QChar c : value) text.u16(c.unicode());
  }
  return table.add(text.data()).data();
}

QByteArray fontOf(const QString& family, const Glyphs& glyphs) {
  const int count = static_cast<int>(glyphs.size()) + 1;
  Bytes places, shapes, widths;
  widths.u16(kModule * kSymbol128).u16(0);  // the missing glyph is blank
  places.u32(0).u32(0);
  for (const Modules& modules : glyphs) {
    QByteArray shape = outline(modules);
    while (shape.size() % 4) shape.append('\0');
    const auto blank = std::find(modules.begin(), modules.end(), true) - modules.begin();
    widths.u16(static_cast<int>(modules.size()) * kModule).u16(static_cast<int>(blank) * kModule);
    shapes.add(shape);
    places.u32(shapes.data().size());
  }
  Bytes head, hhea, maxp, post;
  head.u32(0x00010000).u32(0x00010000).u32(0).u32(0x5F0F3CF5).u16(3).u16(kEm).u32(0).u32(0).u32(0).u32(0);
  head.u16(0).u16(-kDescent).u16(kEm).u16(kAscent).u16(0).u16(6).u16(2).u16(1).u16(0);
  hhea.u32(0x00010000)
      .u16(kAscent)
      .u16(-kDescent)
      .u16(0)
      .u16(kEm)
      .u16(0)
      .u16(0)
      .u16(kEm)
      .u16(1)
      .u16(0)
      .u16(0);
  hhea.u32(0).u32(0).u16(0).u16(count);
  maxp.u32(0x00010000)
      .u16(count)
      .u16(80)
      .u16(20)
      .u16(0)
      .u16(0)
      .u16(1)
      .u16(0)
      .u16(0)
      .u16(0)
      .u16(0)
      .u16(0)
      .u16(0)
      .u16(0)
      .u16(0);
  post.u32(0x00030000).u32(0).u16(0).u16(0).u32(0).u32(0).u32(0).u32(0).u32(0);
  const QList<std::pair<const char*, QByteArray>> tables = {
      {"cmap", characterMap(glyphs)}, {"glyf", shapes.data()}, {"head", head.data()},
      {"hhea", hhea.data()},          {"hmtx", widths.data()}, {"loca", places.data()},
      {"maxp", maxp.data()},          {"name", names(family)}, {"post", post.data()}};
  Bytes directory, body;
  directory.u32(0x00010000).u16(static_cast<int>(tables.size())).u16(128).u16(3).u16(16);
  qint64 at = 12 + 16 * tables.size();
  for (auto [tag, data] : tables) {
    directory.add(tag).u32(0).u32(at).u32(data.size());
    while (data.size() % 4) data.append('\0');
    body.add(data);
    at += data.size();
  }
  return directory.add(body.data()).data();
}

}  // namespace

QString nameOf(BarFont kind) {
  switch (kind) {
    case BarFont::Code128:
      return "Test Code 128";
    case BarFont::Code39:
      return "Test Code 39";
    case BarFont::Ean13:
      return "Test EAN 13";
  }
  return {};
}

QByteArray barFont(BarFont kind) {
  switch (kind) {
    case BarFont::Code128:
      return fontOf(nameOf(kind), glyphs128());
    case BarFont::Code39:
      return fontOf(nameOf(kind), glyphs39());
    case BarFont::Ean13:
      return fontOf(nameOf(kind), glyphs13());
  }
  return {};
}

}  // namespace qk::test
