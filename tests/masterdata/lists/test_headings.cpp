// Which column of a file is which, by its heading and by hand.
#include <QtTest>

#include "masterdata/lists/headings.h"
#include "tests/support/test_workplace.h"

using namespace qk::lists;
using qk::test::TestWorkplace;

class TestHeadings : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void recognises_data() {
    QTest::addColumn<QString>("headings");
    QTest::addColumn<QString>("columns");
    const auto row = [](const char* headings, const char* columns) {
      QTest::newRow(headings) << QString(headings) << QString(columns);
    };
    row("Startnummer|Nachname|Vorname|Geburtsdatum", "Startnummer|Nachname|Vorname|Geburtsdatum");
    row("StNr|Familienname|Vorname|geb. am|m/w/d", "Startnummer|Nachname|Vorname|Geburtsdatum|Geschlecht");
    row("START-NR.|NAME|VORNAME|GEBURTSTAG", "Startnummer|Nachname|Vorname|Geburtsdatum");
    row("Name|Geb.-Datum|Verein", "Name|Geburtsdatum|Verein");
    row("Name|Nachname|Vorname", "Name|Nachname|Vorname");
    row("Lizenz-Nr.|Ausweis", "Ausweisnummer|");
    row("Pass-Nr.|Schützenklasse|Kurzname|Team", "Ausweisnummer|Klasse|Verein kurz|Mannschaft");
    row("Strasse|Plz|Wohnort|Tel.|e-mail|IBAN|BIC", "Straße|PLZ|Ort|Telefon|E-Mail|IBAN|BIC");
    row("Geburtsdatum (wie gespeichert)|AmateurSchuetze", "Geburtsdatum (wie gespeichert)|AmateurSchuetze");
    row("Jahrgang|lfd. Nr.||?", "|||");
  }
  void recognises() {
    QFETCH(QString, headings);
    QFETCH(QString, columns);
    QCOMPARE(recognised(ListKind::Shooters, headings.split('|')).join('|'), columns);
  }

  void recognisesClubsAndTeams() {
    QCOMPARE(recognised(ListKind::Clubs, {"Name", "Kurzname"}), (QStringList{"Verein", "Verein kurz"}));
    QCOMPARE(recognised(ListKind::Teams, {"Mannschaft", "Verein", "Gruppe"}),
             (QStringList{"Mannschaft", "Verein der Mannschaft", "Mannschaftsgruppe"}));
  }

  void everyColumnIsRecognisedByItsOwnHeading_data() {
    QTest::addColumn<int>("kind");
    for (const ListKind kind : {ListKind::Shooters, ListKind::Clubs, ListKind::Teams})
      QTest::newRow(qPrintable(kindName(kind))) << static_cast<int>(kind);
  }
  void everyColumnIsRecognisedByItsOwnHeading() {
    QFETCH(int, kind);
    QStringList headings;
    for (const ListColumn& column : columnsOf(static_cast<ListKind>(kind))) headings << column.heading;
    QCOMPARE(recognised(static_cast<ListKind>(kind), headings), headings);
  }

  void aSpelledOutUmlautIsTheSameHeading() {
    TestWorkplace place;
    for (const auto& [one, spelled] : {std::pair("Kür", "kuer"), std::pair("Größe Öl", "GROESSE OEL"),
                                       std::pair("Bär", "Baer"), std::pair("Maß", "Mass")}) {
      remember(ListKind::Shooters, {one}, {"Ort"}, place.settings);
      QCOMPARE(recognised(ListKind::Shooters, {spelled}, place.settings), QStringList("Ort"));
    }
  }

  void remembersWhatTheHandSaid() {
    TestWorkplace place;
    const QStringList headings = {"Nr", "Name", "Telefon", "Verein"};
    const Assignment byHand = {"Startnummer", "Name", "", "Mannschaft"};
    remember(ListKind::Shooters, headings, byHand, place.settings);
    QCOMPARE(recognised(ListKind::Shooters, headings, place.settings), byHand);
    // Another order, another file; the other kinds know nothing of it.
    QCOMPARE(recognised(ListKind::Shooters, {"Telefon", "Ort", "NR."}, place.settings),
             (QStringList{"", "Ort", "Startnummer"}));
    QCOMPARE(recognised(ListKind::Teams, {"Verein"}, place.settings), QStringList("Verein der Mannschaft"));
  }

  void theHandGoesBeforeTheWord() {
    TestWorkplace place;
    remember(ListKind::Shooters, {"Kennung"}, {"Startnummer"}, place.settings);
    QCOMPARE(recognised(ListKind::Shooters, {"Startnummer", "Kennung"}, place.settings),
             (QStringList{"", "Startnummer"}));
  }

  void forgetsWhatAgreesAgain() {
    TestWorkplace place;
    remember(ListKind::Shooters, {"Telefon"}, {""}, place.settings);
    remember(ListKind::Shooters, {"Telefon"}, {"Telefon"}, place.settings);
    QCOMPARE(recognised(ListKind::Shooters, {"Telefon"}, place.settings), QStringList("Telefon"));
  }

  void saysWhatIsMissing() {
    QVERIFY(missingColumns(ListKind::Shooters, {"Nachname"}).isEmpty());
    QVERIFY(missingColumns(ListKind::Shooters, {"", "Startnummer"}).isEmpty());
    QCOMPARE(
        missingColumns(ListKind::Shooters, {"", "Ort"}),
        QString("Keine Spalte sagt, wer gemeint ist. Bitte Nachname, Name, Startnummer oder Ausweisnummer "
                "zuordnen."));
    QCOMPARE(missingColumns(ListKind::Clubs, {"Verein kurz"}),
             QString("Bitte die Spalte mit dem Verein zuordnen."));
    QCOMPARE(missingColumns(ListKind::Teams, {""}), QString("Bitte die Spalte mit der Mannschaft zuordnen."));
  }
};

QTEST_GUILESS_MAIN(TestHeadings)
#include "test_headings.moc"
