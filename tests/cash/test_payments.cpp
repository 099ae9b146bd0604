// The stored payments of a shooter: what is shown, corrected, settled and deleted.
#include <QTest>
#include <memory>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kRows =
    "Zeilen Kasse_Eingang\n"
    "  ID | Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
    "  1  | 108         | 1       | nein  | 15     | 19.11.2026 09:00:00\n"
    "  2  | 108         | 5       | ja    | 12,5   | 19.11.2026 09:01:00\n"
    "  3  | 108         | 99      | ja    | 4      | 19.11.2026\n"
    "  4  | 107         | 1       | ja    | 15     | 19.11.2026\n";
const QString kToday = "20.11.2026 10:00:00";
const QString kAskDate = "Soll das Datum auf den aktuellen Tag angepasst werden?";
const QString kAskAll = "Sollen alle Eingänge des Schützen unwiderruflich gelöscht werden?";

/// What is said after settling where another desk was quicker.
const QString kOtherDesk = "An einem anderen Platz wurde inzwischen geändert:\r\n";
QString settledHere(const QString& amount) {
  return "\r\nHier jetzt verbucht: " + amount + ". Nur so viel ist zu kassieren.";
}
/// What is said after an edit of such a row.
QString storedNow(const QString& row) {
  return "An einem anderen Platz wurde dieser Eingang inzwischen geändert. Gespeichert ist jetzt:\r\n" + row;
}

/// What is asked before the open item of a failed settling is given up.
QString staysOpen(const QString& how) {
  return "Der offene Posten »Festabend« über 12,50 €" + how + "\r\nIst das so gewollt?";
}

}  // namespace

class TestPayments : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fill(kRows);
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    QVERIFY(desk->UpdateStartNr("108", "", ""));
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void whatIsShown();
  void aShooterWithoutPayments();
  void nothingButOpenRows();
  void allOpenRowsAreSettled();
  void settlingNothing();
  void settlingPassesOverRowsThatAreGone();
  void whatWasSettledHereIsNobodyElses();
  void settlingShowsWhatAnotherDeskSettled();
  void settlingKeepsTheAmountOfTheStore();
  void settlingSaysAllThatOthersDidOnce();
  void settlingCountsAChangeOnceAfterARetry();
  void settlingStopsWhereItFails();
  void settlingAgainAfterARetry();
  void aSettledRowBecomesOpen_data();
  void aSettledRowBecomesOpen();
  void anAmountIsCorrected();
  void aDateIsCorrected();
  void anEditKeepsWhatAnotherDeskChanged_data();
  void anEditKeepsWhatAnotherDeskChanged();
  void aChangeDuringTheQuestionIsKept();
  void anEditOfAnEditedRowIsNotTakenForAnothers();
  void anUnreadableEditShowsWhatAnotherDeskChanged();
  void whatCantBeReadStandsAsItWas_data();
  void whatCantBeReadStandsAsItWas();
  void aRowThatIsGoneKeepsTheEdit();
  void aRowThatCantBeChangedStandsAsItWas();
  void oneRowIsDeleted();
  void deletingIsAskedAbout();
  void deletingARowThatIsGone();
  void allRowsAreDeleted();
  void deletingAllPassesOverRowsThatAreGone();
  void deletingAllThatStops();

 private:
  QStringList shown() { return Till::rows(payments().flexAll()); }
  QStringList stored() {
    return till->read("Select * from Kasse_Eingang where Startnummer = '108' order by ID",
                      {"ID", "Offen", "Betrag", "DatumEingang"});
  }
  Payments& payments() { return desk->payments(); }
  void edit(int row, int column, const QString& text) { payments().flexAll().setText(row, column, text); }
  QString open() { return payments().summen().Offen.toText(); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
};

