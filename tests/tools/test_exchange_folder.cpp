// The exchange folder of the demo fits the demo competition.
#include <QTemporaryDir>
#include <QtTest>

#include "masterdata/making/competition.h"
#include "masterdata/making/demo_rows.h"
#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"
#include "tools/wettkampf/exchange.h"

class TestExchangeFolder : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void namesDisciplinesOfTheCompetition();
  void hasADefinitionForEveryTitle();
  void givesTheGridItsShots();

 private:
  QTemporaryDir parent_;
  QString folder_;
  qk::Files files_;
};

void TestExchangeFolder::initTestCase() {
  qk::writeExchangeFolder(files_, parent_.filePath("esa"));
  folder_ = qk::withTrailingSeparator(parent_.filePath("esa"));
}

void TestExchangeFolder::namesDisciplinesOfTheCompetition() {
  QStringList names;
  for (const qk::TableData& data :
       qk::demoRows(qk::embeddedSchema("Wettkampf.txt"), qk::embeddedSchema("Demo.txt"))) {
    for (const char* column : {"Name", "Kombinationsname"}) {
      const auto position = data.columns.indexOf(column);
      if (position < 0 || !(data.table == "Disziplin" || data.table == "Kombination_Name")) continue;
      for (const QVariantList& row : data.rows) names << row.at(position).toString();
    }
  }
  const auto disciplines = qk::readStationDisciplines(files_, folder_);
  QVERIFY(disciplines.size() >= 10);
  for (const auto& discipline : disciplines)
    QVERIFY2(names.contains(discipline.title), qPrintable(discipline.title));
}

void TestExchangeFolder::hasADefinitionForEveryTitle() {
  for (const auto& discipline : qk::readStationDisciplines(files_, folder_)) {
    const qk::Definition definition = qk::readDefinition(files_, folder_ + discipline.definition);
    QCOMPARE(definition.bezeichnung, discipline.title);
    QCOMPARE(definition.dateiName, discipline.definition);
    QVERIFY(files_.exists(folder_ + definition.dateiWaffe));
    QVERIFY(files_.exists(folder_ + definition.dateiScheibe));
  }
}

void TestExchangeFolder::givesTheGridItsShots() {
  const qk::DisciplineGrid grid = qk::readDisciplineGrid(files_, folder_);
  QVERIFY(!grid.iniMissing);
  QCOMPARE(grid.rows.front().title, QString("LG Meister"));
  for (const auto& row : grid.rows) QVERIFY2(row.shots.toInt() >= 10, qPrintable(row.title));
}

QTEST_GUILESS_MAIN(TestExchangeFolder)
#include "test_exchange_folder.moc"
