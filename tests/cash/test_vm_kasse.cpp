// The cash of a club or team on its real window, opened from the menu of the desk.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "cash/frmVMKasse.h"
#include "platform/dao/recordset.h"
#include "platform/look/look.h"
#include "tests/cash/desk_window.h"
#include "tests/support/manners.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kPayments = R"(
Zeilen Kasse_Eingang
  ID  | KasseID | Offen | Betrag | DatumEingang | VereinID | MannID
  101 | 10      | ja    | 50     | 19.11.2026   | 1        |
  102 | 10      | nein  | 20     | 19.11.2026   |          | 1
)";

}  // namespace

class TestVMKasse : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    till->fill(kPayments);
    reports = NotedReports();
    windows = std::make_unique<RealBoxes>();
    desk = std::make_unique<DeskWindow>(*till, reports);
    desk->open("107");
  }
  void cleanup() {
    desk.reset();
    windows.reset();
    till.reset();
  }

  void theClubOfTheShooter();
  void theTeamOfTheShooter();
  void aSaleByKeys();
  void heldKeys();
  void correctingAndDeleting();
  void closingAsksAboutThePurchase();
  void aClubThatIsGone();
  void aClubWithoutAName();
  void aClubWithoutAShortName();
  void receipts();
  void aBrokenBooking();
  void anUnreadableCell();
  void aScanIntoTheAmount();
  void manners();

 private:
  void in(const QString& entry, std::function<void(QWidget&)> act) {
    windows->expectWindow("frmVMKasse", onceActive([act = std::move(act)](QWidget& club) {
                            act(club);
                            if (club.isVisible()) click(club, "cmdClose");
                          }));
    trigger(desk->window(), entry);
  }
  static QString text(QWidget& club, const QString& label) { return the<QLabel>(club, label).text(); }
  static QStringList rows(QWidget& club, const QString& grid) {
    return Till::rows(*the<TextGrid>(club, grid).table());
  }

  std::unique_ptr<Till> till;
  NotedReports reports;
  std::unique_ptr<RealBoxes> windows;
  std::unique_ptr<DeskWindow> desk;
};

void TestVMKasse::theClubOfTheShooter() {
  QCOMPARE(desk->on<QAction>("mnuVM_0").text(), "Verein: SG Grünau: -50,00 €");
  in("mnuVM_0", [](QWidget& club) {
    QCOMPARE(club.windowTitle(), "Tarvex Kasse - Verein: SG Grünau");
    QCOMPARE(text(club, "lblName"), "SG Grünau");
    QCOMPARE(text(club, "lblHerkunft"), "Schützengilde Grünau");
    QCOMPARE(text(club, "lblSaldo"), "-50,00 €");
    QCOMPARE(rows(club, "flexAll"), QStringList("Vereinsbeitrag|-1|50|19.11.2026"));
    QCOMPARE(the<QListWidget>(club, "lstAll").count(), 1);
    click(club, "cmdOPVerbuchen");
    QCOMPARE(text(club, "lblSaldo"), "50,00 €");
    QCOMPARE(text(club, "lblSummen"), "Gesamt 50,00 €    Bezahlt 50,00 €    Offen 0,00 €");
  });
  QCOMPARE(desk->on<QAction>("mnuVM_0").text(), "Verein: SG Grünau: 50,00 €");
  QCOMPARE(desk->text("Label4"), "SG Grünau");
}

void TestVMKasse::theTeamOfTheShooter() {
  in("mnuVM_1", [](QWidget& club) {
    QCOMPARE(club.windowTitle(), "Tarvex Kasse - Mannschaft: Grünau I");
    QCOMPARE(text(club, "lblHerkunft"), "SG Grünau");
    QCOMPARE(rows(club, "flexAll"), QStringList("Vereinsbeitrag|0|20|19.11.2026"));
  });
}

