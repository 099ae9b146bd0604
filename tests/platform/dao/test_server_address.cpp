// The text file that stands in for a database on a server.
#include <QtTest>

#include "platform/dao/server/server_address.h"
#include "platform/runtime/error.h"

using namespace qk;
using namespace qk::dao;

class TestServerAddress : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void readsWhatItNames() {
    const QByteArray text =
        "# Büro und Anmeldung\r\n\r\n Host = schießstand \r\nPORT=6543\r\ndatenbank=meister=schaft\r\n"
        "Benutzer=büro";
    QVERIFY(isServerAddress(text));
    QCOMPARE(parseServerAddress(text), (ServerAddress{{{"schießstand", 6543}}, "meister=schaft", "büro"}));
    QCOMPARE(placeOf(parseServerAddress(text)), "meister=schaft auf schießstand");
  }

  void thePortMayBeMissing() {
    QCOMPARE(parseServerAddress("host=a\ndatenbank=b\nbenutzer=c").endpoints.first().port, 5432);
  }

  void thePatienceMayBeMissing() {
    const QByteArray text = "host=a\ndatenbank=b\nbenutzer=c";
    QCOMPARE(parseServerAddress(text).patience, 15);
    QCOMPARE(parseServerAddress(text + "\nWartezeit=600").patience, 600);
  }

  void aWrittenAddressReadsAsItself() {
    for (const QList<ServerEndpoint>& endpoints : {QList<ServerEndpoint>{{"/tmp/sö", 5433}},
                                                   {{"a", 5432}, {"b", 5432}},
                                                   {{"a", 5432}, {"a", 5433}},
                                                   {{"fe80::1", 1}, {"/tmp/a", 2}, {"/tmp/b:7", 3}, {"c", 4}},
                                                   {{"fe80::1"}},
                                                   {{"/tmp/b:7", 5}}}) {
      const ServerAddress address{endpoints, "d b", "u", 7};
      QVERIFY(isServerAddress(serverAddressText(address)));
      QCOMPARE(parseServerAddress(serverAddressText(address)), address);
    }
  }

  void severalHostsAreTheServerAndItsStandbys_data() {
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QList<ServerEndpoint>>("endpoints");
    using List = QList<ServerEndpoint>;
    QTest::newRow("one port") << "erster, zweiter" << List{{"erster", 6543}, {"zweiter", 6543}};
    QTest::newRow("own port") << "erster:5432 ,zweiter" << List{{"erster", 5432}, {"zweiter", 6543}};
    QTest::newRow("three") << "a,b,c:1" << List{{"a", 6543}, {"b", 6543}, {"c", 1}};
    QTest::newRow("same host") << "a:1,a:2" << List{{"a", 1}, {"a", 2}};
    QTest::newRow("bare address") << "fe80::1, 10.0.0.2:7" << List{{"fe80::1", 6543}, {"10.0.0.2", 7}};
    QTest::newRow("brackets") << "[fe80::1]:7, [b]" << List{{"fe80::1", 7}, {"b", 6543}};
    QTest::newRow("folders") << "/run/a:7, /run/b" << List{{"/run/a", 7}, {"/run/b", 6543}};
  }
  void severalHostsAreTheServerAndItsStandbys() {
    QFETCH(QString, hosts);
    QFETCH(QList<ServerEndpoint>, endpoints);
    for (const QString& text : {"port=6543\nhost=" + hosts, "host=" + hosts + "\nport=6543"})
      QCOMPARE(parseServerAddress((text + "\ndatenbank=b\nbenutzer=c").toUtf8()).endpoints, endpoints);
  }

  void theirPlaceNamesAll() {
    const auto place = [](const QByteArray& hosts) {
      return placeOf(parseServerAddress("datenbank=pokal\nbenutzer=c\nhost=" + hosts));
    };
    QCOMPARE(place("erster:7"), QString("pokal auf erster"));
    QCOMPARE(place("erster, zweiter:7"), QString("pokal auf erster oder zweiter"));
    QCOMPARE(place("a, b, c"), QString("pokal auf a, b oder c"));
    QCOMPARE(place("a, a:7, [::1]"), QString("pokal auf a:5432, a:7 oder ::1"));
  }

  void aDamagedOneSaysWhatIsWrong_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("why");
    QTest::newRow("host") << QByteArray("datenbank=b\nbenutzer=c") << "'host' fehlt.";
    QTest::newRow("database") << QByteArray("host=b\nbenutzer=c") << "'datenbank' fehlt.";
    QTest::newRow("user") << QByteArray("host=b\ndatenbank=c") << "'benutzer' fehlt.";
    QTest::newRow("empty value") << QByteArray("host=\ndatenbank=b\nbenutzer=c")
                                 << "Zeile 1: 'host' ist leer.";
    QTest::newRow("no mark") << QByteArray("host=a\nmüll\n") << "Zeile 2: Das Gleichheitszeichen fehlt.";
    QTest::newRow("unknown") << QByteArray("\nhost=a\nfarbe=blau") << "Zeile 3: 'farbe' ist unbekannt.";
    QTest::newRow("twice") << QByteArray("host=a\nHOST=b") << "Zeile 2: 'host' steht doppelt.";
    for (const char* port : {"x", "0", "65536", "-1", "54 32"})
      QTest::addRow("port %s", port) << QByteArray("port=") + port
                                     << QString("Zeile 1: '%1' ist keine Portnummer.").arg(port);
    const auto hosts = [](const QByteArray& list) { return "datenbank=b\nbenutzer=c\nhost=" + list; };
    QTest::newRow("no name") << hosts("a,,b") << "Zeile 3: In 'a,,b' fehlt der Name eines Rechners.";
    QTest::newRow("trailing comma") << hosts("a,") << "Zeile 3: In 'a,' fehlt der Name eines Rechners.";
    QTest::newRow("only a port") << hosts(":7") << "Zeile 3: In ':7' fehlt der Name eines Rechners.";
    for (const char* port : {"x", "", "0", "65536"})
      QTest::addRow("port '%s' of a host", port)
          << hosts(QByteArray("a, b:") + port) << QString("Zeile 3: '%1' ist keine Portnummer.").arg(port);
    QTest::newRow("host twice") << hosts("a, a:5432") << "Zeile 3: 'a:5432' steht doppelt.";
    for (const char* patience : {"x", "0", "601"})
      QTest::addRow("patience %s", patience)
          << QByteArray("wartezeit=") + patience
          << QString("Zeile 1: '%1' ist keine Zahl von Sekunden zwischen 1 und 600.").arg(patience);
    QTest::newRow("password") << QByteArray("host=a\nPasswort=geheim")
                              << "Zeile 2: Ein Passwort darf nicht in der Datei stehen.";
  }
  void aDamagedOneSaysWhatIsWrong() {
    QFETCH(QByteArray, text);
    QFETCH(QString, why);
    QVERIFY(isServerAddress(text));
    try {
      parseServerAddress(text);
      QFAIL("went through");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 3343);
      QCOMPARE(error.description(), "Die Datei nennt keinen brauchbaren Datenbankserver: " + why);
    }
  }

  void otherFilesAreNone() {
    for (const QByteArray& content :
         {QByteArray(), QByteArray("\n# nur das\n"), QByteArray("SQLite format 3\0a=b", 19),
          QByteArray("xxxx"), QByteArray("a=\xff"), QByteArray("a=\1"),
          "host=" + QByteArray(kLargestAddressFile, 'x')})
      QVERIFY(!isServerAddress(content));
  }
};

QTEST_APPLESS_MAIN(TestServerAddress)
#include "test_server_address.moc"
