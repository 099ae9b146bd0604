// A cash desk without its window, on a small competition whose every row a test can name.
#pragma once

#include <QString>
#include <QStringList>

#include "app/ground/global_variablen.h"
#include "cash/cash_desk.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

/// A till's competition: shooters 107 (club, team, class Herren I), 108 (neither), "5.1" (two SPO teams) and
/// 210 (a boy); stakes 1 Startgeld 15 once, 2 Nachkauf 3,50, 3 Teiler 5 at most twice, 4 Jugendpaket for
/// boys, 5 Festabend always open, 6 Spende, 7 Verzehr without a price, and of clubs 10.
class Till : public TestWorkplace {
 public:
  /// `dialogs`: scripted ones unless others are given.
  explicit Till(Dialogs* real = nullptr);

  Workplace workplace() { return real_ ? TestWorkplace::workplace(*real_) : TestWorkplace::workplace(); }
  QString competition() const { return path("Pokal.qkk"); }
  std::unique_ptr<dao::Database> store() const;

  /// Adds the rows of a text such as "Zeilen Verein\n  ID | Name\n  12 | SV Grünau\n".
  void fill(const QString& text);
  /// Disciplines 1 "LG Meister", 2 "LG Glück" (shown first), combination 1 "Pokal".
  void fillDisciplines();
  /// These, and stacks 1 "Zehner" (1 to 100, next
  /// 10, of discipline 1), 2 "Pokale" (101 to 200, next 150, of the combination), 3 "Nur B" (for desks with
  /// "AB"), 4 "Frei" (301 to 400, next 310, bound to nothing); 5 "Weg" isn't shown. The desk lists 4, 3,
  /// 2, 1.
  void fillStacks();
  /// Runs an action query.
  void execute(const QString& query);
  /// Lays the delivered templates and reports into the program's folder.
  void deliver() const;
  /// A line per row of a query, its columns as texts, divided by "|".
  QStringList read(const QString& query, const QStringList& columns) const;
  QStringList payments() const {
    return read("Select * from Kasse_Eingang order by ID",
                {"Startnummer", "KasseID", "Offen", "Betrag", "DatumEingang", "Gruppe"});
  }
  /// "Startgeld|0|15|20.11.2026 10:00:00", a text per row of a cash table.
  static QStringList rows(const TextTable& table);
  /// The act fails from now on for rows of `Kasse_Eingang` with that value: "Fehler: … - …" is what it says.
  QString refuse(StoreAct act, const QString& column, int value);
  /// What a box says of a query that can't be opened: "Fehler: 3078 - …".
  QString failureOf(const QString& query) const;
  /// What it says of an action query that fails.
  QString failureOfAct(const QString& statement) const;
  /// The same of a store that can't be opened.
  static QString failureOfOpening(const QString& path);

  GlobalVariablen global;

 private:
  Dialogs* real_;
};

/// The template of receipts as the build makes it: a file, whatever engine the competition is on.
void makeReceiptTemplate(const QString& path);

/// The questions and messages of the desk.
inline const QString kLimitOne =
    "Der Schütze hat die max. Nachkaufmöglichkeit bereits erreicht!\r\nStartgeld - 1 Kauf erlaubt!";
inline const QString kNotReleased =
    "Die Einlage ist für die Klasse des Schützen nicht freigegeben!\r\n"
    "Menü: Kasse - Einlagen - Zuordnung Klassen";
inline const QString kNoAmount =
    "Sie haben keinen gültigen Betrag eingegeben!\r\nSoll dies dennoch verbucht werden?";
inline const QString kAskAmount = "Bitte geben Sie den Betrag ein: ";
inline const QString kAskCount = "Bitte geben Sie die Anzahl der Käufe ein:";

}  // namespace qk::test
