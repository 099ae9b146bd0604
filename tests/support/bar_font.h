// A bar code font of the test's own, in the encoding of the common fonts of its kind: made of rectangles, so
// that nothing has to be bought or fetched.
#pragma once

#include <QByteArray>
#include <QString>

namespace qk::test {

enum class BarFont { Code128, Code39, Ean13 };

/// A TrueType font named "Test Code 128", "Test Code 39" or "Test EAN 13".
QByteArray barFont(BarFont kind);
QString nameOf(BarFont kind);

}  // namespace qk::test
