// A face of a font in a PDF file (ISO 32000-1, 9.6 to 9.10): characters get codes in the order of their first
// use, and the file gets the shapes of those that were used, with what characters they stand for: what is
// marked in a viewer is copied as the text that it was.
//
// TrueType outlines go in as they are, cut down by HarfBuzz. Every other face (PostScript outlines, variable
// ones, those that their maker doesn't want to see embedded) is drawn: each glyph a small picture of lines.
#pragma once

#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <string>
#include <vector>

#include "platform/report/pdf_file.h"

namespace qk::report {

class PdfFace {
 public:
  /// `number` makes its name in the file.
  PdfFace(const QRawFont& font, int number);

  /// The code of a glyph that stands for these characters; none where they are told otherwise.
  int code(quint32 glyph, const QString& characters);
  /// A text is shown by one name; a drawn face has one for each 256 of its codes.
  QByteArray name(int code) const;
  bool sameName(int one, int other) const { return !drawn_ || one / kDrawnCodes == other / kDrawnCodes; }
  /// Adds the code to a string of its name.
  void append(std::string& string, int code) const;

  /// The face lacks what was asked of it, and the toolkit makes it up on the screen. Drawn glyphs have it.
  bool isSlantedByHand() const { return slantedByHand_; }
  bool isEmboldenedByHand() const { return emboldenedByHand_; }

  /// Writes the face. Gives the entries that lead to it from its names.
  QByteArray write(PdfFile& file) const;

 private:
  static constexpr int kDrawnCodes = 256;
  struct Used {
    quint32 glyph = 0;
    QString characters;
    double advance = 0;  ///< in units of the face
  };

  QByteArray writeEmbedded(PdfFile& file) const;
  QByteArray writeDrawn(PdfFile& file, size_t first) const;
  QByteArray drawing(const Used& used, QRectF& bounds) const;
  int writeCharacters(PdfFile& file, size_t first, size_t end) const;
  QByteArray descriptor(const QByteArray& name, int program) const;

  QRawFont font_;  ///< one pixel is one unit of the face
  int number_;
  bool drawn_ = false;
  bool slantedByHand_ = false, emboldenedByHand_ = false;
  std::vector<Used> used_;  ///< by code
  QHash<std::pair<quint32, QString>, int> codes_;
};

}  // namespace qk::report
