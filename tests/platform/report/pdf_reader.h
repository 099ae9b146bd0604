// A PDF file as foreign programs (poppler) read it.
#pragma once

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/expectations.h"

namespace qk::test {

class PdfReader {
 public:
  explicit PdfReader(const QByteArray& pdf) {
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size()) failTest("no PDF file");
  }

  /// What a reader copies out of it, a line each.
  QStringList lines() const {
    QStringList found;
    for (const QString& line : run("pdftotext", {"-raw", path(), "-"}).split(u'\n'))
      if (const QString text = QString(line).remove(u'\f'); !text.isEmpty()) found << text;
    return found;
  }
  QString info() const { return run("pdfinfo", {path()}); }
  QString fonts() const { return run("pdffonts", {path()}); }
  QString pictures() const { return run("pdfimages", {"-list", path()}); }
  /// The first, as it is in the file.
  QImage picture() const {
    run("pdfimages", {"-png", path(), folder_.filePath("bild")});
    return QImage(folder_.filePath("bild-000.png"));
  }
  QImage page(int number, int dotsPerInch) const {
    const QString shown = QString::number(number);
    run("pdftoppm", {"-png", "-r", QString::number(dotsPerInch), "-f", shown, "-singlefile", path(),
                     folder_.filePath("seite")});
    return QImage(folder_.filePath("seite.png"));
  }

 private:
  QString path() const { return folder_.filePath("a.pdf"); }
  /// What the program says; nothing may be wrong with the file.
  static QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) failTest(program + " fails");
    const QByteArray complaints = process.readAllStandardError();
    if (!complaints.isEmpty()) failTest(program + ": " + QString::fromUtf8(complaints));
    return QString::fromUtf8(process.readAllStandardOutput());
  }

  QTemporaryDir folder_;
};

}  // namespace qk::test
