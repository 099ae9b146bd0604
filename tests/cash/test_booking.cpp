// Booking: the order of its steps, what is stored, and what a failure leaves.
#include <QTest>
#include <memory>

#include "cash/booking.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

class TestBooking : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    QVERIFY(desk->UpdateStartNr("108", "", ""));
    journal.clear();
    allowed = true;
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void rowsAreStoredAsTheyStand();
  void correctedCellsAreStored();
  void openItemsAreStoredOpen();
  void theShooterOfTheMomentIsBookedOn();
  void theStepsInTheirOrder();
  void withoutAShooterNothingHappens();
  void aRefusedBookingDoesNothing();
  void aFailureOfTheQuestionDoesNothing();
  void noRowsAreABookingToo();
  void aFailedLabelRunStoresNothing();
  void aFailureMidwayKeepsWhatIsStored();
  void bookingAgainStoresTwice();
  void aFailureOfTheTargetsKeepsAllRows();
  void aFailureBehindTheStoringMarksAllRows();
  void aStakeDeletedMeanwhileIsBooked();
  void theBookingDateOfTheTargetsIsTakenOnce();

 private:
  BookingOutcome book() {
    BookingSides sides;
    const auto stored = [this] { return " " + QString::number(till->payments().size()); };
    sides.darf = [=, this] {
      journal += "darf" + stored();
      return allowed;
    };
    sides.druckeBeleg = [=, this] { journal += "Beleg" + stored(); };
    sides.druckeEtiketten = [=, this] { journal += "Etiketten" + stored(); };
    sides.speichereScheiben = [=, this](const QString& datum, int&) {
      journal += "Scheiben " + datum + stored();
    };
    sides.speichereStapel = [=, this] { journal += "Stapel" + stored(); };
    return book(sides);
  }
  BookingOutcome book(const BookingSides& sides) {
    return verbuche(till->workplace(), desk->store(), desk->purchase(), desk->sStartNr(), sides);
  }
  Purchase& purchase() { return desk->purchase(); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  QStringList journal;
  bool allowed = true;
};

void TestBooking::rowsAreStoredAsTheyStand() {
  purchase().AddKauf(1);
  till->clock.advance(60000);
  purchase().AddKauf(2);
  till->clock.advance(60000);
  const BookingOutcome outcome = book();
  QVERIFY(outcome.ganz());
  QCOMPARE(outcome.gespeichert, 2);
  QCOMPARE(till->payments(),
           (QStringList{"108|1|0|15|20.11.2026 10:00:00|", "108|2|0|3,5|20.11.2026 10:01:00|"}));
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"VereinID", "MannID"}),
           (QStringList{"Null|Null", "Null|Null"}));
}

void TestBooking::correctedCellsAreStored() {
  purchase().AddKauf(1);
  purchase().flex().setText(1, CashColumn::Betrag, "1.234,50 €");
  purchase().flex().setText(1, CashColumn::Offen, "-1");
  QVERIFY(book().ganz());
  QCOMPARE(till->payments(), QStringList("108|1|-1|1234,5|20.11.2026 10:00:00|"));
}

void TestBooking::openItemsAreStoredOpen() {
  purchase().setBetragsart(Betragsart::OffenePosten);
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  QCOMPARE(purchase().zuBezahlen(), Money());
  QVERIFY(book().ganz());
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Offen"}), (QStringList{"-1", "-1"}));
}

void TestBooking::theShooterOfTheMomentIsBookedOn() {
  purchase().AddKauf(2);
  QVERIFY(desk->UpdateStartNr("5.1", "", ""));
  QCOMPARE(purchase().flex().rows(), 2);
  QVERIFY(book().ganz());
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("5.1"));
}

void TestBooking::theStepsInTheirOrder() {
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  QVERIFY(book().ganz());
  QCOMPARE(journal,
           (QStringList{"darf 0", "Beleg 0", "Etiketten 0", "Scheiben 20.11.2026 10:00:00 2", "Stapel 2"}));
}

void TestBooking::withoutAShooterNothingHappens() {
  desk->store().open(till->competition());
  const BookingOutcome outcome = book();
  QVERIFY(!outcome.begonnen && !outcome.ganz());
  QCOMPARE(journal, QStringList());
}

void TestBooking::aRefusedBookingDoesNothing() {
  purchase().AddKauf(1);
  allowed = false;
  const BookingOutcome outcome = book();
  QVERIFY(outcome.verweigert && !outcome.ganz() && !outcome.fehler);
  QCOMPARE(journal, QStringList("darf 0"));
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(purchase().flex().rows(), 2);
}

