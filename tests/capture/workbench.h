// A strict workplace with a competition file of its own, filled from row texts
// (platform/schema/schema_text.h).
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"
#include "platform/schema/schema_build.h"
#include "tests/capture/shots.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

class Workbench : public TestWorkplace {
 public:
  CountingRandom chance;

  Workplace workplace() { return {clock, chance, waits, files, settings, dialogs}; }

  /// The competition, made at first use: empty but for its own tables.
  dao::Database& store() {
    if (!store_) {
      emptyCompetition().copyTo(path("Pokal.qkk"));
      store_ = dao::Database::open(path("Pokal.qkk"));
    }
    return *store_;
  }

  /// Shots in the middle of the table can't be read from now on.
  void damageStore() {
    store_.reset();
    damage(path("Pokal.qkk"), "Haering_Daten");
    store_ = dao::Database::open(path("Pokal.qkk"));
  }

  /// Adds the rows of a text such as "Zeilen Verein\n  ID | Name\n  12 | SV Grünau\n".
  void fill(const QString& text) { buildSchema(store(), parseSchema(text, "test")); }

  /// A line per row of a query: the columns as texts, divided by "|".
  QStringList read(const QString& query, const QStringList& columns) {
    QStringList lines;
    const auto rs = store().openRecordset(query);
    for (; !rs->eof(); rs->moveNext()) {
      QStringList cells;
      for (const QString& column : columns) cells += cellText(rs->value(column));
      lines += cells.join('|');
    }
    return lines;
  }

  /// The error that something fails with now.
  template <class Action>
  static Error failureOf(Action&& action) {
    try {
      action();
    } catch (const Error& error) {
      return error;
    }
    failTest("nothing failed");
    return Error(0);
  }

  /// The error box of a named operation.
  Expectation& expectError(const Error& error, const QString& text, BoxAnswer answer,
                           const QString& word = {}) {
    return dialogs
        .expect(word + QString::number(error.number()) + " - " + error.description() + "\n" + text, answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  }
  Expectation& expectError(int number, const QString& text, BoxAnswer answer, const QString& word = {}) {
    return expectError(Error(number), text, answer, word);
  }

  /// The question behind an answer that gives a shot up.
  Expectation& expectLoss(const HaeringSchuss& schuss, BoxAnswer given, BoxAnswer answer) {
    const bool all = given == BoxAnswer::Abort;
    return dialogs
        .expect(
            "Der Schuss " + QString::number(schuss.TrefferNummer) + " an Linie " +
                QString::number(schuss.LinienNummer) + " (" + numberText(schuss.RingMitZehntel) +
                " Ringe, Startnummer " + schuss.SchuetzeStartnummer + ") ist nicht gespeichert.\r\n\r\n" +
                (all ? "Wenn Sie abbrechen, geht er verloren: "
                     : "Wenn Sie ignorieren, fehlt ihm, was sich nicht speichern ließ, oder er geht "
                       "verloren: ") +
                "In der Liste steht er nur bis zum Ende des Programms, und niemand meldet ihn ein zweites "
                "Mal.\r\n\r\n" +
                (all ? "Trotzdem abbrechen?" : "Trotzdem ignorieren?"),
            answer)
        .with(BoxButtons::YesNo)
        .presetting(BoxAnswer::No);
  }

  /// The question behind an answer that gives a result up.
  Expectation& expectLostResult(const QString& result, BoxAnswer answer) {
    return dialogs
        .expect(
            "Dieses Ergebnis ist nicht gespeichert: " + result +
                ".\r\n\r\nWenn Sie ignorieren, fehlt ihm, was sich nicht speichern ließ, oder es geht "
                "verloren. "
                "Danach steht es auch hier nicht mehr, und \"Speichern + Verbuchen\" verbucht seine Schüsse "
                "trotzdem.\r\n\r\nTrotzdem ignorieren?",
            answer)
        .with(BoxButtons::YesNo)
        .presetting(BoxAnswer::No);
  }

 private:
  /// With the tables of both programs.
  static const StoreOriginal& emptyCompetition() {
    static const StoreOriginal made([](const QString& file) {
      makeCompetition(file, {});
      dao::Database::open(file)->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Daten"));
    });
    return made;
  }

  static QString cellText(const QVariant& value) {
    if (!value.isValid()) return "Null";
    if (value.typeId() == QMetaType::QDateTime) return dateText(value.toDateTime());
    if (value.typeId() == QMetaType::Double) return numberText(value.toDouble());
    return value.toString();
  }

  std::unique_ptr<dao::Database> store_;
};

}  // namespace qk::test
