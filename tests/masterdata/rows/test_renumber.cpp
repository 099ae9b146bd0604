// A start number goes along through all tables, or stays.
#include <QtTest>

#include "masterdata/rows/numbered_columns.h"
#include "masterdata/rows/renumber.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"

using namespace qk;
using qk::test::DemoStore;
using qk::test::errorOf;

namespace {

QString refusal(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error.number() == 5 ? error.description() : QString::number(error.number());
  }
  return {};
}

}  // namespace

class TestRenumber : public QObject {
  Q_OBJECT

  std::unique_ptr<DemoStore> store_;

  dao::Database& database() { return store_->database(); }
  /// A shooter with something in every table.
  qint64 shooterWithAll(const QString& number) {
    const qint64 key = store_->add("Schützen", {{"Startnummer", number}, {"Name", "Neu Nina"}});
    for (const NumberedColumn& column : numberedColumns(database())) {
      dao::RowValues row{{column.column, number}};
      if (column.table == "Haering_Daten") row.insert("Verbucht", true);
      if (column.table != "Schützen") store_->add(column.table, row);
    }
    return key;
  }
  QStringList tablesWith(const QString& number) {
    QStringList tables;
    for (const NumberedColumn& column : numberedColumns(database()))
      if (store_->count(column.table, QString("[%1] = '%2'").arg(column.column, number)) > 0)
        tables.append(column.table);
    tables.sort();
    return tables;
  }

 private Q_SLOTS:
  void init() { store_ = std::make_unique<DemoStore>(); }
  void cleanup() { store_.reset(); }

  void allTablesAreKnown() {
    QStringList found;
    for (const NumberedColumn& column : numberedColumns(database()))
      found.append(column.table + "." + column.column);
    QCOMPARE(found.first(), QString("Schützen.Startnummer"));
    found.sort();
    QCOMPARE(found, QStringList({"Grafik_Scheibe.StartNr", "Haering_Daten.Startnummer",
                                 "Kasse_Eingang.Startnummer", "Schuetzen_ScheibenNummern.Startnummer",
                                 "Schuss.Startnummer", "SchussSerien.Startnummer", "Schützen.Startnummer"}));
  }

