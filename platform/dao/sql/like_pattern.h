// The patterns of LIKE: "*" any characters, "?" one, "#" one digit, "[a-z]" one of, "[!a-z]" one not of.
// Without regard to case, umlauts included. A bracket that isn't closed stands for itself.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <array>
#include <optional>
#include <vector>

namespace qk::dao::sql {

class LikePattern {
 public:
  struct Element {
    enum class Type { Character, Any, One, Digit, Set } type;
    char16_t character = 0;  ///< folded
    bool negated = false;
    std::vector<std::pair<char16_t, char16_t>> ranges = {};  ///< folded, both ends included
  };

  explicit LikePattern(QStringView pattern);
  bool matches(QStringView text) const;
  /// Of UTF-8, as a store hands it over: nothing is converted, for a filter looks at every row.
  bool matches(QByteArrayView utf8) const;

  const std::vector<Element>& elements() const { return elements_; }
  /// Printable ASCII, folded, that every matching text begins with in some case; may be empty.
  QByteArray plainBeginning() const;
  /// Whether an element for one character takes this folded one.
  static bool matches(const Element& element, char16_t folded);
  static char16_t folded(QChar character);

 private:
  /// Where the beginning decides; nothing where it doesn't.
  std::optional<bool> beginsSo(QByteArrayView utf8) const;
  /// Nothing where the text holds what this reader doesn't know.
  template <class Reader>
  std::optional<bool> walk(Reader text) const;
  qsizetype readSet(QStringView pattern, qsizetype at);
  void noteRun();
  bool holdsRun(QByteArrayView utf8) const;

  std::vector<Element> elements_;
  QByteArray beginning_;            ///< characters before the first other element, folded, UTF-8
  bool nothingElseCounts_ = false;  ///< only "*" follows
  QByteArray run_;  ///< the longest of ASCII, folded: every matching text holds it in some case
  std::array<uchar, 0x100> skip_{};  ///< by the byte where its end would be: how far on it may end, at least
};

}  // namespace qk::dao::sql
