// The lists of the cash desk without its windows: what is offered, and what the report control is asked for.
#include <QTest>

#include "cash/cash_reports.h"
#include "platform/dao/recordset.h"
#include "tests/cash/till.h"
#include "tests/support/error_of.h"
#include "tests/support/report_doors.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

class TestCashReports : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->deliver();
    lists = std::make_unique<CashReports>(till->workplace(), door, till->competition());
    lists->waehleTag = [this](const std::vector<QDate>& tage) {
      offered = tage;
      return chosen;
    };
  }
  void cleanup() {
    lists.reset();
    till.reset();
    door = {};
    offered.clear();
    chosen.reset();
  }

  void theTableOfAnOccasion_data();
  void theTableOfAnOccasion();
  void theDeliveredListsInTheirOrder();
  void loadingGivesEveryPaymentItsClub();
  void aListByClubsKnowsWhatWasSoldSince();
  void otherListsLeaveThePaymentsAlone();
  void foreignDataLeavesThePaymentsAlone();
  void aFailureOfThePaymentsIsReported();
  void withoutAChoice();
  void aListWithoutADay();
  void aListOfADay();
  void noDayClearsTheParameter();
  void anEntryWithoutAReportDoesNothing();
  void anEntryThatIsGoneDoesNothing();
  void prizeMoneyHasItsOwnData();
  void theDaysOfTheDesk();
  void aFailureIsReportedAndRepeated();
  void aMissingCatalogue();

 private:
  void change(const QString& statement) {
    dao::Database::open(till->path("programm/AwListenKasse.mdb"))->execute(statement);
  }
  void run(const QString& Beschreibung) {
    for (const KassenListe& list : lists->listen())
      if (list.Beschreibung == Beschreibung) return lists->werteAus(list);
    failTest("no list " + Beschreibung);
  }
  /// Another desk sells something.
  void sell() {
    till->fill(
        "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
        "  107 | 1 | nein | 15 | 19.11.2026\n");
  }
  QStringList owners() { return till->read("Select * from Kasse_Eingang", {"VereinIDBasis", "MannIDBasis"}); }
  void run(int row) { lists->werteAus(lists->listen().at(static_cast<size_t>(row))); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashReports> lists;
  NotedReports door;
  std::vector<QDate> offered;
  std::optional<QDate> chosen;
};

void TestCashReports::theTableOfAnOccasion_data() {
  QTest::addColumn<bool>("bEinlagen");
  QTest::addColumn<bool>("Vortel");
  QTest::addColumn<bool>("Preisgeld");
  QTest::addColumn<QString>("table");
  QTest::newRow("desk") << false << false << false << "Listen";
  QTest::newRow("stakes") << true << false << false << "EinlagenListen";
  QTest::newRow("prize money") << true << false << true << "PreisgeldListen";
  QTest::newRow("Vortel") << true << true << false << "VortelListen";
}

void TestCashReports::theTableOfAnOccasion() {
  QFETCH(bool, bEinlagen);
  QFETCH(bool, Vortel);
  QFETCH(bool, Preisgeld);
  QFETCH(QString, table);
  lists->art = {bEinlagen, Vortel, Preisgeld, {}};
  QCOMPARE(listenTabelle(lists->art), table);
  change("INSERT INTO " + table + " (ID, Sort, Beschreibung) VALUES (77, -1, 'Aus dieser')");
  lists->load();
  QCOMPARE(lists->listen().front().Beschreibung, "Aus dieser");
  QCOMPARE(lists->listen().front().ID, 77);
}

void TestCashReports::theDeliveredListsInTheirOrder() {
  change("UPDATE Listen SET Sort = 99 WHERE ID = 1");
  lists->load();
  QCOMPARE(lists->listen().size(), size_t(11));
  QCOMPARE(lists->listen().front().Beschreibung, "Kasseneingänge nach Einlagen");
  QCOMPARE(lists->listen().back().Beschreibung, "Kassenjournal eines Tages");
}

void TestCashReports::loadingGivesEveryPaymentItsClub() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  107 | 1 | nein | 15 | 19.11.2026\n");
  lists->load();
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"VereinIDBasis", "MannIDBasis"}), QStringList("1|1"));
}

/// The window of the lists may stand open all evening.
void TestCashReports::aListByClubsKnowsWhatWasSoldSince() {
  lists->load();
  sell();
  QStringList known;
  door.meanwhile = [&](const ReportOrder&) { known = owners(); };
  run("Kasseneingänge nach Vereinen");
  QCOMPARE(known, QStringList("1|1"));
  QCOMPARE(door.orders.size(), size_t(1));
}

void TestCashReports::otherListsLeaveThePaymentsAlone() {
  lists->load();
  sell();
  run("Kasseneingänge nach Einlagen");
  QCOMPARE(owners(), QStringList("Null|Null"));
  QCOMPARE(door.orders.size(), size_t(1));
}

void TestCashReports::foreignDataLeavesThePaymentsAlone() {
  change(
      "INSERT INTO PreisgeldListen (ID, Sort, Beschreibung, Datei) VALUES (1, 1, 'Preise', "
      "'kassevereine.rpt')");
  lists->art.Preisgeld = true;
  lists->art.PreisgeldDatei = "/preise.mdb";
  lists->load();
  sell();
  run("Preise");
  QCOMPARE(owners(), QStringList("Null|Null"));
  QCOMPARE(door.orders.size(), size_t(1));
  lists->art.PreisgeldDatei.clear();
  run("Preise");
  QCOMPARE(owners(), QStringList("1|1"));
}