void TestPayments::whatIsShown() {
  QCOMPARE(shown(), (QStringList{"Startgeld|0|15|19.11.2026 09:00:00",
                                 "Festabend|-1|12,5|19.11.2026 09:01:00", "|-1|4|19.11.2026"}));
  QCOMPARE(payments().flexAll().rowData(3), "3");
  const CashSums sums = payments().summen();
  QCOMPARE(sums.Gesamt.toText(), "31,5");  // the stake that is gone counts
  QCOMPARE(sums.Bezahlt.toText(), "15");
  QCOMPARE(sums.Offen.toText(), "16,5");
}

void TestPayments::aShooterWithoutPayments() {
  QVERIFY(desk->UpdateStartNr("210", "", ""));
  QCOMPARE(payments().flexAll().rows(), 1);
  QCOMPARE(payments().summen().Gesamt, Money());
}

void TestPayments::nothingButOpenRows() {
  QVERIFY(desk->UpdateStartNr("107", "", ""));
  QCOMPARE(payments().summen().Bezahlt, Money());
  QCOMPARE(open(), "15");
}

void TestPayments::allOpenRowsAreSettled() {
  int told = 0;
  connect(&payments(), &Payments::changed, this, [&told] { ++told; });
  payments().cmdOPVerbuchen();
  QCOMPARE(shown(), (QStringList{"Startgeld|0|15|19.11.2026 09:00:00", "Festabend|0|12,5|" + kToday,
                                 "|0|4|" + kToday}));
  QCOMPARE(stored(), (QStringList{"1|0|15|19.11.2026 09:00:00", "2|0|12,5|" + kToday, "3|0|4|" + kToday}));
  QCOMPARE(till->read("Select * from Kasse_Eingang where ID = 4", {"Offen"}), QStringList("-1"));
  QCOMPARE(open(), "0");
  QCOMPARE(told, 1);
}

void TestPayments::settlingNothing() {
  payments().cmdOPVerbuchen();
  const QStringList before = stored();
  till->clock.advance(60000);
  int told = 0;
  connect(&payments(), &Payments::changed, this, [&told] { ++told; });
  payments().cmdOPVerbuchen();
  QCOMPARE(stored(), before);
  QCOMPARE(told, 1);
}

void TestPayments::settlingPassesOverRowsThatAreGone() {
  till->execute("DELETE * FROM Kasse_Eingang WHERE ID < 3");
  int told = 0;
  connect(&payments(), &Payments::changed, this, [&told] { ++told; });
  till->dialogs.expect(kOtherDesk + "2 Eingänge sind dort gelöscht worden." + settledHere("4,00 €"))
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation)
      .with(BoxButtons::Ok)
      .during([&] { QCOMPARE(told, 1); });  // the totals behind the box are right already
  payments().cmdOPVerbuchen();
  QCOMPARE(payments().flexAll().rows(), 4);
  QCOMPARE(shown().last(), "|0|4|" + kToday);
  QCOMPARE(stored(), QStringList("3|0|4|" + kToday));
}

/// The answer got lost, not the payment: what is told then is what is in the till.
void TestPayments::whatWasSettledHereIsNobodyElses() {
  till->execute("UPDATE Kasse_Eingang SET VereinID = 7 WHERE ID = 2");
  const QString failure = till->refuse(StoreAct::Update, "VereinID", 7) + "\nFehler beim Verbuchen der OP!";
  till->dialogs.expect(failure, BoxAnswer::Retry).during([this] {
    till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 2");
    till->fill(
        "Zeilen Kasse_Eingang\n  ID | Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
        "  2 | 108 | 5 | nein | 12,5 | " +
        kToday + "\n");
    till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 3");
  });
  till->dialogs.expect(kOtherDesk + "1 Eingang ist dort gelöscht worden." + settledHere("12,50 €"));
  payments().cmdOPVerbuchen();
  QCOMPARE(shown().at(1), "Festabend|0|12,5|" + kToday);
}

