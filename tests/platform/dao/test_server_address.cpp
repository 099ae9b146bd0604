// The text file that stands in for a database on a server.
#include <QtTest>

#include "platform/dao/server_address.h"
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
    QCOMPARE(parseServerAddress(text), (ServerAddress{"schießstand", 6543, "meister=schaft", "büro"}));
    QCOMPARE(placeOf(parseServerAddress(text)), "meister=schaft auf schießstand");
  }

  void thePortMayBeMissing() { QCOMPARE(parseServerAddress("host=a\ndatenbank=b\nbenutzer=c").port, 5432); }

  void thePatienceMayBeMissing() {
    const QByteArray text = "host=a\ndatenbank=b\nbenutzer=c";
    QCOMPARE(parseServerAddress(text).patience, 15);
    QCOMPARE(parseServerAddress(text + "\nWartezeit=600").patience, 600);
  }

  void aWrittenAddressReadsAsItself() {
    const ServerAddress address{"/tmp/sö", 5433, "d b", "u", 7};
    QVERIFY(isServerAddress(serverAddressText(address)));
    QCOMPARE(parseServerAddress(serverAddressText(address)), address);
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
