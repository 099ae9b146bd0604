// The rows of a report as a file that a spreadsheet opens, on a store of either engine.
#include <QBuffer>
#include <QTest>

#include "tests/platform/report/report_store.h"

using namespace qk;
using namespace qk::test;

class TestReportCsv : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theCsvIsGerman() {
    const Store store;
    const auto report = made(store,
                             "Abfrage\n  SELECT ID, Ort, Betrag, Tag FROM Posten WHERE ID < 3 ORDER BY ID\n"
                             "Spalten\n  \"Nr.\" ID 20\n  \"Ort; \"\"Platz\"\"\" Ort 30\n  \"Betrag\" Betrag "
                             "30 Währung\n  \"Tag\" Tag 30 Datum\n");
    QBuffer csv;
    csv.open(QIODevice::WriteOnly);
    QVERIFY(report->writeCsv(csv));
    QVERIFY(csv.data().startsWith("\xEF\xBB\xBF"));
    QCOMPARE(QString::fromUtf8(csv.data().sliced(3)),
             QString("Nr.;\"Ort; \"\"Platz\"\"\";Betrag;Tag\r\n1;Ort 0;1,01;02.11.2026\r\n2;Ort "
                     "0;2,02;03.11.2026\r\n"));
  }

  void theCsvRunsNoFormula() {
    const Store store;
    const auto write = [&](int id, const QString& place) {
      dao::Database::open(store.path())
          ->execute(QString("UPDATE Posten SET Ort = '%1' WHERE ID = %2").arg(place).arg(id));
    };
    write(1, "=1+1");
    write(2, "@SUM(A1)");
    write(3, "-9,5");
    write(4, "-");
    write(5, "+49 911");
    const auto report = made(store,
                             "Abfrage\n  SELECT ID, Ort, Betrag FROM Posten WHERE ID < 6 ORDER BY ID\n"
                             "Spalten\n  \"Ort\" Ort 30\n  \"Nr.\" \"+{ID}\" 30\n  \"Tag\" Ort 30 Datum\n");
    QBuffer csv;
    csv.open(QIODevice::WriteOnly);
    QVERIFY(report->writeCsv(csv));
    QCOMPARE(QString::fromUtf8(csv.data().sliced(3)),
             QString("Ort;Nr.;Tag\r\n'=1+1;+1;'=1+1\r\n'@SUM(A1);+2;'@SUM(A1)\r\n-9,5;+3;-9,5\r\n-;+4;-\r\n"
                     "'+49 911;+5;'+49 911\r\n"));
  }

  void aStoppedReportGivesNoCsv() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    report->stop();
    QBuffer csv;
    csv.open(QIODevice::WriteOnly);
    QVERIFY(!report->writeCsv(csv));
  }
};

QTEST_MAIN(TestReportCsv)
#include "test_report_csv.moc"
