// The real binary as a process of its own: one instance, competitions that don't open, and the fatal end.
#include <QFile>
#include <QTest>

#include "tests/program/range_folder.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

using namespace qk;

class TestProgram : public QObject {
  Q_OBJECT

 private:
  struct Place {
    test::RangeFolder folder;
    Range range{{folder.path(), "11", 0, 1, {}}};
  };

  static void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(content);
  }

  static std::unique_ptr<DrivenProgram> started(const Range& range) {
    auto program = range.startProgram();
    program->waitUntil("tree", [&] { return program->items("tree").size() == 2; });
    return program;
  }

 private Q_SLOTS:
  void aSecondStartEndsAndShowsNothing() {
    Place place;
    const auto first = started(place.range);
    QProcess second;
    second.setProcessEnvironment([&] {
      QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
      all.insert(place.range.environment());
      return all;
    }());
    second.start(QString(QK_BIN_FOLDER) + "/qk-intarso", {place.range.competition()});
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(second.readAllStandardOutput()),
             "QK-Intarso läuft schon; sein Fenster kommt nach vorn.\nNicht geöffnet: " +
                 place.range.competition() + "\n");
    QVERIFY(first->running());
    QVERIFY(first->modal().isEmpty());
  }

  void afterAKillTheNextStartIsTheFirst() {
    Place place;
    started(place.range)->kill();
    const auto next = started(place.range);
    QVERIFY(next->running());
    Walk(*next).close(false);
  }

  void aDamagedCompetitionIsNamedAndEndsTheProgram() {
    Place place;
    write(place.range.competition(), "kein Wettkampf");
    const auto program = place.range.startProgram();
    program->answer("Bitte anderen Wettkampf wählen!!!", "OK");
    QVERIFY(program->waitForEnd() >= 0);
    QFile file(place.range.competition());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kein Wettkampf"));
  }

  void aFlagWithoutDataEndsTheProgramAndLosesNothing() {
    Place place;
    const auto program = started(place.range);
    Walk walk(*program);
    walk.selectLine(1);
    walk.priceModeOn(1);
    write(place.range.exchangeFolder() + "HSlav1.ctl", "\"\"\r\n");
    program->answer("\n\nLinie 1, " + place.range.exchangeFolder() + "HSlav1.ctl:\n53 - ", "OK");
    QCOMPARE(program->waitForEnd(), 1);
    QVERIFY(QFile::exists(place.range.exchangeFolder() + "HSlav1.ctl"));
  }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
