#include "tools/rundgang/shown_report.h"

#include <QFile>
#include <QFileInfo>

namespace qk {

void waitForModal(DrivenProgram& program, const QString& name) {
  program.waitUntil(name, [&] { return program.modal()["name"].toString() == name; });
}

void saveShownReport(DrivenProgram& program, const QString& pdf) {
  waitForModal(program, "ReportPreview");
  program.waitUntil("all pages", [&] { return !program.text("ReportPreview/lblSeiten").contains("…"); });
  program.grab(QString(pdf).replace(".pdf", ".png"));
  program.click("ReportPreview/cmdPdf");
  program.waitUntil("file dialog", [&] { return program.modal()["class"].toString() == "QFileDialog"; });
  program.type("fileNameEdit", QFileInfo(pdf).fileName());
  program.answer("", "Speichern");
  waitForModal(program, "ReportPreview");
  program.waitUntil("saved report", [&] { return QFile::exists(pdf); });
  program.click("ReportPreview/cmdSchliessen");
}

QString printedText(const QString& pdf) {
  QProcess reader;
  reader.start("pdftotext", {"-layout", pdf, "-"});
  if (!reader.waitForFinished() || reader.exitCode() != 0) throw DriverError(pdf + " can't be read");
  return QString::fromUtf8(reader.readAllStandardOutput());
}

}  // namespace qk
