#include "platform/report/parser.h"

#include <QFileInfo>
#include <QStringDecoder>
#include <functional>

#include "platform/report/band_parser.h"
#include "platform/report/formats.h"
#include "platform/report/report_error.h"
#include "platform/report/text_template.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"

namespace qk::report {

namespace {

constexpr qsizetype kLargestFile = 1 << 20;
constexpr size_t kMostParts = 50;
constexpr size_t kMostColumns = 100;
constexpr size_t kMostGroups = 9;

/// A section is a line without indentation; what is indented below it belongs to it.
class Parser {
 public:
  Parser(const QString& text, const QString& file) : lines_(splitLines(text)) { report_.file = file; }

  Definition parse() {
    for (int i = 0; i < lines_.size(); ++i) parseLine(i + 1, lines_[i]);
    endQuery();
    checkEnd();
    return std::move(report_);
  }

 private:
  using Rest = std::function<void(LineReader&)>;

  void parseLine(int number, const QString& text) {
    const QString inner = text.trimmed();
    if (inner.isEmpty() || inner.startsWith(u'#')) return;
    const bool indented = text.front().isSpace();
    if (indented && query_) {
      *query_ += (query_->isEmpty() ? "" : "\n") + inner;
      return;
    }
    LineReader words(report_.file, number, inner);
    if (!indented) {
      beginSection(words);
      words.end();
    } else if (!inside_) {
      words.fail("Diese Zeile ist eingerückt, gehört aber zu keinem Abschnitt.");
    } else {
      inside_(words);
    }
  }

  void beginSection(LineReader& words) {
    endQuery();
    inside_ = nullptr;
    if (!beginHead(words) && !beginPart(words))
      words.fail(QString("Den Abschnitt \"%1\" gibt es nicht.").arg(words.peek()));
  }

  bool beginHead(LineReader& words) {
    if (words.takes("Bericht"))
      report_.title = words.text("der Titel");
    else if (words.takes("Seite"))
      page(words);
    else if (words.takes("Parameter"))
      report_.parameters.push_back({words.name("der Parameter"), words.line()});
    else if (words.takes("Werte"))
      beginValues(words);
    else if (words.takes("Seitenkopf"))
      band(report_.pageHead);
    else if (words.takes("Seitenfuß"))
      band(report_.pageFoot);
    else
      return false;
    return true;
  }

  void beginValues(LineReader& words) {
    ValueQuery& values = report_.values.emplace_back();
    beginQuery(values.query, values.line, words);
  }

  bool beginPart(LineReader& words) {
    if (words.takes("Teil"))
      beginNewPart(words);
    else if (words.takes("Abfrage"))
      beginQuery(ownQuery(words), part().line, words);
    else if (words.takes("Tabelle"))
      ownQuery(words) = words.name("die Tabelle"), part().line = words.line();
    else if (words.takes("Anfang"))
      band(part().start);
    else if (words.takes("Zeile"))
      band(part().row);
    else if (words.takes("Ende"))
      band(part().end);
    else if (words.takes("Spalten"))
      inside_ = [this](LineReader& line) { column(line); };
    else
      return beginGroup(words);
    return true;
  }

  bool beginGroup(LineReader& words) {
    if (words.takes("Gruppe")) {
      if (part().groups.size() >= kMostGroups) words.fail("Das sind zu viele Gruppen.");
      Group& made = part().groups.emplace_back();
      made.line = words.line();
      made.value = words.value("die Spalte, nach der gruppiert wird");
      made.newPage = takesNewPage(words);
      inside_ = [this](LineReader& line) { groupLine(line); };
    } else if (words.takes("Gruppenkopf")) {
      band(group(words).head);
    } else if (words.takes("Gruppenfuß")) {
      band(group(words).foot);
    } else {
      return false;
    }
    return true;
  }

  void page(LineReader& words) {
    if (words.takes("A4"))
      report_.page = {210, 297};
    else if (words.takes("A5"))
      report_.page = {148, 210};
    else if (words.takes("A6"))
      report_.page = {105, 148};
    else if (words.nextIs(Token::Kind::Number)) {
      const double width = words.number("Breite der Seite in mm", 20, 1000);
      report_.page = {width, words.number("Höhe der Seite in mm", 20, 1000)};
    } else {
      words.fail("Hinter Seite steht A4, A5, A6 oder Breite und Höhe in mm.");
    }
    if (words.takes("quer"))
      report_.page.transpose();
    else
      words.takes("hoch");
    inside_ = [this](LineReader& line) { pageLine(line); };
  }

  void pageLine(LineReader& words) {
    if (words.takes("Ränder")) {
      const auto margin = [&](const char* side) {
        return words.number(QString("Rand %1 in mm").arg(side), 0, 500);
      };
      report_.margins.setTop(margin("oben"));
      report_.margins.setRight(margin("rechts"));
      report_.margins.setBottom(margin("unten"));
      report_.margins.setLeft(margin("links"));
    } else if (words.takes("Schrift")) {
      report_.font.family = words.text("der Name der Schrift");
      report_.font.points = words.number("Schriftgröße in Punkt", 3, 72);
    } else {
      words.fail("Unter Seite stehen Ränder und Schrift.");
    }
    words.end();
  }

  void beginNewPart(LineReader& words) {
    if (report_.parts.size() >= kMostParts) words.fail("Das sind zu viele Teile.");
    report_.parts.emplace_back();
    part().name = words.text("der Name des Teils");
    part().line = words.line();
    part().newPage = takesNewPage(words);
    inside_ = [this](LineReader& line) { partLine(line); };
  }

