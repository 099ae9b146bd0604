// The sheets as they are printed, from competitions of all kinds. With QK_BLAETTER=FOLDER each sheet is also
// written there as PDF, to be looked at.
#include <QGuiApplication>
#include <QTest>

#include "evaluation/quick_evaluation.h"
#include "platform/dao/recordset.h"
#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "tests/evaluation/shooting_day.h"
#include "tests/platform/report/printed.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Lays the delivered report out.
class PrintedSheet : public ReportDoor {
 public:
  bool run(const ReportOrder& order) override {
    Files files;
    report::Input input;
    input.dataFile = order.dataFile;
    input.now = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
    report::Document document(report::readReport(files, order.reportFile), input);
    pages = printedPages(document);
    pictures = 0;
    rightEdge = 0;
    for (int page = 0; page < document.pageCount(); ++page) {
      const report::PageItems items = document.page(page);
      pictures += static_cast<int>(itemsOf<report::PictureItem>(items).size());
      for (const report::TextItem& text : itemsOf<report::TextItem>(items))
        rightEdge = std::max(rightEdge, text.place.right() / report::kUnitsPerMillimetre);
    }
    const QString folder = qEnvironmentVariable("QK_BLAETTER");
    if (folder.isEmpty()) return true;
    QFile pdf(QString("%1/%2-%3.pdf").arg(folder, QTest::currentTestFunction(), QTest::currentDataTag()));
    if (!pdf.open(QIODevice::WriteOnly) || !document.writePdf(pdf, order.titel)) failTest("no PDF");
    return true;
  }

  QStringList lines() const {
    QStringList all;
    for (const QStringList& page : pages) all += page;
    return all;
  }

  QList<QStringList> pages;
  int pictures = 0;
  double rightEdge = 0;  ///< of the texts, in millimetres
};

enum class Kind { Profiles, List };

}  // namespace
Q_DECLARE_METATYPE(Kind)

class TestEvaluationSheets : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    day = std::make_unique<ShootingDay>();
    for (const char* name : {"kurzauswertung.rpt", "schnell.rpt"})
      QVERIFY(QFile::copy(QString(QK_SOURCE_DIR "/data/reports/") + name, day->system() + name));
    day->place.random.give({0.1, 0.2, 0.3, 0.4});
    run("UPDATE Wettkampf SET Bezeichnung = 'Vereinspokal 2026', Bezeichnung2 = 'Luftgewehr und "
        "Luftpistole', "
        "Ort = 'Grünau'");
    run("UPDATE AuswertProfil SET OptTage = 0, OptWaffen = 0, OptKlassen = 0, Tageswertung = False, "
        "Monatswertung = False, nMinAnzahlErgAktiv = 0");
    run("UPDATE Disziplin SET bGewErg = False");
  }
  void cleanup() { day.reset(); }

  void oneResult_data() { both(); }
  void oneResult();
  void noResult_data() { both(); }
  void noResult();
  void aHundredResults_data() { both(); }
  void aHundredResults();
  void sevenProfiles_data() { both(); }
  void sevenProfiles();
  void longNames_data() { both(); }
  void longNames();
  void withTargets_data() { both(); }
  void withTargets();
  void manyTargets_data() { both(); }
  void manyTargets();
  void nothingButNulls_data() { both(); }
  void nothingButNulls();
  void withoutValuation();

 private:
  void both() {
    QTest::addColumn<Kind>("kind");
    QTest::newRow("profiles") << Kind::Profiles;
    QTest::newRow("list") << Kind::List;
  }
  void run(const QString& statement) { day->wettkampf->execute(statement); }
  bool print(Kind kind, const QString& number = "107") {
    const Auswertungsplatz platz{day->place.workplace(), *day->wettkampf, sheet, day->system()};
    return kind == Kind::Profiles ? druckeProfilauswertung(platz, number, ReportOrder::Ziel::Drucker)
                                  : druckeSchnellliste(platz, number, ReportOrder::Ziel::Drucker);
  }
  void add(const QString& table, int discipline, const QList<double>& values) {
    const auto rows = day->wettkampf->openRecordset(table);
    for (const double value : values) {
      rows->addNew();
      rows->setValue("Startnummer", "107");
      rows->setValue("DisziID", discipline);
      rows->setValue("WTyp", "LG");
      rows->setValue("KlassenID", 7);
      rows->setValue("Ergebnis", value);
      rows->setValue("Datum", "30.11.2026 10:00:00");
      rows->update();
    }
  }
  /// A target with a group around (200, 100) on a rifle's rings, and that many hits.
  void addTarget(const QString& discipline, int hits, const QDateTime& when) {
    const auto target = day->wettkampf->openRecordset("Grafik_Scheibe");
    target->addNew();
    target->setValue("StartNr", "107");
    target->setValue("Wettkampf", discipline);
    target->setValue("Datum", when);
    target->setValue("ringem", 10.1 * hits);
    const int id = target->value("ID").toInt();
    target->update();
    const auto shots = day->wettkampf->openRecordset("Grafik_Schuss");
    for (int i = 0; i < hits; ++i) {
      const double x = 200 + 1500 * std::cos(i * 2.4) * i / hits;
      const double y = 100 + 1500 * std::sin(i * 2.4) * i / hits;
      shots->addNew();
      shots->setValue("ScheibenID", id);
      shots->setValue("x", x);
      shots->setValue("Y", y);
      shots->setValue("Ringwert", 10.0 + std::floor(10 * (2500 - std::hypot(x, y)) / 2500) / 10);
      shots->update();
    }
  }
  /// A line whose parts are these, wherever else something stands.
  bool has(const QString& line) const { return sheet.lines().contains(line); }

  std::unique_ptr<ShootingDay> day;
  PrintedSheet sheet;
};

