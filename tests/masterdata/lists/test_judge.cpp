// What is said of each row of a list before anything is written.
#include <QtTest>

#include "masterdata/lists/store_state.h"
#include "tests/masterdata/lists/list_place.h"

using namespace qk::lists;
using qk::test::ListPlace;
using qk::test::shown;

class TestJudge : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void judgesAShooter_data() {
    QTest::addColumn<QString>("headings");
    QTest::addColumn<QString>("cells");
    QTest::addColumn<QString>("verdict");
    const auto row = [](const char* name, const char* headings, const char* cells, const char* verdict) {
      QTest::newRow(name) << QString(headings) << QString(cells) << QString(verdict);
    };
    const char* usual = "Startnummer;Nachname;Vorname;Geburtsdatum;Geschlecht;Verein";
    row("new", usual, "200;Öttl;Ägid;1.2.1990;m;SG Grünau",
        "neu Startnummer: >200 Name: >Öttl Ägid Vorname: >Ägid Geburtsdatum: >01.02.1990 Geschlecht: >M "
        "Verein: >Schützengilde Grünau Klasse: >H1");
    row("known", usual, "101;Müller;Jörg;14.05.1980;m;Schützengilde Grünau", "bekannt");
    row("known in other letters", usual, "101;Müller;Jörg;14.5.80;männlich;sg grünau", "bekannt");
    row("changed", usual, "101;Müller;Georg;14.05.1980;m;",
        "geändert Name: Müller Jörg>Müller Georg Vorname: Jörg>Georg");
    row("a birth date changes the class", "Startnummer;Geburtsdatum", "101;14.05.1990",
        "geändert Geburtsdatum: 14.05.1980>14.05.1990 Klasse: H2>H1");
    row("empty cells change nothing", usual, "101;;;;;", "bekannt");
    row("an unknown date doesn't wipe", usual, "101;Müller;Jörg;unbekannt;?;", "bekannt");
    row("divers does", usual, "104;Weiß;Toni;;d;",
        "geändert Geschlecht: M> Klasse: H1> (Keine Klasse nimmt Jahrgang 1990, ohne Geschlecht.)");
    row("as stored", "Startnummer;Geburtsdatum;Geburtsdatum (wie gespeichert)", "101;31.02.1980;14.05.80",
        "geändert Geburtsdatum: 14.05.1980>14.05.80");
    row("31.02.", usual, "200;Öttl;Ägid;31.02.1990;m;",
        "fehlerhaft 3! »31.02.1990« ist kein Geburtsdatum (TT.MM.JJJJ).");
    row("sex", usual, "200;Öttl;Ägid;;q;", "fehlerhaft 4! »q« ist kein Geschlecht (m, w, d).");
    row("no class takes him", usual, "200;Öttl;Ägid;01.01.2020;m;",
        "neu Startnummer: >200 Name: >Öttl Ägid Vorname: >Ägid Geburtsdatum: >01.01.2020 Geschlecht: >M "
        "(Keine Klasse nimmt Jahrgang 2020, männlich.)");
    row("number twice in the store", usual, "103;Huber;Max;;;",
        "fehlerhaft 0! Die Startnummer steht im Wettkampf mehrmals.");
    row("somebody else's number", usual, "101;Ganz;Anders;01.01.1999;w;",
        "fehlerhaft 0! Die Startnummer gehört im Wettkampf zu Müller Jörg (Startnummer 101, geb. "
        "14.05.1980).");
    row("the family name agrees", "Startnummer;Nachname;Vorname", "101;Müller;Georg",
        "geändert Name: Müller Jörg>Müller Georg Vorname: Jörg>Georg");
    row("married", usual, "102;Neu;Käthe;;w;", "geändert Name: Böhm Käthe>Neu Käthe");
    row("name corrected, date agrees", usual, "101;Mueller;Joerg;14.05.1980;m;",
        "geändert Name: Müller Jörg>Mueller Joerg Vorname: Jörg>Joerg");
    row("no name", usual, "200;;;01.01.1990;m;", "fehlerhaft 1! Der Name fehlt.");
    row("new club with its short name", "Startnummer;Name;Verein;Verein kurz", "200;Neu;SV Öd;Öd",
        "neu Startnummer: >200 Name: >Neu Geburtsdatum: >00.00.0000 Verein: >SV Öd (Ohne Geburtsdatum keine "
        "Klasse.) (Der Verein »SV Öd« wird angelegt.)");
    row("club by short name", "Startnummer;Verein kurz", "104;SG Grünau",
        "geändert Verein: >Schützengilde Grünau");
    row("ambiguous club", "Startnummer;Verein", "104;Doppelt",
        "fehlerhaft 1! Den Verein »Doppelt« gibt es mehrmals; welche Zeile gemeint ist, steht nicht fest.");
    row("its short name tells", "Startnummer;Verein;Verein kurz", "104;Doppelt;D zwei",
        "geändert Verein: >Doppelt");
    row("no club any more", "Startnummer;Verein", "101;-", "geändert Verein: Schützengilde Grünau>");
    row("team by name", "Startnummer;Mannschaft", "104;Grünau I", "geändert Mannschaft: >Grünau I");
    row("ambiguous team", "Startnummer;Mannschaft", "104;Doppelt I",
        "fehlerhaft 1! Die Mannschaft »Doppelt I« gibt es mehrmals; welche Zeile gemeint ist, steht nicht "
        "fest.");
    row("new team in a new group", "Startnummer;Mannschaft;Verein der Mannschaft;Mannschaftsgruppe",
        "104;Neu I;SG Grünau;Auflage",
        "geändert Mannschaft: >Neu I (Die Mannschaftsgruppe »Auflage« wird angelegt.) (Die Mannschaft »Neu "
        "I« "
        "wird angelegt.)");
    row("class as it is determined", "Startnummer;Klasse", "101;Herren II", "bekannt");
    row("another class is by hand", "Startnummer;Klasse", "101;h1",
        "geändert Klasse: H2>H1 Klasse von Hand: Nein>Ja");
    row("unknown class", "Startnummer;Klasse", "101;Jugend",
        "fehlerhaft 1! Die Klasse »Jugend« gibt es im Wettkampf nicht oder mehrmals.");
    row("class and hand as told", "Startnummer;Klasse;Klasse von Hand", "101;H1;nein",
        "geändert Klasse: H2>H1");
    row("no class at all", "Startnummer;Klasse", "101;-", "geändert Klasse: H2> Klasse von Hand: Nein>Ja");
    row("neither yes nor no", "Startnummer;Klasse von Hand", "101;vielleicht",
        "fehlerhaft 1! »vielleicht« ist weder Ja noch Nein.");
    row("licence", "Ausweis;Telefon", "L1;0911/1", "geändert Telefon: >0911/1");
    row("licence twice in the store", "Ausweis;Telefon", "L3;1",
        "fehlerhaft 0! Die Ausweisnummer steht im Wettkampf mehrmals.");
    row("number and licence of two", "Startnummer;Ausweis", "104;L1",
        "fehlerhaft 1! Die Ausweisnummer gehört im Wettkampf zu Müller Jörg (Startnummer 101, geb. "
        "14.05.1980).");
    row("known licence under a new number", "Startnummer;Ausweis;Name", "300;L1;Müller Jörg",
        "fehlerhaft 1! Die Ausweisnummer gehört im Wettkampf zu Müller Jörg (Startnummer 101, geb. "
        "14.05.1980).");
    row("a licence for one without", "Name;Vorname;geb.;Lizenz", "Weiß;Toni;1.2.90;L9",
        "geändert Ausweisnummer: >L9");
    row("by name and date", "Nachname;Vorname;geb.;Ort", "müller;jörg;14.05.80;Öd",
        "geändert Name: Müller Jörg>müller jörg Vorname: Jörg>jörg Ort: >Öd");
    row("one name with a comma", "Name;geb.;Ort", "Müller, Jörg;14.05.80;Öd", "geändert Ort: >Öd");
    row("one name as it is stored", "Name;geb.;Ort", "Müller Jörg;14.05.80;Öd", "geändert Ort: >Öd");
    row("a name alone isn't enough", "Name;Ort", "Müller Jörg;Öd",
        "fehlerhaft -1! Ist Müller Jörg (Startnummer 101, geb. 14.05.1980) gemeint? Ohne Geburtsdatum, "
        "Start- "
        "oder Ausweisnummer steht es nicht fest. (Im Wettkampf steht schon Müller Jörg (Startnummer 101, "
        "geb. "
        "14.05.1980).)");
    row("unknown date is one", "Name;Ort", "Böhm Käthe;Öd", "geändert Ort: >Öd");
    row("nobody", "Name;Ort;Startnummer", ";Öd;",
        "fehlerhaft -1! Weder Startnummer noch Ausweisnummer noch Name: Wer gemeint ist, steht nicht fest.");
    row("gets a number", "Name;geb.", "Ganz Neu;01.01.1990",
        "neu Startnummer: >105 Name: >Ganz Neu Geburtsdatum: >01.01.1990 (Bekommt die Startnummer 105.) "
        "(Keine "
        "Klasse nimmt Jahrgang 1990, ohne Geschlecht.)");
    row("namesake", "Startnummer;Name", "200;Müller Jörg",
        "neu Startnummer: >200 Name: >Müller Jörg Geburtsdatum: >00.00.0000 (Im Wettkampf steht schon Müller "
        "Jörg (Startnummer 101, geb. 14.05.1980).) (Ohne Geburtsdatum keine Klasse.)");
    row("namesake without a date", "Startnummer;Name;geb.", "200;Böhm Käthe;1.1.90",
        "neu Startnummer: >200 Name: >Böhm Käthe Geburtsdatum: >01.01.1990 (Im Wettkampf steht schon Böhm "
        "Käthe "
        "(Startnummer 102).) (Keine Klasse nimmt Jahrgang 1990, ohne Geschlecht.)");
    row("namesake of another age", "Startnummer;Name;geb.", "200;Müller Jörg;1.1.90",
        "neu Startnummer: >200 Name: >Müller Jörg Geburtsdatum: >01.01.1990 (Keine Klasse nimmt Jahrgang "
        "1990, "
        "ohne Geschlecht.)");
    row("namesake with a licence of his own", "Ausweis;Name;geb.", "L77;Müller Jörg;14.05.80",
        "neu Startnummer: >105 Name: >Müller Jörg Ausweisnummer: >L77 Geburtsdatum: >14.05.1980 (Im "
        "Wettkampf "
        "steht schon Müller Jörg (Startnummer 101, geb. 14.05.1980).) (Bekommt die Startnummer 105.) (Keine "
        "Klasse nimmt Jahrgang 1980, ohne Geschlecht.)");
    row("a formula is text", "Startnummer;Ort", "101;=1+1", "geändert Ort: >=1+1");
    row("a guarded formula is, too", "Startnummer;Telefon", "101;'+49 911", "geändert Telefon: >+49 911");
    row("too many cells", "Startnummer;Ort", "101;Öd;slipped",
        "fehlerhaft -1! Die Zeile hat 3 Zellen, die Überschrift nur 2.");
    row("no text", "Startnummer;Ort", "101;\"a\x01\"",
        "fehlerhaft 1! An der 2. Stelle steht ein Zeichen, das kein Text ist.");
    row("a letter that got lost elsewhere", "Startnummer;Ort", "101;\uFFFDd",
        "fehlerhaft 1! An der 1. Stelle steht ein Zeichen, das kein Text ist.");
    row("a number column", "Startnummer;AmateurSchuetze", "101;viel",
        "fehlerhaft 1! »viel« ist keine passende Zahl.");
    row("line break in a cell", "Startnummer;Straße", "101;\"Weg 1\nHinterhaus\"",
        "geändert Straße: >Weg 1 Hinterhaus");
    row("groups are added", "Startnummer;Schützengruppen", "101;\"Helfer\nNeu\"",
        "geändert Schützengruppen: >+ Helfer, Neu (Die Schützengruppe »Neu« wird angelegt.)");
    row("registration", "Startnummer;Anmeldungen", "101;\"Luftgewehr | 1.10 | Grünau I\n2.10\"",
        "geändert Anmeldungen: >+ Luftgewehr, Luftpistole");
    row("unknown registration", "Startnummer;Anmeldungen", "101;Bogen",
        "fehlerhaft 1! Die Meldedisziplin »Bogen« gibt es im Wettkampf nicht oder mehrmals.");
  }
  void judgesAShooter() {
    QFETCH(QString, headings);
    QFETCH(QString, cells);
    QFETCH(QString, verdict);
    ListPlace place;
    const JudgedRow row = place.judgedRow(headings, cells);
    QCOMPARE(shown(row), verdict);
    QCOMPARE(row.line, 2);
  }

  void aClassByHandStays() {
    ListPlace place;
    place.store().execute("UPDATE Schützen SET KlassenID = 1, bGebKlasseManuell = True WHERE ID = 1");
    QCOMPARE(shown(place.judgedRow("Startnummer;geb.", "101;1.1.99")),
             QString("geändert Geburtsdatum: 14.05.1980>01.01.1999"));
    QCOMPARE(shown(place.judgedRow("Startnummer;Klasse von Hand", "101;nein")),
             QString("geändert Klasse: H1>H2 Klasse von Hand: Ja>Nein"));
    QCOMPARE(shown(place.judgedRow("Startnummer;Klasse", "101;H1")), QString("bekannt"));
    QCOMPARE(shown(place.judgedRow("Startnummer;Klasse", "101;H2")),
             QString("geändert Klasse: H1>H2 Klasse von Hand: Ja>Nein"));
  }

  void textsTooLongAreFaults() {
    ListPlace place;
    const auto fault = [&place](const QString& heading, int size) {
      return shown(place.judgedRow("Startnummer;" + heading, "101;" + QString(size, 'x')));
    };
    QCOMPARE(fault("Ort", 256),
             QString("fehlerhaft 1! Der Text hat 256 Zeichen; höchstens 255 haben Platz."));
    QCOMPARE(fault("Telefon", 51),
             QString("fehlerhaft 1! Der Text hat 51 Zeichen; höchstens 50 haben Platz."));
    QVERIFY(fault("Telefon", 50).startsWith("geändert"));
    QCOMPARE(fault("Verein", 256),
             QString("fehlerhaft 1! Der Text hat 256 Zeichen; höchstens 255 haben Platz."));
    QCOMPARE(fault("Bemerkungen", 70000),
             QString("fehlerhaft 1! Der Text hat 70000 Zeichen; höchstens 65535 haben Platz."));
    QVERIFY(fault("Bemerkungen", 60000).startsWith("geändert"));
    QCOMPARE(shown(place.judgedRow("Startnummer;Nachname;Vorname",
                                   "900;" + QString(200, 'x') + ";" + QString(100, 'y'))),
             QString("fehlerhaft 1! Der Text hat 301 Zeichen; höchstens 255 haben Platz."));
  }

  void whatStandsTwiceIsFaulty() {
    ListPlace place;
    const Judgement judgement = place.judged(
        "Startnummer;Name;geb.;Ausweis\n"
        "200;A;01.01.1990;\n"
        "0200;A;01.01.1990;N1\n"
        "200;B;01.01.1991;N1\n"
        ";C;01.01.1992;\n"
        ";c;1.1.92;\n"
        "101;;;\n"
        ";;;L1\n");
    QStringList all;
    for (const JudgedRow& row : judgement.rows) all << shown(row);
    QCOMPARE(all[0], QString("fehlerhaft 0! Die Startnummer steht auch in Zeile 4."));
    QCOMPARE(all[1], QString("fehlerhaft 3! Die Ausweisnummer steht auch in Zeile 4."));
    QCOMPARE(all[2], QString("fehlerhaft 0! Die Startnummer steht auch in Zeile 2. 3! Die Ausweisnummer "
                             "steht auch in Zeile 3."));
    QCOMPARE(all[3], QString("fehlerhaft -1! Name und Geburtsdatum stehen auch in Zeile 6."));
    QCOMPARE(all[4], QString("fehlerhaft -1! Name und Geburtsdatum stehen auch in Zeile 5."));
    QCOMPARE(all[5], QString("fehlerhaft -1! Zeile 8 meint denselben Schützen."));
    QCOMPARE(all[6], QString("fehlerhaft -1! Zeile 7 meint denselben Schützen."));
    QVERIFY(judgement.plan.empty());
  }

  void twoRowsMakeOneClub() {
    ListPlace place;
    const Judgement judgement = place.judged(
        "Startnummer;Name;Verein;Mannschaft\n"
        "200;;SV Fehler;\n"  // its club isn't made
        "201;A;SV Neu;Neu I\n202;B;sv  neu;NEU I\n203;C;SV Fehler;Neu I\n");
    QCOMPARE(judgement.count(Verdict::New), 3);
    QStringList made;
    for (const PlannedRow& row : judgement.plan)
      made << row.table + "=" + row.values.front().after.toString();
    QCOMPARE(
        made.join(' '),
        QString("Verein=SV Neu Mannschaften=Neu I Schützen=201 Schützen=202 Verein=SV Fehler Schützen=203"));
  }

  void numbersAreGivenOnce() {
    ListPlace place;
    const Judgement judgement = place.judged("Startnummer;Name\n;A\n106;B\n;C\n;D\n");
    QStringList who;
    for (const JudgedRow& row : judgement.rows) who << row.who;
    QCOMPARE(who.join('/'), QString("107 A/106 B/108 C/109 D"));
  }

  void blankRowsDontCount() {
    ListPlace place;
    const Judgement judgement = place.judged("Startnummer;Name\n;\n200;A\n\" \";\"\"\n");
    QCOMPARE(judgement.rows.size(), size_t{1});
    QCOMPARE(judgement.rows.front().line, 3);
  }

  void whatIsNotAssignedIsNotRead() {
    ListPlace place;
    QCOMPARE(shown(place.judgedRow("Startnummer;Irgendwas", "101;\x01")), QString("bekannt"));
  }

  void aNameIsTheSameInBothFormsOfUnicode() {
    ListPlace place;
    const QString name = "Schützengilde Grünau";
    place.store().execute(QString("UPDATE Verein SET Name = '%1' WHERE Name = '%2'")
                              .arg(name.normalized(QString::NormalizationForm_D), name));
    QCOMPARE(shown(place.judgedRow("Startnummer;Verein", "101;" + name)), QString("bekannt"));
  }

  void judgesClubs() {
    ListPlace place;
    const Judgement judgement = place.judged(
        "Verein;Kurzname\nSchützengilde Grünau;SG Grünau\nschützengilde "
        "Grünau;SGG\nDoppelt;\nNeu;N\nneu;\n;X\n",
        ListKind::Clubs);
    QStringList all;
    for (const JudgedRow& row : judgement.rows) all << shown(row);
    QCOMPARE(all[0], QString("bekannt"));
    QCOMPARE(all[1], QString("fehlerhaft -1! Das steht schon in Zeile 2."));
    QCOMPARE(all[2], QString("fehlerhaft 0! Den Verein gibt es im Wettkampf mehrmals."));
    QCOMPARE(all[3], QString("neu Verein: >Neu Verein kurz: >N"));
    QCOMPARE(all[4], QString("fehlerhaft -1! Das steht schon in Zeile 5."));
    QCOMPARE(all[5], QString("fehlerhaft 0! Der Name fehlt."));
    QCOMPARE(shown(place.judgedRow("Verein;Kurzname", "Schützengilde Grünau;SGG", ListKind::Clubs)),
             QString("geändert Verein kurz: SG Grünau>SGG"));
  }

  void judgesTeams() {
    ListPlace place;
    const Judgement judgement = place.judged(
        "Mannschaft;Verein;Gruppe\nGrünau I;SG Grünau;Luftgewehr\nGrünau I;SG Grünau;Auflage\nDoppelt "
        "I;;\nNeu;SV "
        "Öd;-\n",
        ListKind::Teams);
    QStringList all;
    for (const JudgedRow& row : judgement.rows) all << shown(row);
    QCOMPARE(all[0], QString("bekannt"));
    QCOMPARE(
        all[1],
        QString(
            "neu Mannschaft: >Grünau I Verein der Mannschaft: >SG Grünau Mannschaftsgruppe: >Auflage (Die "
            "Mannschaftsgruppe »Auflage« wird angelegt.) (Die Mannschaft »Grünau I« wird angelegt.)"));
    QCOMPARE(
        all[2],
        QString("fehlerhaft 0! Die Mannschaft »Doppelt I« gibt es mehrmals; welche Zeile gemeint ist, steht "
                "nicht fest."));
    QVERIFY2(all[3].startsWith("neu"), qPrintable(all[3]));
  }

  void aFaultyTeamMakesNoClub() {
    ListPlace place;
    for (int i = 0; i < 2; ++i)
      place.store().execute("INSERT INTO MannschaftsGruppen (Bezeichnung) VALUES ('Zweimal')");
    const Judgement judgement =
        place.judged("Mannschaft;Verein;Gruppe\nNeu;SV Neu;Zweimal\n", ListKind::Teams);
    QCOMPARE(shown(judgement.rows.front()),
             QString("fehlerhaft 0! Die Mannschaftsgruppe »Zweimal« gibt es mehrmals; "
                     "welche Zeile gemeint ist, steht nicht fest."));
    QVERIFY(judgement.plan.empty());
  }

  void canBeStopped() {
    ListPlace place;
    QString text = "Startnummer;Name\n";
    for (int i = 0; i < 1000; ++i) text += QString("%1;N%1\n").arg(1000 + i);
    const auto table = qk::test::listOf(text);
    const auto state = readStoreState(place.store());
    int asked = 0, last = 0;
    const auto run = [&](int stopAt) {
      asked = 0;
      return judge(ListKind::Shooters, table, recognised(ListKind::Shooters, table->rows.front()), state,
                   [&](int done, int all) {
                     if (done <= last && asked > 0) qWarning("progress goes back");
                     last = done;
                     return ++asked < stopAt && done < all;
                   });
    };
    const Judgement whole = run(1000);
    QVERIFY(!whole.stopped);
    QCOMPARE(whole.count(Verdict::New), 1000);
    QVERIFY(asked >= 8);
    for (const int stopAt : {1, asked - 1}) {
      last = -1;
      const Judgement stopped = run(stopAt);
      QVERIFY(stopped.stopped);
      QVERIFY(stopped.rows.empty() && stopped.plan.empty());
    }
  }
};

QTEST_GUILESS_MAIN(TestJudge)
#include "test_judge.moc"
