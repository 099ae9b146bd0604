// A day walked on the real program. First a morning on six lines: disciplines of all kinds, a combination, a
// group, additional shots, a crash in mid-series and the way back, a change of shooter, discarding, storing
// with and without booking; everything that stands in the competition is reckoned again from what the
// stations say they fired. Then stored results are corrected and sheets printed, reckoned again from those
// results and what the official did. Then an evening at the cash desk, reckoned again from what the cashier
// did. Exit status 0 only if all agrees.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

#include "platform/runtime/program_call.h"
#include "tools/rundgang/cash_evening.h"
#include "tools/rundgang/cash_reckoning.h"
#include "tools/rundgang/desk.h"
#include "tools/rundgang/evaluation_reckoning.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/reckoning.h"
#include "tools/rundgang/walk.h"

namespace {

using namespace qk;

constexpr int kLines = 6;
constexpr int kShotsBeforeTheCrash = 4;
/// A registration ends after so many shots: enough for a series of twenty and one more.
constexpr int kShotsOfARegistration = 21;
const QString kGroup = "Glück und Zimmerstutzen";
const QString kHelp =
    "qk-rundgang - spielt einen Vormittag auf sechs Linien, die Auswertung und einen Abend an der Kasse\n"
    "am echten Programm und rechnet alles nach\n"
    "\n"
    "Aufruf: qk-rundgang --ordner ORDNER [--teil linien|auswertung|kasse]\n"
    "        qk-rundgang --hilfe | --version\n"
    "\n"
    "  --ordner ORDNER  leerer Ordner für Wettkampf, Austausch und Bilder\n"
    "  --teil TEIL      nur die Linien, diese mit der Auswertung, oder nur die Kasse\n"
    "\n"
    "Rückgabewert: 0 nur, wenn jede Zahl im Wettkampf stimmt.\n";

void say(const QString& text) {
  QTextStream(stdout) << text << Qt::endl;
}

/// The office between two starts of the program: a desk a line.
struct Office {
  Office(Range& range, Journal& journal) : program(range.startProgram()), walk(*program) {
    for (int line = 1; line <= kLines; ++line) desks.emplace_back(range, *program, journal, line);
    walk.waitForMainWindow();
  }
  /// The desk of a line, in sight.
  Desk& at(int line) {
    Desk& desk = desks[static_cast<size_t>(line - 1)];
    desk.show();
    return desk;
  }
  std::unique_ptr<DrivenProgram> program;
  Walk walk;
  std::vector<Desk> desks;
};

struct Lane {
  int line;
  QString shooter;
  QString stationDiscipline;
};
/// On these the crash comes in mid-series.
const Lane kEarlyLanes[] = {{1, "110", "KK liegend"},
                            {2, "107", "LG Serie 10"},
                            {3, "105", "LG Ring-Teiler"},
                            {4, "112", "LP Teiler"}};

void untilTheCrash(Range& range, Journal& journal) {
  Office office(range, journal);
  office.program->grab(range.picture("1-start"));
  for (const Lane& lane : kEarlyLanes) {
    Desk& desk = office.at(lane.line);
    desk.chooseShooter(lane.shooter);
    desk.tickStationDisciplines({lane.stationDiscipline});
    desk.startShooting();
  }
  for (const Lane& lane : kEarlyLanes) office.at(lane.line).waitForOpenShots(kShotsBeforeTheCrash);
  office.program->grab(range.picture("2-vor-dem-absturz"));
  office.program->kill();
  say("Programm mitten in der Serie beendet (SIGKILL).");
}

/// All lines shoot again or for the first time: the early ones with the shooter and the shots they had.
void goOn(Office& office) {
  for (const Lane& lane : kEarlyLanes) {
    Desk& desk = office.at(lane.line);
    desk.expectShooter(lane.shooter);
    if (desk.openShots() < kShotsBeforeTheCrash) throw DriverError("open shots are missing after the crash");
    desk.tickStationDisciplines({lane.stationDiscipline});
    desk.startShooting();
  }
  Desk& five = office.at(5);
  five.picture("ohne-schuetze");
  five.chooseShooter("101");
  five.tickStationDisciplines({"LG Serie 20"});
  five.enterExtraShots("LG Serie 20", 1);
  five.picture("nachkauf-eingetragen");
  five.startShooting();

  Desk& six = office.at(6);
  six.chooseShooter("109");
  six.chooseGroup(kGroup);
  six.picture("gruppe-gewaehlt");
  six.startShooting();
}

/// Shots that count for nothing go while the others still come in.
void discardTwoShots(Desk& desk) {
  desk.waitForOpenShots(3);
  desk.tickShots({0, 2});
  desk.picture("schuesse-gewaehlt");
  desk.discardTicked();
}

/// Every way of counting rings, by a combination and further disciplines.
void bookRings(Desk& desk) {
  desk.chooseCombination("Glück und Lotto", {"LG Glück", "LG Lotto"});
  desk.picture("kombination-gewaehlt");
  desk.chooseDisciplines({"LG Glück", "LG Lotto", "LG Serie 20", "LG Serie 10", "LG Ring plus Zehntel",
                          "LG Glück Zehntel", "LG Ring plus Zehntel Z", "LG Lotto Zehntel", "LG Halbring",
                          "LG Halbring Zehntel"});
  desk.tickAll();
  desk.picture("uebertragen");
  desk.saveAndBook();
  desk.leave();
  desk.picture("frei");
}

/// Ring-teilers with and without limit: a full batch first, then what is left.
void bookRingTeilers(Desk& desk) {
  desk.chooseSeries(0, 0, 10, {"LG Ring-Teiler"});
  desk.chooseDisciplines({"LG Ring-Teiler", "LG Ring-Teiler Zehntel", "LG Ring-Teiler Grenze",
                          "LG Ring-Teiler Zehntel Grenze", "LG Festscheibe"});
  desk.transfer();
  desk.picture("ring-teiler");
  desk.saveAndBook();
  desk.tickAll();
  desk.transfer();
  desk.saveAndBook();
  desk.leave();
}

/// The first three shots are stored and stay open; more are bought; then another shooter gets them all, and
/// one is ticked after the transfer: it is booked and drawn, but counts for nothing.
void storeTwiceAndChangeShooter(Desk& desk) {
  desk.chooseCombination("Pistole", {"LP Meister", "LP Teiler"});
  desk.tickShots({0, 1, 2});
  desk.transfer();
  desk.saveOnly();
  desk.picture("nur-gespeichert");
  desk.enterExtraShots("LP Teiler", 3);
  desk.sendExtraShots();
  desk.waitForLastHit(13);
  desk.untickAll();
  desk.changeShooter("7a");
  const int last = desk.openShots() - 1;
  QList<int> allButTheLast;
  for (int place = 0; place < last; ++place) allButTheLast << place;
  desk.tickShots(allButTheLast);
  desk.transfer();
  desk.tickShots({last});
  desk.picture("nach-dem-uebertragen-angekreuzt");
  desk.saveAndBook();
  desk.leave();
}

/// Extra shots lose their rings for good: the second transfer sees it in every discipline.
void bookExtraShots(Desk& desk) {
  desk.chooseDisciplines(
      {"LG Serie 20", "LG 20 mit Zusatz", "LG 10 mit Zusatz", "LG Teiler", "LG Auflage", "LG Training"});
  desk.tickAll();
  desk.picture("zusatzschuss");
  desk.saveOnly();
  desk.transfer();
  desk.saveAndBook();
  desk.leave();
}

/// Two station disciplines, a series of each; what is stored of the second is discarded all the same.
void bookSeriesAndDiscardTheRest(Desk& desk) {
  desk.chooseSeries(0, 0, 8, {"LG Glück"});
  desk.saveAndBook();
  desk.chooseSeries(3, 0, 11, {"ZS Meister"});
  desk.picture("serie-gewaehlt");
  desk.saveOnly();
  desk.picture("vor-dem-verwerfen");
  desk.discardAll();
  desk.leave();
}

/// All shots count for one long series that none of them fills.
void bookLongSeries(Desk& desk) {
  desk.chooseDisciplines({"LG Meister", "LG Meister Zehntel", "KK liegend"});
  desk.tickAll();
  desk.transfer();
  desk.picture("uebertragen");
  desk.saveAndBook();
  desk.picture("verbucht");
  desk.leave();
}

void afterTheCrash(Range& range, Journal& journal) {
  Office office(range, journal);
  office.program->grab(range.picture("3-nach-dem-absturz"));
  goOn(office);
  discardTwoShots(office.at(6));

  office.at(2).waitForLastHit(10);
  bookRings(office.at(2));
  office.at(3).waitForLastHit(10);
  bookRingTeilers(office.at(3));
  office.at(4).waitForLastHit(10);
  storeTwiceAndChangeShooter(office.at(4));

  office.at(1).waitForLastHit(kShotsOfARegistration);
  bookLongSeries(office.at(1));
  office.at(5).waitForLastHit(kShotsOfARegistration);
  bookExtraShots(office.at(5));
  office.at(6).waitForLastHit(kShotsOfARegistration - 10);
  bookSeriesAndDiscardTheRest(office.at(6));
  office.program->grab(range.picture("4-feierabend"));
  office.walk.close(false);
  say("Alle Linien abgemeldet, Programm geschlossen.");
}

bool walkTheLines(Range& range) {
  range.addGroup(kGroup, {"LG Glück", "ZS Meister"});
  Journal journal;
  untilTheCrash(range, journal);
  afterTheCrash(range, journal);
  const auto fired = firedShots(range.stationLog());
  return printTable(reckon(range.competition(), fired, journal), "Stationen") && !fired.empty();
}

bool walkTheEvaluation(Range& range) {
  const ResultTables before = readResults(range.competition());
  ResultJournal journal;
  correctResults(range, journal);
  const std::vector<PrintedSheet> sheets = printSheets(range);
  say("Auswertung: Ergebnisse geändert, kopiert, verschoben, gelöscht, Blätter gedruckt.");
  return printTable(reckonEvaluation(range.competition(), before, journal, sheets), "Protokoll");
}

bool walkTheCashDesk(Range& range) {
  const CashTables before = readCashTables(range.competition());
  CashJournal sales;
  sellInTheOffice(range, sales);
  const EveningPrints prints = sellAtTheCashDesk(range, sales);
  say("Kasse: verkauft, verbucht, bezahlt, ausgegeben, zurückgenommen und gedruckt.");
  return printTable(reckonCash(range.competition(), before, sales, prints), "Kassierer");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"ordner", "Leerer Ordner für Wettkampf, Austausch und Bilder.", "ORDNER"});
  parser.addOption({"teil", "Nur dieser Teil.", "TEIL"});
  if (answeredCall(app.arguments().mid(1), "qk-rundgang", kHelp)) return 0;
  parser.process(app);
  const QString part = parser.value("teil");
  bool good = true;
  try {
    RangeOptions options;
    options.folder = QDir(parser.value("ordner")).absolutePath();
    options.activeLines = QString(kLines, '1');
    options.stationArguments = {"--schuss", QString::number(kShotsOfARegistration)};
    Range range(options);
    range.startStations();
    const bool evaluation = part.isEmpty() || part == "auswertung";
    if (evaluation || part == "linien") good = walkTheLines(range) && good;
    if (evaluation) good = walkTheEvaluation(range) && good;
    if (part.isEmpty() || part == "kasse") good = walkTheCashDesk(range) && good;
    say("Bilder: " + options.folder + "/*.png");
  } catch (const std::exception& problem) {
    QTextStream(stderr) << problem.what() << Qt::endl;
    return 1;
  }
  return good ? 0 : 1;
}
