#include "platform/report/pdf_file.h"

#include <QFileDevice>

#include "platform/runtime/error.h"

namespace qk::report {

namespace {

constexpr int kFast = 1;  // of the levels of compressing

}  // namespace

PdfFile::PdfFile(QIODevice& device) : device_(device) {
  write("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");  // bytes above 127 keep it from being taken for a text
}

int PdfFile::reserve() {
  starts_.push_back(0);
  return static_cast<int>(starts_.size());
}

void PdfFile::begin(int number) {
  starts_[static_cast<size_t>(number) - 1] = written_;
  write(QByteArray::number(number) + " 0 obj\n");
}

void PdfFile::put(int number, const QByteArray& content) {
  begin(number);
  write(content + "\nendobj\n");
}

int PdfFile::put(const QByteArray& content) {
  const int number = reserve();
  put(number, content);
  return number;
}

int PdfFile::putStream(const QByteArray& entries, QByteArrayView data) {
  return putEncoded(entries, "FlateDecode", compressed(data));
}

QByteArray PdfFile::compressed(QByteArrayView data) {
  constexpr int kLengthBefore = 4;  // the toolkit's own, before the stream of zlib
  return qCompress(reinterpret_cast<const uchar*>(data.data()), data.size(), kFast).sliced(kLengthBefore);
}

int PdfFile::putEncoded(const QByteArray& entries, const QByteArray& filter, const QByteArray& data) {
  const int number = reserve();
  begin(number);
  write("<<" + entries + "/Filter/" + filter + "/Length " + QByteArray::number(data.size()) + ">>\nstream\n");
  write(data);
  write("\nendstream\nendobj\n");
  return number;
}

void PdfFile::finish(int root, int info) {
  const qint64 start = written_;
  const QByteArray count = QByteArray::number(starts_.size() + 1);
  QByteArray table = "xref\n0 " + count + "\n0000000000 65535 f \n";
  for (const qint64 place : starts_)
    table += QByteArray::number(place).rightJustified(10, '0') + " 00000 n \n";
  write(table);
  write("trailer\n<</Size " + count + "/Root " + reference(root) + "/Info " + reference(info) +
        ">>\nstartxref\n" + QByteArray::number(start) + "\n%%EOF\n");
  if (auto* file = qobject_cast<QFileDevice*>(&device_); file && !file->flush())
    throw Error(errors::kPathAccess);
}

void PdfFile::write(const QByteArray& bytes) {
  if (device_.write(bytes) != bytes.size()) throw Error(errors::kPathAccess);
  written_ += bytes.size();
}

QByteArray PdfFile::text(QStringView text) {
  return "<FEFF" + pdfHex(text) + ">";
}

QByteArray pdfHex(QStringView text) {
  QByteArray bytes;
  for (const QChar c : text) bytes += QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
  return bytes;
}

}  // namespace qk::report
