// What is exported and taken over elsewhere is equal there, row by row.
#include <QtTest>

#include "masterdata/lists/export.h"
#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/masterdata/lists/list_place.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk::lists;
using qk::dao::Database;
using qk::test::TestWorkplace;

namespace {

const qk::test::StoreOriginal& demo() {
  static const qk::test::StoreOriginal original([](const QString& path) { qk::makeDemoCompetition(path); });
  return original;
}

QHash<int, QString> namesOf(Database& store, const QString& query) {
  QHash<int, QString> names;
  const auto rows = store.openRecordset(query);
  for (; !rows->eof(); rows->moveNext()) names.insert(rows->value(0).toInt(), rows->value(1).toString());
  return names;
}

/// A new competition with the classes and disciplines of the demo, all of them under other numbers.
std::unique_ptr<Database> emptyCompetition(const QString& path, Database& like) {
  qk::test::prepareStore(path);
  qk::makeCompetition(path, {"Leer", "Öd", QDate(2026, 7, 1)});
  auto store = Database::open(path);
  store->execute("UPDATE Klassenwechsel SET wechseldatumneu = '01.01.'");
  const auto copy = [&](const QString& table, int shift) {
    store->execute("DELETE * FROM " + table);
    const auto from = like.openRecordset("SELECT * FROM " + table + " ORDER BY ID DESC");
    const auto to = store->openRecordset(table);
    const qk::dao::TableDef def = store->tableDef(table);
    for (; !from->eof(); from->moveNext()) {
      to->addNew();
      for (int i = 0; i < from->fieldCount(); ++i) {
        const QString name = from->fieldDef(i).name;
        if (!def.field(name)) continue;
        to->setValue(name, name == "ID" ? QVariant(from->value(i).toInt() + shift) : from->value(i));
      }
      to->update();
    }
  };
  copy("Schützenklassen", 50);
  copy("MeldeDisziplin", 30);
  return store;
}

QString shown(const QVariant& value) {
  return value.isValid() ? value.toString() : "~";
}

/// All rows as texts, names in the place of numbers, in an order of their own. None of it is code that
/// exports or takes over.
QStringList contents(Database& store) {
  const auto clubs = namesOf(store, "SELECT ID, Name FROM Verein");
  const auto teamGroups = namesOf(store, "SELECT MannGrpID, Bezeichnung FROM MannschaftsGruppen");
  const auto classes = namesOf(store, "SELECT ID, KZ FROM Schützenklassen");
  const auto groups = namesOf(store, "SELECT SchGrpID, Bezeichnung FROM SchuetzenGruppen");
  const auto disciplines = namesOf(store, "SELECT ID, MeldeDisziplin FROM MeldeDisziplin");
  QHash<int, QString> teams, numbers;
  QStringList all;
  const auto teamRows = store.openRecordset("SELECT * FROM Mannschaften");
  for (; !teamRows->eof(); teamRows->moveNext()) {
    const QString team = "Mannschaft " + shown(teamRows->value("MannName")) + "|" +
                         clubs.value(teamRows->value("VereinID").toInt()) + "|" +
                         teamGroups.value(teamRows->value("GruppenID").toInt());
    teams.insert(teamRows->value("ID").toInt(), team);
    all << team;
  }
  const auto clubRows = store.openRecordset("SELECT * FROM Verein");
  for (; !clubRows->eof(); clubRows->moveNext())
    all << "Verein " + shown(clubRows->value("Name")) + "|" + shown(clubRows->value("Kurzname"));
  const auto shooters = store.openRecordset("SELECT * FROM Schützen");
  for (; !shooters->eof(); shooters->moveNext()) {
    QString row = "Schütze";
    for (int i = 0; i < shooters->fieldCount(); ++i) {
      const QString column = shooters->fieldDef(i).name;
      const int number = shooters->value(i).toInt();
      QString value = shown(shooters->value(i));
      if (column == "ID") continue;
      if (column == "VereinsID") value = clubs.value(number);
      if (column == "lMannID") value = teams.value(number);
      if (column == "KlassenID") value = classes.value(number);
      row += "|" + column + "=" + value;
    }
    numbers.insert(shooters->value("ID").toInt(), shown(shooters->value("Startnummer")));
    all << row;
  }
  const auto members = store.openRecordset("SELECT * FROM SchuetzenGruppenZuordnung");
  for (; !members->eof(); members->moveNext())
    all << "Gruppe " + numbers.value(members->value("SchuetzeID").toInt()) + "|" +
               groups.value(members->value("GruppenID").toInt());
  const auto registrations = store.openRecordset("SELECT * FROM Schuetzen_SPO_Anmeldungen");
  for (; !registrations->eof(); registrations->moveNext())
    all << "Anmeldung " + numbers.value(registrations->value("SchuetzeID").toInt()) + "|" +
               disciplines.value(registrations->value("SPOID").toInt()) + "|" +
               shown(registrations->value("SPOKey")) + "|" +
               teams.value(registrations->value("MannID").toInt());
  all.sort();
  return all;
}

/// A file of it, read as any other.
void carry(ListKind kind, Database& from, Database& to) {
  const CsvReading reading = readCsv(exportedCsv(kind, *readStoreState(from)));
  QCOMPARE(reading.refusal, QString());
  const Assignment assignment = recognised(kind, reading.table.rows.front());
  QVERIFY(!assignment.contains(QString()));
  const Judgement judgement =
      judge(kind, std::make_shared<CsvTable>(reading.table), assignment, readStoreState(to));
  for (const JudgedRow& row : judgement.rows)
    if (row.verdict == Verdict::Faulty) QFAIL(qPrintable(row.who + " " + qk::test::shown(row)));
  QVERIFY(takeOver(to, judgement, "Ausfuhr", QDateTime(QDate(2026, 7, 1), QTime(9, 0))).written);
}

void carryAll(Database& from, Database& to) {
  for (const ListKind kind : {ListKind::Clubs, ListKind::Teams, ListKind::Shooters}) carry(kind, from, to);
}

}  // namespace

