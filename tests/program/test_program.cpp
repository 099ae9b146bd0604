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

  /// What a program says that ends by itself.
  static QString runToEnd(const Range& range, const QStringList& arguments) {
    QProcess second;
    second.setProcessEnvironment([&] {
      QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
      all.insert(range.environment());
      return all;
    }());
    second.start(QString(QK_BIN_FOLDER) + "/qk-intarso", arguments);
    if (!second.waitForFinished() || second.exitStatus() != QProcess::NormalExit || second.exitCode() != 0)
      return "no ordinary end";
    return QString::fromUtf8(second.readAllStandardOutput());
  }

 private Q_SLOTS:
  void aSecondStartEndsAndShowsNothing() {
    Place place;
    const auto first = started(place.range);
    QCOMPARE(runToEnd(place.range, {place.range.competition()}),
             "QK-Intarso läuft schon; sein Fenster kommt nach vorn.\nNicht geöffnet: " +
                 place.range.competition() + "\n");
    QVERIFY(first->running());
    QVERIFY(first->modal().isEmpty());
  }

  void theCashDeskRunsBesideTheOffice() {
    Place place;
    const auto office = started(place.range);
    const auto desk = place.range.startCashDesk();
    desk->waitUntil("desk", [&] { return desk->modal()["class"].toString() == "qk::frmFinanz"; });
    QVERIFY(office->running());
    QVERIFY(!desk->enabled("SSTab1"));
    QVERIFY(!desk->enabled("cmdVerbuchen"));
    QCOMPARE(runToEnd(place.range, {"--kasse", place.range.competition()}),
             "Die Kasse von QK-Intarso läuft schon; ihr Fenster kommt nach vorn.\nNicht geöffnet: " +
                 place.range.competition() + "\n");
    // A label of shooter 107, scanned where nothing is typed.
    desk->typeBlindly("BC.107.1.1\n");
    desk->waitUntil("shooter", [&] { return desk->text("txtStartNr") == "107"; });
    QVERIFY(desk->enabled("SSTab1"));
    QCOMPARE(desk->text("Label1"), "Müller Jörg");
    const qsizetype before = desk->items("flexAll").size();
    desk->type("txtArtikelnummer", "200");
    desk->press("txtArtikelnummer", "Return");
    desk->waitUntil("purchase", [&] { return desk->items("flex").size() == 1; });
    desk->click("cmdVerbuchen");
    desk->waitUntil("booking", [&] { return desk->items("flexAll").size() == before + 1; });
    desk->click("cmdCancel");
    QCOMPARE(desk->waitForEnd(), 0);
    QVERIFY(office->running());
    Walk(*office).close(false);
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