/// The money lies on the counter: it isn't to be taken a second time.
void TestPayments::settlingShowsWhatAnotherDeskSettled() {
  till->execute("UPDATE Kasse_Eingang SET Offen = False, DatumEingang = #2026-11-20 09:30:00# WHERE ID = 2");
  till->dialogs.expect(kOtherDesk + "1 Posten ist dort schon bezahlt worden." + settledHere("4,00 €"));
  payments().cmdOPVerbuchen();
  QCOMPARE(shown(), (QStringList{"Startgeld|0|15|19.11.2026 09:00:00", "Festabend|0|12,5|20.11.2026 09:30:00",
                                 "|0|4|" + kToday}));
  QCOMPARE(stored().at(1), "2|0|12,5|20.11.2026 09:30:00");
  QCOMPARE(open(), "0");
}

void TestPayments::settlingKeepsTheAmountOfTheStore() {
  till->execute("UPDATE Kasse_Eingang SET Betrag = 1.25 WHERE ID = 2");
  till->dialogs.expect(kOtherDesk + "1 Posten ist dort geändert worden (Betrag, oder wieder offen)." +
                       settledHere("5,25 €"));
  payments().cmdOPVerbuchen();
  QCOMPARE(stored().at(1), "2|0|1,25|" + kToday);
  QCOMPARE(shown().at(1), "Festabend|0|1,25|" + kToday);
}

void TestPayments::settlingSaysAllThatOthersDidOnce() {
  till->fill(
      "Zeilen Kasse_Eingang\n  ID | Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  5 | 108 | 2 | ja | 3,5 | 19.11.2026\n  6 | 108 | 2 | ja | 3,5 | 19.11.2026\n");
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  till->execute("UPDATE Kasse_Eingang SET Offen = True WHERE ID = 1");
  till->execute("UPDATE Kasse_Eingang SET Betrag = 5 WHERE ID = 2");
  till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 3");
  till->execute("UPDATE Kasse_Eingang SET Offen = False WHERE ID > 4");
  till->dialogs.expect(kOtherDesk +
                       "2 Posten sind dort schon bezahlt worden.\r\n"
                       "1 Eingang ist dort gelöscht worden.\r\n"
                       "2 Posten sind dort geändert worden (Betrag, oder wieder offen)." +
                       settledHere("20,00 €"));
  payments().cmdOPVerbuchen();
  QCOMPARE(shown(), (QStringList{"Startgeld|0|15|" + kToday, "Festabend|0|5|" + kToday, "|-1|4|19.11.2026",
                                 "Nachkauf Serie|0|3,5|19.11.2026", "Nachkauf Serie|0|3,5|19.11.2026"}));
}

void TestPayments::settlingCountsAChangeOnceAfterARetry() {
  till->execute("UPDATE Kasse_Eingang SET Betrag = 5, VereinID = 7 WHERE ID = 2");
  const QString failure = till->refuse(StoreAct::Update, "VereinID", 7) + "\nFehler beim Verbuchen der OP!";
  till->dialogs.expect(failure, BoxAnswer::Retry).during([this] {
    till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 2");
    till->fill(
        "Zeilen Kasse_Eingang\n  ID | Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
        "  2 | 108 | 5 | ja | 5 | 19.11.2026\n");
  });
  till->dialogs.expect(kOtherDesk + "1 Posten ist dort geändert worden (Betrag, oder wieder offen)." +
                       settledHere("9,00 €"));
  payments().cmdOPVerbuchen();
  QCOMPARE(shown().at(1), "Festabend|0|5|" + kToday);
  QCOMPARE(stored().at(1), "2|0|5|" + kToday);
}

void TestPayments::settlingStopsWhereItFails() {
  till->execute("UPDATE Kasse_Eingang SET Offen = True WHERE ID = 1");
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  const QString failure = till->refuse(StoreAct::Update, "ID", 2) + "\nFehler beim Verbuchen der OP!";
  till->dialogs.expect(failure, BoxAnswer::Abort).titled("Fehler").with(BoxButtons::AbortRetryIgnore);
  till->dialogs.expect(staysOpen(" und alle folgenden bleiben offen."), BoxAnswer::Yes);
  payments().cmdOPVerbuchen();
  QCOMPARE(stored(), (QStringList{"1|0|15|" + kToday, "2|-1|12,5|19.11.2026 09:01:00", "3|-1|4|19.11.2026"}));
  QCOMPARE(shown(), (QStringList{"Startgeld|0|15|" + kToday, "Festabend|-1|12,5|19.11.2026 09:01:00",
                                 "|-1|4|19.11.2026"}));
}

