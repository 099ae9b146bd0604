// Bar codes as strings for a bar code font: the content with start, checksum and stop in the font's own
// characters. Public standards: Code 128 (ISO/IEC 15417), Code 39 (ISO/IEC 16388), EAN-13 (ISO/IEC 15420).
//
// The Code 128 font shows value v as the character v + 32 below 95, else v + 105; its start characters are
// 209 (table B) and 210 (table C), 204 and 205 switch to C and B, 211 stops. All are characters of Latin-1.
#pragma once

#include <QString>

namespace qk {

enum class BarcodeKind { Code128 = 0, Code39 = 1, Ean13 = 2 };  ///< as stored in `BarcodeAuswahl`

/// Empty for an empty text, or one with a character outside 32…126 other than 203.
QString Code128Text(const QString& s);
/// The text between asterisks; empty for an empty text. The characters are not checked.
QString Code39Text(const QString& s);
/// Empty unless `s` is exactly twelve digits; the check digit is worked out.
QString EAN13Text(const QString& s);
/// The string of that kind.
QString barcodeText(BarcodeKind kind, const QString& content);

/// What a label's bar code says: "BC." + start number + "." + kind + "." + id. `kind` is 1 for a discipline,
/// 2 for a combination.
QString labelContent(const QString& sStartNr, int kind, int id);
/// The same for EAN-13, twelve digits: "400", four of the shooter's ID, the kind, four of the id.
QString labelContentEan(int schuetzeId, int kind, int id);

}  // namespace qk