class TestRoundTrip : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theDemoComesBack() {
    TestWorkplace place;
    demo().copyTo(place.path("Demo.qkk"));
    const auto from = Database::open(place.path("Demo.qkk"));
    const auto to = emptyCompetition(place.path("Leer.qkk"), *from);
    carryAll(*from, *to);
    const QStringList expected = contents(*from);
    QVERIFY(expected.size() > 100);
    QCOMPARE(contents(*to).join('\n'), expected.join('\n'));
  }

  void whatIsHardComesBack() {
    TestWorkplace place;
    demo().copyTo(place.path("Demo.qkk"));
    const auto from = Database::open(place.path("Demo.qkk"));
    const auto to = emptyCompetition(place.path("Leer.qkk"), *from);
    const auto rows = from->openRecordset("Schützen");
    int number = 5000;
    const auto add = [&](const QVariantMap& values) {
      rows->addNew();
      rows->setValue("Startnummer", QString::number(++number));
      for (auto value = values.begin(); value != values.end(); ++value)
        rows->setValue(value.key(), value.value());
      rows->update();
    };
    add({{"Name", "=1+1"}, {"Vorname", "@x"}, {"Telefon", "+49 911"}, {"Ort", "-"}, {"Bank", "'=x"}});
    add({{"Name", " zwei  Leer "}, {"Vorname", ""}, {"Ort", " "}, {"Bank", "\"q\";,\t"}});
    add({{"Name", "Jörg Müller"}, {"Vorname", "Jörg"}, {"Geschlecht", "divers"}, {"Gebdat", ""}});
    add({{"Name", "nur Name"}, {"Gebdat", "1980"}, {"Geschlecht", "d"}});
    add({{"Name", "Huber"}, {"Vorname", "Max"}, {"Bemerkungen", "eins\r\nzwei; \"drei\"\n "}});
    add({{"Name", "Huber Eva"}, {"Vorname", "Eva"}, {"nStartnummerEinzel", -5}, {"AmateurSchuetze", 3}});
    add({{"Name", "Huber Ina"},
         {"Vorname", "Ina"},
         {"bVerein", -1},
         {"bGebKlasseManuell", -1},
         {"KlassenID", 0}});
    add({{"Name", "Huber Ida"},
         {"Vorname", "Ida"},
         {"AusweisNr", " 7 "},
         {"SPOKey", "x\ny"},
         {"VereinsID", 0}});
    add({{"Name", QString(255, QChar(u'ß'))},
         {"email", "a@b"},
         {"Gebdat", "29.02.1980"},
         {"Startnummer", "S 1/b"}});
    from->execute("INSERT INTO Mannschaften (MannName, VereinID, GruppenID) VALUES ('Grünau I', 1, 2)");
    from->execute("INSERT INTO Mannschaften (MannName, VereinID, GruppenID) VALUES ('Grünau I', 2, 0)");
    from->execute("INSERT INTO Verein (Name, Kurzname) VALUES ('=cmd', '-x')");
    from->execute(
        "INSERT INTO Mannschaften (ID, MannName, VereinID, GruppenID) VALUES (900, 'Grünau I', 0, 0)");
    add({{"Name", "Gast Egon"}, {"Vorname", "Egon"}, {"VereinsID", 1}, {"lMannID", 900}});
    carryAll(*from, *to);
    QCOMPARE(contents(*to).join('\n'), contents(*from).join('\n'));
  }

  void intoItselfNothingChanges() {
    TestWorkplace place;
    demo().copyTo(place.path("Demo.qkk"));
    const auto store = Database::open(place.path("Demo.qkk"));
    for (const ListKind kind : {ListKind::Clubs, ListKind::Teams, ListKind::Shooters}) {
      const auto state = readStoreState(*store);
      const CsvReading reading = readCsv(exportedCsv(kind, *state));
      const Judgement judgement = judge(kind, std::make_shared<CsvTable>(reading.table),
                                        recognised(kind, reading.table.rows.front()), state);
      QCOMPARE(judgement.count(Verdict::Known), static_cast<int>(judgement.rows.size()));
      QVERIFY(judgement.plan.empty());
    }
  }
};

QTEST_GUILESS_MAIN(TestRoundTrip)
#include "test_round_trip.moc"
