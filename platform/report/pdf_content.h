// What stands on a page as operators of a PDF file (ISO 32000-1, chapter 8 and 9.4). Numbers are whole:
// tenths of a unit of the page.
#pragma once

#include <functional>

#include "platform/report/pdf_texts.h"

namespace qk::report {

/// Gives the name in the file under which a picture is shown.
using NameOfPicture = std::function<QByteArray(const QImage&)>;

class PdfContent {
 public:
  /// `height`: of the sheet, in units of a page. All of them outlive the content.
  PdfContent(const Fonts& fonts, PdfTexts& texts, NameOfPicture pictures, double height);

  /// Valid until the next.
  const std::string& of(const PageItems& page);

  void operator()(const TextItem& item);
  void operator()(const LineItem& item);
  void operator()(const BoxItem& item);
  void operator()(const PictureItem& item);
  void operator()(const BarItem& item);

 private:
  /// What the operators before have set.
  struct State {
    QRgb fill = qRgb(0, 0, 0), stroke = qRgb(0, 0, 0);
    long width = 10;
    const PdfFace* face = nullptr;
    int code = 0;  ///< whose name is set
    int fontSize = 0;
    bool emboldened = false;
    bool inText = false, slanted = false;
    long x = 0, y = 0;  ///< where the last string begins
  };

  void add(long number);
  void add(const char* operators) { out_ += operators; }
  void add(const QPointF& point);
  void add(const QRectF& box);
  void colour(QRgb& known, QRgb wanted, const char* operators);
  void width(double width);
  void endText();
  void show(const PdfString& string, const TextItem& item);
  void font(const PdfString& string, const TextItem& item);
  void place(const QPointF& at, bool slanted);

  const Fonts& fonts_;
  PdfTexts& texts_;
  NameOfPicture pictures_;
  double height_;
  std::string out_;
  State state_;
};

}  // namespace qk::report