void TestVMKasse::aSaleByKeys() {
  in("mnuVM_1", [this](QWidget& club) {
    auto& stakes = the<QListWidget>(club, "lstAll");
    QVERIFY(stakes.hasFocus());
    stakes.setCurrentRow(0);
    press(club, "lstAll", Qt::Key_Return);
    QCOMPARE(text(club, "lblAktGesamt"), "50,00 €");
    press(club, "lstAll", Qt::Key_F7);
    type(club, "cmbWechselGeld", "60");
    QCOMPARE(the<QLineEdit>(club, "txtZurueck").text(), "10,00 €");
    QVERIFY(!the<QPushButton>(club, "cmdSpende").isVisible());
    QTest::keyClick(the<QComboBox>(club, "cmbWechselGeld").lineEdit(), Qt::Key_Return);
    QTRY_VERIFY(the<QPushButton>(club, "cmdVerbuchen").hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(text(club, "lblZuletzt"),
             "Verbucht: 1 Einlage\nZu bezahlen 50,00 €\nErhalten 60,00 €\nZurück 10,00 €");
    QVERIFY(rows(club, "flex").isEmpty());
    QCOMPARE(the<QComboBox>(club, "cmbWechselGeld").currentText(), "");
    QCOMPARE(text(club, "lblSaldo"), "70,00 €");
    till->dialogs.expectInput(kAskCount, "2").titled("Einlagen");
    stakes.setCurrentRow(0);
    click(club, "cmdAddAnzahl");
    QCOMPARE(rows(club, "flex").size(), 2);
    click(club, "optBetrag_1");
    press(club, "lstAll", Qt::Key_F9);
    QCOMPARE(text(club, "lblSaldo"), "-30,00 €");
  });
  QCOMPARE(till->read("Select * from Kasse_Eingang where ID > 102 order by ID",
                      {"Startnummer", "KasseID", "Offen", "Betrag", "VereinID", "MannID"}),
           (QStringList{"Null|10|0|50|Null|1", "Null|10|-1|50|Null|1", "Null|10|-1|50|Null|1"}));
  QCOMPARE(desk->on<QAction>("mnuVM_1").text(), "Mannschaft: Grünau I: -30,00 €");
}

void TestVMKasse::heldKeys() {
  const QString failure = till->refuse(StoreAct::Insert, "KasseID", 10);
  in("mnuVM_0", [&, this](QWidget& club) {
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    hold(Qt::Key_Return, 5);
    QCOMPARE(rows(club, "flex").size(), 1);
    press(club, "lstAll", Qt::Key_F7);
    type(club, "cmbWechselGeld", "60");
    till->clock.advance(500);
    hold(Qt::Key_Return, 5);
    QVERIFY(the<QPushButton>(club, "cmdVerbuchen").hasFocus());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F9}) {  // each tries to book once
      till->dialogs.expect(failure + "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.");
      hold(key, 5);
      QVERIFY(till->dialogs.done());
    }
    till->dialogs.expect("Wollen Sie die aktuellen Beträge verwerfen?", BoxAnswer::Yes);
  });
}

void TestVMKasse::correctingAndDeleting() {
  in("mnuVM_0", [this](QWidget& club) {
    click(club, "cmdDelete");  // no row is chosen
    the<TextGrid>(club, "flexAll").setCurrentRow(1);
    till->dialogs
        .expect("Soll der aktuelle Eingang des Vereins unwiderruflich gelöscht werden?", BoxAnswer::Yes)
        .titled("Hinweis");
    click(club, "cmdDelete");
    QCOMPARE(text(club, "lblSaldo"), "0,00 €");
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    click(club, "cmdAdd");
    the<TextGrid>(club, "flex").setCurrentRow(1);
    press(club, "flex", Qt::Key_Delete);
    QVERIFY(rows(club, "flex").isEmpty());
    click(club, "cmdVerbuchen");  // nothing in hand
    QCOMPARE(text(club, "lblZuletzt"), "");
  });
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"ID"}), QStringList("102"));
}

void TestVMKasse::closingAsksAboutThePurchase() {
  in("mnuVM_0", [this](QWidget& club) {
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    click(club, "cmdAdd");
    const QString discard = "Wollen Sie die aktuellen Beträge verwerfen?";
    till->dialogs.expect(discard, BoxAnswer::No).titled("Hinweis").presetting(BoxAnswer::No);
    QTest::keyClick(&club, Qt::Key_Escape);
    QVERIFY(club.isVisible());
    till->dialogs.expect(discard, BoxAnswer::Yes);
    click(club, "cmdClose");
    QVERIFY(!club.isVisible());
  });
  QCOMPARE(till->payments().size(), 2);
}

