// What comes up out of a line's tick: nobody called it, it says which line it speaks of, and no single answer
// loses a shot.
#include <QTest>

#include "platform/runtime/textcodec.h"
#include "platform/runtime/unasked.h"
#include "tests/link/plain_line.h"
#include "tests/link/records.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

/// What the box over a field that can't be read says: its field, line and record.
QString unreadable(const QString& record) {
  return "Fehler: 13 - " + errorDescription(13) + ": Standnummer „eins“\nLinie 3, Datensatz: " + record +
         "\n";
}

/// What is asked behind an answer that gives a record up.
QString loss(const QString& record, BoxAnswer given) {
  const QString what =
      "Linie 3 meldet einen Schuss, der sich nicht ganz lesen lässt:\r\n" + record + "\r\n\r\n";
  return what + (given == BoxAnswer::Abort
                     ? "Wenn Sie abbrechen, ist er verloren: Die Station meldet ihn kein zweites "
                       "Mal.\r\n\r\nTrotzdem abbrechen?"
                     : "Wenn Sie ignorieren, wird er ohne das übernommen, was sich nicht lesen "
                       "ließ.\r\n\r\nTrotzdem ignorieren?");
}

}  // namespace

class TestExchangeBoxes : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<PlainLine> line_;
  std::unique_ptr<LineExchange> exchange_;

  QString file(const QString& name) const { return place_->path("austausch/" + name); }
  bool flag() { return place_->files.exists(file("HSlav3.ctl")); }
  void report(const QString& line) {
    place_->files.write(file("HSlav3.nrt"), toWindows1252(line + "\r\n"));
    place_->files.write(file("HSlav3.ctl"), "\"\"\r\n");
  }
  Expectation& expectLoss(const QString& record, BoxAnswer given, BoxAnswer answer) {
    return place_->dialogs.expect(loss(record, given), answer)
        .titled("Hinweis")
        .with(BoxButtons::YesNo)
        .presetting(BoxAnswer::No)
        .unasked("Linie 3");
  }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    place_->files.makeFolder(place_->path("austausch"));
    line_ = std::make_unique<PlainLine>();
    exchange_ = std::make_unique<LineExchange>(place_->workplace(), *line_);
    exchange_->setNetzverzeichnis(place_->path("austausch"));
    exchange_->setLinie(3);
  }
  void cleanup() {
    exchange_.reset();
    line_.reset();
    place_.reset();
  }

  void importFailureAsks() {
    const QString record = shotRecordWith(3, "eins");
    report(record);
    place_->dialogs.expect(unreadable(record), BoxAnswer::Ignore)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .presetting(BoxAnswer::Retry)
        .unasked("Linie 3");
    expectLoss(record, BoxAnswer::Ignore, BoxAnswer::Yes);
    exchange_->tick();
    QCOMPARE(line_->rows.size(), 1);
    QVERIFY(!flag());
  }

  void abortGivesTheShotUp() {
    const QString record = shotRecordWith(3, "eins");
    report(record);
    place_->dialogs.expect(unreadable(record), BoxAnswer::Abort);
    expectLoss(record, BoxAnswer::Abort, BoxAnswer::Yes);
    exchange_->tick();
    QVERIFY(line_->rows.isEmpty());
    QVERIFY(!flag());
  }

  void noSingleAnswerGivesAShotUp_data() {
    QTest::addColumn<BoxAnswer>("given");
    QTest::newRow("abort") << BoxAnswer::Abort;
    QTest::newRow("ignore") << BoxAnswer::Ignore;
  }
  void noSingleAnswerGivesAShotUp() {
    QFETCH(BoxAnswer, given);
    const QString record = shotRecordWith(3, "eins");
    report(record);
    place_->dialogs.expect(unreadable(record), given);
    expectLoss(record, given, BoxAnswer::No);
    // Still there, and nothing happened; what is wrong is mended before it is tried again.
    place_->dialogs.expect(unreadable(record), BoxAnswer::Abort).during([this] {
      QVERIFY(line_->rows.isEmpty());
      QVERIFY(flag());
    });
    expectLoss(record, BoxAnswer::Abort, BoxAnswer::Yes);
    exchange_->tick();
  }

  void abortedImportMayStillBeASumLine() {
    QStringList fields = shotFields();
    fields[0] = "22";
    fields[3] = "eins";
    const QString record = shotRecord(fields);
    report(record);
    place_->dialogs.expect(unreadable(record), BoxAnswer::Abort);
    expectLoss(record, BoxAnswer::Abort, BoxAnswer::Yes);
    exchange_->tick();
    QVERIFY(line_->rows.isEmpty());
    QCOMPARE(line_->sums, QStringList{" LG Meister "});
    QVERIFY(!flag());
  }

  void dyingInTheErrorBoxIsSafe_data() {
    QTest::addColumn<BoxAnswer>("answer");
    for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore})
      QTest::newRow(qPrintable(nameOf(answer))) << answer;
  }
  void dyingInTheErrorBoxIsSafe() {
    QFETCH(BoxAnswer, answer);
    QStringList fields = shotFields();
    fields[0] = "22";  // would be a sum line once the import gave up
    fields[3] = "eins";
    const QString record = shotRecord(fields);
    report(record);
    place_->dialogs.expect(unreadable(record), answer).during([this] { exchange_.reset(); });
    exchange_->tick();
    QVERIFY(line_->sums.isEmpty());
    QVERIFY(flag());
  }

  void dyingInTheQuestionIsSafe() {
    const QString record = shotRecordWith(3, "eins");
    report(record);
    place_->dialogs.expect(unreadable(record), BoxAnswer::Abort);
    expectLoss(record, BoxAnswer::Abort, BoxAnswer::Yes).during([this] { exchange_.reset(); });
    exchange_->tick();
    QVERIFY(flag());
  }

  void onlyTheTickItselfIsUnasked() {
    report(shotRecordNumber(17, "78"));
    QStringList seen;
    const auto note = [&seen](const char* where) {
      seen << where + QString(": ") + Unasked::current().value_or("gerufen");
    };
    line_->meanwhile = [&] { note("Schuss"); };
    // In a wait the operator may press anything.
    place_->waits.inSleep(1, [&] { note("Warten"); });
    place_->waits.inEachSleep([this](int) {
      if (place_->files.exists(file("HServ3.ctl"))) place_->files.remove(file("HServ3.ctl"));
    });
    exchange_->tick();
    note("danach");
    QCOMPARE(seen, (QStringList{"Schuss: Linie 3", "Warten: gerufen", "danach: gerufen"}));
  }

  void theEndOfTheProgramNamesFlagAndLine() {
    place_->files.write(file("HSlav3.ctl"), "");
    try {
      exchange_->tick();
      QFAIL("a flag without data passes");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 13);
      QCOMPARE(error.description(), errorDescription(13));
      const QString begin = "Linie 3, " + file("HSlav3.ctl") + ":\n53 - " + errorDescription(53) + "\n\n";
      QVERIFY2(error.place().startsWith(begin + "Die Dateien bleiben liegen"), qPrintable(error.place()));
      QVERIFY(error.place().contains("Offene Linienbefehle löschen"));
      QVERIFY(error.place().contains("verwirft auch Meldungen aller Linien, die noch niemand gelesen hat"));
    }
    QCOMPARE(Unasked::current(), std::nullopt);
    QVERIFY(flag());
  }
};

QTEST_GUILESS_MAIN(TestExchangeBoxes)
#include "test_exchange_boxes.moc"
