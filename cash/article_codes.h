// What is stored with an article number: the same number as strings for bar code fonts.
#pragma once

#include <QString>

namespace qk {

struct ArticleCodes {
  QString ArtikelNr;      ///< as it is stored: at most twelve characters where it had thirteen or more
  bool gekuerzt = false;  ///< it was cut
  QString EAN13, CODE128, CODE39;
};

/// EAN-13 takes twelve digits as they stand; a shorter number is filled up to "4", zeros and the number. A
/// number that isn't digits has no EAN-13.
ArticleCodes artikelCodes(const QString& ArtikelNr);

/// Whether a scanner's reading of the printed EAN-13 leads back to the number. Numbers of 9 to 11 digits or
/// with leading zeros don't: what fills them up is taken off again.
bool kommtZurueck(const QString& ArtikelNr);

}  // namespace qk
