// The patterns of LIKE: "*" any characters, "?" one, "#" one digit, "[a-z]" one of, "[!a-z]" one not of.
// Without regard to case, umlauts included. A bracket that isn't closed stands for itself.
#pragma once

#include <QString>
#include <vector>

namespace qk::dao::sql {

class LikePattern {
 public:
  explicit LikePattern(QStringView pattern);
  bool matches(QStringView text) const;

 private:
  struct Element {
    enum class Type { Character, Any, One, Digit, Set } type;
    char16_t character = 0;  ///< folded
    bool negated = false;
    std::vector<std::pair<char16_t, char16_t>> ranges = {};  ///< folded, both ends included
  };
  static bool matches(const Element& element, char16_t character);
  qsizetype readSet(QStringView pattern, qsizetype at);

  std::vector<Element> elements_;
};

}  // namespace qk::dao::sql
