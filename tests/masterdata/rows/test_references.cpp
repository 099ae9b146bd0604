// What keeps a row from being deleted, and what goes with it.
#include <QtTest>

#include "masterdata/making/competition.h"
#include "masterdata/rows/references.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/error_of.h"

using namespace qk;
using qk::test::DemoStore;
using qk::test::errorOf;

class TestReferences : public QObject {
  Q_OBJECT

  std::unique_ptr<DemoStore> store_;

  /// A shooter whom nothing names.
  qint64 newcomer(const QString& number) {
    return store_->add("Schützen", {{"Startnummer", number}, {"Name", "Neu Nina"}});
  }
  int removed(const QString& table, qint64 key) {
    dao::Changes changes(store_->database());
    removeRow(store_->database(), changes, table, key);
    return errorOf([&] { changes.write(); });
  }

 private Q_SLOTS:
  void init() { store_ = std::make_unique<DemoStore>(); }
  void cleanup() { store_.reset(); }

  /// Each stands in the tables of a competition, or in those that the office program adds.
  void allColumnsAreThere() {
    const auto tables = store_->database().tableNames();
    for (const Reference& reference : references()) {
      for (const QString& table : {reference.table, reference.target})
        QVERIFY2(tables.contains(table), qPrintable(table));
      QVERIFY2(store_->database().tableDef(reference.table).field(reference.column),
               qPrintable(reference.column));
      QVERIFY2(store_->database().tableDef(reference.target).field(reference.by), qPrintable(reference.by));
      for (const auto& [column, number] : reference.onlyWhere)
        QVERIFY2(store_->database().tableDef(reference.table).field(column), qPrintable(column));
    }
  }

  /// A reference that is broken (a row deleted by hand) would show up as a row that names nobody; each kind
  /// is tried with a row that it names.
  void eachRefersOrGoesAlong_data() {
    QTest::addColumn<int>("number");
    for (size_t i = 0; i < references().size(); ++i)
      QTest::addRow("%s.%s of %s", qPrintable(references()[i].table), qPrintable(references()[i].column),
                    qPrintable(references()[i].target))
          << static_cast<int>(i);
  }
  void eachRefersOrGoesAlong() {
    QFETCH(int, number);
    const Reference& reference = references()[static_cast<size_t>(number)];
    qint64 key = 0;
    QVariant value;
    if (reference.by == "Startnummer" || reference.by == "KZ") {
      key = store_->add(reference.target, {{reference.by, "neu1"}});
      value = "neu1";
    } else {
      key = store_->add(reference.target, {});
      value = key;
    }
    QVERIFY(usesOf(store_->database(), reference.target, key).refusing.empty());
    dao::RowValues naming{{reference.column, value}};
    for (const auto& [column, wanted] : reference.onlyWhere) naming.insert(column, wanted + 1);
    if (!reference.onlyWhere.empty()) {
      const auto others = [&] { return usesOf(store_->database(), reference.target, key).refusing.size(); };
      store_->add(reference.table, naming);
      QCOMPARE(others(), size_t{0});
    }
    for (const auto& [column, wanted] : reference.onlyWhere) naming.insert(column, wanted);
    store_->add(reference.table, naming);
    const Uses uses = usesOf(store_->database(), reference.target, key);
    const auto& counts = reference.kind == Reference::Kind::Refuses ? uses.refusing : uses.parts;
    QCOMPARE(counts.size(), size_t{1});
    QCOMPARE(counts.front().text(), "1 " + reference.one);
    const qint64 before = store_->count(reference.table), targets = store_->count(reference.target);
    if (reference.kind == Reference::Kind::Refuses) {
      QCOMPARE(removed(reference.target, key), 3200);
      QCOMPARE(store_->count(reference.target), targets);
      QCOMPARE(store_->count(reference.table), before);
    } else {
      QCOMPARE(removed(reference.target, key), 0);
      QCOMPARE(store_->count(reference.target), targets - 1);
      QCOMPARE(store_->count(reference.table), before - 1);
    }
  }

