// A full range on the real binary: 24 lines are signed on, sent, shot on and signed off with the commands for
// all lines, against stations in a process of their own.
#include <QFile>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/settings/settings.h"
#include "tests/program/range_folder.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/reckoning.h"
#include "tools/rundgang/walk.h"

using namespace qk;

namespace {

constexpr int kLines = 24;
constexpr int kShots = 2;

QString at(int line, const QString& control) {
  return QString("cLine_%1/").arg(line - 1) + control;
}

QStringList startNumbers(const QString& competition) {
  QStringList numbers;
  const auto store = dao::Database::open(competition);
  const auto rows = store->openRecordset("Select Startnummer from Schützen order by Startnummer");
  for (; !rows->eof() && numbers.size() < kLines; rows->moveNext())
    numbers << rows->value("Startnummer").toString();
  return numbers;
}

}  // namespace

class TestAllLines : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void aRoundOfAllLines();

 private:
  void everyStationHasTaken(const QString& what);
  void signOn();
  void sendAll();
  void shoot();
  void signOff();
  /// How often a command went out, by the protocol of what was sent.
  int sent(const QString& command) const;

  std::unique_ptr<test::RangeFolder> folder_;
  std::unique_ptr<Range> range_;
  std::unique_ptr<DrivenProgram> program_;
};

void TestAllLines::init() {
  folder_ = std::make_unique<test::RangeFolder>();
  range_ = std::make_unique<Range>(
      RangeOptions{folder_->path(), QString(kLines, '1'), 10, 1, {"--schuss", QString::number(kShots)}});
  Settings(folder_->path() + "/einstellungen").setValue("Tarvex", "Häring", "SendeProtokollAktiv", "1");
  range_->startStations();
  program_ = range_->startProgram();
  program_->waitUntil("24 lines", [&] { return program_->items("tree").size() == kLines; });
}

void TestAllLines::cleanup() {
  program_.reset();
  range_.reset();
  folder_.reset();
}

void TestAllLines::everyStationHasTaken(const QString& what) {
  program_->modal();  // an answer comes after the flag of the command that stands in the protocol
  program_->waitUntil(what + " taken by every station", [&] {
    for (int line = 1; line <= kLines; ++line)
      if (range_->commandPending(line)) return false;
    return true;
  });
}

int TestAllLines::sent(const QString& command) const {
  QFile protocol(folder_->path() + "/dokumente/Tarvex/Daten/OutputIntarsoProtokoll.txt");
  if (!protocol.open(QIODevice::ReadOnly)) return -1;
  int count = 0;
  while (!protocol.atEnd())
    count += QString::fromLatin1(protocol.readLine()).section(';', 2).startsWith(command);
  return count;
}

void TestAllLines::signOn() {
  const QStringList numbers = startNumbers(range_->competition());
  QCOMPARE(numbers.size(), kLines);
  Walk walk(*program_);
  for (int line = 1; line <= kLines; ++line) {
    walk.selectLine(line);
    walk.chooseShooter(line, numbers[line - 1]);
  }
  program_->click("mnuHaeringAllePreismodusON");
  program_->waitUntil("price mode of all", [&] { return sent("76") == kLines; });
  everyStationHasTaken("price mode");
}

void TestAllLines::sendAll() {
  program_->click("mnuHaeringAlleSchuetzeON");
  program_->answer("Sollen alle Disziplinen aller Schützen gesendet werden?", "Ja");
  for (int line = 1; line <= kLines; ++line)
    program_->answer("Keine Disziplin für den Schützen gewählt!", "Ja");
  program_->waitUntil("registration of all", [&] { return sent("75") == kLines; });
  everyStationHasTaken("registration");
}

void TestAllLines::shoot() {
  Walk walk(*program_);
  for (int line = 1; line <= kLines; ++line) {
    walk.selectLine(line);
    walk.tickStationDiscipline(line, "LG Serie 10");
    walk.sendShooter(line);
  }
  for (int line = 1; line <= kLines; ++line) walk.waitForOpenShots(line, kShots);
  program_->grab(range_->picture("24-linien"));
}

void TestAllLines::signOff() {
  program_->click("mnuHaeringAlleSchuetzenOFF");
  program_->waitUntil("sign-off of all", [&] {
    for (int line = kLines; line >= 1; --line)
      if (!program_->text(at(line, "m_lblSchuetzenName")).isEmpty()) return false;
    return true;
  });
  everyStationHasTaken("sign-off");
  program_->click("mnuHaeringAllePreismodusOFF");
  program_->waitUntil("end of price mode", [&] { return sent("77") == kLines; });
  everyStationHasTaken("end of price mode");
}

void TestAllLines::aRoundOfAllLines() {
  signOn();
  sendAll();
  shoot();
  signOff();
  for (const char* command : {"53", "52", "66"}) QVERIFY2(sent(command) >= kLines, command);
  Walk(*program_).close(true);
  range_->stopStations();
  const auto fired = firedShots(range_->stationLog());
  QCOMPARE(int(fired.size()), kLines * kShots);
  // Nobody did anything to the shots: all are open.
  for (const Row& row : reckon(range_->competition(), fired, Journal{}).rows)
    QVERIFY2(row.agrees(), qPrintable(row.what + ": " + row.expected + " / " + row.competition));
}

QTEST_GUILESS_MAIN(TestAllLines)
#include "test_all_lines.moc"
