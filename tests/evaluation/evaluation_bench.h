// An evening's competition and the reports on it: what a report finds in its file, and what the operator
// hears when something fails.
#pragma once

#include <QDir>

#include "evaluation/quick_evaluation.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/evaluation/shooting_day.h"
#include "tests/support/report_doors.h"

namespace qk::test {

inline const QString kProfileText = "Fehler beim Drucken der Kurzauswertung!";
inline const QString kListText = "Es ist ein Fehler beim Drucken aufgetreten!";

class EvaluationBench {
 protected:
  using Ziel = ReportOrder::Ziel;

  void begin();
  /// Whatever happened, nothing is left behind.
  void end();

  QStringList files() const { return QDir(day->place.path("temp")).entryList(QDir::Files); }
  Auswertungsplatz platz() { return {day->place.workplace(), *day->wettkampf, *reports, day->system()}; }
  bool profiles(const QString& number = "107", Ziel ziel = Ziel::Fenster) {
    return druckeProfilauswertung(platz(), number, ziel);
  }
  bool list(const QString& number = "107", Ziel ziel = Ziel::Fenster) {
    return druckeSchnellliste(platz(), number, ziel);
  }
  void run(const QString& statement) { day->wettkampf->execute(statement); }
  /// Profiles that leave out nothing.
  void takeAll() {
    run("UPDATE AuswertProfil SET OptTage = 0, OptWaffen = 0, OptKlassen = 0, Tageswertung = False, "
        "Monatswertung = False, nMinAnzahlErgAktiv = 0");
    run("UPDATE Disziplin SET bGewErg = False");
  }
  Expectation& expectFailure(const QString& failure, const QString& text, BoxAnswer answer) {
    return day->place.dialogs.expect("Fehler: " + failure + "\n" + text, answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  }
  Expectation& expectFailure(int number, const QString& text, BoxAnswer answer) {
    return expectFailure(QString("%1 - %2").arg(number).arg(errorDescription(number)), text, answer);
  }
  /// What fails says the same however often.
  QString failureOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const Error& error) {
      return QString("%1 - %2").arg(error.number()).arg(error.description());
    }
    failTest("nothing failed");
    return {};
  }
  /// What is said of a template that can't be copied or opened.
  QString ofTemplate(const QString& failure) {
    return failure + "\nVorlage: " + day->printTemplate() + "\nTemporärer Ordner: " + day->place.path("temp");
  }
  QString ofTemplate(int number) {
    return ofTemplate(QString("%1 - %2").arg(number).arg(errorDescription(number)));
  }
  QString missing(const QString& table) {
    return failureOf([&] { day->wettkampf->openRecordset("Select * from " + table); });
  }

  std::unique_ptr<ShootingDay> day;
  std::unique_ptr<NotedReports> reports;
  QStringList rows, shooter, single, names;
};

}  // namespace qk::test
