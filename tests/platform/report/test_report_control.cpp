// The report control as a caller and an operator use it: window, printer, files.
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/report/grid_report.h"
#include "platform/report/page_view.h"
#include "platform/report/report_control.h"
#include "tests/support/drive.h"
#include "tests/support/image_paper.h"
#include "tests/support/manners.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::report;
using namespace qk::test;

namespace {

const char* const kReport = R"(Bericht "Orte"
Parameter Tag
Seite A5 hoch
Seitenfuß
  Text 0 0 * 5 "Seite {Seite} von {Seiten}" rechts
Abfrage
  SELECT ID, Name FROM Orte ORDER BY ID
Spalten
  "Nr."  ID   20
  "Ort"  Name *
)";

/// A place, a store of 100 rows, a report file, and the control that is run on them.
struct Office {
  Office() {
    const auto database = [this] {
      prepareStore(place.path("daten.qkk"));
      return dao::Database::create(place.path("daten.qkk"));
    }();
    dao::FieldDef id, name;
    id.name = "ID";
    id.type = dao::FieldType::Long;
    name.name = "Name";
    database->createTable({"Orte", {id, name}, {{"PrimaryKey", {"ID"}, true, true}}});
    for (int i = 1; i <= 100; ++i)
      database->execute(QString("INSERT INTO Orte (ID, Name) VALUES (%1, 'Ort %1')").arg(i));
    place.files.write(place.path("orte.rpt"), kReport);
  }

  Order order(Order::Destination destination = Order::Destination::Window) const {
    Order made;
    made.reportFile = place.path("orte.rpt");
    made.dataFile = place.path("daten.qkk");
    made.windowTitle = "Alle Orte";
    made.zoom = 90;
    made.destination = destination;
    return made;
  }
  /// Runs it, and the window's part of the test in the meantime.
  void show(const Order& shown, const std::function<void(QWidget&)>& drive) {
    boxes.expectWindow("ReportPreview", [&](QWidget& window) {
      QTRY_COMPARE(the<QLabel>(window, "lblSeiten").text().contains("…"), false);
      drive(window);
      press(window, "viwSeiten", Qt::Key_Escape);
    });
    control.run(shown);
    QVERIFY(boxes.done());
  }

  TestWorkplace place;
  MessageBoxes dialogs{place.clock};
  RealBoxes boxes;
  ImagePaper direct{{148, 210}}, asked{{148, 210}};
  ReportControl control{place.workplace(dialogs), {direct, asked}};
};

QString state(QWidget& window) {
  return the<QLabel>(window, "lblStand").text();
}

int errorNumber(Office& office, const Order& order, QString* text = nullptr) {
  try {
    office.control.run(order);
    return 0;
  } catch (const Error& error) {
    if (text) *text = error.description();
    return error.number();
  }
}

}  // namespace

