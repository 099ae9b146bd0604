#include "platform/dao/sql/like_pattern.h"

#include <algorithm>
#include <array>
#include <limits>

namespace qk::dao::sql {
namespace {

/// "ſ" and the sign of Kelvin stay themselves: they equal no letter of ASCII in any other comparison of the
/// stores either, and so a beginning of ASCII is one range of an index.
char16_t folded(QChar c) {
  const char16_t unit = c.unicode();
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? char16_t(unit + (u'a' - u'A')) : unit;
  const char16_t folded = c.toCaseFolded().unicode();
  return folded < 0x80 ? unit : folded;
}

/// Hands over the folded characters of a text one by one; a place in it can be returned to.
class Utf16Reader {
 public:
  explicit Utf16Reader(QStringView text) : at_(text.begin()), end_(text.end()) {}
  bool atEnd() const { return at_ == end_; }
  bool isKnown() const { return true; }
  char16_t character() const { return folded(*at_); }
  void next() { ++at_; }

 private:
  QStringView::const_iterator at_, end_;
};

/// The same of UTF-8. What lies beyond three bytes, or is malformed, it doesn't know.
class Utf8Reader {
 public:
  explicit Utf8Reader(QByteArrayView text) : at_(text.begin()), end_(text.end()) { read(); }
  bool atEnd() const { return at_ == end_; }
  bool isKnown() const { return size_ > 0; }
  char16_t character() const { return character_; }
  void next() {
    at_ += size_;
    read();
  }

