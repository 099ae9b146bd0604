#include "masterdata/lists/text_decoding.h"

#include <QStringDecoder>

#include "platform/runtime/textcodec.h"

namespace qk::lists {

namespace {

constexpr QByteArrayView Utf8Mark = "\xEF\xBB\xBF";

QString noText() {
  return "Die Datei ist keine Textdatei. Eine Arbeitsmappe bitte zuerst in der Tabellenkalkulation als CSV "
         "speichern.";
}

/// What a walk over bytes as UTF-8 finds. Text in an 8-bit code page has hardly ever a whole character of
/// several bytes in it, so one of those beside a torn one means that two encodings meet.
struct Utf8Look {
  int whole = 0;      ///< characters of several bytes
  int tornLine = -1;  ///< line of the first byte that is none, from 1
};

/// How many bytes follow the first one of a character; -1 for a byte that begins none.
int followers(uchar first) {
  if (first < 0x80) return 0;
  if (first >= 0xC2 && first <= 0xDF) return 1;
  if (first >= 0xE0 && first <= 0xEF) return 2;
  if (first >= 0xF0 && first <= 0xF4) return 3;
  return -1;
}

Utf8Look lookAt(QByteArrayView bytes) {
  Utf8Look found;
  int line = 1;
  for (qsizetype at = 0; at < bytes.size();) {
    const auto first = static_cast<uchar>(bytes[at]);
    if (first == '\n') ++line;
    const int more = followers(first);
    int good = 0;
    while (good < more && at + 1 + good < bytes.size() &&
           (static_cast<uchar>(bytes[at + 1 + good]) & 0xC0) == 0x80)
      ++good;
    if (more > 0 && good == more) ++found.whole;
    if (more < 0 || good < more) {
      if (found.tornLine < 0) found.tornLine = line;
      ++at;
    } else {
      at += 1 + more;
    }
  }
  return found;
}

DecodedText fromUtf16(const QByteArray& bytes) {
  QStringDecoder decode(QStringDecoder::Utf16);
  DecodedText result{decode(bytes), "UTF-16", {}};
  if (decode.hasError() || bytes.size() % 2 != 0)
    result.refusal = "Die Datei ist beschädigt: Ihr UTF-16-Text bricht mitten in einem Zeichen ab.";
  return result;
}

DecodedText fromBytes(const QByteArray& bytes) {
  const Utf8Look look = lookAt(bytes);
  if (look.tornLine < 0) return {QString::fromUtf8(bytes), "UTF-8", {}};
  if (look.whole > 0)
    return {
        {},
        {},
        QString("In der Datei mischen sich zwei Zeichensätze (UTF-8 und ein anderer, zuerst in Zeile %1). "
                "Umlaute würden falsch gelesen. Bitte die Datei neu als CSV UTF-8 speichern.")
            .arg(look.tornLine)};
  return {fromWindows1252(bytes), "Windows-1252", {}};
}

}  // namespace

DecodedText decodedText(const QByteArray& bytes) {
  DecodedText result;
  if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
    result = fromUtf16(bytes);
  } else if (bytes.contains('\0')) {
    result.refusal = noText();  // before all the rest: the look for encodings would only guess
  } else if (bytes.startsWith(Utf8Mark)) {
    const QByteArray inner = bytes.sliced(Utf8Mark.size());
    const Utf8Look look = lookAt(inner);
    if (look.tornLine < 0)
      result = {QString::fromUtf8(inner), "UTF-8", {}};
    else
      result.refusal =
          QString("Die Datei nennt sich UTF-8, ist es aber ab Zeile %1 nicht.").arg(look.tornLine);
  } else {
    result = fromBytes(bytes);
  }
  if (result.refusal.isEmpty() && result.text.contains(QChar(u'\0'))) result.refusal = noText();
  result.text = result.text.normalized(QString::NormalizationForm_C);
  return result;
}

}  // namespace qk::lists
