#include "platform/dao/sql/german_order.h"

#include <QString>
#include <algorithm>
#include <array>
#include <cstdint>

namespace qk::dao::sql {

namespace {

constexpr char16_t kFirstPlain = u' ', kLastPlain = u'~';

QCollator germanCollator() {
  QCollator collator(QLocale(QLocale::German, QLocale::Germany));
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  return collator;
}

bool isContinuation(char byte) {
  return (static_cast<uchar>(byte) & 0xC0) == 0x80;
}

}  // namespace

/// The ranks of the printable ASCII characters, and of the Latin letters that are such letters with a mark.
/// They are found by asking the collator, and a character that doesn't keep to the rule gets none.
class LetterRanks {
 public:
  /// Base letters of a character, as ranks; the second is 0 but for "ß".
  struct Letters {
    std::uint8_t first = 0, second = 0;
    bool marked = false;
    int size = 1;  ///< bytes
  };

  explicit LetterRanks(const QCollator& collator) {
    QString plain;
    for (char16_t c = kFirstPlain; c <= kLastPlain; ++c) plain += QChar(c);
    std::sort(plain.begin(), plain.end(),
              [&](QChar left, QChar right) { return collator.compare(QString(left), QString(right)) < 0; });
    const QChar lowest = plain.front(), highest = plain.back();
    // A base letter decides before all that follows.
    const auto decides = [&](const QString& lower, const QString& higher) {
      return collator.compare(lower + highest, higher + lowest) < 0;
    };
    const auto ranksAlike = [&](const QString& one, const QString& other) {
      return !decides(one, other) && !decides(other, one);
    };
    std::uint8_t rank = 1;
    plain_[plain.front().unicode()].first = rank;
    for (qsizetype i = 1; i < plain.size(); ++i) {
      const QString lower(plain[i - 1]), higher(plain[i]);
      if (collator.compare(lower, higher) != 0) {
        if (!decides(lower, higher)) {
          plain_.fill({});
          return;
        }
        ++rank;
      }
      plain_[plain[i].unicode()].first = rank;
    }
    for (char16_t c = kFirstMarked; c < kFirstMarked + kMarked; ++c) {
      const QString letters = c == u'ß' ? QString("ss") : QChar(c).decomposition().left(1);
      if (letters.isEmpty() || !ranksAlike(QString(QChar(c)), letters)) continue;
      const std::uint8_t letter = plain_[letters[0].unicode()].first;
      marked_[c - kFirstMarked] = {letter, letters.size() > 1 ? letter : std::uint8_t(0), true, 2};
    }
  }

  /// Those of the character that begins here; the first is 0 for one without a rank.
  Letters at(const char* text, const char* end) const {
    const auto byte = static_cast<uchar>(*text);
    if (byte < 0x80) return plain_[byte];
    if (byte != kMarkedLead || end - text < 2 || !isContinuation(text[1])) return {};
    return marked_[static_cast<uchar>(text[1]) & 0x3F];
  }

 private:
  static constexpr char16_t kFirstMarked = 0xC0;
  static constexpr std::size_t kMarked = 0x40;
  static constexpr uchar kMarkedLead = 0xC3;  // of these in UTF-8

  std::array<Letters, 0x80> plain_{};
  std::array<Letters, kMarked> marked_{};
};

namespace {

/// Walks a text by the ranks of its base letters.
class Walk {
 public:
  Walk(QByteArrayView text, qsizetype from, const LetterRanks& ranks)
      : at_(text.begin() + from), end_(text.end()), ranks_(ranks) {
    read();
  }
  bool atEnd() const { return at_ == end_; }
  bool isKnown() const { return atEnd() || letters_.first > 0; }
  int rank() const { return atEnd() ? 0 : inSecond_ ? letters_.second : letters_.first; }
  bool marked() const { return marked_; }
  void next() {
    if (atEnd()) return;
    if (letters_.second > 0 && !inSecond_) {
      inSecond_ = true;
      return;
    }
    inSecond_ = false;
    at_ += letters_.size;
    read();
  }

 private:
  void read() {
    if (atEnd()) return;
    letters_ = ranks_.at(at_, end_);
    marked_ |= letters_.marked;
  }

  const char* at_;
  const char* end_;
  const LetterRanks& ranks_;
  LetterRanks::Letters letters_;
  bool inSecond_ = false;
  bool marked_ = false;
};

/// Bytes at the beginning that both texts share, whole characters with a rank at their end.
qsizetype sharedBeginning(QByteArrayView left, QByteArrayView right, const LetterRanks& ranks) {
  const auto [one, other] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  qsizetype shared = one - left.begin();
  const auto startOf = [&](qsizetype place) {
    while (place > 0 && isContinuation(left[place])) --place;
    return place;
  };
  if (shared < left.size()) shared = startOf(shared);
  if (shared == 0) return 0;
  return ranks.at(left.begin() + startOf(shared - 1), left.end()).first > 0 ? shared : 0;
}

}  // namespace

GermanOrder::GermanOrder()
    : collator_(germanCollator()), ranks_([this]() -> const LetterRanks& {
        static const LetterRanks ranks(collator_);
        return ranks;
      }()) {}

int GermanOrder::compare(QByteArrayView left, QByteArrayView right) const {
  if (left == right) return 0;
  const qsizetype shared = sharedBeginning(left, right, ranks_);
  Walk one(left, shared, ranks_), other(right, shared, ranks_);
  while (one.isKnown() && other.isKnown()) {
    if (one.rank() != other.rank()) return one.rank() < other.rank() ? -1 : 1;
    if (one.atEnd()) {
      if (one.marked() || other.marked()) break;
      return 0;
    }
    one.next();
    other.next();
  }
  return collator_.compare(QString::fromUtf8(left), QString::fromUtf8(right));
}

}  // namespace qk::dao::sql