  void everythingGoesAlong() {
    database().createTable(
        {"Fremd", {{"Startnummer", dao::FieldType::Text}, {"Punkte", dao::FieldType::Long}}, {}});
    database().execute("Insert into Fremd (Startnummer, Punkte) values ('901', 3)");
    const qint64 key = shooterWithAll("901");
    const QStringList all = tablesWith("901");
    QCOMPARE(all.size(), 8);
    renumber(database(), key, " 902a ");
    QCOMPARE(tablesWith("902a"), all);
    QCOMPARE(tablesWith("901"), QStringList());
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("902a"));
    QCOMPARE(store_->count("Schützen", "Startnummer = '107'"), 1);
  }

  void quotesAndCaseAreNoTrouble() {
    const qint64 key = shooterWithAll("o'7a");
    renumber(database(), key, "O'7A");
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("O'7A"));
    QCOMPARE(tablesWith("O''7A").size(), 7);
    renumber(database(), key, "O'7A");
  }

  void openShotsHoldTheNumber() {
    const qint64 key = shooterWithAll("901");
    for (int i = 0; i < 3; ++i) store_->addShot("901", 3, 12);
    store_->addShot("901", 5, 14);
    QCOMPARE(
        refusal([&] { renumber(database(), key, "902"); }),
        QString("Die Startnummer 901 kann jetzt nicht geändert werden, Linie und Station halten sie noch:\n"
                "Linie 3 (Stand 12): 3 offene Schüsse\nLinie 5 (Stand 14): 1 offener Schuss\n"
                "Verbuchen oder verwerfen Sie diese Schüsse zuerst."));
    QCOMPARE(tablesWith("902"), QStringList());
    database().execute("Update Haering_Daten set Verworfen = True where Liniennummer = 5");
    database().execute("Update Haering_Daten set Verbucht = True where Liniennummer = 3");
    renumber(database(), key, "902");
    QCOMPARE(tablesWith("901"), QStringList());
  }

  /// Asked once more while nobody can store another one.
  void aShotThatComesInBetweenRefuses() {
    const qint64 key = shooterWithAll("901");
    dao::Changes changes(database());
    renumber(database(), changes, key, "902");
    store_->addShot("901", 3, 12);
    QVERIFY(refusal([&] { changes.write(); }).contains("Linie 3 (Stand 12): 1 offener Schuss"));
    QCOMPARE(tablesWith("902"), QStringList());
    database().execute("Update Haering_Daten set Verbucht = True");
    changes.write();
    QCOMPARE(tablesWith("901"), QStringList());
  }

  void aNumberOfAnotherIsRefused() {
    const qint64 key = shooterWithAll("901");
    QCOMPARE(refusal([&] { renumber(database(), key, "107"); }),
             QString("Die Startnummer 107 hat schon Müller Jörg."));
    QCOMPARE(refusal([&] { renumber(database(), key, "7A"); }),
             QString("Die Startnummer 7A hat schon Dvořák Jiří."));
    QCOMPARE(tablesWith("901").size(), 7);
  }

  void rowsWithoutAShooterArentTakenOver() {
    const qint64 key = shooterWithAll("901");
    store_->add("SchussSerien", {{"Startnummer", "777"}});
    QVERIFY(refusal([&] {
              renumber(database(), key, "777");
            }).startsWith("Unter der Startnummer 777 ist schon etwas gespeichert (Tabelle SchussSerien)"));
  }

  void oneOfTwoWithTheSameNumber() {
    const qint64 key = shooterWithAll("901");
    store_->addShot("901", 3, 12);
    const qint64 other = store_->add("Schützen", {{"Startnummer", "901"}, {"Name", "Alt Anna"}});
    QCOMPARE(
        refusal([&] { renumber(database(), other, "902"); }),
        QString(
            "Die Startnummer 901 hat auch Neu Nina. Entscheiden Sie zuerst, wem die Ergebnisse gehören."));
    renumber(database(), other, "902", Renumbering::ShooterOnly);
    QCOMPARE(store_->value("Schützen", other, "Startnummer").toString(), QString("902"));
    QCOMPARE(tablesWith("902"), QStringList{"Schützen"});
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("901"));
  }

  void aNumberIsSomething() {
    const qint64 key = shooterWithAll("901");
    QCOMPARE(refusal([&] { renumber(database(), key, "  "); }),
             QString("Eine Startnummer hat 1 bis 50 Zeichen."));
    QCOMPARE(refusal([&] { renumber(database(), key, QString(51, '9')); }),
             QString("Eine Startnummer hat 1 bis 50 Zeichen."));
    QCOMPARE(refusal([&] { renumber(database(), 99999, "902"); }), QString("3167"));
  }

  /// Nothing bears no number: what has none stays.
  void aShooterWithoutANumberGetsOne() {
    const qint64 key = store_->add("Schützen", {{"Name", "Ohne Otto"}});
    store_->add("Kasse_Eingang", {{"VereinID", 1}, {"KasseID", 11}, {"Startnummer", ""}});
    renumber(database(), key, "903");
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("903"));
    QCOMPARE(tablesWith("903"), QStringList{"Schützen"});
  }

  /// In the middle of it all one row can't be written.
  void aFailureLeavesAllAsItWas() {
    const qint64 key = shooterWithAll("901");
    const qint64 series = store_->add("SchussSerien", {{"Startnummer", "901"}});
    qk::test::refuseChanges(store_->path(), "SchussSerien", static_cast<int>(series));
    const QStringList before = tablesWith("901");
    QVERIFY(errorOf([&] { renumber(database(), key, "902"); }) != 0);
    QCOMPARE(tablesWith("901"), before);
    QCOMPARE(tablesWith("902"), QStringList());
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("901"));
  }
};

QTEST_GUILESS_MAIN(TestRenumber)
#include "test_renumber.moc"
