#include "tools/rundgang/evaluation_day.h"

#include "platform/dao/database.h"
#include "tools/rundgang/official.h"
#include "tools/rundgang/shown_report.h"
#include "tools/rundgang/walk.h"

namespace qk {

namespace {

const QStringList kShooters = {"105", "107"};

/// The program with the first line in sight.
struct Office {
  explicit Office(Range& range) : program(range.startProgram()), walk(*program) {
    walk.waitForMainWindow();
    walk.selectLine(1);
  }
  std::unique_ptr<DrivenProgram> program;
  Walk walk;
};

void correctTeilers(Official& official) {
  official.show(Official::Tab::Teiler);
  official.change("LG Ring-Teiler", "Ergebnis", "33,5");
  official.change("LG Ring-Teiler Zehntel", "Waffe", "LP", Official::Doubt::Overruled);
  official.copy("LG Ring-Teiler", "LG Teiler", false);
  official.move("LG Ring-Teiler Grenze", "LG Teiler", true);
  official.remove("LG Ring-Teiler Zehntel Grenze");
}

void correctSeries(Official& official) {
  official.show(Official::Tab::Serien);
  official.change("LG Glück", "Datum", "19.11.2026");
  official.copy("LG Halbring", "LG Meister", true);
  official.move("LG Lotto", "LG Serie 20", false);
  official.remove("LG Ring plus Zehntel");
}

}  // namespace

void correctResults(Range& range, ResultJournal& journal) {
  Office office(range);
  for (const QString& shooter : kShooters) {
    office.walk.chooseShooter(1, shooter);
    Official official(*office.program, journal, shooter);
    shooter == kShooters.first() ? correctTeilers(official) : correctSeries(official);
    official.picture(range.picture("8-ergebnisse-" + shooter));
    official.close();
    office.walk.signOffAndLeavePriceMode(1);
  }
  office.walk.close(false);
}

std::vector<PrintedSheet> printSheets(Range& range) {
  std::vector<PrintedSheet> sheets;
  for (const bool byProfiles : {false, true}) {
    // The competition's choice, made by another application.
    dao::Database::open(range.competition())
        ->execute(QString("UPDATE Wettkampf SET KurzauswertungDiszi = %1").arg(byProfiles ? -1 : 0));
    Office office(range);
    for (const QString& shooter : kShooters) {
      office.walk.chooseShooter(1, shooter);
      office.program->click("mnuDateiKurzauswertungPreview");
      const QString pdf =
          range.file(QString("kurzauswertung-%1-%2.pdf").arg(byProfiles ? "wettkampf" : "liste", shooter));
      saveShownReport(*office.program, pdf);
      office.program->waitUntil("main window", [&] { return office.program->modal().isEmpty(); });
      sheets.push_back({shooter, byProfiles, pdf});
      office.walk.signOffAndLeavePriceMode(1);
    }
    office.walk.close(false);
  }
  return sheets;
}

}  // namespace qk
