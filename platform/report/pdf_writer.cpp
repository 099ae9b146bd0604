#include "platform/report/pdf_writer.h"

#include <QBuffer>
#include <QCoreApplication>

namespace qk::report {

namespace {

constexpr double kPointsPerUnit = 72.0 / kUnitsPerInch;

QByteArray points(double units) {
  return QByteArray::number(units * kPointsPerUnit, 'f', 3);
}

/// The bytes that an image has of each pixel, without what fills its lines up.
QByteArray pixels(const QImage& image) {
  const qsizetype length = qsizetype(image.width()) * image.depth() / 8;
  QByteArray bytes;
  bytes.reserve(length * image.height());
  for (int y = 0; y < image.height(); ++y)
    bytes.append(reinterpret_cast<const char*>(image.constScanLine(y)), length);
  return bytes;
}

QByteArray entriesOf(const QImage& image, const char* colours) {
  return "/Type/XObject/Subtype/Image/Width " + QByteArray::number(image.width()) + "/Height " +
         QByteArray::number(image.height()) + "/BitsPerComponent 8/ColorSpace/" + colours;
}

}  // namespace

PdfWriter::PdfWriter(QIODevice& device, const Fonts& fonts, const QSizeF& sheet)
    : file_(device),
      texts_(fonts),
      content_(
          fonts, texts_, [this](const QImage& image) { return pictureName(image); }, sheet.height()),
      sheet_(sheet),
      pages_(file_.reserve()),
      resources_(file_.reserve()) {}

int PdfWriter::content(const PageItems& items) {
  return items.items.empty() ? 0 : file_.putStream({}, content_.of(items));
}

void PdfWriter::page(std::initializer_list<int> contents) {
  QByteArray shown;
  for (const int content : contents)
    if (content > 0) shown += PdfFile::reference(content) + " ";
  const int page =
      file_.put("<</Type/Page/Parent " + PdfFile::reference(pages_) + "/Contents[" + shown + "]>>");
  kids_ += PdfFile::reference(page) + "\n";
  ++pageCount_;
}

void PdfWriter::finish(const QString& title, const QDateTime& created) {
  QByteArray pictures;
  for (const int number : std::as_const(pictures_))
    pictures += "/P" + QByteArray::number(number) + " " + PdfFile::reference(number);
  const QByteArray fonts = texts_.write(file_);
  file_.put(resources_, "<</Font<<" + fonts + ">>/XObject<<" + pictures + ">>>>");
  file_.put(pages_, "<</Type/Pages/Count " + QByteArray::number(pageCount_) + "/MediaBox[0 0 " +
                        points(sheet_.width()) + " " + points(sheet_.height()) + "]/Resources " +
                        PdfFile::reference(resources_) + "/Kids[" + kids_ + "]>>");
  const QByteArray program = PdfFile::text(QCoreApplication::applicationName());
  QByteArray info = "<</Title " + PdfFile::text(title) + "/Creator " + program + "/Producer " + program;
  if (created.isValid()) info += "/CreationDate(D:" + created.toString("yyyyMMddHHmmss").toLatin1() + ")";
  const int root = file_.put("<</Type/Catalog/Pages " + PdfFile::reference(pages_) + "/Lang(de)>>");
  file_.finish(root, file_.put(info + ">>"));
}

QByteArray PdfWriter::pictureName(const QImage& image) {
  int& number = pictures_[image.cacheKey()];
  if (number == 0) number = writePicture(image);
  return "P" + QByteArray::number(number);
}

/// A photograph as JPEG where that takes less than half; whatever else exactly as it is.
int PdfWriter::writePicture(const QImage& image) {
  constexpr int kQuality = 90;
  QByteArray mask;
  if (image.hasAlphaChannel()) {
    const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
    mask = "/SMask " + PdfFile::reference(file_.putStream(entriesOf(alpha, "DeviceGray"), pixels(alpha)));
  }
  const QImage opaque = image.convertToFormat(QImage::Format_RGB888);
  const QByteArray entries = entriesOf(opaque, "DeviceRGB") + mask + "/Interpolate true";
  const QByteArray exact = PdfFile::compressed(pixels(opaque));
  QBuffer photograph;
  photograph.open(QIODevice::WriteOnly);
  if (opaque.save(&photograph, "JPEG", kQuality) && photograph.size() * 2 < exact.size())
    return file_.putEncoded(entries, "DCTDecode", photograph.data());
  return file_.putEncoded(entries, "FlateDecode", exact);
}

}  // namespace qk::report
