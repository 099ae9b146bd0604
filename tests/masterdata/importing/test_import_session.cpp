// A list on its way into a competition, as an operator works with it.
#include <QTest>

#include "masterdata/importing/import_session.h"
#include "masterdata/importing/preview_rows.h"
#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;
using lists::ListKind;
using lists::Verdict;

namespace {

const QByteArray kList =
    "Startnummer;Nachname;Vorname;Geburtsdatum;Geschlecht;Verein;Bemerkung des Sekretärs\r\n"
    "900;Huber;Anna;1.2.80;w;Neuland;x\r\n"
    "107;Müller;Jörg;14.05.1928;m;Edelweiß Höfen;\r\n"
    "901;Fehler;Fritz;31.02.1980;m;;\r\n";

}  // namespace

class TestImportSession : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    place->clock.set("22.11.2026 18:00:00");
    static const StoreOriginal original(makeDemoCompetition);
    original.copyTo(place->path("demo.qkk"));
    database = dao::Database::open(place->path("demo.qkk"));
    session = std::make_unique<ImportSession>(place->workplace(), *database);
  }
  void cleanup() {
    session.reset();
    database.reset();
    place.reset();
  }

  void eachRowGetsItsVerdict();
  void nothingIsWrittenBeforeTheQuestion();
  void takenOverAndTakenBack();
  void aColumnByHandIsRemembered();
  void whatIsNoListIsRefused();
  void whatIsMissingIsSaid();
  void itCanBeStopped();
  void aCompetitionThatChangedMeanwhile();
  void whatIsWrittenOutComesIn();

 private:
  void load(const QByteArray& content = kList) {
    place->files.write(place->path("liste.csv"), content);
    QVERIFY(session->load(place->path("liste.csv")));
  }
  int count(const QString& table, const QString& criterion) {
    return database->openRecordset("SELECT Count(*) AS N FROM " + table + " WHERE " + criterion)
        ->value(0)
        .toInt();
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<ImportSession> session;
};

void TestImportSession::eachRowGetsItsVerdict() {
  load();
  QVERIFY(session->judge());
  QCOMPARE(session->judgement()->count(Verdict::New), 1);
  QCOMPARE(session->judgement()->count(Verdict::Changed), 1);
  QCOMPARE(session->judgement()->count(Verdict::Faulty), 1);
  QCOMPARE(session->writable(), 2);
  PreviewRows preview;
  preview.setJudgement(session->judgement());
  QCOMPARE(preview.rowCount(), 3);
  QCOMPARE(preview.index(0, PreviewRows::Line).data().toInt(), 2);
  QCOMPARE(preview.index(0, PreviewRows::Verdict).data().toString(), "neu");
  for (const int column : {PreviewRows::Line, PreviewRows::Verdict, PreviewRows::Who, PreviewRows::What})
    QCOMPARE(preview.index(0, column).data(Qt::TextAlignmentRole).toInt() ==
                 int(Qt::AlignRight | Qt::AlignVCenter),
             column == PreviewRows::Line);  // a number
  QVERIFY(preview.details(1).contains("»Schützenlust Äußere Au« → »Edelweiß Höfen«"));
  preview.setVerdict(Verdict::Faulty);
  QCOMPARE(preview.rowCount(), 1);
  QVERIFY(preview.index(0, PreviewRows::What).data().toString().contains("31.02.1980"));
  preview.setJudgement(nullptr);
  QCOMPARE(preview.rowCount(), 0);
}

void TestImportSession::nothingIsWrittenBeforeTheQuestion() {
  load();
  const auto before = database->commitCount();
  QVERIFY(session->judge());
  place->dialogs
      .expect("Soll übernommen werden: 1 neu, 1 geändert?\nEine fehlerhafte Zeile bleibt draußen.",
              BoxAnswer::No)
      .titled("Listen");
  QCOMPARE(session->takeOver(), "");
  QCOMPARE(database->commitCount(), before);
}