void TestPayments::settlingAgainAfterARetry() {
  const QString failure = till->refuse(StoreAct::Update, "ID", 2) + "\nFehler beim Verbuchen der OP!";
  till->dialogs.expect(failure, BoxAnswer::Retry);
  till->dialogs.expect(failure, BoxAnswer::Ignore);
  till->dialogs.expect(staysOpen(" bleibt offen."), BoxAnswer::No).presetting(BoxAnswer::No);
  till->dialogs.expect(failure, BoxAnswer::Ignore);
  till->dialogs.expect(staysOpen(" bleibt offen."), BoxAnswer::Yes);
  payments().cmdOPVerbuchen();
  QCOMPARE(stored(),
           (QStringList{"1|0|15|19.11.2026 09:00:00", "2|-1|12,5|19.11.2026 09:01:00", "3|0|4|" + kToday}));
}

void TestPayments::aSettledRowBecomesOpen_data() {
  QTest::addColumn<BoxAnswer>("answer");
  QTest::addColumn<QString>("date");
  QTest::newRow("as of today") << BoxAnswer::Yes << kToday;
  QTest::newRow("as of then") << BoxAnswer::No << QString("19.11.2026 09:00:00");
}

void TestPayments::aSettledRowBecomesOpen() {
  QFETCH(BoxAnswer, answer);
  QFETCH(QString, date);
  edit(1, CashColumn::Offen, "-1");
  till->dialogs.expect(kAskDate, answer).titled("Hinweis").with(BoxButtons::YesNo);
  QVERIFY(!payments().nachEingabe(1, CashColumn::Offen).unlesbar);
  QCOMPARE(stored().first(), "1|-1|15|" + date);
  QCOMPARE(open(), "31,5");
}

void TestPayments::anAmountIsCorrected() {
  edit(1, CashColumn::Betrag, "17,5");
  QVERIFY(!payments().nachEingabe(1, CashColumn::Betrag).unlesbar);
  QCOMPARE(stored().first(), "1|0|17,5|19.11.2026 09:00:00");
}

void TestPayments::aDateIsCorrected() {
  edit(1, CashColumn::Datum, "18.11.2026");
  QVERIFY(!payments().nachEingabe(1, CashColumn::Datum).unlesbar);
  QCOMPARE(stored().first(), "1|0|15|18.11.2026");
}

void TestPayments::anEditKeepsWhatAnotherDeskChanged_data() {
  QTest::addColumn<QString>("elsewhere");
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("row");   // of the store
  QTest::addColumn<QString>("said");  // its end
  const QString settled = "Offen = False, DatumEingang = #2026-11-20 09:30:00#";
  QTest::newRow("settled there, the amount typed here") << settled << int(CashColumn::Betrag) << "12"
                                                        << "0|12|20.11.2026 09:30:00"
                                                        << "12,00 €, bezahlt, 20.11.2026 09:30:00";
  QTest::newRow("the amount typed there, settled here") << "Betrag = 10" << int(CashColumn::Offen) << "0"
                                                        << "0|10|" + kToday << "10,00 €, bezahlt, " + kToday;
  QTest::newRow("the amount typed there, the date here")
      << "Betrag = 10" << int(CashColumn::Datum) << "18.11.2026"
      << "-1|10|18.11.2026"
      << "10,00 €, offen, 18.11.2026";
  QTest::newRow("settled at both") << "Offen = False" << int(CashColumn::Offen) << "0"
                                   << "0|12,5|" + kToday << "12,50 €, bezahlt, " + kToday;
  QTest::newRow("another day there") << "DatumEingang = #2026-11-17#" << int(CashColumn::Betrag) << "12"
                                     << "-1|12|17.11.2026"
                                     << "12,00 €, offen, 17.11.2026";
}

