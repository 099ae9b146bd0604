// The handbook keeps up with the program: every message that the sources can show stands on its page, no link
// is dead, every page is in the contents.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <functional>

#include "app/shell/handbook.h"
#include "link/station_commands.h"
#include "tests/support/compare_lines.h"

using namespace qk;

namespace {

const QStringList kRooms = {"app",  "backup",     "capture",  "cash",         "evaluation",
                            "link", "masterdata", "shooters", "targetconfig", "platform/dialog"};

/// What the program fills in stands as "…" on the page.
QString unescaped(QString literal) {
  static const QRegularExpression filledIn("%L?[1-9]");
  literal.replace(filledIn, "…")
      .replace("\\r", " ")
      .replace("\\n", " ")
      .replace("\\t", " ")
      .replace("\\\"", "\"");
  return literal.simplified();
}

/// Everything from the opening parenthesis behind `from` to the closing one; lambdas are other routines'
/// text.
QString argumentsAt(const QString& source, qsizetype from) {
  QString arguments;
  int depth = 0, braces = 0;
  bool inText = false;
  for (qsizetype i = from; i < source.size(); ++i) {
    const QChar c = source[i];
    if (c == '"' && source[i - 1] != '\\') inText = !inText;
    if (!inText) {
      if (c == '(') ++depth;
      if (c == ')' && --depth == 0) break;
      if (c == '{') ++braces;
      if (c == '}') --braces;
    }
    if (braces == 0) arguments += c;
  }
  return arguments;
}

/// The texts between quotes, neighbours joined as the compiler joins them.
QStringList literalsIn(const QString& source) {
  static const QRegularExpression run(R"re((?:"(?:[^"\\\n]|\\.)*"\s*)+)re");
  static const QRegularExpression one(R"re("((?:[^"\\\n]|\\.)*)")re");
  QStringList found;
  for (auto match = run.globalMatch(source); match.hasNext();) {
    QString joined;
    const QString pieces = match.next().captured();
    for (auto piece = one.globalMatch(pieces); piece.hasNext();) joined += piece.next().captured(1);
    found << unescaped(joined);
  }
  return found;
}

/// Texts handed to the boxes, and texts elsewhere that read like one.
QStringList messagesOf(QString source) {
  static const QRegularExpression diagnosis(R"(\bq(?:CDebug|CInfo|Warning|CWarning)\(.*?;\n)",
                                            QRegularExpression::DotMatchesEverythingOption);
  source.remove(diagnosis);
  static const QRegularExpression call(
      R"re(\b(?:note|confirm|FehlerAnzeigen|fehlerReport|asked|askAll|report)(\())re");
  static const QRegularExpression notAMessage(
      R"(^[^a-zäöüA-ZÄÖÜ]*$|^(Fehler:?|Hinweis|QK-Intarso|_err!|!)$)");
  static const QRegularExpression readsLikeOne(R"(^Fehler bei|[a-zäöüß][!?]( |$))");
  QStringList messages;
  for (auto match = call.globalMatch(source); match.hasNext();)
    messages << literalsIn(argumentsAt(source, match.next().capturedStart(1)));
  for (const QString& literal : literalsIn(source))
    if (literal.contains(' ') && literal.contains(readsLikeOne)) messages << literal;
  messages.removeIf([](const QString& text) { return text.contains(notAMessage); });
  messages.removeDuplicates();
  return messages;
}

void forEachSource(const std::function<void(const QString& name, const QString& source)>& take) {
  for (const QString& room : kRooms) {
    QDirIterator walk(QStringLiteral(QK_SOURCE_DIR "/") + room, {"*.cpp", "*.h"}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      QFile file(walk.next());
      QVERIFY(file.open(QIODevice::ReadOnly));
      take(walk.fileName(), QString::fromUtf8(file.readAll()));
    }
  }
}

}  // namespace

class TestHandbook : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void findsTheMessagesOfASource();
  void everyMessageHasItsEntry();
  void everyStationCommandIsExplained();
  void noLinkIsDead();
  void everyPlaceThatTheProgramOpensIsThere();
  void everyPageIsInTheContents();
  void aMissingHandbookSaysSo();

 private:
  /// Whether the page is there, and on it the place, if one is named.
  bool isThere(const QString& page, const QString& place) {
    return files_.exists(QK_HANDBOOK "/" + page) &&
           (place.isEmpty() || handbook_.html(page).contains("name=\"" + place + '"'));
  }

  Files files_;
  Handbook handbook_{files_, QK_HANDBOOK};
};

void TestHandbook::findsTheMessagesOfASource() {
  const QString source = R"re(
    dialogs.note("Kein Schütze"
                 "\r\nauf der Linie " + name, BoxIcon::None, "Fehler");
    asked("Wirklich alle", [this] { send("99 'Rechner"); });
    reported(report("Fehler bei X_err!"), run);
    QString late() { return "Wirklich senden?"; }
    open("Select * from Schuss");
    note(QString("Linie %1 von %2 fehlt!").arg(line));
  )re";
  QCOMPARE(messagesOf(source),
           (QStringList{"Kein Schütze auf der Linie", "Wirklich alle", "Fehler bei X_err!",
                        "Linie … von … fehlt!", "Wirklich senden?"}));
}

void TestHandbook::everyMessageHasItsEntry() {
  QString entries;
  for (const HandbookPage& page : handbook_.pages())
    if (page.file == "meldungen.html") entries = page.text;
  QVERIFY(!entries.isEmpty());
  int known = 0;
  QStringList missing;
  forEachSource([&](const QString& name, const QString& source) {
    for (const QString& message : messagesOf(source)) {
      if (entries.contains(message))
        ++known;
      else
        missing << name + ": " + message;
    }
  });
  COMPARE_LINES(missing, QStringList());
  QVERIFY(known > 80);
}

/// The page's table is the one that is sent and read by, row for row.
void TestHandbook::everyStationCommandIsExplained() {
  static const QRegularExpression row("<tr><td><code>(.*)</code></td><td>(.*)</td><td>(.*)</td></tr>");
  QStringList explained, sent;
  const QString page = handbook_.html("befehle-von-hand.html");
  for (auto match = row.globalMatch(page); match.hasNext();) {
    const auto found = match.next();
    explained << found.captured(1).remove("<i>").remove("</i>") + "|" + found.captured(2) + "|" +
                     found.captured(3);
  }
  for (const StationCommand& command : stationCommands())
    sent << command.text() + command.argument + "|" + (command.wait ? "wartet" : "") + "|" + command.meaning;
  COMPARE_LINES(explained, sent);
}

void TestHandbook::noLinkIsDead() {
  static const QRegularExpression link("href=\"([^\"#]*)(?:#([^\"]*))?\"");
  int links = 0;
  for (const HandbookPage& page : handbook_.pages()) {
    const QString html = handbook_.html(page.file);
    for (auto match = link.globalMatch(html); match.hasNext();) {
      const auto found = match.next();
      const QString target = found.captured(1).isEmpty() ? page.file : found.captured(1);
      QVERIFY2(isThere(target, found.captured(2)), qPrintable(page.file + " -> " + found.captured()));
      ++links;
    }
  }
  QVERIFY(links > 30);
}

void TestHandbook::everyPlaceThatTheProgramOpensIsThere() {
  static const QRegularExpression place("\"([a-z-]+\\.html)(?:#([a-z]+))?\"");
  int places = 0;
  QStringList missing;
  forEachSource([&](const QString& name, const QString& source) {
    for (auto match = place.globalMatch(source); match.hasNext(); ++places) {
      const auto found = match.next();
      if (!isThere(found.captured(1), found.captured(2))) missing << name + ": " + found.captured();
    }
  });
  COMPARE_LINES(missing, QStringList());
  QVERIFY(places > 5);
}

void TestHandbook::everyPageIsInTheContents() {
  QStringList listed;
  for (const HandbookPage& page : handbook_.pages()) {
    listed << page.file;
    QVERIFY2(page.text.size() > 100, qPrintable(page.file));
  }
  listed.sort();
  COMPARE_LINES(listed, files_.list(QK_HANDBOOK, "*.html"));
}

void TestHandbook::aMissingHandbookSaysSo() {
  const Handbook nothing(files_, QK_HANDBOOK "/fehlt");
  QVERIFY(nothing.pages().empty());
  QVERIFY(nothing.html(Handbook::Contents).contains("Seite fehlt"));
}

QTEST_GUILESS_MAIN(TestHandbook)
#include "test_handbook.moc"
