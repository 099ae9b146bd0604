// Which of several hosts is the primary, by what they say of themselves; what a workstation remembers of
// them.
#include <QtTest>

#include "platform/dao/server/server_memory.h"

using namespace qk;
using namespace qk::dao;
using Kind = HostAnswer::Kind;

namespace {

const ServerAddress kPair{{{"erster"}, {"zweiter"}}, "pokal", "buero"};

HostAnswer primary(const QString& system, int timeline) {
  return {Kind::Primary, {system, timeline}};
}
HostAnswer other(Kind kind) {
  return {kind};
}
HostAnswer refused(const QString& why) {
  return {Kind::Refused, {}, why};
}

}  // namespace

class TestServerChoice : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void thePrimaryIsChosen_data() {
    QTest::addColumn<HostAnswer>("first");
    QTest::addColumn<HostAnswer>("second");
    QTest::addColumn<QString>("held");
    QTest::addColumn<int>("chosen");
    const HostAnswer standby = other(Kind::Standby), silent = other(Kind::Silent);
    const HostAnswer one = primary("A", 3), two = primary("A", 4), foreign = primary("B", 9);
    const HostAnswer untold = primary({}, 0);
    // The highest timeline of A that was ever met is 3.
    QTest::newRow("first") << one << standby << "" << 0;
    QTest::newRow("second") << standby << one << "" << 1;
    QTest::newRow("silent") << silent << one << "" << 1;
    QTest::newRow("refused") << refused("x") << one << "" << 1;
    QTest::newRow("too old") << other(Kind::TooOld) << one << "" << 1;
    QTest::newRow("promoted second") << one << two << "" << 1;
    QTest::newRow("promoted first") << two << one << "" << 0;
    QTest::newRow("the same: in their order") << one << one << "" << 0;
    QTest::newRow("given up") << primary("A", 2) << standby << "" << -1;
    QTest::newRow("given up, other away") << silent << primary("A", 2) << "" << -1;
    QTest::newRow("another server, afresh") << foreign << silent << "" << 0;
    QTest::newRow("another server, afresh, second") << one << foreign << "" << 0;
    QTest::newRow("another server, at work") << foreign << silent << "A" << -1;
    QTest::newRow("another server, at work, second") << foreign << one << "A" << 1;
    QTest::newRow("says nothing of itself") << untold << standby << "" << 0;
    QTest::newRow("says nothing, at work") << silent << untold << "A" << 1;
    QTest::newRow("says nothing beside one that does") << untold << one << "" << 1;
    QTest::newRow("says nothing behind one that does") << one << untold << "" << 0;
    QTest::newRow("nobody") << standby << silent << "" << -1;
  }
  void thePrimaryIsChosen() {
    QFETCH(HostAnswer, first);
    QFETCH(HostAnswer, second);
    QFETCH(QString, held);
    QFETCH(int, chosen);
    const auto found = primaryAmong({first, second}, knowing(held));
    QCOMPARE(found ? static_cast<int>(*found) : -1, chosen);
  }

  void whyThereIsNoneIsToldOfEach() {
    const auto told = [](const HostAnswer& first, const HostAnswer& second, const QString& held = "A") {
      return whyNoPrimary(kPair, {first, second}, knowing(held));
    };
    QCOMPARE(
        told(other(Kind::Silent), other(Kind::Standby)),
        QString("Der Rechner 'erster' gibt keine Antwort. Ist er eingeschaltet, und ist das Netz in "
                "Ordnung? 'zweiter' antwortet, ist aber noch Ersatz: Er muss erst zum Hauptserver gemacht "
                "werden."));
    QCOMPARE(
        told(refused("Alles belegt."), primary("A", 2)),
        QString("'erster': Alles belegt. 'zweiter' war früher der Hauptserver, inzwischen hat ein anderer "
                "übernommen. Was dort gespeichert würde, ginge verloren."));
    QCOMPARE(told(other(Kind::TooOld), primary("B", 7)),
             QString("Der Datenbankserver 'erster' ist zu alt: PostgreSQL 15 oder neuer ist nötig. 'zweiter' "
                     "ist ein anderer Server als der, mit dem dieses Programm bisher gearbeitet hat."));
    const ServerAddress single{{{"erster"}}, "pokal", "buero"};
    QCOMPARE(whyNoPrimary(single, {refused("Alles belegt.")}, knowing("")), QString("Alles belegt."));
  }

  void theHighestTimelineIsRemembered() {
    ServerMemory memory;
    QCOMPARE(memory.timelineOf("A"), 0);
    memory.learn({"A", 2});
    memory.learn({"A", 1});
    memory.learn({"B", 7});
    memory.learn({});
    QCOMPARE(memory.timelineOf("A"), 2);
    QVERIFY(memory.isOvertaken({"A", 1}));
    QVERIFY(!memory.isOvertaken({"A", 2}));
    QVERIFY(!memory.isOvertaken({}));
  }

  void aKeeperHearsOfWhatIsNew() {
    QMap<QString, int> kept{{"A", 3}};
    int written = 0;
    ServerMemory memory;
    memory.keepBy({[&](const QString& system) { return kept.value(system); },
                   [&](const QString& system, int timeline) {
                     kept[system] = timeline;
                     ++written;
                   }});
    QCOMPARE(memory.timelineOf("A"), 3);
    memory.learn({"A", 3});
    memory.learn({"A", 2});
    QCOMPARE(written, 0);
    memory.learn({"A", 4});
    QCOMPARE(kept["A"], 4);
    QCOMPARE(written, 1);
    // Another program of the workstation.
    kept["A"] = 6;
    QCOMPARE(memory.timelineOf("A"), 6);
    QVERIFY(memory.isOvertaken({"A", 5}));
    memory.keepBy({});
    QCOMPARE(memory.timelineOf("A"), 6);
  }

  void aServerIsHeldWhileItsConnectionsStand() {
    ServerMemory memory;
    QCOMPARE(memory.systemHeld(kPair), QString());
    auto one = memory.hold(kPair, {"A", 1}), two = memory.hold(kPair, {"A", 1});
    QVERIFY(!memory.hold(kPair, {}));
    ServerAddress patient = kPair, elsewhere = kPair;
    patient.patience *= 4;
    elsewhere.database = "liga";
    QCOMPARE(memory.systemHeld(patient), QString("A"));
    QCOMPARE(memory.systemHeld(elsewhere), QString());
    one.reset();
    QCOMPARE(memory.systemHeld(kPair), QString("A"));
    two.reset();
    QCOMPARE(memory.systemHeld(kPair), QString());
  }

  void aSilentHostIsRememberedUntilItSpeaks() {
    ServerMemory memory;
    const ServerEndpoint host{"erster"}, sameHost{"erster", 5433};
    QVERIFY(!memory.wasSilent(host));
    memory.noteSilence(host, true);
    QVERIFY(memory.wasSilent(host));
    QVERIFY(!memory.wasSilent(sameHost));
    memory.noteSilence(host, false);
    QVERIFY(!memory.wasSilent(host));
  }

 private:
  static ServerKnowledge knowing(const QString& held) {
    return {held, [](const QString& system) { return system == "A" ? 3 : 0; }};
  }
};

QTEST_APPLESS_MAIN(TestServerChoice)
#include "test_server_choice.moc"
