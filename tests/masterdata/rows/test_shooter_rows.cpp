// Erasing a person, bringing results in line, numbers that stand there twice.
#include <QtTest>

#include "masterdata/rows/bring_in_line.h"
#include "masterdata/rows/double_numbers.h"
#include "masterdata/rows/erase_person.h"
#include "platform/dao/recordset.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/error_of.h"

using namespace qk;
using qk::test::DemoStore;
using qk::test::errorOf;

class TestShooterRows : public QObject {
  Q_OBJECT

  std::unique_ptr<DemoStore> store_;

  dao::Database& database() { return store_->database(); }

 private Q_SLOTS:
  void init() { store_ = std::make_unique<DemoStore>(); }
  void cleanup() { store_.reset(); }

  void erasingLeavesNumberAndStanding() {
    const dao::RowValues personal = {
        {"Anrede", "Frau"},  {"Name", "Neu Nina"},   {"Vorname", "Nina"},     {"Strasse", "Weg 1"},
        {"PLZ", "91001"},    {"Ort", "Grünau"},      {"Telefon", "0911"},     {"Geschlecht", "W"},
        {"AusweisNr", "9"},  {"Gebdat", "1.2.1990"}, {"Bank", "Sparkasse"},   {"BLZ", "1"},
        {"Kto", "2"},        {"BIC", "3"},           {"IBAN", "4"},           {"Mandatsreferenz", "5"},
        {"KtoInhaber", "N"}, {"email", "n@example"}, {"homepage", "example"}, {"Bemerkungen", "Allergie"}};
    dao::RowValues row = personal;
    row.insert(
        {{"Startnummer", "901"}, {"VereinsID", 2}, {"lMannID", 3}, {"KlassenID", 8}, {"SPOKey", "1.10"}});
    const qint64 key = store_->add("Schützen", row);
    store_->add("Kasse_Eingang", {{"Startnummer", "901"}, {"KasseID", 1}, {"Betrag", 15}});
    const qint64 picture =
        store_->add("Grafik_Scheibe", {{"StartNr", "901"}, {"Name", "Neu Nina"}, {"Verein", "SG"}});
    const qint64 shot = store_->addShot("901", 1, 1), other = store_->addShot("902", 1, 1);

    const Erasure erasure = erasePerson(database(), key);
    QCOMPARE(erasure.emptied.size(), personal.size());
    QCOMPARE(erasure.unknown, QStringList());
    QCOMPARE(erasure.pictures, 1);
    QCOMPARE(erasure.shots, 1);
    for (auto column = personal.begin(); column != personal.end(); ++column) {
      const QString now = store_->value("Schützen", key, column.key()).toString();
      const QString wanted =
          column.key() == "Name" ? "gelöscht" : (column.key() == "Gebdat" ? "00.00.0000" : QString());
      QVERIFY2(now == wanted, qPrintable(column.key()));
    }
    QCOMPARE(store_->value("Schützen", key, "Startnummer").toString(), QString("901"));
    QCOMPARE(store_->value("Schützen", key, "SPOKey").toString(), QString("1.10"));
    QCOMPARE(standingOf(database(), key), (Standing{8, 2, 3}));
    QCOMPARE(store_->value("Schützen", key, "bGebKlasseManuell").toInt(), -1);
    QCOMPARE(store_->value("Grafik_Scheibe", picture, "Name").toString(), QString("gelöscht"));
    QCOMPARE(store_->value("Grafik_Scheibe", picture, "Verein").toString(), QString());
    QCOMPARE(store_->value("Haering_Daten", shot, "Schütze").toString(), QString("gelöscht"));
    QCOMPARE(store_->value("Haering_Daten", other, "Schütze").toString(), QString("Wer schießt"));
    QCOMPARE(store_->count("Kasse_Eingang", "Startnummer = '901'"), 1);

    const Erasure again = erasePerson(database(), key);
    QCOMPARE(again.pictures, 0);
    QCOMPARE(again.shots, 0);
  }

  void unknownTextsAreNamed() {
    database().appendField("Schützen", {"Handy", dao::FieldType::Text});
    const qint64 key = store_->add("Schützen", {{"Startnummer", "901"}, {"Name", "N"}, {"Handy", "0170"}});
    QCOMPARE(erasePerson(database(), key).unknown, QStringList{"Handy"});
    QCOMPARE(store_->value("Schützen", key, "Handy").toString(), QString("0170"));
  }

  void nobodyIsErasedUnderTheNumberOfTwo() {
    const qint64 key = store_->add("Schützen", {{"Startnummer", "107"}, {"Name", "Neu Nina"}});
    QCOMPARE(errorOf([&] { erasePerson(database(), key); }), 5);
    QCOMPARE(store_->value("Schützen", key, "Name").toString(), QString("Neu Nina"));
    QCOMPARE(errorOf([&] { erasePerson(database(), 99999); }), 3167);
  }