  void theRefusalNamesCountsAndWayOut() {
    const qint64 key = newcomer("901");
    for (int i = 0; i < 7; ++i) store_->add("Schuss", {{"Startnummer", "901"}});
    for (int i = 0; i < 5; ++i) store_->add("SchussSerien", {{"Startnummer", "901"}});
    for (int i = 0; i < 3; ++i) store_->add("Kasse_Eingang", {{"Startnummer", "901"}, {"KasseID", 1}});
    store_->add("Schuetzen_SPO_Anmeldungen", {{"SchuetzeID", key}, {"SPOID", 1}});
    const QString text = refusalOf(store_->database(), "Schützen", key);
    QVERIFY2(
        text.startsWith("Schütze 901 hat 12 Ergebnisse, 3 Zahlungen und 1 Anmeldung und kann nicht gelöscht "
                        "werden. "),
        qPrintable(text));
    QVERIFY(text.contains("löschen Sie ihre persönlichen Daten"));
    try {
      dao::Changes changes(store_->database());
      removeRow(store_->database(), changes, "Schützen", key);
      changes.write();
      QFAIL("deleted");
    } catch (const Error& error) {
      QCOMPARE(error.description(), text);
    }
    QCOMPARE(store_->count("Schützen", "Startnummer = '901'"), 1);
  }

  void aShooterWhomNothingNamesGoesWithHisGroups() {
    const qint64 key = newcomer("901");
    store_->add("SchuetzenGruppenZuordnung", {{"SchuetzeID", key}, {"GruppenID", 1}});
    const qint64 memberships = store_->count("SchuetzenGruppenZuordnung");
    QCOMPARE(refusalOf(store_->database(), "Schützen", key), QString());
    QCOMPARE(countsText(usesOf(store_->database(), "Schützen", key).parts), QString("1 Gruppe"));
    QCOMPARE(removed("Schützen", key), 0);
    QCOMPARE(store_->count("Schützen", "Startnummer = '901'"), 0);
    QCOMPARE(store_->count("SchuetzenGruppenZuordnung"), memberships - 1);
  }

  /// The results are the other one's.
  void aNumberThatAnotherBearsKeepsNobody() {
    const qint64 one = newcomer("901"), two = newcomer("901");
    store_->add("Schuss", {{"Startnummer", "901"}});
    QCOMPARE(refusalOf(store_->database(), "Schützen", one), QString());
    QCOMPARE(removed("Schützen", one), 0);
    QVERIFY(!refusalOf(store_->database(), "Schützen", two).isEmpty());
    QCOMPARE(removed("Schützen", two), 3200);
  }

  void anEmptyNumberNamesNobody() {
    const qint64 one = newcomer("");
    store_->add("Kasse_Eingang", {{"Startnummer", ""}, {"KasseID", 1}});
    QCOMPARE(removed("Schützen", one), 0);
  }

  void bookedShotsDontKeepAnybody() {
    const qint64 key = newcomer("901");
    const qint64 shot = store_->addShot("901", 3, 12);
    QVERIFY(refusalOf(store_->database(), "Schützen", key).contains("hat 1 offenen Schuss und kann nicht"));
    dao::Changes changes(store_->database());
    changes.update("Haering_Daten", shot, {{"Verbucht", true}});
    changes.write();
    QCOMPARE(removed("Schützen", key), 0);
  }

  /// Between the look and the deletion somebody stores a result.
  void whatComesInBetweenRefusesToo() {
    const qint64 key = newcomer("901");
    dao::Changes changes(store_->database());
    removeRow(store_->database(), changes, "Schützen", key);
    store_->add("Schuss", {{"Startnummer", "901"}});
    QCOMPARE(errorOf([&] { changes.write(); }), 3200);
    QCOMPARE(store_->count("Schützen", "Startnummer = '901'"), 1);
  }

