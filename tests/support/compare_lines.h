// Comparing lists of lines so that a failure says which lines differ: Qt's own comparison gives sizes, or one
// cut text.
//
//   COMPARE_LINES(found, (QStringList{"a", "b"}));      fails with "- b" for what is missing, "+ c" for what
//   is
//                                                        too much
#pragma once

#include <QStringList>
#include <QTest>
#include <vector>

namespace qk::test {

/// The lines of either list that the other lacks at that place, in order; empty when they are equal.
inline QString differenceOf(const QStringList& actual, const QStringList& expected) {
  const auto rows = actual.size(), columns = expected.size();
  // common[i][j]: lines in common behind those places
  std::vector common(size_t(rows + 1), std::vector<int>(size_t(columns + 1), 0));
  const auto at = [&](qsizetype i, qsizetype j) -> int& { return common[size_t(i)][size_t(j)]; };
  for (auto i = rows; i-- > 0;)
    for (auto j = columns; j-- > 0;)
      at(i, j) = actual[i] == expected[j] ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
  QString lines;
  for (qsizetype i = 0, j = 0; i < rows || j < columns;) {
    if (i < rows && j < columns && actual[i] == expected[j])
      ++i, ++j;
    else if (i == rows || (j < columns && at(i, j + 1) >= at(i + 1, j)))
      lines += "\n   - " + expected[j++];
    else
      lines += "\n   + " + actual[i++];
  }
  return lines;
}

}  // namespace qk::test

// Not QVERIFY2, which cuts what it says.
#define COMPARE_LINES(actual, expected)                                                     \
  do {                                                                                      \
    if (const QString lines = qk::test::differenceOf(actual, expected); !lines.isEmpty()) { \
      QTest::qFail(qPrintable("These lines differ:" + lines), __FILE__, __LINE__);          \
      return;                                                                               \
    }                                                                                       \
  } while (false)