  void resultsAreBroughtInLine() {
    const qint64 key = store_->add(
        "Schützen",
        {{"Startnummer", "901"}, {"Name", "N"}, {"KlassenID", 8}, {"VereinsID", 2}, {"lMannID", 3}});
    const Standing now = standingOf(database(), key);
    QCOMPARE(resultsOutOfLine(database(), "901", now), 0);
    const auto result = [&](const QString& table, const QVariant& shooterClass, const QVariant& club,
                            const QVariant& team, const QString& number = "901") {
      return store_->add(
          table,
          {{"Startnummer", number}, {"KlassenID", shooterClass}, {"MannID", club}, {"VorMannID", team}});
    };
    result("Schuss", 8, 2, 3);
    result("Schuss", 7, 2, 3);
    result("SchussSerien", 8, 1, 3);
    result("SchussSerien", 8, 2, QVariant());
    const qint64 others = result("SchussSerien", 1, 1, 1, "902");
    const qint64 payment = store_->add(
        "Kasse_Eingang", {{"Startnummer", "901"}, {"KasseID", 1}, {"VereinIDBasis", 1}, {"MannIDBasis", 1}});
    QCOMPARE(resultsOutOfLine(database(), "901", now), 3);
    QCOMPARE(resultsOutOfLine(database(), "901", {9, 2, 3}), 4);
    QCOMPARE(resultsOutOfLine(database(), "", now), 0);

    dao::Changes changes(database());
    changes.update("Schützen", key, {{"KlassenID", 9}});
    bringInLine(changes, "901", {9, 2, 3});
    QCOMPARE(resultsOutOfLine(database(), "901", now), 3);
    changes.write();
    QCOMPARE(standingOf(database(), key), (Standing{9, 2, 3}));
    QCOMPARE(resultsOutOfLine(database(), "901", {9, 2, 3}), 0);
    QCOMPARE(
        store_->count("Schuss", "Startnummer = '901' and KlassenID = 9 and MannID = 2 and VorMannID = 3"), 2);
    QCOMPARE(store_->count("SchussSerien",
                           "Startnummer = '901' and KlassenID = 9 and MannID = 2 and VorMannID = 3"),
             2);
    QCOMPARE(store_->value("SchussSerien", others, "KlassenID").toInt(), 1);
    QCOMPARE(store_->value("Kasse_Eingang", payment, "VereinIDBasis").toInt(), 1);
    QCOMPARE(errorOf([&] { standingOf(database(), 99999); }), 3167);
  }

  void doubleNumbersAreListed() {
    QCOMPARE(doubleNumbers(database()).size(), size_t{0});
    const qint64 one = store_->add("Schützen", {{"Startnummer", "7A"}, {"Name", "N"}});
    const qint64 two = store_->add("Schützen", {{"Startnummer", "103"}, {"Name", "N"}});
    const qint64 three = store_->add("Schützen", {{"Startnummer", "103"}, {"Name", "M"}});
    for (int i = 0; i < 2; ++i) store_->add("Schützen", {{"Startnummer", ""}, {"Name", "ohne"}});
    const auto doubles = doubleNumbers(database());
    QCOMPARE(doubles.size(), size_t{2});
    QCOMPARE(doubles[0].value, QString("103"));
    QCOMPARE(doubles[0].keys, (std::vector<qint64>{3, two, three}));
    QCOMPARE(doubles[1].value, QString("7a"));
    QCOMPARE(doubles[1].keys, (std::vector<qint64>{13, one}));

    store_->add("Verein", {{"Name", "edelweiß höfen"}});
    const auto clubs = doublesOf(database(), "Verein", "Name");
    QCOMPARE(clubs.size(), size_t{1});
    QCOMPARE(clubs[0].keys.front(), 3);
  }

  void lostNumbersAreListed() {
    QCOMPARE(lostNumbers(database()).size(), size_t{0});
    store_->add("Schuss", {{"Startnummer", "107"}});
    store_->add("Schuss", {{"Startnummer", "900"}});
    for (int i = 0; i < 2; ++i) store_->add("SchussSerien", {{"Startnummer", "900"}});
    store_->add("Kasse_Eingang", {{"Startnummer", "899"}, {"KasseID", 1}});
    store_->add("Kasse_Eingang", {{"Startnummer", ""}, {"KasseID", 1}});
    const auto lost = lostNumbers(database());
    QCOMPARE(lost.size(), size_t{2});
    QCOMPARE(lost[0].number, QString("899"));
    QCOMPARE(lost[0].payments, 1);
    QCOMPARE(lost[0].results, 0);
    QCOMPARE(lost[1].number, QString("900"));
    QCOMPARE(lost[1].results, 3);
  }
};

QTEST_GUILESS_MAIN(TestShooterRows)
#include "test_shooter_rows.moc"