void TestPayments::anEditKeepsWhatAnotherDeskChanged() {
  QFETCH(QString, elsewhere);
  QFETCH(int, column);
  QFETCH(QString, typed);
  QFETCH(QString, row);
  QFETCH(QString, said);
  till->execute("UPDATE Kasse_Eingang SET " + elsewhere + " WHERE ID = 2");
  edit(2, column, typed);
  if (column == CashColumn::Offen) till->dialogs.expect(kAskDate, BoxAnswer::Yes);
  int told = 0;
  connect(&payments(), &Payments::changed, this, [&told] { ++told; });
  till->dialogs.expect(storedNow("Festabend, " + said))
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation)
      .during([&] { QCOMPARE(told, 1); });
  QVERIFY(!payments().nachEingabe(2, column).unlesbar);
  QCOMPARE(stored().at(1), "2|" + row);
  QCOMPARE(shown().at(1), "Festabend|" + row);
}

void TestPayments::aChangeDuringTheQuestionIsKept() {
  edit(2, CashColumn::Offen, "0");
  till->dialogs.expect(kAskDate, BoxAnswer::No).during([this] {
    till->execute("UPDATE Kasse_Eingang SET Betrag = 10, DatumEingang = #2026-11-18# WHERE ID = 2");
  });
  till->dialogs.expect(storedNow("Festabend, 10,00 €, bezahlt, 18.11.2026"));
  payments().nachEingabe(2, CashColumn::Offen);
  QCOMPARE(stored().at(1), "2|0|10|18.11.2026");
}

void TestPayments::anEditOfAnEditedRowIsNotTakenForAnothers() {
  for (const char* amount : {"7,50", "8,00"}) {
    edit(2, CashColumn::Betrag, amount);
    payments().nachEingabe(2, CashColumn::Betrag);
    edit(2, CashColumn::Datum, "18.11.2026 00:00:00");
    payments().nachEingabe(2, CashColumn::Datum);
  }
  QCOMPARE(stored().at(1), "2|-1|8|18.11.2026");
  QCOMPARE(shown().at(1), "Festabend|-1|8|18.11.2026");
}

void TestPayments::anUnreadableEditShowsWhatAnotherDeskChanged() {
  till->execute("UPDATE Kasse_Eingang SET Offen = False WHERE ID = 2");
  edit(2, CashColumn::Datum, "gestern");
  int told = 0;
  connect(&payments(), &Payments::changed, this, [&told] { ++told; });
  till->dialogs.expect("Fehler: 13 - »gestern« ist kein Datum (TT.MM.JJJJ oder TT.MM.JJJJ HH:MM:SS).");
  QVERIFY(payments().nachEingabe(2, CashColumn::Datum).unlesbar);
  QCOMPARE(shown().at(1), "Festabend|0|12,5|19.11.2026 09:01:00");
  QCOMPARE(told, 1);
}

void TestPayments::whatCantBeReadStandsAsItWas_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("said");
  const QString amount = " ist kein Betrag. Bitte mit Komma und ohne Punkte eingeben, z. B. 12,50.";
  QTest::newRow("point") << int(CashColumn::Betrag) << "12.50"
                         << "Fehler: 13 - »12.50«" + amount;
  QTest::newRow("commas") << int(CashColumn::Betrag) << "1,2,3"
                          << "Fehler: 13 - »1,2,3«" + amount;
  QTest::newRow("text") << int(CashColumn::Betrag) << "fünf"
                        << "Fehler: 13 - »fünf«" + amount;
  QTest::newRow("nothing") << int(CashColumn::Betrag) << ""
                           << "Fehler: 13 - »«" + amount;
  QTest::newRow("no day")
      << int(CashColumn::Datum) << "31.02.2026"
      << "Fehler: 13 - »31.02.2026« ist kein Datum (TT.MM.JJJJ oder TT.MM.JJJJ HH:MM:SS).";
  QTest::newRow("too much") << int(CashColumn::Betrag) << "9999999999999999"
                            << "Fehler: 6 - Der Betrag »9999999999999999« ist zu groß.";
}

