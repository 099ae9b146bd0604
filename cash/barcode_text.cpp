#include "cash/barcode_text.h"

#include <algorithm>

namespace qk {
namespace {

constexpr ushort kFunctionCharacter = 203;
constexpr ushort kToTableC = 204, kToTableB = 205;
constexpr ushort kStartB = 209, kStartC = 210, kStop = 211;
constexpr int kModulus = 103;

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool areDigits(QStringView text) {
  return std::all_of(text.begin(), text.end(), isDigit);
}

bool isPrintable128(QChar c) {
  return (c.unicode() >= 32 && c.unicode() <= 126) || c.unicode() == kFunctionCharacter;
}

QChar characterOf(int value) {
  return QChar(static_cast<ushort>(value < 95 ? value + 32 : value + 105));
}

int valueOf(QChar c) {
  return c.unicode() < 127 ? c.unicode() - 32 : c.unicode() - 105;
}

int digitAt(const QString& digits, qsizetype position) {  // position from 1
  return digits[position - 1].digitValue();
}

int checksum128(const QString& symbols) {
  int sum = valueOf(symbols.front());
  for (qsizetype i = 1; i < symbols.size(); ++i)
    sum = static_cast<int>((sum + i * valueOf(symbols[i])) % kModulus);
  return sum;
}

QChar checkDigit13(const QString& twelve) {
  int even = 0, odd = 0;
  for (qsizetype position = 12; position >= 2; position -= 2) even += digitAt(twelve, position);
  for (qsizetype position = 11; position >= 1; position -= 2) odd += digitAt(twelve, position);
  return QChar(static_cast<ushort>(u'0' + (10 - (3 * even + odd) % 10) % 10));
}

QString lastFour(int number) {
  return ("0000" + QString::number(number)).right(4);
}

}  // namespace

QString Code128Text(const QString& s) {
  if (s.isEmpty() || !std::all_of(s.begin(), s.end(), isPrintable128)) return {};
  QString symbols;
  bool tableB = true;
  for (qsizetype at = 0; at < s.size();) {
    if (tableB) {
      // Four digits pay at either end, six within: a switch costs a symbol on each side.
      const qsizetype needed = at == 0 || at + 4 == s.size() ? 4 : 6;
      if (at + needed <= s.size() && areDigits(QStringView(s).mid(at, needed))) {
        symbols += QChar(at == 0 ? kStartC : kToTableC);
        tableB = false;
      } else if (at == 0) {
        symbols += QChar(kStartB);
      }
    }
    if (!tableB) {
      if (at + 2 <= s.size() && areDigits(QStringView(s).mid(at, 2))) {
        symbols += characterOf(QStringView(s).mid(at, 2).toInt());
        at += 2;
      } else {
        symbols += QChar(kToTableB);
        tableB = true;
      }
    }
    if (tableB) symbols += s[at++];
  }
  return symbols + characterOf(checksum128(symbols)) + QChar(kStop);
}

QString Code39Text(const QString& s) {
  return s.isEmpty() ? QString() : u'*' + s + u'*';
}

QString EAN13Text(const QString& s) {
  if (s.size() != 12 || !areDigits(s)) return {};
  // Left half: which first digits draw positions 3 to 7 with odd parity (the standard's table, by position).
  static const QString kOddParity[] = {"0123", "0478", "01459", "02567", "03689"};
  const QString digits = s + checkDigit13(s);
  const auto letter = [&](qsizetype position, int base) {
    return QChar(static_cast<ushort>(base + digitAt(digits, position)));
  };
  QString symbols = digits.left(1) + letter(2, 'A');
  for (int i = 0; i < 5; ++i) symbols += letter(3 + i, kOddParity[i].contains(digits[0]) ? 'A' : 'K');
  symbols += u'*';
  for (qsizetype position = 8; position <= 13; ++position) symbols += letter(position, 'a');
  return symbols + u'+';
}

QString barcodeText(BarcodeKind kind, const QString& content) {
  switch (kind) {
    case BarcodeKind::Code128:
      return Code128Text(content);
    case BarcodeKind::Code39:
      return Code39Text(content);
    case BarcodeKind::Ean13:
      return EAN13Text(content);
  }
  return {};
}

QString labelContent(const QString& sStartNr, int kind, int id) {
  return QString("BC.%1.%2.%3").arg(sStartNr, QString::number(kind), QString::number(id));
}

QString labelContentEan(int schuetzeId, int kind, int id) {
  return "400" + lastFour(schuetzeId) + QString::number(kind) + lastFour(id);
}

}  // namespace qk
