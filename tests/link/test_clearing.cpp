// "Offene Linienbefehle löschen": the exchange files of all lines, and nothing else.
#include <QTest>

#include "link/exchange.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestClearing : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;

  QString file(const QString& name) const { return place_->path("austausch/" + name); }
  bool exists(const QString& name) { return place_->files.exists(file(name)); }
  void put(const QString& name, const QByteArray& bytes) { place_->files.write(file(name), bytes); }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    place_->files.makeFolder(place_->path("austausch"));
    place_->files.clearJournal();
  }
  void cleanup() { place_.reset(); }

  void clearsAllLines() {
    for (const QString name :
         {"HServ1.nrt", "HServ1.ctl", "HSlav12.nrt", "HSlav12.ctl", "esa_preis.ini", "HServ.txt"})
      put(name, "x");
    place_->files.clearJournal();
    place_->waits.clear();
    QVERIFY(loescheOffeneLinienbefehle(place_->workplace(), file(""),
                                       [](const Error&) { return ErrorAnswer::Abort; }));
    QCOMPARE(place_->files.journal(), (QStringList{"remove HServ1.nrt", "remove HServ1.ctl",
                                                   "remove HSlav12.nrt", "remove HSlav12.ctl"}));
    QCOMPARE(place_->waits.messageLoops(), 4);
    QVERIFY(exists("esa_preis.ini") && exists("HServ.txt"));
  }

  void clearsNothing() {
    QVERIFY(loescheOffeneLinienbefehle(place_->workplace(), file(""),
                                       [](const Error&) { return ErrorAnswer::Abort; }));
    QVERIFY(place_->files.journal().isEmpty());
  }

  void clearsInTheWrongPlaceWithoutASeparator() {
    put("HServ1.nrt", "x");
    QString folder = file("");
    folder.chop(1);
    QVERIFY(loescheOffeneLinienbefehle(place_->workplace(), folder,
                                       [](const Error&) { return ErrorAnswer::Abort; }));
    QVERIFY(exists("HServ1.nrt"));
  }

  void aNameTakenForTheFolderIsNeverDeletedElsewhere() {
    put("HServ1.nrt", "x");
    place_->files.write(place_->path("austauschHServ1.nrt"), "x");
    QString folder = file("");
    folder.chop(1);
    QList<int> numbers;
    QVERIFY(loescheOffeneLinienbefehle(place_->workplace(), folder, [&](const Error& error) {
      numbers << error.number();
      return ErrorAnswer::Ignore;
    }));
    QCOMPARE(numbers, QList<int>{53});
    QVERIFY(exists("HServ1.nrt") && place_->files.exists(place_->path("austauschHServ1.nrt")));
  }

  void clearingAsksAboutAStuckFile() {
    for (const QString name : {"HServ1.nrt", "HServ2.nrt", "HServ3.nrt"}) put(name, "x");
    place_->files.fail(FileStep::Remove, "HServ1.nrt", 70);
    QList<ErrorAnswer> answers = {ErrorAnswer::Retry, ErrorAnswer::Ignore};
    QVERIFY(loescheOffeneLinienbefehle(place_->workplace(), file(""),
                                       [&](const Error&) { return answers.takeFirst(); }));
    QVERIFY(exists("HServ1.nrt") && !exists("HServ2.nrt") && !exists("HServ3.nrt"));
    QVERIFY(!loescheOffeneLinienbefehle(place_->workplace(), file(""),
                                        [](const Error&) { return ErrorAnswer::Abort; }));
  }

  void tellsWhetherAnythingIsLeft() {
    QVERIFY(istAustauschordnerLeer(place_->files, file("")));
    QVERIFY(!istAustauschordnerLeer(place_->files, file("").chopped(1)));
    QVERIFY(!istAustauschordnerLeer(place_->files, place_->path("gibtsnicht/")));
    put("esa_preis.ini", "x");
    QVERIFY(istAustauschordnerLeer(place_->files, file("")));
    for (const QString name : {"HServ1.nrt", "HServ1.ctl", "HSlav12.nrt", "HSlav12.ctl"}) {
      put(name, "x");
      QVERIFY2(!istAustauschordnerLeer(place_->files, file("")), qPrintable(name));
      place_->files.remove(file(name));
    }
  }
};

QTEST_GUILESS_MAIN(TestClearing)
#include "test_clearing.moc"
