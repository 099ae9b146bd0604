// What a loading of lines reads once for all of them, and what each gets only with its shooter.
#include <QComboBox>
#include <QListView>
#include <QTest>

#include "link/linecontrol/line_readings.h"
#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestLineLoading : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("101");
    QVERIFY(office_->open());
  }
  void cleanup() { office_.reset(); }

  void linesLoadedTogetherOfferTheSame();
  void theCompetitionIsReadOnceForAll();
  void openShotsAreAskedForOnceForAll();
  void aFailedQuestionLeavesEachLineItsOwn();
  void eachLineSaysThatItCouldntBeAsked();
  void aLineWithAShooterHasItsNumbers();
  void numbersThatCannotBeReservedStopNothing();

 private:
  std::unique_ptr<RangeOffice> office_;
};

void TestLineLoading::linesLoadedTogetherOfferTheSame() {
  office_->database()->execute("insert into Haering_Gruppen (GruppenName) values ('Pistole')");
  office_->place.files.clearJournal();
  const auto readings = [this] { return office_->place.files.journal().count("read " + EsaPreisIni); };
  office_->window().Load_Settings();
  QCOMPARE(readings(), 1);
  for (const char* list : {"m_lstDisziTarvex", "m_lstKombiTarvex"}) {
    const auto entries = [&](int line) {
      const QAbstractItemModel* model = office_->on<QListView>(line, list).model();
      QStringList texts;
      for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, 0).data().toString() +
                     model->index(row, 0).data(Qt::CheckStateRole).toString();
      return texts;
    };
    QVERIFY(entries(1).size() > 1);
    QCOMPARE(entries(3), entries(1));
    const QStringList before = entries(3);
    auto* model = office_->on<QListView>(1, list).model();
    QVERIFY(model->setData(model->index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(entries(3), before);
    QVERIFY(entries(1) != before);
  }
  for (const int line : {1, 3})
    QCOMPARE(office_->on<QComboBox>(line, "cmbHaeringGruppen").itemText(1), "Pistole");
  QCOMPARE(office_->on<TextGrid>(3, "flexHaeringDiszi").table()->rows(),
           office_->on<TextGrid>(1, "flexHaeringDiszi").table()->rows());
  // Later each line reads for itself.
  office_->database()->execute("insert into Haering_Gruppen (GruppenName) values ('Gewehr')");
  office_->line(3).Fill_HaeringGruppen();
  QCOMPARE(office_->on<QComboBox>(3, "cmbHaeringGruppen").itemText(1), "Gewehr");
  office_->line(3).Init(office_->competition);
  QCOMPARE(readings(), 2);
}

void TestLineLoading::theCompetitionIsReadOnceForAll() {
  const auto db = office_->database();
  LineReadings readings(1);
  const int disciplines = readings.lists(*db).disciplines.count();
  QVERIFY(disciplines > 0);
  QCOMPARE(readings.groups(*db), LineGroups());
  db->execute("insert into Haering_Gruppen (GruppenName) values ('Gewehr')");
  db->execute("delete from Disziplin");
  QCOMPARE(readings.groups(*db), LineGroups());
  QCOMPARE(readings.lists(*db).disciplines.count(), disciplines);
  LineReadings later(1);
  QCOMPARE(later.groups(*db), (LineGroups{{"Gewehr", 1}}));
  QCOMPARE(later.lists(*db).disciplines.count(), 0);
}

void TestLineLoading::openShotsAreAskedForOnceForAll() {
  const auto db = office_->database();
  const auto add = [&](int line, const char* state) {
    db->execute(QString("insert into Haering_Daten (Liniennummer, Verbucht, Verworfen) values (%1, %2)")
                    .arg(line)
                    .arg(state));
  };
  add(1, "0, 0");
  add(1, "0, 0");
  add(2, "-1, 0");
  add(3, "0, -1");
  add(12, "0, 0");
  LineReadings readings(12);
  const auto lines = [&](LineReadings& asked) {
    QList<int> found;
    for (int line = 1; line <= 12; ++line)
      if (asked.mayHaveOpenShots(*db, line)) found << line;
    return found;
  };
  QCOMPARE(lines(readings), QList<int>({1, 12}));
  add(2, "0, 0");
  QCOMPARE(lines(readings), QList<int>({1, 12}));
  LineReadings later(11);
  QCOMPARE(lines(later), QList<int>({1, 2, 12}));  // of the last one it knows nothing
}

void TestLineLoading::aFailedQuestionLeavesEachLineItsOwn() {
  const auto db = office_->database();
  const auto rows = db->tableDef("Haering_Daten");
  db->dropTable("Haering_Daten");
  LineReadings readings(3);
  QVERIFY(readings.mayHaveOpenShots(*db, 1));
  db->createTable(rows);
  QVERIFY(readings.mayHaveOpenShots(*db, 3));  // it isn't put again, and waits for no server a second time
}

/// The question for all says nothing.
void TestLineLoading::eachLineSaysThatItCouldntBeAsked() {
  office_->database()->dropTable("Haering_Daten");
  for (int line = 1; line <= 3; ++line)
    office_->boxes.expect(
        "3078 - Die Tabelle oder Abfrage 'Haering_Daten' wurde nicht gefunden.\n"
        "Fehler beim Ermitteln noch nicht verbuchter Schussdaten!",
        BoxAnswer::Abort);
  office_->window().Load_Settings();
}

/// A shot must cost one commit; an idle line costs none.
void TestLineLoading::aLineWithAShooterHasItsNumbers() {
  QCOMPARE(office_->line(1).commitCount(), 0);
  office_->chooseShooter(1, "107");
  const qint64 before = office_->line(1).commitCount();
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "155,3"));
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(office_->line(1).commitCount() - before, 1);
}

/// The shot itself says what stands in its way.
void TestLineLoading::numbersThatCannotBeReservedStopNothing() {
  office_->database()->dropTable("Haering_Daten");
  office_->chooseShooter(1, "107");
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
}

QTEST_MAIN(TestLineLoading)
#include "test_line_loading.moc"