void TestVMKasse::aClubThatIsGone() {
  till->execute("DELETE * FROM Verein WHERE ID = 1");
  till->dialogs.expect("Fehler: 3021 - Der Verein ist nicht mehr da.").titled("Fehler");
  trigger(desk->window(), "mnuVM_0");
}

void TestVMKasse::aClubWithoutAName() {
  till->execute("UPDATE Verein SET Name = Null, Kurzname = '' WHERE ID = 1");
  in("mnuVM_0", [](QWidget& club) { QCOMPARE(text(club, "lblSaldo"), "-50,00 €"); });
  QVERIFY(windows->done());
}

void TestVMKasse::aClubWithoutAShortName() {
  till->execute("UPDATE Verein SET Kurzname = '' WHERE ID = 1");
  in("mnuVM_0", [this](QWidget& club) {
    QCOMPARE(text(club, "lblName"), "Schützengilde Grünau");
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    for (const char* words : {"Vereinsbeitrag", "2 × Vereinsbeitrag"}) {
      click(club, "cmdAdd");
      QCOMPARE(text(club, "lblKauf"), words);
    }
    till->dialogs.expect("Wollen Sie die aktuellen Beträge verwerfen?", BoxAnswer::Yes);
  });
}

void TestVMKasse::receipts() {
  makeReceiptTemplate(till->path("programm/ErgKasseDruck.mdb"));
  till->random.give({0.1, 0.2, 0.3});
  QStringList printed;
  reports.meanwhile = [&](const ReportOrder& order) {
    const auto lines = dao::Database::open(order.dataFile)->openRecordset("Select * from Kasse");
    for (; !lines->eof(); lines->moveNext()) printed += lines->value("Betrag").value<Money>().toText();
  };
  in("mnuVM_0", [&, this](QWidget& club) {
    click(club, "cmdVorschau");
    QCOMPARE(reports.orders.size(), size_t(1));
    QCOMPARE(reports.orders[0].ziel, ReportOrder::Ziel::Fenster);
    click(club, "cmdDrucken");
    QCOMPARE(reports.orders[1].ziel, ReportOrder::Ziel::Drucker);
    QCOMPARE(printed, (QStringList{"50", "50"}));  // without a purchase all that is stored
    printed.clear();
    click(club, "chkAutoDruck");
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    click(club, "cmdAdd");
    click(club, "cmdVerbuchen");
    QCOMPARE(reports.orders.size(), size_t(3));
    QCOMPARE(printed, QStringList("50"));
  });
}

void TestVMKasse::aBrokenBooking() {
  const QString failure = till->refuse(StoreAct::Insert, "KasseID", 10);
  in("mnuVM_0", [&](QWidget& club) {
    the<QListWidget>(club, "lstAll").setCurrentRow(0);
    click(club, "cmdAdd");
    till->dialogs.expect(failure + "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.")
        .titled("Fehler");
    click(club, "cmdVerbuchen");
    QCOMPARE(rows(club, "flex").size(), 1);
    till->dialogs.expect("Wollen Sie die aktuellen Beträge verwerfen?", BoxAnswer::Yes);
  });
}

void TestVMKasse::anUnreadableCell() {
  in("mnuVM_0", [this](QWidget& club) {
    QLineEdit* editor = typeUnreadableAmount(the<TextGrid>(club, "flexAll"), till->dialogs);
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Escape);
  });
  QCOMPARE(till->read("Select * from Kasse_Eingang where ID = 101", {"Betrag"}), QStringList("50"));
}

void TestVMKasse::aScanIntoTheAmount() {
  in("mnuVM_1", [this](QWidget& club) {
    press(club, "lstAll", Qt::Key_F7);
    till->dialogs.expect("Hier wird kein Strichcode gelesen.\r\nDer Scan »900« wurde nicht übernommen.");
    desk->scan("900");
    QTRY_VERIFY(till->dialogs.done());
    QCOMPARE(the<QComboBox>(club, "cmbWechselGeld").currentText(), "");
  });
}

void TestVMKasse::manners() {
  in("mnuVM_0", [](QWidget& club) { QCOMPARE(badManners(club).join("; "), QString()); });
}

QTEST_MAIN(TestVMKasse)
#include "test_vm_kasse.moc"