  void partLine(LineReader& words) {
    if (words.takes("Überschrift")) {
      part().heading = words.textTemplate("die Überschrift");
    } else if (words.takes("Leer")) {
      part().empty = words.textTemplate("was ohne Zeilen dasteht");
    } else if (words.takes("Weglassen")) {
      if (!words.takes("wenn") || !words.takes("leer")) words.fail("Es heißt: Weglassen wenn leer");
      part().leaveOut = true;
    } else if (words.takes("Nebeneinander")) {
      part().sideBySide = static_cast<int>(words.number("Zeilen nebeneinander", 1, 20));
      if (words.takes("Abstand")) part().gap = words.number("Abstand in mm", 0, 100);
    } else {
      words.fail("Unter Teil stehen Überschrift, Leer, Weglassen wenn leer und Nebeneinander.");
    }
    words.end();
  }

  /// A report without "Teil" is one.
  Part& part() {
    if (report_.parts.empty()) report_.parts.emplace_back();
    return report_.parts.back();
  }

  QString& ownQuery(LineReader& words) {
    if (!part().query.isEmpty()) words.fail("Dieser Teil hat schon eine Abfrage.");
    return part().query;
  }

  Group& group(LineReader& words) {
    if (part().groups.empty()) words.fail("Davor fehlt der Abschnitt Gruppe.");
    return part().groups.back();
  }

  void beginQuery(QString& query, int& line, LineReader& words) {
    line = words.line();
    query_ = &query;
    queryLine_ = line;
  }

  void endQuery() {
    if (query_ && query_->isEmpty()) fail(report_.file, queryLine_, "Die Abfrage fehlt.");
    query_ = nullptr;
  }

  void band(Band& target) {
    inside_ = [&target](LineReader& words) { parseBandLine(words, target); };
  }

  static bool takesNewPage(LineReader& words) {
    if (!words.takes("neue")) return false;
    if (!words.takes("Seite")) words.fail("Es heißt: neue Seite");
    return true;
  }

  void groupLine(LineReader& words) {
    Group& own = part().groups.back();
    if (words.takes("Titel"))
      own.title = words.textTemplate("der Titel der Gruppe");
    else if (words.takes("Summe"))
      own.sum = words.textTemplate("der Text vor den Summen");
    else
      words.fail("Unter Gruppe stehen Titel und Summe.");
    words.end();
  }

  void column(LineReader& words) {
    if (words.takes("Gesamt")) {
      part().total = words.textTemplate("der Text vor den Summen");
      words.end();
      return;
    }
    if (part().columns.size() >= kMostColumns) words.fail("Das sind zu viele Spalten.");
    Column made;
    made.line = words.line();
    made.heading = words.text("die Überschrift der Spalte");
    made.value =
        words.nextIs(Token::Kind::Text) ? words.textTemplate("der Wert") : words.value("der Wert der Spalte");
    if (words.nextIs(Token::Kind::Share)) {
      made.share = true;
      made.width = words.take().value;
    } else {
      made.width = words.number("Breite in mm oder *", 1, 1000);
    }
    while (!words.atEnd()) columnOption(words, made);
    part().columns.push_back(std::move(made));
  }

  void columnOption(LineReader& words, Column& column) {
    if (words.takes("links"))
      column.align = Align::Left;
    else if (words.takes("rechts"))
      column.align = Align::Right;
    else if (words.takes("mitte"))
      column.align = Align::Centre;
    else if (words.takes("fett"))
      column.bold = true;
    else if (words.takes("Summe"))
      column.summed = true;
    else if (words.takes("einzeilig"))
      column.oneLine = true;
    else if (words.takes("Höhe"))
      column.barHeight = words.number("Höhe in mm", 2, 100);
    else if (const auto kind = barKindNamed(words.peek()))
      column.bars = kind, words.take();
    else if (const auto format = formatNamed(words.peek()))
      columnFormat(words, column, *format);
    else
      words.end();
  }

  static void columnFormat(LineReader& words, Column& column, const Format& format) {
    if (column.value.pieces.size() != 1) words.fail("Das Format steht hier im Text: {Name:Format}.");
    column.value.pieces.front().format = format;
    words.take();
  }

  void checkEnd() const {
    const auto problem = [this](int line, const QString& text) { fail(report_.file, line, text); };
    if (report_.parts.empty()) problem(0, "Der Bericht enthält keine Abfrage und keinen Teil.");
    const QMarginsF& margins = report_.margins;
    if (report_.page.width() - margins.left() - margins.right() < 10 ||
        report_.page.height() - margins.top() - margins.bottom() < 10)
      problem(0, "Die Ränder lassen keinen Platz auf der Seite.");
    for (const Part& part : report_.parts)
      if (part.query.isEmpty() && (!part.columns.empty() || !part.groups.empty()))
        problem(part.line, "Zu den Spalten fehlt die Abfrage.");
  }

  QStringList lines_;
  Definition report_;
  QString* query_ = nullptr;  // where indented lines go
  Rest inside_;               // or what reads them
  int queryLine_ = 0;
};

QString textOf(const QByteArray& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  const QString text = utf8(bytes);
  return utf8.hasError() ? fromWindows1252(bytes) : text;
}

}  // namespace

Definition parseReport(const QString& text, const QString& file) {
  if (text.size() > kLargestFile) fail(file, 0, "Die Datei ist zu groß für einen Bericht.");
  if (text.contains(QChar(0))) fail(file, 0, "Die Datei ist kein Text.");
  return Parser(text, file).parse();
}

Definition readReport(Files& files, const QString& path) {
  const QFileInfo info(path);
  if (!files.exists(path)) fail(info.fileName(), 0, "Die Berichtsdatei fehlt.", errors::kFileNotFound);
  Definition report = parseReport(textOf(files.read(path)), info.fileName());
  report.folder = QFileInfo(files.resolve(path)).path();
  return report;
}

}  // namespace qk::report