void TestPayments::whatCantBeReadStandsAsItWas() {
  QFETCH(int, column);
  QFETCH(QString, typed);
  QFETCH(QString, said);
  const QStringList before = stored(), seen = shown();
  edit(2, column, typed);
  till->dialogs.expect(said).with(BoxButtons::Ok).showing(BoxIcon::Exclamation);
  const Payments::Eingabe input = payments().nachEingabe(2, column);
  QVERIFY(input.unlesbar);
  QCOMPARE(input.text, typed);
  QCOMPARE(stored(), before);
  QCOMPARE(shown(), seen);
}

void TestPayments::aRowThatIsGoneKeepsTheEdit() {
  till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 1");
  edit(1, CashColumn::Betrag, "12.50");
  QVERIFY(!payments().nachEingabe(1, CashColumn::Betrag).unlesbar);
  QCOMPARE(shown().first(), "Startgeld|0|12.50|19.11.2026 09:00:00");
}

void TestPayments::aRowThatCantBeChangedStandsAsItWas() {
  const QString failure = till->refuse(StoreAct::Update, "ID", 1);
  edit(1, CashColumn::Betrag, "99");
  till->dialogs.expect(failure).with(BoxButtons::Ok);
  QVERIFY(!payments().nachEingabe(1, CashColumn::Betrag).unlesbar);
  QCOMPARE(shown().first(), "Startgeld|0|15|19.11.2026 09:00:00");
}

void TestPayments::oneRowIsDeleted() {
  till->dialogs
      .expect("Soll der aktuelle Eingang des Schützen unwiderruflich gelöscht werden?", BoxAnswer::Yes)
      .titled("Hinweis")
      .presetting(BoxAnswer::No);
  payments().cmdDelete(1);
  QCOMPARE(shown().size(), 2);
  QCOMPARE(stored().size(), 2);
  QCOMPARE(payments().summen().Gesamt.toText(), "16,5");
}

void TestPayments::deletingIsAskedAbout() {
  till->dialogs.expect("Soll der aktuelle Eingang des Schützen unwiderruflich gelöscht werden?",
                       BoxAnswer::No);
  payments().cmdDelete(1);
  till->dialogs.expect(kAskAll, BoxAnswer::No).titled("Hinweis").presetting(BoxAnswer::No);
  payments().cmdDeleteAll();
  payments().cmdDelete(0);  // no row
  QCOMPARE(stored().size(), 3);
}

void TestPayments::deletingARowThatIsGone() {
  till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 1");
  till->dialogs.expect("Kein gültiger Eintrag gewählt!");
  payments().cmdDelete(1);
  QCOMPARE(shown().size(), 3);
}

void TestPayments::allRowsAreDeleted() {
  till->dialogs.expect(kAskAll, BoxAnswer::Yes);
  payments().cmdDeleteAll();
  QCOMPARE(shown(), QStringList());
  QCOMPARE(stored(), QStringList());
  QCOMPARE(till->payments().size(), 1);  // of another shooter
}

void TestPayments::deletingAllPassesOverRowsThatAreGone() {
  till->execute("DELETE * FROM Kasse_Eingang WHERE ID = 2");
  till->dialogs.expect(kAskAll, BoxAnswer::Yes);
  till->dialogs.expect("Kein gültiger Eintrag gewählt!");
  payments().cmdDeleteAll();
  QCOMPARE(shown(), QStringList());
  QCOMPARE(stored(), QStringList());
}

void TestPayments::deletingAllThatStops() {
  till->refuse(StoreAct::Delete, "ID", 2);
  till->dialogs.expect(kAskAll, BoxAnswer::Yes);
  QVERIFY_THROWS_EXCEPTION(Error, payments().cmdDeleteAll());
  QCOMPARE(shown(), (QStringList{"Festabend|-1|12,5|19.11.2026 09:01:00", "|-1|4|19.11.2026"}));
  QCOMPARE(stored().size(), 2);
}

QTEST_MAIN(TestPayments)
#include "test_payments.moc"
