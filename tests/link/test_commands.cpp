#include <QTest>

#include "link/commands.h"
#include "platform/runtime/error.h"

using namespace qk;

class TestCommands : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void maskOfAnEmptyGrid() { QCOMPARE(disziplinMaske({}), QString(30, '-')); }

  void maskWithoutSelection() {
    QCOMPARE(disziplinMaske(DisziplinZeilen(5, DisziplinZeile{"0", "LG"})), QString(30, '-'));
  }

  void maskFollowsTheRows() {
    const DisziplinZeilen rows = {{"1"}, {"0"}, {"-1"}, {""}, {"0"}};
    QCOMPARE(disziplinMaske(rows), "1-11" + QString(26, '-'));
  }

  void maskHoldsThirtyRows() {
    DisziplinZeilen rows(31, DisziplinZeile{"0"});
    rows[29].auswahl = "1";
    rows[30].auswahl = "1";
    QCOMPARE(disziplinMaske(rows), QString(29, '-') + "1");
  }

  void registration() {
    const QString mask = "1" + QString(29, '-');
    QCOMPARE(anmeldeBefehl("107", "Müller, Änne", mask), "75107 ; Müller, Änne ; 107 ; 107 ; " + mask);
    QCOMPARE(anmeldeBefehl("", "Müller", mask), QString());
  }

  void additionalShots() {
    QVERIFY(hatNachkauf(" 10 "));
    QVERIFY(!hatNachkauf(""));
    QVERIFY(!hatNachkauf("zehn"));
    QCOMPARE(nachkaufBefehl(3, " 10 "), "803;10");
    QCOMPARE(nachkaufBefehl(12, "-5"), "8012;-5");
    QCOMPARE(nachkaufBefehl(1, "5,0"), "801;5");
  }

  void additionalShotsFailures() {
    const auto numberOf = [](auto call) {
      try {
        call();
      } catch (const Error& error) {
        return error.number();
      }
      return 0;
    };
    QCOMPARE(numberOf([] { nachkaufBefehl(1, "zehn"); }), 13);
    QCOMPARE(numberOf([] { nachkaufBefehl(40000, "1"); }), 6);
  }

  void rowKey() { QCOMPARE(disziplinSchluessel(12), "Diszi12"); }

  void namesForRegistration() {
    const DisziplinZeilen rows = {{"1", "LG Meister", "40", "50", "10"},
                                  {"1", "LG Serie", "20", "20", ""},
                                  {"0", "LP", "10", "15", "5"},
                                  {"0", "KK", "30", "30", ""}};
    QCOMPARE(disziplinAuswahlNamen(rows, false),
             "- LG Meister    (Gesamt: 50 - Akt. Nachkauf: 10 )       \r\n"
             "- LG Serie    (Schuss: 20)       \r\n"
             "- LP\t(Gesamt: 15 - Akt. Nachkauf: 5 )       \r\n");
    QCOMPARE(disziplinAuswahlNamen(rows, true),
             "- LG Meister\t(Gesamt: 50 - Akt. Nachkauf: 10 )       \r\n"
             "- LP\t(Gesamt: 15 - Akt. Nachkauf: 5 )       \r\n");
    QCOMPARE(disziplinAuswahlNamen({}, false), QString());
  }

  void questions() {
    QCOMPARE(frageOhneDisziplin(), "Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?");
    QCOMPARE(frageDisziplinenSenden("- A\r\n"),
             "Disziplinen senden: \r\n\r\n- A\r\n\r\n\r\nHINWEIS:\r\nEvtl. gesendete Diziplinen werden "
             "zurückgesetzt!");
    QCOMPARE(frageNachkaufSenden("- A\r\n"), "Nachkauf senden: \r\n- A\r\n");
  }
};

QTEST_APPLESS_MAIN(TestCommands)
#include "test_commands.moc"
