// What a person is made of: birth date, name, sex, start number, from what people type.
#include <QTest>

#include "masterdata/people/birth_date.h"
#include "masterdata/people/person_name.h"
#include "masterdata/people/sex.h"
#include "masterdata/people/start_numbers.h"

using namespace qk;

class TestPeople : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void birthDates_data();
  void birthDates();
  void noBirthDates_data();
  void noBirthDates();
  void whatIsStoredIsReadAsItself();
  void names_data();
  void names();
  void storedNames_data();
  void storedNames();
  void oneText();
  void sexes();
  void noSexes();
  void nextStartNumber();
  void startNumbersThatAreNoNumbers();
};

namespace {
const QDate kReference(2026, 7, 1);
}

void TestPeople::birthDates_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("stored");
  const auto row = [](const char* typed, const char* stored) {
    QTest::addRow("%s", typed) << typed << stored;
  };
  row("01.02.1980", "01.02.1980");
  row("1.2.1980", "01.02.1980");
  row(" 1. 2. 1980 ", "01.02.1980");
  row("1.2.80", "01.02.1980");
  row("1,2,80", "01.02.1980");
  row("1/2/1980", "01.02.1980");
  row("1-2-80", "01.02.1980");
  row("1 2 1980", "01.02.1980");
  row("010280", "01.02.1980");
  row("01021980", "01.02.1980");
  row("19800201", "01.02.1980");
  row("20011112", "12.11.2001");
  row("1980-02-01", "01.02.1980");
  row("1980-2-1", "01.02.1980");
  row("1980/02/01", "01.02.1980");
  row("1980-02-01T00:00:00", "01.02.1980");
  row("1980-02-01 00:00:00.000", "01.02.1980");
  row("01.02.1980 00:00", "01.02.1980");
  row("1. Februar 1980", "01.02.1980");
  row("1.Feb.80", "01.02.1980");
  row("3. März 1980", "03.03.1980");
  row("3 Mrz 1980", "03.03.1980");
  row("24. dez 1999", "24.12.1999");
  row("5. Jänner 1999", "05.01.1999");
  row("29.02.2024", "29.02.2024");
  row("14.05.28", "14.05.1928");  // would be after the reference date
  row("14.05.26", "14.05.2026");
  row("14.05.29", "14.05.1929");
  row("14.05.30", "14.05.1930");
  row("14.05.00", "14.05.2000");
  row("31.12.2026", "31.12.2026");
  row("01.01.1896", "01.01.1896");
  for (const char* unknown : {"", "  ", "?", "-", "0", "00.00.0000", "00.00.00", "0000-00-00", "unbekannt",
                              "Unbekannt", "unbek.", "k.A.", "00000000"})
    row(unknown, "00.00.0000");
}

void TestPeople::birthDates() {
  QFETCH(QString, typed);
  const BirthDate read = readBirthDate(typed, kReference);
  QCOMPARE(read.trouble, QString());
  QTEST(read.stored, "stored");
}

void TestPeople::noBirthDates_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("trouble");
  const auto row = [](const char* typed, const char* trouble) {
    QTest::addRow("%s", typed) << typed << QString("»%1« %2").arg(typed, trouble);
  };
  const char* none = "ist kein Geburtsdatum (TT.MM.JJJJ).";
  for (const char* typed : {"31.02.1980", "31.02.", "29.02.2023", "1.13.1980", "0.1.1980", "1.1.198", "10280",
                            "32.01.80", "gestern", "1.2.1980 abends", "12.04", "1. Febern 1980", "=1+1",
                            "1..2.1980", "10:30", "1980021", "01.02.0000", "٠١.٠٢.١٩٨٠"})
    row(typed, none);
  row("1980", "ist nur ein Jahr; gebraucht werden auch Tag und Monat.");
  row("01.01.2027", "liegt hinter dem Jahr des Stichtags, 2026.");
  row("01.02.2980", "liegt hinter dem Jahr des Stichtags, 2026.");
  row("31.12.1895", "ergibt ein Alter über 130 Jahren.");
  row("01.01.1066", "ergibt ein Alter über 130 Jahren.");
}

void TestPeople::noBirthDates() {
  QFETCH(QString, typed);
  const BirthDate read = readBirthDate(typed, kReference);
  QVERIFY(!read.ok());
  QCOMPARE(read.stored, QString());
  QTEST(read.trouble, "trouble");
}

