// What the poll of many lines costs in a folder that stations write into all the time.
#include <QFile>
#include <QTest>
#include <memory>
#include <vector>

#include "platform/runtime/textcodec.h"
#include "tests/link/plain_line.h"
#include "tests/link/records.h"
#include "tests/support/folder_readings.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kLines = 100;
constexpr int kFiles = 1500;
constexpr int kShots = 50;

}  // namespace

class TestPoll : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<PlainLine> receiver_;
  std::vector<std::unique_ptr<LineExchange>> lines_;

  QString folder() const { return place_->path("austausch"); }
  void put(const QString& name, const QByteArray& content) {
    QFile file(folder() + "/" + name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
  }
  bool isThere(const QString& name) { return QFile::exists(folder() + "/" + name); }
  /// A shot of a line, in a station's own spelling of its names.
  void report(int line, int shot, const QString& spelling = "HSlav%1") {
    put(spelling.arg(line) + ".nrt", toWindows1252(shotRecordNumber(shot) + "\r\n"));
    put(spelling.arg(line) + ".ctl", "\"\"\r\n");
  }
  void tickAll() {
    for (const auto& line : lines_) line->tick();
  }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    place_->files.makeFolder(folder());
    receiver_ = std::make_unique<PlainLine>();
    for (int number = 1; number <= kLines; ++number) {
      lines_.push_back(std::make_unique<LineExchange>(place_->workplace(), *receiver_));
      lines_.back()->setNetzverzeichnis(folder());
      lines_.back()->setLinie(number);
    }
    for (int number = 0; number < kFiles; ++number) put(QString("0_hd_LG_%1.def").arg(number), "");
  }
  void cleanup() {
    lines_.clear();
    receiver_.reset();
    place_.reset();
  }

  /// Nor may it follow how many lines there are.
  void theFolderIsNotReadForWhatStationsWrite() {
    tickAll();
    report(1, 1);
    tickAll();
    FolderReadings readings(folder());
    for (int shot = 2; shot <= kShots; ++shot) {
      report(1 + shot % kLines, shot);
      report(1000 + shot, shot);  // of another desk's station
      tickAll();
      QVERIFY(QFile::remove(QString(folder() + "/HSlav%1.ctl").arg(1000 + shot)));
    }
    QCOMPARE(receiver_->rows.size(), kShots);
    QCOMPARE(readings.count(), 0);
  }

  /// A tick is one look of each line beside that, and a report is read by the line that it belongs to.
  void aTickLooksOnceForEachLine() {
    tickAll();
    report(7, 1);
    place_->files.clearLooks();
    place_->files.clearJournal();
    tickAll();
    QCOMPARE(place_->files.looks(), kLines);
    QCOMPARE(place_->files.journal(), (QStringList{"read HSlav7.nrt", "remove HSlav7.ctl"}));
  }

  /// In a folder that stood still and in one that changes, whoever else writes.
  void aFlagInAnySpellingIsTakenAtTheNextTick() {
    tickAll();
    int shot = 0;
    for (const QString spelling : {"HSLAV%1", "hslav%1", "HSlav%1", "hSlAv%1"}) {
      for (int line : {1, 50, kLines}) {
        report(line, ++shot, spelling);
        report(2000 + shot, shot);
        tickAll();
        QCOMPARE(receiver_->rows.size(), shot);
        QVERIFY(!isThere(spelling.arg(line) + ".ctl"));
        QVERIFY(QFile::remove(folder() + "/" + spelling.arg(line) + ".nrt"));  // the next one has its own
      }
    }
  }
};

QTEST_GUILESS_MAIN(TestPoll)
#include "test_poll.moc"
