#include "cash/article_codes.h"

#include "cash/article_number.h"
#include "cash/barcode_text.h"

namespace qk {
namespace {

constexpr int kEanDigits = 12;  // without the check digit

QString eanSource(const QString& number) {
  if (number.isEmpty() || number.size() >= kEanDigits) return number.left(kEanDigits);
  return u'4' + (QString(kEanDigits, u'0') + number).right(kEanDigits - 1);
}

}  // namespace

ArticleCodes artikelCodes(const QString& ArtikelNr) {
  ArticleCodes codes;
  codes.gekuerzt = ArtikelNr.size() > kEanDigits;
  codes.ArtikelNr = ArtikelNr.left(kEanDigits);
  codes.EAN13 = EAN13Text(eanSource(codes.ArtikelNr));
  codes.CODE128 = Code128Text(codes.ArtikelNr);
  codes.CODE39 = Code39Text(codes.ArtikelNr);
  return codes;
}

bool kommtZurueck(const QString& ArtikelNr) {
  const ArticleCodes codes = artikelCodes(ArtikelNr);
  if (codes.EAN13.isEmpty()) return true;  // nothing is printed that could be misread
  const QString anyCheckDigit = "0";
  return ArtikelNummerAusText(eanSource(codes.ArtikelNr) + anyCheckDigit) == codes.ArtikelNr;
}

}  // namespace qk