class TestReportControl : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }

  void theWindowShowsPagesByKeyboard() {
    Office office;
    bool placed = false;
    Order order = office.order();
    order.place = [&](QWidget& window) {
      placed = true;
      window.resize(700, 600);  // smaller than any screen
    };
    office.show(order, [](QWidget& window) {
      QCOMPARE(window.windowTitle(), "Alle Orte");
      QCOMPARE(window.size(), QSize(700, 600));
      QCOMPARE(the<QComboBox>(window, "cmbZoom").currentText(), "90 %");
      QVERIFY(window.focusWidget() == &the<QWidget>(window, "viwSeiten"));
      auto& page = the<QSpinBox>(window, "spnSeite");
      const int pages = page.maximum();
      QVERIFY(pages >= 3);
      QCOMPARE(the<QLabel>(window, "lblSeiten").text(), QString("von %1").arg(pages));
      QCOMPARE(state(window), "100 Zeilen");
      press(window, "viwSeiten", Qt::Key_PageDown, Qt::ControlModifier);
      QCOMPARE(page.value(), 2);
      press(window, "viwSeiten", Qt::Key_End);
      QCOMPARE(page.value(), pages);
      press(window, "viwSeiten", Qt::Key_Home);
      QCOMPARE(page.value(), 1);
      page.setValue(3);
      QCOMPARE(the<PageView>(window, "viwSeiten").currentPage(), 2);
      press(window, "viwSeiten", Qt::Key_Plus, Qt::ControlModifier);
      QCOMPARE(the<QComboBox>(window, "cmbZoom").currentText(), "100 %");
      QCOMPARE(badManners(window), QStringList());
    });
    QVERIFY(placed);
    QVERIFY(office.direct.names.isEmpty());
  }

  void theZoomFollowsTheWindow() {
    Office office;
    office.show(office.order(), [](QWidget& window) {
      auto& view = the<PageView>(window, "viwSeiten");
      view.setZoom(PageView::Fit::Page);
      const int small = view.percent();
      window.resize(window.width() + 200, window.height() + 300);
      QCoreApplication::processEvents();
      QVERIFY(view.percent() > small);
      view.setZoom(PageView::Fit::Percent, 5000);
      QCOMPARE(view.percent(), 400);
    });
  }

  void whatIsSearchedIsFound() {
    Office office;
    office.show(office.order(), [](QWidget& window) {
      auto& page = the<QSpinBox>(window, "spnSeite");
      const int pages = page.maximum();
      press(window, "viwSeiten", Qt::Key_F, Qt::ControlModifier);
      typeInto(*window.focusWidget(), "ort 100");
      QCOMPARE(page.value(), pages);
      QCOMPARE(state(window), "100 Zeilen");
      the<QLineEdit>(window, "txtSuche").setText("Ort 1");
      press(window, "txtSuche", Qt::Key_F3);
      press(window, "txtSuche", Qt::Key_F3, Qt::ShiftModifier);
      the<QLineEdit>(window, "txtSuche").setText("nirgends");
      QCOMPARE(state(window), "\"nirgends\" steht hier nirgends.");
    });
  }

  void theWindowPrintsAndSaves() {
    Office office;
    const QString pdf = office.place.path("liste.pdf"), csv = office.place.path("liste.csv");
    office.boxes.expectWindow("ReportPreview", [&](QWidget& window) {
      QTRY_COMPARE(the<QLabel>(window, "lblSeiten").text().contains("…"), false);
      const int pages = the<QSpinBox>(window, "spnSeite").maximum();
      press(window, "viwSeiten", Qt::Key_P, Qt::ControlModifier);
      QCOMPARE(office.asked.sheets.size(), pages);
      QCOMPARE(office.asked.names, QStringList("Alle Orte"));
      QCOMPARE(state(window), "Gedruckt.");
      office.boxes.expectSaveFile("PDF-Datei (*.pdf)|*.pdf", pdf);
      press(window, "viwSeiten", Qt::Key_S, Qt::ControlModifier);
      QCOMPARE(state(window), "Gespeichert: " + pdf);
      office.boxes.expectSaveFile("CSV-Datei (*.csv)|*.csv", csv);
      click(window, "cmdCsv");
      office.boxes.expectSaveFile("CSV-Datei (*.csv)|*.csv", std::nullopt);
      click(window, "cmdCsv");
      click(window, "cmdSchliessen");
    });
    office.control.run(office.order());
    QVERIFY(office.place.files.read(pdf).startsWith("%PDF"));
    QCOMPARE(QString::fromUtf8(office.place.files.read(csv)).count("\r\n"), 101);
  }

  void aFailedSavingIsSaid() {
    Office office;
    const QString pdf = office.place.path("liste.pdf");
    office.boxes.expectWindow("ReportPreview", [&](QWidget& window) {
      QTRY_COMPARE(the<QLabel>(window, "lblSeiten").text().contains("…"), false);
      office.place.files.fail(FileStep::Write, "liste.pdf*", 61);
      office.boxes.expectSaveFile("PDF-Datei (*.pdf)|*.pdf", pdf);
      office.boxes.expect(errorDescription(61)).titled("Alle Orte");
      click(window, "cmdPdf");
      QCOMPARE(state(window), "100 Zeilen");
      office.asked.error = 482;
      office.boxes.expect(errorDescription(482)).titled("Alle Orte");
      click(window, "cmdDrucken");
      office.asked.error = 0;
      office.asked.cancelled = true;
      click(window, "cmdDrucken");
      QCOMPARE(state(window), "Angehalten, nichts wurde fertig.");
      click(window, "cmdSchliessen");
    });
    office.control.run(office.order());
    QVERIFY(!QFile::exists(pdf));
  }

  void thePrinterGetsItWithoutAQuestion() {
    Office office;
    QVERIFY(office.control.run(office.order(Order::Destination::Printer)));
    QVERIFY(office.direct.sheets.size() >= 3);
    QCOMPARE(office.direct.names, QStringList("Alle Orte"));
    QVERIFY(office.asked.names.isEmpty());
    office.direct.error = 482;
    QCOMPARE(errorNumber(office, office.order(Order::Destination::Printer)), 482);
  }

  void whatIsWrongIsThrownBeforeAnythingIsShown() {
    Office office;
    QString text;
    Order order = office.order();
    order.reportFile = office.place.path("fehlt.rpt");
    QCOMPARE(errorNumber(office, order, &text), 53);
    QCOMPARE(text, "fehlt.rpt: Die Berichtsdatei fehlt.");
    order = office.order();
    order.dataFile = office.place.path("fehlt.qkk");
    QCOMPARE(errorNumber(office, order, &text), 3024);
    QVERIFY(text.contains("fehlt.qkk"));
    order = office.order();
    order.parameter = "Tag;Date(2026,13,40);TRUE;";
    QCOMPARE(errorNumber(office, order, &text), 5);
    QVERIFY(text.contains("Date(2026,13,40)"));
    office.place.files.write(office.place.path("orte.rpt"), "Murks");
    QCOMPARE(errorNumber(office, office.order(), &text), 321);
    QCOMPARE(text, "orte.rpt, Zeile 1: Den Abschnitt \"Murks\" gibt es nicht.");
  }

  void parametersAreRead() {
    QHash<QString, QVariant> read;
    readParameter("Tageswahl;Date(2026,11,05);TRUE;", read);
    QCOMPARE(read.value("Tageswahl"), QVariant(QDateTime(QDate(2026, 11, 5), QTime(0, 0))));
    readParameter("Ort;Grünau;TRUE;", read);
    QCOMPARE(read.value("Ort"), QVariant("Grünau"));
    readParameter("Nicht;Grünau;FALSE;", read);
    readParameter("", read);
    QCOMPARE(read.size(), 2);
  }

  void aGridIsShownToo() {
    Office office;
    const GridReport grid = gridReport({"Serien", {}, {{"Ergebnis"}}, {{"9,7"}, {"10,1"}}});
    Order order;
    order.windowTitle = "Serien";
    order.rows = grid.rows;
    office.boxes.expectWindow("ReportPreview", [&](QWidget& window) {
      QTRY_COMPARE(state(window), "2 Zeilen");
      click(window, "cmdSchliessen");
    });
    office.control.run(grid.definition, order);
  }

  void anHourglassOfTheCallerIsPutAside() {
    Office office;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    office.show(office.order(), [](QWidget&) { QVERIFY(!QApplication::overrideCursor()); });
    QVERIFY(QApplication::overrideCursor());
    QApplication::restoreOverrideCursor();
  }
};

QTEST_MAIN(TestReportControl)
#include "test_report_control.moc"