 private:
  uint byte(int place) const { return static_cast<uchar>(at_[place]); }
  bool continues(int place) const { return end_ - at_ > place && (byte(place) & 0xC0) == 0x80; }
  void read() {
    if (atEnd()) return;
    const uint lead = byte(0);
    if (lead < 0x80) return take(1, lead);
    size_ = 0;
    if (lead >= 0xC2 && lead < 0xE0 && continues(1)) {
      take(2, (lead & 0x1F) << 6 | (byte(1) & 0x3F));
    } else if (lead >= 0xE0 && lead < 0xF0 && continues(1) && continues(2)) {
      const uint code = (lead & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
      if (code >= 0x800 && !QChar::isSurrogate(code) && code != QChar::ByteOrderMark) take(3, code);
    }
  }
  void take(int size, uint code) {
    size_ = size;
    character_ = folded(QChar(static_cast<char16_t>(code)));
  }

  QByteArrayView::const_iterator at_, end_;
  int size_ = 1;  // of the character in bytes
  char16_t character_ = 0;
};

/// Bytes of UTF-8; those of one ASCII letter folded.
constexpr auto kFolded = [] {
  std::array<uchar, 0x100> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<uchar>(i >= 'A' && i <= 'Z' ? i + ('a' - 'A') : i);
  return bytes;
}();

/// A letter with marks stands beside its base letter: "ä" lies in [a-z].
char16_t baseLetter(char16_t c) {
  if (c < 0xC0) return c;
  const QString parts = QChar(c).decomposition();
  return parts.isEmpty() ? c : parts[0].unicode();
}

}  // namespace

char16_t LikePattern::folded(QChar character) {
  return sql::folded(character);
}

LikePattern::LikePattern(QStringView pattern) {
  elements_.reserve(std::size_t(pattern.size()));
  for (qsizetype at = 0; at < pattern.size();) {
    const QChar c = pattern[at];
    if (c == u'[') {
      if (const qsizetype end = readSet(pattern, at); end > at) {
        at = end;
        continue;
      }
    }
    ++at;
    using Type = Element::Type;
    if (c == u'*') {
      if (elements_.empty() || elements_.back().type != Type::Any) elements_.push_back({Type::Any});
    } else if (c == u'?') {
      elements_.push_back({Type::One});
    } else if (c == u'#') {
      elements_.push_back({Type::Digit});
    } else {
      elements_.push_back({Type::Character, folded(c)});
    }
  }
  QString beginning;
  for (const Element& element : elements_) {
    const QChar character(element.character);
    // Half a pair has no bytes of its own, and a byte order mark is dropped from the beginning of a text.
    const bool plain = !character.isSurrogate() && character != QChar::ByteOrderMark;
    if (element.type != Element::Type::Character || !plain) break;
    beginning += character;
  }
  beginning_ = beginning.toUtf8();
  nothingElseCounts_ =
      elements_.size() == std::size_t(beginning.size()) + 1 && elements_.back().type == Element::Type::Any;
  noteRun();
}

void LikePattern::noteRun() {
  QByteArray run;
  for (const Element& element : elements_) {
    const bool plain = element.type == Element::Type::Character && element.character < 0x80;
    run = plain ? run + static_cast<char>(element.character) : QByteArray();
    if (run.size() > run_.size() && run.size() <= std::numeric_limits<uchar>::max()) run_ = run;
  }
  skip_.fill(static_cast<uchar>(run_.size()));
  for (qsizetype i = 0; i + 1 < run_.size(); ++i)
    skip_[static_cast<uchar>(run_[i])] = static_cast<uchar>(run_.size() - 1 - i);
}

/// The position behind the set that starts here, or the start where its end is missing. "[]" is nothing.
qsizetype LikePattern::readSet(QStringView pattern, qsizetype at) {
  const qsizetype end = pattern.indexOf(u']', at + 1);
  if (end < 0) return at;
  QStringView inner = pattern.mid(at + 1, end - at - 1);
  Element element{Element::Type::Set};
  element.negated = inner.size() > 1 && inner.startsWith(u'!');
  if (element.negated) inner = inner.mid(1);
  for (qsizetype i = 0; i < inner.size(); ++i) {
    const bool range = i + 2 < inner.size() && inner[i + 1] == u'-';
    element.ranges.emplace_back(folded(inner[i]), folded(inner[range ? i + 2 : i]));
    if (range) i += 2;
  }
  if (!element.ranges.empty()) elements_.push_back(std::move(element));
  return end + 1;
}

bool LikePattern::matches(const Element& element, char16_t character) {
  switch (element.type) {
    case Element::Type::Character:
      return element.character == character;
    case Element::Type::Digit:
      return character >= u'0' && character <= u'9';
    case Element::Type::Set:
      for (const auto& [low, high] : element.ranges) {
        const char16_t tested = low == high ? character : baseLetter(character);
        if ((tested >= low && tested <= high) || character == low || character == high) {
          return !element.negated;
        }
      }
      return element.negated;
    case Element::Type::Any:
    case Element::Type::One:
      break;
  }
  return true;
}

template <class Reader>
std::optional<bool> LikePattern::walk(Reader text) const {
  // The usual walk with one point of return: the last "*" takes one character more when the rest doesn't fit.
  constexpr std::size_t kNone = std::size_t(-1);
  std::size_t element = 0, star = kNone;
  Reader mark = text;
  while (!text.atEnd()) {
    if (!text.isKnown()) return {};
    if (element < elements_.size() && elements_[element].type == Element::Type::Any) {
      star = element++;
      if (element == elements_.size()) return true;
      mark = text;
    } else if (element < elements_.size() && matches(elements_[element], text.character())) {
      ++element;
      text.next();
    } else if (star != kNone) {
      element = star + 1;
      mark.next();
      text = mark;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].type == Element::Type::Any) ++element;
  return element == elements_.size();
}

bool LikePattern::matches(QStringView text) const {
  return *walk(Utf16Reader(text));
}

QByteArray LikePattern::plainBeginning() const {
  const auto isPlain = [](char byte) { return byte >= ' ' && byte <= '~'; };
  return QByteArray(beginning_.begin(),
                    std::find_if_not(beginning_.begin(), beginning_.end(), isPlain) - beginning_.begin());
}

/// The usual filter asks for a beginning, and most rows fail in its first bytes.
std::optional<bool> LikePattern::beginsSo(QByteArrayView utf8) const {
  if (utf8.size() < beginning_.size()) return {};
  for (qsizetype i = 0; i < beginning_.size(); ++i) {
    const auto byte = static_cast<uchar>(utf8[i]), wanted = static_cast<uchar>(beginning_[i]);
    if (kFolded[byte] == wanted) continue;
    // Letters of other bytes may fold to the same.
    if (byte < 0x80 && wanted < 0x80) return false;
    return {};
  }
  if (nothingElseCounts_) return true;
  return {};
}

/// A filter for what stands anywhere fails in most rows: Horspool's search tells it from a few of their
/// bytes.
bool LikePattern::holdsRun(QByteArrayView utf8) const {
  const qsizetype size = run_.size();
  const auto isHere = [&](const char* end) {
    return std::equal(run_.begin(), run_.end(), end - size, [](char wanted, char byte) {
      return kFolded[static_cast<uchar>(byte)] == static_cast<uchar>(wanted);
    });
  };
  for (qsizetype end = size; end <= utf8.size();) {
    if (isHere(utf8.data() + end)) return true;
    end += skip_[kFolded[static_cast<uchar>(utf8[end - 1])]];
  }
  return false;
}

bool LikePattern::matches(QByteArrayView utf8) const {
  if (const auto decided = beginsSo(utf8)) return *decided;
  if (!holdsRun(utf8)) return false;
  if (const auto matched = walk(Utf8Reader(utf8))) return *matched;
  return matches(QString::fromUtf8(utf8));
}

}  // namespace qk::dao::sql
