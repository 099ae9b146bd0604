// Every column of master data can be set somewhere, and says what it does.
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "masterdata/making/competition.h"
#include "masterdata/pages/page.h"

using namespace qk;

namespace {

/// Tables that are master data; what the quick evaluation reads of the profiles stands below.
const QStringList kTables = {"Wettkampf",        "Schützen",           "Verein",
                             "Mannschaften",     "MannschaftsGruppen", "SchuetzenGruppen",
                             "Schützenklassen",  "Klassenwechsel",     "Disziplin",
                             "Kombination_Name", "MeldeDisziplin",     "Schuetzen_SPO_Anmeldungen"};
const QStringList kLinks = {
    "SchuetzenGruppenZuordnung", "DisziplinKlasse", "DisziplinWaffen", "Kombination_Diszi", "AwProfilDiszi",
    "Auswert_Klassen",           "Auswert_Waffen"};
const QStringList kReadOfProfiles = {"Name",
                                     "Typ",
                                     "Anzahl",
                                     "Vorgabe",
                                     "OptKlassen",
                                     "OptTage",
                                     "OptWaffen",
                                     "Tageswertung",
                                     "Monatswertung",
                                     "nBestTageswertung",
                                     "nMinAnzahlErgAktiv",
                                     "nMinAnzahlErg",
                                     "Teiler",
                                     "nShowKurzAuswertung"};

const Page* pageOf(const QString& table) {
  for (const Page& page : masterDataPages())
    if (page.table == table) return &page;
  return nullptr;
}

}  // namespace

class TestPages : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyColumnStandsOnAPage() {
    const Schema schema = embeddedSchema("Wettkampf.txt");
    QStringList missing;
    int found = 0;
    for (const QString& table : kTables) {
      const Page* page = pageOf(table);
      QVERIFY2(page, qPrintable(table));
      for (const dao::FieldDef& field : schema.table(table)->fields) {
        if (field.autoNumber) continue;
        if (page->column(field.name))
          ++found;
        else
          missing << table + "." + field.name;
      }
    }
    QCOMPARE(missing.join('\n'), QString());
    QVERIFY(found > 90);
    QVERIFY(pageOf("MeldeDisziplin")->column("TeilerfaktorESA"));
  }

  void everyLinkStandsOnAPage() {
    QStringList linked;
    for (const Page& page : masterDataPages())
      for (const LinkedList& link : page.links) linked << link.table;
    linked.sort();
    QStringList wanted = kLinks;
    wanted.sort();
    QCOMPARE(linked, wanted);
  }

  void ofProfilesOnlyWhatIsReadIsOffered() {
    QStringList offered;
    for (const PageColumn& column : pageOf("AuswertProfil")->columns) offered << column.column;
    offered.sort();
    QStringList wanted = kReadOfProfiles;
    wanted.sort();
    QCOMPARE(offered, wanted);
  }

  void nothingIsOfferedThatNoCompetitionHas() {
    const Schema schema = embeddedSchema("Wettkampf.txt");
    for (const Page& page : masterDataPages()) {
      const dao::TableDef* table = schema.table(page.table);
      QVERIFY2(table, qPrintable(page.table));
      QVERIFY2(table->field(page.keyColumn), qPrintable(page.table));
      for (const PageColumn& column : page.columns)
        QVERIFY2(table->field(column.column) || column.column == "TeilerfaktorESA",
                 qPrintable(column.column));
      for (const LinkedList& link : page.links)
        for (const QString& column : {link.owner, link.member})
          QVERIFY2(schema.table(link.table)->field(column), qPrintable(link.table + "." + column));
    }
  }

  void everyColumnSaysWhatItDoes() {
    QSet<QString> keys;
    for (const Page& page : masterDataPages()) {
      QVERIFY2(!keys.contains(page.key), qPrintable(page.key));
      keys.insert(page.key);
      QVERIFY(!page.title.isEmpty() && !page.named.isEmpty() && !page.fresh.isEmpty() &&
              !page.empty.isEmpty());
      QVERIFY2(page.column(page.nameColumn), qPrintable(page.nameColumn));
      QSet<QString> labels;
      for (const PageColumn& column : page.columns) {
        const QString where = page.key + "." + column.column + ": " + column.effect;
        QVERIFY2(column.effect.endsWith('.') && column.effect.size() < 240, qPrintable(where));
        QVERIFY2(!labels.contains(column.label), qPrintable(where));
        labels.insert(column.label);
        QVERIFY2((column.kind == ColumnKind::Choice) == !column.choices.empty(), qPrintable(where));
        const bool refers = column.kind == ColumnKind::Reference || column.kind == ColumnKind::LookUp;
        QVERIFY2(refers == !column.reference.table.isEmpty(), qPrintable(where));
      }
      for (const LinkedList& link : page.links) QVERIFY2(link.effect.endsWith('.'), qPrintable(link.table));
    }
  }

  void aChoiceThatSaysItsNumberStandsForIt() {
    static const QRegularExpression number("\\((-?\\d+)\\)$|^(\\d+)( –|$)");
    int told = 0;
    for (const Page& page : masterDataPages())
      for (const PageColumn& column : page.columns)
        for (const PageChoice& choice : column.choices)
          if (const auto match = number.match(choice.text); match.hasMatch()) {
            ++told;
            QCOMPARE(choice.value.toString(), match.captured(1) + match.captured(2));
          }
    QVERIFY(told > 10);
  }

  void classesRefuseLimitsThatNobodyMeets() {
    const Page& classes = masterDataPage("Klassen");
    QVERIFY(classes.check({{"Alter von", 15}, {"Alter bis", 16}}).isEmpty());
    QVERIFY(classes.check({{"Alter von", 15}, {"Alter bis", 15}}).isEmpty());
    QCOMPARE(classes.check({{"Alter von", 16}, {"Alter bis", 15}}).size(), 1);
  }

  void aProfileWithATargetNeedsIt() {
    const Page& profiles = masterDataPage("Profile");
    QVERIFY(profiles.check({{"Typ", 2}, {"Vorgabe", "150,5"}}).isEmpty());
    QVERIFY(profiles.check({{"Typ", 0}, {"Vorgabe", ""}}).isEmpty());
    QCOMPARE(profiles.check({{"Typ", 2}, {"Vorgabe", " "}}).size(), 1);
  }
};

QTEST_APPLESS_MAIN(TestPages)
#include "test_pages.moc"