  /// Each column that a page or the counter writes is guarded the same way: a row that is deleted elsewhere
  /// isn't named, and one that is being named isn't deleted.
  void whatIsToBeNamedIsThere_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("target");
    QTest::newRow("refuses") << "Schützen"
                             << "VereinsID"
                             << "Verein";
    QTest::newRow("belongs") << "SchuetzenGruppenZuordnung"
                             << "GruppenID"
                             << "SchuetzenGruppen";
  }
  void whatIsToBeNamedIsThere() {
    QFETCH(QString, table);
    QFETCH(QString, column);
    QFETCH(QString, target);
    dao::OpenOptions impatient;
    impatient.patience = 1;
    const auto other = dao::Database::open(store_->path(), impatient);
    const qint64 key = store_->add(target, {});
    const auto naming = [&](dao::Database& database, dao::Changes& changes) {
      changes.insert(table, {{column, key}});
      requireThere(database, changes, {table, column, target, "Feld", {{key, "Eins"}}});
    };
    const QString named = QString("%1 = %2").arg(column).arg(key);
    const qint64 targets = store_->count(target);
    int refused = 0;
    {
      dao::Changes changes(store_->database());
      naming(store_->database(), changes);
      changes.require([&] {
        refused = errorOf([&] {
          dao::Changes removal(*other);
          removeRow(*other, removal, target, key);
          removal.write();
        });
      });
      changes.write();
    }
    QVERIFY(refused != 0);
    QCOMPARE(store_->count(table, named), 1);
    QCOMPARE(store_->count(target), targets);
    store_->database().execute(QString("DELETE FROM [%1] WHERE %2").arg(table, named));
    {
      dao::Changes removal(store_->database());
      removeRow(store_->database(), removal, target, key);
      removal.require([&] {
        // Refused, or what was named goes along.
        errorOf([&] {
          dao::Changes changes(*other);
          naming(*other, changes);
          changes.write();
        });
      });
      removal.write();
    }
    QCOMPARE(store_->count(table, named), 0);
    dao::Changes changes(store_->database());
    naming(store_->database(), changes);
    try {
      changes.write();
      QFAIL("named nobody");
    } catch (const ReferenceGone& gone) {
      QCOMPARE(gone.number(), errors::kReferenceMissing);
      QCOMPARE(gone.description(), QString("Feld: »Eins« hat inzwischen jemand gelöscht."));
      QCOMPARE(gone.table() + "." + gone.column(), table + "." + column);
      QCOMPARE(gone.key(), key);
    }
    QCOMPARE(store_->count(table, named), 0);
  }

  void subjectsAreSentences() {
    dao::Database& database = store_->database();
    QCOMPARE(subjectOf(database, "Schützen", 7), QString("Schütze 107"));
    QCOMPARE(subjectOf(database, "Verein", 1), QString("Der Verein »Schützengilde Grünau 1876«"));
    QCOMPARE(subjectOf(database, "MannschaftsGruppen", 2), QString("Die Mannschaftsgruppe »Luftpistole«"));
    QVERIFY(refusalOf(database, "Verein", 1).startsWith("Der Verein »Schützengilde Grünau 1876« hat "));
    QCOMPARE(countsText({{"Ergebnis", "Ergebnisse", 1}}), QString("1 Ergebnis"));
    QCOMPARE(countsText({{"Ergebnis", "Ergebnisse", 2}, {"Zahlung", "Zahlungen", 1}}),
             QString("2 Ergebnisse und 1 Zahlung"));
    QCOMPARE(countsText({}), QString());
  }

  /// A competition of another program may lack what this house added later.
  void missingTablesNameNothing() {
    store_->database().dropTable("Haering_Daten");
    store_->database().dropTable("Grafik_Scheibe");
    const qint64 key = newcomer("901");
    QCOMPARE(removed("Schützen", key), 0);
  }
};

QTEST_GUILESS_MAIN(TestReferences)
#include "test_references.moc"
