#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <QTest>
#include <algorithm>

#include "platform/runtime/textcodec.h"
#include "tests/link/plain_line.h"
#include "tests/link/records.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

int errorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

/// A file that a look finds and nobody can open, whatever his rights: a socket.
class UnreadableFile {
 public:
  explicit UnreadableFile(const QString& path) : socket_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::copy_n(name.constData(), std::min<size_t>(size_t(name.size()), sizeof address.sun_path - 1),
                address.sun_path);
    if (::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
      failTest("no socket at " + path);
  }
  ~UnreadableFile() { ::close(socket_); }
  UnreadableFile(const UnreadableFile&) = delete;
  UnreadableFile& operator=(const UnreadableFile&) = delete;

 private:
  int socket_;
};

const QString question =
    "Achtung: Der zuletzt gesendete Befehl an der Linie (3)\r\nwurde noch nicht von ESA-Intarso "
    "übernommen!\r\n\r\n"
    "Wollen Sie fortfahren (und die Abarbeitung des letzten Befehl abwarten)?";

}  // namespace

class TestExchange : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<PlainLine> line_;
  std::unique_ptr<LineExchange> exchange_;
  QList<SendState> states_;
  QList<QDateTime> ticks_;

  QString file(const QString& name) const { return place_->path("austausch/" + name); }
  QString protocol(const QString& name) const { return place_->path("daten/" + name); }
  QByteArray content(const QString& name) { return place_->files.read(file(name)); }
  bool exists(const QString& name) { return place_->files.exists(file(name)); }
  void put(const QString& name, const QByteArray& bytes) { place_->files.write(file(name), bytes); }
  void switchOn(const QString& protocolKey) {
    place_->settings.setValue("Tarvex", "Häring", protocolKey, "1");
  }

  /// What the station does to report lines.
  void report(const QStringList& lines) {
    put("HSlav3.nrt", toWindows1252(lines.join("\r\n") + "\r\n"));
    put("HSlav3.ctl", "\"\"\r\n");
    place_->files.clearJournal();
  }
  void stationTakes() { place_->files.remove(file("HServ3.ctl")); }
  /// The commands sent so far, the station taking each in the wait after it.
  QStringList commands_;
  void stationListens() {
    place_->files.before([this](FileStep step, const QString& path) {
      if (step == FileStep::Write && path.endsWith("HServ3.ctl"))
        commands_ << fromWindows1252(Files().read(file("HServ3.nrt"))).remove('"').trimmed();
    });
    place_->waits.inEachSleep([this](int) {
      if (exists("HServ3.ctl")) stationTakes();
    });
  }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    place_->files.makeFolder(place_->path("austausch"));
    place_->files.makeFolder(place_->path("daten"));
    line_ = std::make_unique<PlainLine>();
    exchange_ = std::make_unique<LineExchange>(place_->workplace(), *line_);
    exchange_->setNetzverzeichnis(place_->path("austausch"));
    exchange_->setDatenverzeichnis(place_->path("daten"));
    exchange_->setLinie(3);
    states_.clear();
    ticks_.clear();
    commands_.clear();
    exchange_->onSendState = [this](SendState state) { states_ << state; };
    exchange_->onTick = [this](const QDateTime& time) { ticks_ << time; };
    place_->files.clearJournal();
  }
  void cleanup() {
    exchange_.reset();
    line_.reset();
    place_.reset();
  }

  // --- sending ---

  void writesDataThenFlag() {
    exchange_->Output_2_ESA("50 'Zurück zu Windows", true);
    QCOMPARE(place_->files.journal(), (QStringList{"write HServ3.nrt", "write HServ3.ctl"}));
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"50 'Zur\xFC"
                                               "ck zu Windows\"\r\n"));
    QCOMPARE(content("HServ3.ctl"), QByteArray("\"\"\r\n"));
    QCOMPARE(states_, (QList{SendState::Sent, SendState::Hidden}));
    QVERIFY(place_->waits.sleeps().isEmpty());
  }

  void lineNumberIsPlain() {
    exchange_->setLinie(12);
    exchange_->Output_2_ESA("76", false);
    QVERIFY(exists("HServ12.nrt") && exists("HServ12.ctl"));
  }

  void unknownCharactersGoOutAsQuestionMarks() {
    exchange_->Output_2_ESA("75107 ; Łukasz \"L\"", false);
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"75107 ; ?ukasz \"L\"\"\r\n"));
  }

  void nothingToSend() {
    switchOn("SendeProtokollAktiv");
    exchange_->Output_2_ESA("   ", true);
    exchange_->Output_2_ESA("", false);
    exchange_->setLinie(0);
    exchange_->Output_2_ESA("76", true);
    QVERIFY(place_->files.journal().isEmpty());
    QVERIFY(states_.isEmpty());
  }

  void overwritesWithoutWaiting() {
    switchOn("SendeProtokollAktiv");
    exchange_->Output_2_ESA("H014", false);
    put("HServ3.ctl", "old");
    exchange_->Output_2_ESA("76", false);
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"76\"\r\n"));
    QCOMPARE(content("HServ3.ctl"), QByteArray("\"\"\r\n"));
    QCOMPARE(place_->files.read(protocol("OutputIntarsoProtokoll.txt")).count("\r\n"), 2);
    QVERIFY(place_->waits.sleeps().isEmpty());
  }

  void flagVanishesInTheFifthPass() {
    put("HServ3.ctl", "\"\"\r\n");
    place_->waits.inSleep(5, [this] { stationTakes(); });
    exchange_->Output_2_ESA("12", true);
    QCOMPARE(place_->waits.sleeps(), QList<int>(5, 500));
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"12\"\r\n"));
    QCOMPARE(states_, (QList{SendState::Waiting, SendState::Sent, SendState::Hidden}));
  }

  void whatIsWantedNoLongerIsNotSent() {
    put("HServ3.nrt", "\"13\"\r\n");
    put("HServ3.ctl", "\"\"\r\n");
    bool wanted = true;
    place_->waits.inSleep(2, [&] {
      stationTakes();
      wanted = false;
    });
    exchange_->Output_2_ESA("12", true, [&] { return wanted; });
    QVERIFY(!exists("HServ3.ctl"));
    QVERIFY(!exists("HServ3.nrt") || content("HServ3.nrt") == QByteArray("\"13\"\r\n"));
    QCOMPARE(states_, (QList{SendState::Waiting, SendState::Hidden}));
  }

  void aFlagThatCannotBeReadHoldsNothingUp() {
    const UnreadableFile flag(file("HServ3.ctl"));
    QVERIFY(exists("HServ3.ctl"));
    QCOMPARE(errorOf([&] { exchange_->Output_2_ESA("12", true); }), 13);  // nor can it be written
    QVERIFY(place_->waits.sleeps().isEmpty());
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"12\"\r\n"));
  }

  void stationStaysSilentAnswerNo() {
    put("HServ3.ctl", "\"\"\r\n");
    place_->dialogs.expect(question, BoxAnswer::No)
        .titled("Hinweis")
        .with(BoxButtons::YesNo)
        .showing(BoxIcon::Exclamation)
        .unasked("Linie 3");
    exchange_->Output_2_ESA("12", true);
    QCOMPARE(place_->waits.sleeps(), QList<int>(20, 500));
    QVERIFY(!exists("HServ3.nrt"));
    QCOMPARE(states_, (QList{SendState::Waiting, SendState::Hidden}));
    QCOMPARE(place_->waits.messageLoops(), 21);
  }

  void stationStaysSilentAnswerYes() {
    put("HServ3.nrt", "\"13\"\r\n");
    put("HServ3.ctl", "\"\"\r\n");
    place_->dialogs.expect(question, BoxAnswer::Yes);
    exchange_->Output_2_ESA("12", true);
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"12\"\r\n"));
    QVERIFY(exists("HServ3.ctl"));
  }

  void sendInsideAWaitComesFirst() {
    put("HServ3.ctl", "\"\"\r\n");
    stationListens();
    place_->waits.inEachSleep([this](int number) {
      if (number == 1) exchange_->Output_2_ESA("inner", false);
      if (number == 2) stationTakes();
    });
    exchange_->Output_2_ESA("outer", true);
    QCOMPARE(commands_, (QStringList{"inner", "outer"}));
  }

  void protocolOfCommands() {
    switchOn("SendeProtokollAktiv");
    place_->clock.set("20.11.2026 10:41:07");
    exchange_->Output_2_ESA("50 'Zurück", false);
    QCOMPARE(place_->files.journal(),
             (QStringList{"write HServ3.nrt", "append OutputIntarsoProtokoll.txt", "write HServ3.ctl"}));
    QCOMPARE(place_->files.read(protocol("OutputIntarsoProtokoll.txt")),
             toWindows1252("20.11.2026 10:41:07;" + file("HServ3.nrt") + ";50 'Zurück\r\n"));
    place_->settings.setValue("Tarvex", "Häring", "SendeProtokollAktiv", "0");
    exchange_->Output_2_ESA("51", false);
    QVERIFY(!place_->files.read(protocol("OutputIntarsoProtokoll.txt")).contains("51"));
  }

  void failedSendIsError13_data() {
    QTest::addColumn<QString>("pattern");
    QTest::newRow("data") << "HServ3.nrt";
    QTest::newRow("flag") << "HServ3.ctl";
  }
  void failedSendIsError13() {
    QFETCH(QString, pattern);
    place_->files.fail(FileStep::Write, pattern, 70);
    QCOMPARE(errorOf([&] { exchange_->Output_2_ESA("76", false); }), 13);
    QVERIFY(!exists("HServ3.ctl"));
    QCOMPARE(states_.last(), SendState::Hidden);
  }

  void failedProtocolKeepsTheFlagAway() {
    switchOn("SendeProtokollAktiv");
    place_->files.fail(FileStep::Append, "OutputIntarsoProtokoll.txt", 61);
    QCOMPARE(errorOf([&] { exchange_->Output_2_ESA("76", false); }), 13);
    QVERIFY(!exists("HServ3.ctl"));
  }

  void missingFolderIsError13() {
    exchange_->setNetzverzeichnis(place_->path("fehlt"));
    QCOMPARE(errorOf([&] { exchange_->Output_2_ESA("76", true); }), 13);
    exchange_->setNetzverzeichnis("C:\\Programme\\ESA2002\\");
    QCOMPARE(errorOf([&] { exchange_->Output_2_ESA("76", true); }), 13);
    exchange_->tick();
  }

  void dyingInAWaitIsSafe() {
    put("HServ3.ctl", "\"\"\r\n");
    place_->waits.inSleep(2, [this] {
      exchange_.reset();
      line_.reset();
    });
    exchange_->Output_2_ESA("12", true);
    QCOMPARE(place_->waits.sleeps().size(), 2);
    QVERIFY(!exists("HServ3.nrt"));
  }

  void dyingInTheQuestionIsSafe() {
    put("HServ3.ctl", "\"\"\r\n");
    place_->dialogs.expect(question, BoxAnswer::Yes).during([this] { exchange_.reset(); });
    exchange_->Output_2_ESA("12", true);
    QVERIFY(!exists("HServ3.nrt"));
  }

  // --- receiving ---

  void idleTickIsOneLook() {
    place_->files.clearLooks();
    exchange_->tick();
    QCOMPARE(place_->files.looks(), 1);
    QVERIFY(place_->files.journal().isEmpty());
    QCOMPARE(ticks_, QList{place_->clock.now()});
  }

  void dataWithoutFlagMeansNothing() {
    put("HSlav3.nrt", toWindows1252(shotRecord()));
    exchange_->tick();
    QVERIFY(line_->rows.isEmpty());
  }

  void takesAShot() {
    report({"\"" + shotRecord() + "\""});
    exchange_->tick();
    QCOMPARE(line_->rows, QStringList{"0030017-20.11.2026-10:41:07"});
    QCOMPARE(line_->open.count(), 1);
    QCOMPARE(place_->files.journal(), (QStringList{"read HSlav3.nrt", "remove HSlav3.ctl"}));
    QVERIFY(exists("HSlav3.nrt"));
  }

  void flagGoesAfterTheRow() {
    report({shotRecord()});
    line_->meanwhile = [this] { QVERIFY(exists("HSlav3.ctl")); };
    exchange_->tick();
    QVERIFY(!exists("HSlav3.ctl"));
  }

  void flagStaysUntilTheRowIsSafe() {
    report({shotRecord()});
    line_->durable = false;
    exchange_->tick();
    QVERIFY(exists("HSlav3.ctl"));
    line_->durable = true;
    exchange_->tick();
    QVERIFY(!exists("HSlav3.ctl"));
    QCOMPARE(line_->rows.size(), 1);
  }

  void sameShotTwiceInOneFile() {
    report({shotRecord(), shotRecord()});
    exchange_->tick();
    QCOMPARE(line_->rows.size(), 1);
    QCOMPARE(line_->open.count(), 1);
  }

  void twoShotsInOneFileAreOne() {
    report({shotRecordNumber(17), shotRecordNumber(18)});
    exchange_->tick();
    QCOMPARE(line_->rows, QStringList{"0030017-20.11.2026-10:41:07"});
    QCOMPARE(line_->open.keyAt(0), "0030017-20.11.2026-10:41:07");
    QCOMPARE(line_->open.at(0)->TrefferNummer, qint16(18));
  }

  void knownShotOfAnEarlierTick() {
    report({shotRecord()});
    exchange_->tick();
    report({shotRecordNumber(17, "78")});
    exchange_->tick();
    QCOMPARE(line_->rows.size(), 1);
    QVERIFY(!exists("HServ3.nrt"));
    QVERIFY(!exists("HSlav3.ctl"));
  }

  void laterHitOfTheSameLastThreeDigitsIsDropped() {
    report({shotRecordNumber(17)});
    exchange_->tick();
    report({shotRecordNumber(1017)});
    exchange_->tick();
    QCOMPARE(line_->rows, QStringList{"0030017-20.11.2026-10:41:07"});
    QCOMPARE(line_->open.at(0)->TrefferNummer, qint16(17));
    QVERIFY(!exists("HSlav3.ctl"));
  }

  void undeletableFlagIsReadAgain() {
    report({shotRecord()});
    place_->files.fail(FileStep::Remove, "HSlav3.ctl", 70, 1);
    exchange_->tick();
    QVERIFY(exists("HSlav3.ctl"));
    exchange_->tick();
    QVERIFY(!exists("HSlav3.ctl"));
    QCOMPARE(line_->rows.size(), 1);
  }

  void answersCode78() {
    stationListens();
    report({"\"" + shotRecordNumber(17, "78") + "\""});
    exchange_->tick();
    QCOMPARE(commands_, (QStringList{"67", "13", "67"}));
    QCOMPARE(place_->waits.sleeps().count(200), 2);
    QCOMPARE(line_->rows.size(), 1);
    QVERIFY(!exists("HSlav3.ctl"));
  }

  /// Each of the three is taken over only while the next one waits for it, long after the pause between them.
  void eachAnswerToCode78WaitsForTheOneBefore() {
    put("HServ3.ctl", "\"\"\r\n");
    stationListens();
    place_->waits.inEachSleep([this](int number) {
      if (place_->waits.sleeps().at(number - 1) == 500) stationTakes();
    });
    report({shotRecordNumber(17, "78")});
    exchange_->tick();
    QCOMPARE(place_->waits.sleeps(), (QList<int>{500, 200, 500, 200, 500}));
    QCOMPARE(commands_, (QStringList{"67", "13", "67"}));
  }

  void code78DecidesByTheLine() {
    report({"  " + shotRecordNumber(17, "780")});
    stationListens();
    exchange_->tick();
    QCOMPARE(commands_.size(), 3);
    commands_.clear();
    report({shotRecordNumber(18, "178")});
    exchange_->tick();
    QVERIFY(commands_.isEmpty());
  }

  void sumLines_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::newRow("sum") << "22;Linie 3 Serie 98,4"
                         << "Linie 3 Serie 98,4";
    QTest::newRow("untrimmed, second part only") << "22 ; Serie 9 ; x"
                                                 << " Serie 9 ";
    QTest::newRow("code may go on") << "22abc;Summe"
                                    << "Summe";
    QTest::newRow("code alone") << "22"
                                << "";
    QTest::newRow("no text") << "22;"
                             << "";
    QTest::newRow("other code") << "21;Summe"
                                << "";
    QTest::newRow("blank first") << " 22;Summe"
                                 << "";
    QTest::newRow("empty") << ""
                           << "";
  }
  void sumLines() {
    QFETCH(QString, line);
    QFETCH(QString, text);
    QCOMPARE(SummenZeileHaering(line), text);
    report({"\"" + line + "\""});
    exchange_->tick();
    QCOMPARE(line_->sums, text.isEmpty() ? QStringList() : QStringList{text});
    QVERIFY(!exists("HSlav3.ctl"));
  }

  void emptyDataFile() {
    put("HSlav3.nrt", "");
    put("HSlav3.ctl", "\"\"\r\n");
    exchange_->tick();
    QVERIFY(!exists("HSlav3.ctl"));
    QVERIFY(line_->rows.isEmpty() && line_->sums.isEmpty());
  }

  void protocolOfLines() {
    switchOn("ProtokollAktiv");
    report({"\"22;Fünf\"", "", "   ", "\"" + shotRecord() + "\""});
    exchange_->tick();
    QCOMPARE(place_->files.read(protocol("InputIntarsoProtokoll.txt")),
             toWindows1252("22;Fünf\r\n" + shotRecord() + "\r\n"));
  }

  void protocolSwitchActsAtTheNextLine() {
    report({shotRecord(), "22;Summe"});
    line_->meanwhile = [this] { switchOn("ProtokollAktiv"); };
    exchange_->tick();
    QCOMPARE(place_->files.read(protocol("InputIntarsoProtokoll.txt")), QByteArray("22;Summe\r\n"));
  }

  void flagWithoutDataEndsTheProgram() {
    put("HSlav3.ctl", "\"\"\r\n");
    QCOMPARE(errorOf([&] { exchange_->tick(); }), 13);
    QVERIFY(exists("HSlav3.ctl"));
    ticks_.clear();
    exchange_->tick();  // the line stays busy
    QVERIFY(ticks_.isEmpty());
  }

  void unwritableProtocolEndsTheProgramAndLosesNothing() {
    switchOn("ProtokollAktiv");
    report({shotRecord()});
    place_->files.fail(FileStep::Append, "InputIntarsoProtokoll.txt", 70);
    QCOMPARE(errorOf([&] { exchange_->tick(); }), 13);
    QVERIFY(exists("HSlav3.ctl"));
    QVERIFY(line_->rows.isEmpty());
  }

  void failedAnswerEndsTheProgram() {
    report({shotRecordNumber(17, "78")});
    place_->files.fail(FileStep::Write, "HServ3.nrt", 70);
    QCOMPARE(errorOf([&] { exchange_->tick(); }), 13);
    QVERIFY(exists("HSlav3.ctl"));
  }

  void tickInsideASendReads() {
    put("HServ3.ctl", "\"\"\r\n");
    report({shotRecord()});
    place_->waits.inSleep(1, [this] {
      exchange_->tick();
      stationTakes();
    });
    exchange_->Output_2_ESA("12", true);
    QCOMPARE(line_->rows.size(), 1);
    QVERIFY(!exists("HSlav3.ctl"));
    QCOMPARE(content("HServ3.nrt"), QByteArray("\"12\"\r\n"));
  }

  void tickInsideATickIsSkipped() {
    report({shotRecordNumber(17, "78")});
    stationListens();
    place_->waits.inSleep(1, [this] {
      ticks_.clear();
      exchange_->tick();
      QVERIFY(ticks_.isEmpty());
    });
    exchange_->tick();
    QCOMPARE(line_->rows.size(), 1);
    QCOMPARE(commands_.size(), 3);
  }

  void dyingInTheAnswerIsSafe() {
    report({shotRecordNumber(17, "78"), shotRecordNumber(18)});
    place_->waits.inSleep(1, [this] {
      exchange_.reset();
      line_.reset();
    });
    exchange_->tick();
    QVERIFY(exists("HSlav3.ctl"));  // the rebuilt line reads it again and knows the shot
  }

  void dyingWhileStoringIsSafe() {
    report({shotRecord()});
    line_->meanwhile = [this] { exchange_.reset(); };
    exchange_->tick();
    QVERIFY(exists("HSlav3.ctl"));
  }

  void rescueFlag() {
    exchange_->schreibeEmpfangsFlagge();
    QCOMPARE(content("HSlav3.ctl"), QByteArray("\r\n"));
    place_->files.fail(FileStep::Write, "HSlav3.ctl", 70);
    QCOMPARE(errorOf([&] { exchange_->schreibeEmpfangsFlagge(); }), 70);
  }

  void keyTestLooksAtTheObjects() {
    KeyedCollection<HaeringSchuss> shots;
    auto shot = std::make_shared<HaeringSchuss>();
    shot->Key = "a";
    shots.add(shot, "a");
    QVERIFY(!WennHaeringKeyNichtVorhanden(shots, "a"));
    QVERIFY(WennHaeringKeyNichtVorhanden(shots, "A"));
    shot->Key = "b";
    QVERIFY(WennHaeringKeyNichtVorhanden(shots, "a"));
    QVERIFY(!WennHaeringKeyNichtVorhanden(shots, "b"));
  }
};

QTEST_GUILESS_MAIN(TestExchange)
#include "test_exchange.moc"
