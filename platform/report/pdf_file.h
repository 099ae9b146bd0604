// The objects of a PDF file (ISO 32000-1, chapter 7), written to a device one after another: nothing of them
// is kept but where they begin.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>
#include <vector>

class QIODevice;

namespace qk::report {

class PdfFile {
 public:
  /// The device is open, and outlives the file. Whatever can't be written is Error 75.
  explicit PdfFile(QIODevice& device);

  /// The number of an object that is written later, and may be named before.
  int reserve();
  void put(int number, const QByteArray& content);
  int put(const QByteArray& content);
  /// `entries` of its dictionary, without length and filter; the data are compressed here, if they aren't
  /// yet.
  int putStream(const QByteArray& entries, QByteArrayView data);
  int putEncoded(const QByteArray& entries, const QByteArray& filter, const QByteArray& data);
  /// Ends the file; `root` and `info` are the numbers of its catalogue and of what is told about it.
  void finish(int root, int info);

  /// As "FlateDecode" reads it.
  static QByteArray compressed(QByteArrayView data);
  static QByteArray reference(int number) { return QByteArray::number(number) + " 0 R"; }
  /// A text as people read it, in a dictionary.
  static QByteArray text(QStringView text);

 private:
  void begin(int number);
  void write(const QByteArray& bytes);

  QIODevice& device_;
  qint64 written_ = 0;
  std::vector<qint64> starts_;  ///< of object 1, 2 …
};

/// Characters as big-endian UTF-16, in hexadecimal digits.
QByteArray pdfHex(QStringView text);

}  // namespace qk::report