void TestEvaluationSheets::oneResult() {
  QFETCH(const Kind, kind);
  run("Delete * from Schuss where Startnummer = '107'");
  QVERIFY(print(kind));
  QCOMPARE(sheet.pages.size(), 1);
  QVERIFY(has("Vereinspokal 2026"));
  QVERIFY(has("Schützengilde Grünau"));
  QVERIFY2(sheet.lines().filter("Müller Jörg").size() >= 2, qPrintable(sheet.lines().join('\n')));
  QVERIFY(has("Wir danken für die Teilnahme und wünschen allzeit Gut Schuss."));
  QVERIFY(has("Grünau|Startnummer 107   Müller Jörg|Stand 22.11.2026 10:00   Seite 1 von 1"));
  QCOMPARE(sheet.lines().count("95"), 1);
  QCOMPARE(sheet.pictures, 0);
}

void TestEvaluationSheets::noResult() {
  QFETCH(const Kind, kind);
  run("Delete * from Schuss");
  run("Delete * from SchussSerien");
  QVERIFY(print(kind, "108"));
  QVERIFY(has("Süß Benno"));
  QVERIFY(has(kind == Kind::Profiles ? "In keinem dieser Wettkämpfe gewertet." : "Noch keine Ergebnisse."));
}

void TestEvaluationSheets::aHundredResults() {
  QFETCH(const Kind, kind);
  QList<double> rings;
  for (int i = 0; i < 120; ++i) rings << 80 + i % 30 + 0.1 * (i % 7);
  add("SchussSerien", 2, rings);
  run("UPDATE Disziplin SET bGewErg = True, nGewErg = 100 WHERE ID = 2");
  QVERIFY(print(kind));
  QCOMPARE(sheet.pages.size(), 1);
  static const QRegularExpression tenValues("^[0-9,]+(\\|[0-9,]+){9}$");
  QCOMPARE(sheet.lines().filter(tenValues).size(), 10);
  QVERIFY(sheet.rightEdge < 210 - 15.9);
}

void TestEvaluationSheets::sevenProfiles() {
  QFETCH(const Kind, kind);
  const auto profile = day->wettkampf->openRecordset("AuswertProfil");
  const auto assigned = day->wettkampf->openRecordset("AwProfilDiszi");
  const auto weapons = day->wettkampf->openRecordset("Auswert_Waffen");
  for (int id = 11; id <= 15; ++id) {
    profile->addNew();
    profile->setValue("ID", id);
    profile->setValue("Name", QString("Wanderpokal %1").arg(id));
    profile->setValue("Typ", id % 2);
    profile->setValue("Anzahl", 3);
    profile->setValue("nMinAnzahlErgAktiv", 0);
    profile->setValue("nShowKurzAuswertung", 1);
    profile->update();
    for (const int discipline : {1, 2}) {
      assigned->addNew();
      assigned->setValue("AwProfilID", id);
      assigned->setValue("DisziID", discipline);
      assigned->update();
    }
    weapons->addNew();
    weapons->setValue("AuswertID", id);
    weapons->setValue("WaffenID", 1);
    weapons->update();
  }
  add("SchussSerien", 2, {93, 97, 98, 99, 91, 90, 95, 96, 100, 88, 87, 92});
  add("Schuss", 1, {4.3, 22.1, 103.9, 17.5});
  QVERIFY(print(kind));
  // Teilers and rings have sums of their own where a profile has both.
  const int sums = kind == Kind::Profiles ? 2 : 1;
  for (const int id : {12, 14})
    QCOMPARE(sheet.lines().filter(QString("Wanderpokal %1").arg(id)).size(), sums);
  for (const int id : {11, 13, 15})
    QCOMPARE(sheet.lines().filter(QString("Wanderpokal %1").arg(id)).size(), 1);
  if (kind == Kind::List) return;
  QVERIFY(has("Wanderpokal 12|Summe|24,7"));
  QVERIFY(has("Wanderpokal 12|Summe|302,9"));
  QVERIFY(has("Wanderpokal 11"));
}

