#include "platform/runtime/textcodec.h"

#include <array>

namespace qk {

namespace {

// 0x80 to 0x9F, where the code page departs from Latin-1. The five unused codes stand for themselves, so that
// every byte survives the way in and out. A table of its own: not every build of the toolkit knows the code
// page.
constexpr std::array<char16_t, 32> kHigh{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                         0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isHigh(unsigned code) {
  return code >= 0x80 && code <= 0x9F;
}

/// -1 when the code page lacks the character.
int byteOf(char16_t c) {
  if (c <= 0xFF && !isHigh(c)) return c;
  for (size_t i = 0; i < kHigh.size(); ++i)
    if (kHigh[i] == c) return static_cast<int>(0x80 + i);
  return -1;
}

}  // namespace

QString fromWindows1252(const QByteArray& bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& c : text)
    if (isHigh(c.unicode())) c = kHigh[c.unicode() - 0x80u];
  return text;
}

QByteArray toWindows1252(const QString& text, bool* lossy) {
  QByteArray bytes;
  bytes.reserve(text.size());
  bool lost = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    int byte = byteOf(text[i].unicode());
    if (byte < 0) {
      lost = true;
      byte = '?';
      // One character beyond the base plane is one question mark.
      if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
    }
    bytes += static_cast<char>(byte);
  }
  if (lossy) *lossy = lost;
  return bytes;
}

QByteArray quotedLine(const QString& text) {
  return '"' + toWindows1252(text) + "\"\r\n";
}

QStringList splitLines(const QString& text) {
  QStringList lines;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'\r' && text[i] != u'\n') continue;
    lines += text.mid(start, i - start);
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    start = i + 1;
  }
  if (start < text.size()) lines += text.mid(start);
  return lines;
}

}  // namespace qk
