// The texts of a report as strings of codes in the faces of a PDF file.
//
// Letters of European scripts stand beside each other as they were measured (measure.h): one string, one
// operator. Whatever else is in a text (marks that combine, writing from right to left, characters that the
// font lacks) makes the toolkit shape it, and each glyph goes where it says.
#pragma once

#include <map>

#include "platform/report/measure.h"
#include "platform/report/page_items.h"
#include "platform/report/pdf_face.h"

namespace qk::report {

/// Glyphs of one face that are shown in one go.
struct PdfString {
  const PdfFace* face = nullptr;
  int code = 0;  ///< the first; face and code tell the name
  std::string codes = {};
  bool follows = false;  ///< stands where the one before ends; else at `from`
  QPointF from = {};     ///< from where the text begins on its base line, in units of the page
  bool slanted = false, emboldened = false;
};

class PdfTexts {
 public:
  explicit PdfTexts(const Fonts& fonts) : fonts_(fonts) {}

  /// What shows a text; valid until the next is asked for.
  const std::vector<PdfString>& strings(const TextItem& item);
  /// Writes all faces that were used. Gives the entries that lead to them.
  QByteArray write(PdfFile& file) const;

 private:
  /// One of the report's fonts: what its European letters are in its face.
  struct Letters {
    explicit Letters(const QFont& font);
    QRawFont font;
    PdfFace* face = nullptr;
    std::vector<int> codes;  ///< by character; below 0: not asked yet, or to be shaped
  };
  bool addLetters(Letters& letters, const QString& text);
  int codeOf(Letters& letters, QChar letter);
  PdfFace& face(const QRawFont& font);
  Letters& letters(int font);

  const Fonts& fonts_;
  std::map<QString, PdfFace> faces_;
  std::map<int, Letters> letters_;
  std::vector<PdfString> strings_;
};

}  // namespace qk::report
