// qk-encoders: bar codes of random contents, encoded, reckoned again, drawn and read. Exit status 0 only when
// each one says what it was made of.
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTextStream>

#include "cash/barcode_text.h"
#include "platform/print/bar_reader.h"
#include "platform/runtime/program_call.h"
#include "tests/cash/symbol_reader.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kModule = 2, kHeight = 24, kQuiet = 30;  // pixels
const QString kCode39 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";

/// What a scanner reads of the bars that are drawn for the content.
QString scanned(Symbology symbology, const QString& content) {
  const std::vector<bool> modules = barModules(symbology, content);
  QImage image(static_cast<int>(modules.size()) * kModule + 4 * kQuiet, kHeight, QImage::Format_Grayscale8);
  image.fill(Qt::white);
  QPainter painter(&image);
  paintBars(painter, QPoint(kQuiet, 0), modules, kModule, kHeight);
  painter.end();
  return readBars(image, symbology);
}

QString randomText(QRandomGenerator& random, const std::function<QChar()>& letter) {
  QString text;
  for (int length = random.bounded(1, 24); length > 0; --length) text += letter();
  return text;
}

class Run {
 public:
  explicit Run(const char* name) : name_(name) {}
  ~Run() { QTextStream(stdout) << name_ << ": " << made_ << " made, " << wrong_ << " wrong" << Qt::endl; }

  void check(const QString& content, bool encodes, const QString& read, Symbology symbology) {
    ++made_;
    if (encodes && saysTheSame(read, content, symbology)) return;
    if (++wrong_ <= 10) QTextStream(stderr) << name_ << ": " << content << " reads " << read << Qt::endl;
  }
  bool good() const { return wrong_ == 0; }

 private:
  const char* name_;
  int made_ = 0, wrong_ = 0;
};

bool code128(int count, QRandomGenerator random) {
  Run run("Code 128");
  for (int i = 0; i < count; ++i) {
    const QString text = randomText(random, [&] {
      return QChar(
          static_cast<ushort>(random.bounded(2) ? random.bounded(u'0', u'9' + 1) : random.bounded(32, 127)));
    });
    run.check(text, decoded128(Code128Text(text)) == text, scanned(Symbology::Code128, text),
              Symbology::Code128);
  }
  return run.good();
}

bool code39(int count, QRandomGenerator random) {
  Run run("Code 39");
  for (int i = 0; i < count; ++i) {
    const QString text = randomText(random, [&] { return kCode39[random.bounded(kCode39.size())]; });
    run.check(text, Code39Text(text) == u'*' + text + u'*', scanned(Symbology::Code39, text),
              Symbology::Code39);
  }
  return run.good();
}

/// All endings of a shooter's number, for disciplines and combinations.
bool ean13(QRandomGenerator random) {
  Run run("EAN 13");
  for (int kind = 1; kind <= 2; ++kind)
    for (int shooter = 0; shooter < 10000; ++shooter) {
      const QString content = labelContentEan(shooter, kind, random.bounded(10000));
      const QString digits = decoded13(EAN13Text(content));
      run.check(content, digits.left(12) == content && checks13(digits), scanned(Symbology::Ean13, content),
                Symbology::Ean13);
    }
  return run.good();
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"anzahl", "How many of Code 128 and of Code 39.", "N", "100000"});
  parser.addOption({"zufall", "Seed of all chance.", "N", "1"});
  if (answeredCall(app.arguments().mid(1), "qk-encoders", parser.helpText())) return 0;
  parser.process(app);
  const int count = parser.value("anzahl").toInt();
  const QRandomGenerator random(parser.value("zufall").toUInt());
  const bool all[] = {ean13(random), code128(count, random), code39(count, random)};
  return all[0] && all[1] && all[2] ? 0 : 1;
}
