// Writes pages into a PDF file (ISO 32000-1), as they come: whatever stands on one is on the device before
// the next is made. Texts can be searched and copied.
//
//   PdfWriter pdf(device, fonts, size);
//   const int body = pdf.content(items);   // any number of them
//   pdf.page({head, body});                // one over the other, in whatever order they came
//   pdf.finish(title, created);
//
// No library does it: those that were tried, the toolkit's too, write each letter by itself, and a list of
// fifty thousand rows took them several times as long as laying it out.
#pragma once

#include <QDateTime>
#include <QHash>

#include "platform/report/pdf_content.h"

namespace qk::report {

class PdfWriter {
 public:
  /// `sheet` in units of a page. Device and fonts outlive the writer. What can't be written is Error 75.
  PdfWriter(QIODevice& device, const Fonts& fonts, const QSizeF& sheet);
  PdfWriter(const PdfWriter&) = delete;
  PdfWriter& operator=(const PdfWriter&) = delete;

  /// The number of what stands on a page or a part of it; 0 where that is nothing.
  int content(const PageItems& items);
  void page(std::initializer_list<int> contents);
  void finish(const QString& title, const QDateTime& created);

 private:
  QByteArray pictureName(const QImage& image);
  int writePicture(const QImage& image);

  PdfFile file_;
  PdfTexts texts_;
  PdfContent content_;
  QSizeF sheet_;
  int pages_, resources_;  ///< their numbers
  QByteArray kids_;
  int pageCount_ = 0;
  QHash<qint64, int> pictures_;  ///< by the key of the image
};

}  // namespace qk::report