void TestPeople::whatIsStoredIsReadAsItself() {
  for (QDate day(1896, 1, 1); day <= QDate(2026, 12, 31); day = day.addDays(97)) {
    const QString stored = day.toString("dd.MM.yyyy");
    QCOMPARE(readBirthDate(stored, kReference).stored, stored);
  }
}

void TestPeople::names_data() {
  QTest::addColumn<QString>("last");
  QTest::addColumn<QString>("first");
  QTest::addColumn<QString>("name");
  QTest::newRow("both") << "Müller"
                        << "Jörg"
                        << "Müller Jörg";
  QTest::newRow("several") << "von der Au"
                           << "Anna Maria"
                           << "von der Au Anna Maria";
  QTest::newRow("no first name") << "Müller"
                                 << ""
                                 << "Müller";
  QTest::newRow("no last name") << ""
                                << "Jörg"
                                << "Jörg";
  QTest::newRow("the same twice") << "Peter"
                                  << "Peter"
                                  << "Peter Peter";
  QTest::newRow("quote") << "O'Connor"
                         << "Séan"
                         << "O'Connor Séan";
}

void TestPeople::names() {
  QFETCH(QString, last);
  QFETCH(QString, first);
  QFETCH(QString, name);
  const StoredName stored = storedName({last, first});
  QCOMPARE(stored.name, name);
  QCOMPARE(stored.vorname, first);
  QVERIFY(personName(stored) == (PersonName{last, first}));
  QVERIFY(storedName({" " + last + "  ", first + " "}) == stored);
}

void TestPeople::storedNames_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("vorname");
  QTest::addColumn<QString>("last");
  QTest::newRow("family name alone") << "Müller"
                                     << "Jörg"
                                     << "Müller";
  QTest::newRow("first name first") << "Jörg Müller"
                                    << "Jörg"
                                    << "Müller";
  QTest::newRow("another case") << "MÜLLER JÖRG"
                                << "Jörg"
                                << "MÜLLER";
  QTest::newRow("part of a word") << "Hansjörg"
                                  << "Jörg"
                                  << "Hansjörg";
}

void TestPeople::storedNames() {
  QFETCH(QString, name);
  QFETCH(QString, vorname);
  const PersonName person = personName({name, vorname});
  QTEST(person.last, "last");
  QCOMPARE(person.first, vorname);
}

void TestPeople::oneText() {
  QVERIFY(personNameOf("Müller, Jörg") == (PersonName{"Müller", "Jörg"}));
  QVERIFY(personNameOf(" Müller ,Jörg Hans ") == (PersonName{"Müller", "Jörg Hans"}));
  QVERIFY(personNameOf("Müller  Jörg") == (PersonName{"Müller Jörg", ""}));
  QVERIFY(personNameOf("") == PersonName{});
}

void TestPeople::sexes() {
  for (const char* text : {"m", "M", "männlich", " Herr ", "männl.", "MALE"}) QCOMPARE(sexOf(text), "M");
  for (const char* text : {"w", "W", "Weiblich", "f", "Frau", "weibl.", "Dame"}) QCOMPARE(sexOf(text), "W");
  for (const char* text : {"", " ", "d", "Divers", "-", "x", "?"}) QCOMPARE(sexOf(text), "");
}

void TestPeople::noSexes() {
  for (const char* text : {"mw", "1", "Müller", ".", "m/w"}) QVERIFY2(!sexOf(text), text);
}

void TestPeople::nextStartNumber() {
  StartNumbers numbers({"101", "7", "103"});
  QCOMPARE(numbers.next(), "104");
  numbers.take("200");
  QCOMPARE(numbers.next(), "201");
  numbers.take("5");
  QCOMPARE(numbers.next(), "201");
  QCOMPARE(StartNumbers().next(), "1");
}

void TestPeople::startNumbersThatAreNoNumbers() {
  StartNumbers numbers({"101", "7a", "9999999999", "", " 102 ", "-500", "3,5"});
  QCOMPARE(numbers.next(), "103");
  QVERIFY(numbers.isTaken("7A"));
  QVERIFY(numbers.isTaken("102"));
  QVERIFY(!numbers.isTaken(""));
  QVERIFY(!numbers.isTaken("7b"));
  QCOMPARE(countedStartNumber("7a"), 0);
  QCOMPARE(countedStartNumber("007"), 7);
}

QTEST_APPLESS_MAIN(TestPeople)
#include "test_people.moc"