void TestEvaluationSheets::longNames() {
  QFETCH(const Kind, kind);
  run("UPDATE Schützen SET Name = 'von und zu Hohenstein-Wolkenburg-Trauttmansdorff Maximilian-Alexander' "
      "WHERE ID = 1");
  run("UPDATE Verein SET Name = 'Königlich privilegierte Feuerschützengesellschaft Obergrünau an der "
      "Unteren Weißen Lauter 1483 e.V.'");
  run("UPDATE Disziplin SET Name = 'Luftgewehr Auflage Senioren III weiblich 30 Schuss Teilerwertung mit "
      "Zusatzwertung' WHERE ID = 1");
  run("UPDATE AuswertProfil SET Name = 'Wanderpokal der Stadt Grünau und ihrer Ortsteile, gestiftet vom "
      "Heimatverein' WHERE ID = 1");
  run("UPDATE Wettkampf SET Bezeichnung = 'Dreihundertfünfzigjähriges Jubiläumsschießen der "
      "Feuerschützengesellschaft Obergrünau'");
  QVERIFY(print(kind));
  QCOMPARE(sheet.pages.size(), 1);
  QVERIFY(sheet.rightEdge < 210 - 15.9);
  const QString all = sheet.lines().join(' ');
  QVERIFY(all.contains("Maximilian-Alexander"));  // name and club stand there whole
  QVERIFY(all.contains("e.V."));
}

void TestEvaluationSheets::withTargets() {
  QFETCH(const Kind, kind);
  addTarget("LG Serie", 10, QDateTime(QDate(2026, 11, 21), QTime(9, 0)));
  QVERIFY(print(kind));
  QCOMPARE(sheet.pictures, 1);
  QVERIFY(has("10 Schuss, 101 Ringe   21.11.2026"));
  QVERIFY(has("Letzte Scheiben"));
}

void TestEvaluationSheets::manyTargets() {
  QFETCH(const Kind, kind);
  for (int id = 21; id <= 26; ++id) {
    const QString name = QString("Disziplin %1").arg(id);
    run(QString("INSERT INTO Disziplin (ID, Name, Teiler, Ringe) VALUES (%1, '%2', False, True)")
            .arg(id)
            .arg(name));
    run(QString("INSERT INTO AwProfilDiszi (AwProfilID, DisziID) VALUES (1, %1)").arg(id));
    add("SchussSerien", id, {90, 91, 92, 93});
    addTarget(name, 5 * (id - 20), QDateTime(QDate(2026, 11, 21), QTime(9, 0)));
  }
  QVERIFY(print(kind));
  QCOMPARE(sheet.pictures, 6);
  QVERIFY(sheet.pages.size() <= 2);
}

void TestEvaluationSheets::nothingButNulls() {
  QFETCH(const Kind, kind);
  run("UPDATE Schützen SET Name = Null, VereinsID = Null, lMannID = Null, KlassenID = Null");
  run("UPDATE Wettkampf SET Bezeichnung = Null, Bezeichnung2 = Null, Ort = Null");
  run("UPDATE Disziplin SET Name = Null");
  run("UPDATE AuswertProfil SET Name = Null");
  QVERIFY(print(kind));
  QCOMPARE(sheet.pages.size(), 1);
  QVERIFY(has("107"));
}

void TestEvaluationSheets::withoutValuation() {
  run("UPDATE AuswertProfil SET Anzahl = 3");
  QVERIFY(print(Kind::List));
  QVERIFY2(has("Pokal -ohne Wertung (2/3)|ohne Wertung|(20,4)"), qPrintable(sheet.lines().join('\n')));
  run("UPDATE AuswertProfil SET Anzahl = 2");
  QVERIFY(print(Kind::List));
  QVERIFY(has("Pokal|20,4"));
}

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  TestEvaluationSheets test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_evaluation_sheets.moc"
