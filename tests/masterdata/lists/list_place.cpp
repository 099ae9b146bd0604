#include "tests/masterdata/lists/list_place.h"

#include <QtTest/QTest>

#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"

namespace qk::test {

using namespace qk::lists;

namespace {

void fill(const QString& path) {
  makeCompetition(path, {"Probe", "Grünau", QDate(2026, 7, 1)});
  const auto store = dao::Database::open(path);
  const auto add = [&store](const QString& into, const QString& values) {
    store->execute("INSERT INTO " + into + " VALUES (" + values + ")");
  };
  store->execute("DELETE * FROM Klassenwechsel");
  add("Klassenwechsel (ID, wechseldatumneu)", "1, '01.01.'");
  const QString classes = "Schützenklassen (ID, Klasse, KZ, [Alter von], [Alter bis], Geschlecht)";
  add(classes, "1, 'Herren I', 'H1', 21, 40, 1");
  add(classes, "2, 'Damen I', 'D1', 21, 40, 2");
  add(classes, "3, 'Herren II', 'H2', 41, 99, 1");
  add(classes, "4, 'Damen II', 'D2', 41, 99, 2");
  add("Verein (ID, Name, Kurzname)", "1, 'Schützengilde Grünau', 'SG Grünau'");
  add("Verein (ID, Name, Kurzname)", "2, 'Doppelt', 'D eins'");
  add("Verein (ID, Name, Kurzname)", "3, 'Doppelt', 'D zwei'");
  add("MannschaftsGruppen (MannGrpID, Bezeichnung)", "1, 'Luftgewehr'");
  add("Mannschaften (ID, MannName, VereinID, GruppenID)", "1, 'Grünau I', 1, 1");
  add("Mannschaften (ID, MannName, VereinID, GruppenID)", "2, 'Doppelt I', 2, 1");
  add("Mannschaften (ID, MannName, VereinID, GruppenID)", "3, 'Doppelt I', 3, 1");
  add("SchuetzenGruppen (SchGrpID, Bezeichnung)", "1, 'Helfer'");
  add("MeldeDisziplin (ID, MeldeDisziplin, MeldeKZ)", "1, 'Luftgewehr', '1.10'");
  add("MeldeDisziplin (ID, MeldeDisziplin, MeldeKZ)", "2, 'Luftpistole', '2.10'");
  const QString shooters =
      "Schützen (ID, Startnummer, Name, Vorname, Gebdat, Geschlecht, AusweisNr, VereinsID, lMannID, "
      "KlassenID)";
  add(shooters, "1, '101', 'Müller Jörg', 'Jörg', '14.05.1980', 'M', 'L1', 1, 1, 3");
  add(shooters, "2, '102', 'Böhm Käthe', 'Käthe', '00.00.0000', 'W', 'L2', 1, 0, 0");
  add(shooters, "3, '103', 'Huber Max', 'Max', '01.01.1970', 'M', 'L3', 0, 0, 3");
  add(shooters, "4, '103', 'Huber Moritz', 'Moritz', '01.01.1970', 'M', 'L3', 0, 0, 3");
  add(shooters, "5, '104', 'Weiß Toni', 'Toni', '01.02.1990', 'M', '', 0, 0, 1");
}

const StoreOriginal& original() {
  static const StoreOriginal store(fill);
  return store;
}

}  // namespace

ListPlace::ListPlace() : path_(place.path("Probe.qkk")) {
  original().copyTo(path_);
  store_ = dao::Database::open(path_);
}

Judgement ListPlace::judged(const QString& text, ListKind kind) {
  const auto table = listOf(text);
  return judge(kind, table, recognised(kind, table->rows.front()), readStoreState(*store_));
}

JudgedRow ListPlace::judgedRow(const QString& headings, const QString& cells, ListKind kind) {
  const Judgement judgement = judged(headings + "\n" + cells, kind);
  return judgement.rows.size() == 1 ? judgement.rows.front() : JudgedRow();
}

void ListPlace::take(const QString& text, ListKind kind) {
  const Judgement judgement = judged(text, kind);
  QCOMPARE(judgement.count(Verdict::Faulty), 0);
  QVERIFY(takeOver(*store_, judgement, "Liste.csv", QDateTime(QDate(2026, 7, 1), QTime(9, 0))).written);
}

QString ListPlace::rows(const QString& query) {
  QStringList all;
  const auto found = store_->openRecordset(query);
  for (; !found->eof(); found->moveNext()) {
    QStringList cells;
    for (int i = 0; i < found->fieldCount(); ++i) {
      const QVariant value = found->value(i);
      cells << (value.isValid() ? value.toString() : "~");
    }
    all << cells.join('|');
  }
  return all.join('/');
}

QString shown(const JudgedRow& row) {
  QStringList parts = {verdictName(row.verdict)};
  for (const CellChange& change : row.changes)
    parts << QString("%1: %2>%3").arg(change.column, change.before, change.after);
  for (const Fault& fault : row.faults) parts << QString("%1! %2").arg(fault.cell).arg(fault.why);
  for (const QString& remark : row.remarks) parts << "(" + remark + ")";
  return parts.join(" ");
}

std::shared_ptr<const CsvTable> listOf(const QString& text) {
  CsvReading reading = readCsv(text.toUtf8());
  if (!reading.ok()) qWarning("%s", qPrintable(reading.refusal));
  return std::make_shared<CsvTable>(std::move(reading.table));
}

}  // namespace qk::test