void TestCashReports::aFailureOfThePaymentsIsReported() {
  lists->load();
  sell();
  const QString failure = till->refuse(StoreAct::Update, "KasseID", 1) + "\nFehler beim Auswerten der Kasse";
  till->dialogs.expect(failure, BoxAnswer::Retry).with(BoxButtons::AbortRetryIgnore);
  till->dialogs.expect(failure, BoxAnswer::Abort);
  run("Kasseneingänge nach Vereinen");
  QVERIFY(door.orders.empty());
}

void TestCashReports::withoutAChoice() {
  lists->load();
  till->dialogs.expect("Es wurde keine Liste ausgewäht!").titled("Hinweis").showing(BoxIcon::Exclamation);
  lists->werteAus({});
  QVERIFY(door.orders.empty());
}

void TestCashReports::aListWithoutADay() {
  lists->load();
  run(1);
  QCOMPARE(door.orders.size(), size_t(1));
  const ReportOrder& order = door.orders.front();
  QCOMPARE(order.reportFile, till->path("programm") + QDir::separator() + "kasseeinlagen.rpt");
  QCOMPARE(order.dataFile, till->competition());
  QCOMPARE(order.titel, "Auswertung - Kasseneingänge nach Einlagen");
  QCOMPARE(order.parameter, "");
  QVERIFY(order.ziel == ReportOrder::Ziel::Fenster);
  QVERIFY(order.unterbericht.isEmpty());
  QVERIFY(offered.empty());
}

void TestCashReports::aListOfADay() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  107 | 1 | nein | 15 | 05.03.2026 18:30:00\n");
  lists->load();
  chosen = QDate(2026, 3, 5);
  run(0);
  QCOMPARE(offered, std::vector<QDate>({QDate(2026, 3, 5)}));
  QCOMPARE(door.orders.at(0).parameter, "Tageswahl;Date(2026,03,05);TRUE;");
  QCOMPARE(door.orders.at(0).titel, "Auswertung - Kassenjournal eines Tages");
}

void TestCashReports::noDayClearsTheParameter() {
  lists->load();
  run(0);
  QVERIFY(offered.empty());
  QCOMPARE(door.orders.at(0).parameter, "");
}

void TestCashReports::anEntryWithoutAReportDoesNothing() {
  change("UPDATE Listen SET Datei = '' WHERE ID = 1");
  change("UPDATE Listen SET Datei = NULL WHERE ID = 2");
  lists->load();
  run(0);
  run(1);
  QVERIFY(door.orders.empty());
  QVERIFY(offered.empty());
}

void TestCashReports::anEntryThatIsGoneDoesNothing() {
  lists->load();
  change("DELETE FROM Listen WHERE ID = 2");
  run(1);
  QVERIFY(door.orders.empty());
}

void TestCashReports::prizeMoneyHasItsOwnData() {
  change("INSERT INTO PreisgeldListen (ID, Sort, Beschreibung, Datei) VALUES (1, 1, 'Preise', 'preise.rpt')");
  change("INSERT INTO VortelListen (ID, Sort, Beschreibung, Datei) VALUES (1, 1, 'Vorteile', 'vor.rpt')");
  lists->art.Preisgeld = true;
  lists->load();
  run(0);
  lists->art.PreisgeldDatei = "/preise.mdb";
  run(0);
  lists->art = {false, true, false, "/preise.mdb"};
  lists->load();
  run(0);
  QCOMPARE(door.orders.at(0).dataFile, till->competition());
  QCOMPARE(door.orders.at(1).dataFile, "/preise.mdb");
  QCOMPARE(door.orders.at(2).dataFile, till->competition());
}

void TestCashReports::theDaysOfTheDesk() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  107 | 1 | nein | 15 | 19.11.2026 09:00:00\n  108 | 1 | nein | 15 | 19.11.2026 21:00:00\n"
      "  107 | 5 | ja | 15 | 05.12.2026\n  107 | 5 | ja | 15 | \n  108 | 2 | nein | 3,5 | 20.11.2026\n");
  const std::vector<QDate> days = kassenTage(*till->store());
  QCOMPARE(days, (std::vector<QDate>{QDate(2026, 12, 5), QDate(2026, 11, 20), QDate(2026, 11, 19)}));
}

void TestCashReports::aFailureIsReportedAndRepeated() {
  lists->load();
  door.error = 482;
  door.meanwhile = [this](const ReportOrder&) {
    if (door.orders.size() == 2) door.error = 0;
  };
  till->dialogs
      .expect("Fehler: 482 - " + errorDescription(482) + "\nFehler beim Auswerten der Kasse",
              BoxAnswer::Retry)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  run(0);
  QCOMPARE(door.orders.size(), size_t(2));
}

void TestCashReports::aMissingCatalogue() {
  QVERIFY(QFile::remove(till->path("programm/AwListenKasse.mdb")));
  QCOMPARE(errorOf([this] { lists->load(); }), 3024);
  QVERIFY(lists->listen().empty());
}

QTEST_GUILESS_MAIN(TestCashReports)
#include "test_cash_reports.moc"
