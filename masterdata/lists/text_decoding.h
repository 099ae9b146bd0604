// The bytes of a text file as text, whichever of the usual encodings they are in.
#pragma once

#include <QByteArray>
#include <QString>

namespace qk::lists {

struct DecodedText {
  QString text;      ///< without a byte order mark, an umlaut as one character (Unicode's form C)
  QString encoding;  ///< "UTF-8", "UTF-16", "Windows-1252"
  QString refusal;   ///< a German sentence: no text, or a mixture of encodings; else empty
};

DecodedText decodedText(const QByteArray& bytes);

}  // namespace qk::lists