void TestBooking::aFailureOfTheQuestionDoesNothing() {
  purchase().AddKauf(1);
  BookingSides sides;
  sides.darf = []() -> bool { throw Error(3043); };
  const BookingOutcome outcome = book(sides);
  QCOMPARE(outcome.fehler->number(), 3043);
  QCOMPARE(outcome.gespeichert, 0);
  QVERIFY(till->payments().isEmpty());
}

void TestBooking::noRowsAreABookingToo() {
  QVERIFY(book().ganz());
  QCOMPARE(journal.size(), 5);
  QCOMPARE(till->payments(), QStringList());
}

void TestBooking::aFailedLabelRunStoresNothing() {
  purchase().AddKauf(1);
  BookingSides sides;
  sides.druckeEtiketten = [] { throw Error(5, "kein Drucker"); };
  const BookingOutcome outcome = book(sides);
  QVERIFY(!outcome.ganz());
  QCOMPARE(outcome.gespeichert, 0);
  QCOMPARE(outcome.fehler->description(), "kein Drucker");
  QCOMPARE(till->payments(), QStringList());
  QVERIFY(!purchase().istGespeichert(1));
}

void TestBooking::aFailureMidwayKeepsWhatIsStored() {
  for (int stake : {1, 2, 3}) purchase().AddKauf(stake);
  till->refuse(StoreAct::Insert, "KasseID", 3);
  const BookingOutcome outcome = book();
  QVERIFY(outcome.fehler);
  QCOMPARE(outcome.gespeichert, 2);
  QCOMPARE(till->payments().size(), 2);
  QCOMPARE(purchase().flex().rows(), 4);
  QVERIFY(purchase().istGespeichert(1) && purchase().istGespeichert(2) && !purchase().istGespeichert(3));
  QCOMPARE(journal.size(), 3);  // neither targets nor stacks
}

void TestBooking::bookingAgainStoresTwice() {
  for (int stake : {1, 3}) purchase().AddKauf(stake);
  till->refuse(StoreAct::Insert, "KasseID", 3);
  book();
  purchase().flex().setRowData(2, "2");
  QVERIFY(book().ganz());
  QCOMPARE(till->read("Select * from Kasse_Eingang order by ID", {"KasseID"}), (QStringList{"1", "1", "2"}));
}

void TestBooking::aFailureOfTheTargetsKeepsAllRows() {
  purchase().AddKauf(1);
  BookingSides sides;
  sides.speichereScheiben = [](const QString&, int&) { throw Error(3021); };
  sides.speichereStapel = [this] { journal += "Stapel"; };
  const BookingOutcome outcome = book(sides);
  QCOMPARE(outcome.gespeichert, 1);
  QCOMPARE(outcome.fehler->number(), 3021);
  QCOMPARE(journal, QStringList());
  QVERIFY(purchase().istGespeichert(1));
}

/// The server goes away just then: nobody is to book the purchase a second time.
void TestBooking::aFailureBehindTheStoringMarksAllRows() {
  for (int stake : {2, 3}) purchase().AddKauf(stake);
  BookingSides sides;
  sides.ladeNeu = [] { throw Error(3043); };
  const BookingOutcome outcome = book(sides);
  QCOMPARE(outcome.gespeichert, 2);
  QVERIFY(!outcome.ganz());
  QVERIFY(purchase().istGespeichert(1) && purchase().istGespeichert(2));
}

void TestBooking::aStakeDeletedMeanwhileIsBooked() {
  purchase().AddKauf(2);
  till->execute("DELETE * FROM Kasse_Verwaltung WHERE ID = 2");
  QVERIFY(book().ganz());
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  QCOMPARE(Till::rows(desk->payments().flexAll()), QStringList("|0|3,5|20.11.2026 10:00:00"));
  QCOMPARE(desk->payments().summen().Gesamt.toText(), "3,5");
}

void TestBooking::theBookingDateOfTheTargetsIsTakenOnce() {
  purchase().AddKauf(1);
  till->clock.advance(3000);
  QVERIFY(book().ganz());
  QCOMPARE(journal.at(3), "Scheiben 20.11.2026 10:00:03 1");
  QCOMPARE(till->payments(), QStringList("108|1|0|15|20.11.2026 10:00:00|"));
}

QTEST_MAIN(TestBooking)
#include "test_booking.moc"