void TestImportSession::takenOverAndTakenBack() {
  load();
  session->judge();
  place->dialogs.expect("Soll übernommen werden: 1 neu, 1 geändert?\nEine fehlerhafte Zeile bleibt draußen.",
                        BoxAnswer::Yes);
  QCOMPARE(session->takeOver(), "Übernommen: 1 neu, 1 geändert.");
  QCOMPARE(count("Schützen", "Startnummer = '900' AND Name = 'Huber Anna' AND Gebdat = '01.02.1980'"), 1);
  QCOMPARE(count("Verein", "Name = 'Neuland'"), 1);
  // Judged anew: there is nothing left to do.
  QCOMPARE(session->judgement()->count(Verdict::Known), 2);
  QCOMPARE(session->writable(), 0);
  QCOMPARE(session->takeOver(), "");
  place->dialogs
      .expect(
          "Soll der Import »liste.csv« vom 22.11.2026 18:00:00 zurückgenommen werden (1 neu, 1 geändert)?",
          BoxAnswer::Yes)
      .presetting(BoxAnswer::No);
  QCOMPARE(session->undo(), "Zurückgenommen: »liste.csv«.");
  QCOMPARE(count("Schützen", "Startnummer = '900'"), 0);
  QCOMPARE(count("Schützen", "Startnummer = '107' AND VereinsID = 4"), 1);
  QCOMPARE(session->writable(), 2);
  place->dialogs.expect("Es gibt keinen Import, der sich zurücknehmen ließe.").showing(BoxIcon::Information);
  QCOMPARE(session->undo(), "");
}

void TestImportSession::aColumnByHandIsRemembered() {
  load();
  QCOMPARE(session->assignment().value(6), "");
  session->assign(6, "Ort");
  QCOMPARE(session->assignment().value(6), "Ort");
  session->assign(0, "Ort");  // given up at the other column
  QCOMPARE(session->assignment().value(6), "");
  session->assign(0, "Startnummer");
  session->assign(6, "Ort");
  ImportSession later(place->workplace(), *database);
  QVERIFY(later.load(place->path("liste.csv")));
  QCOMPARE(later.assignment().value(6), "Ort");
  QCOMPARE(later.assignment().value(0), "Startnummer");
}

void TestImportSession::whatIsNoListIsRefused() {
  place->files.write(place->path("bild.csv"), QByteArray("\0\1\2PNG", 6));
  place->dialogs.expect(lists::readCsv(QByteArray("\0\1\2PNG", 6)).refusal + "\n" + place->path("bild.csv"))
      .showing(BoxIcon::Exclamation);
  QVERIFY(!session->load(place->path("bild.csv")));
  QVERIFY(!session->isLoaded());
  place->dialogs.expect("Fehler: 53 - " + errorDescription(53) + "\nDie Liste konnte nicht gelesen werden.",
                        BoxAnswer::Abort);
  QVERIFY(!session->load(place->path("fehlt.csv")));
}

void TestImportSession::whatIsMissingIsSaid() {
  QCOMPARE(session->missing(), "Es ist noch keine Datei gewählt.");
  load("Farbe;Größe\nrot;1\n");
  QVERIFY(!session->missing().isEmpty());
  QVERIFY(!session->judge());
  QVERIFY(!session->judgement());
}

void TestImportSession::itCanBeStopped() {
  QByteArray many = "Startnummer;Nachname\n";
  for (int i = 0; i < 5000; ++i) many += QByteArray::number(20000 + i) + ";Huber\n";
  load(many);
  session->goesOn = [](int, int) { return false; };
  QVERIFY(!session->judge());
  QVERIFY(!session->judgement());
  QCOMPARE(session->writable(), 0);
}

void TestImportSession::aCompetitionThatChangedMeanwhile() {
  load();
  session->judge();
  database->execute("UPDATE Schützen SET VereinsID = 2 WHERE Startnummer = '107'");
  place->dialogs
      .expect("Soll übernommen werden: 1 neu, 1 geändert?\nEine fehlerhafte Zeile bleibt draußen.",
              BoxAnswer::Yes)
      .during([] {});
  place->dialogs.expect(
      "Im Wettkampf hat sich inzwischen etwas geändert; übernommen wurde nichts.\nDie Vorschau ist neu "
      "beurteilt. Bitte noch einmal ansehen.");
  QCOMPARE(session->takeOver(), "");
  QCOMPARE(count("Schützen", "Startnummer = '900'"), 0);
  QVERIFY(session->judgement());
  QCOMPARE(session->writable(), 2);
}

void TestImportSession::whatIsWrittenOutComesIn() {
  place->dialogs.expectSaveFile("Liste (*.csv)|*.csv|Alle Dateien (*.*)|*.*", place->path("aus"));
  QCOMPARE(session->exportList(), "Schützen geschrieben: " + place->path("aus.csv"));
  QVERIFY(session->load(place->path("aus.csv")));
  QVERIFY(session->judge());
  QCOMPARE(session->writable(), 0);
  QCOMPARE(session->judgement()->count(Verdict::Known), count("Schützen", "ID > 0"));
}

QTEST_GUILESS_MAIN(TestImportSession)
#include "test_import_session.moc"
