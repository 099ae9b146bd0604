// qk-wettkampf as its user meets it: what it says and how it ends.
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"
#include "tests/tools/tool_answer.h"

class TestCompetitionTool : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void helpIsGerman();
  void refusesWrongCalls_data();
  void refusesWrongCalls();
  void makesAFileOnce();
  void leavesAForeignFileAlone();
  void namesAMissingFolder();
  void namesAMissingExchangeParent();
  void hintsAtTheExtension();
  void demoWritesTheExchangeFolder();
  void binaryReturnsItsStatus();
  void beginsWithASetOrLikeAnother();

 private:
  QString path(const QString& name) const { return folder_.filePath(name); }
  /// Where a competition is to be made.
  QString place(const QString& name) const {
    qk::test::prepareStore(path(name));
    return path(name);
  }
  QTemporaryDir folder_;
};

void TestCompetitionTool::helpIsGerman() {
  const qk::test::ToolAnswer answer = qk::test::callTool({"--help"});
  QCOMPARE(answer.status, 0);
  QVERIFY(answer.out.contains("qk-wettkampf neu DATEI"));
  QVERIFY(answer.out.contains("qk-wettkampf demo DATEI"));
  QVERIFY(answer.out.contains("--austausch"));
  QVERIFY(answer.out.contains("qk-wettkampf umziehen VON NACH"));
  QVERIFY(answer.errors.isEmpty());
}

void TestCompetitionTool::refusesWrongCalls_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<QString>("message");
  QTest::newRow("nothing") << QStringList{}
                           << "Es fehlt ein Befehl: neu, demo, umziehen, einrichten, sichern oder zurueck.";
  QTest::newRow("command") << QStringList{"alt", "a.qkk"} << "Unbekannter Befehl »alt«.";
  QTest::newRow("no file") << QStringList{"neu"} << "Es fehlt der Name der Datei.";
  QTest::newRow("two files") << QStringList{"neu", "a.qkk", "b.qkk"} << "Mehr als eine Datei: »b.qkk«.";
  QTest::newRow("option") << QStringList{"neu", "a.qkk", "--austausch", "x"}
                          << "Unbekannte Angabe »--austausch«.";
  QTest::newRow("demo option") << QStringList{"demo", "a.qkk", "--name", "x"}
                               << "Unbekannte Angabe »--name«.";
  QTest::newRow("no value") << QStringList{"demo", "a.qkk", "--austausch"}
                            << "Hinter »--austausch« fehlt der Wert.";
  QTest::newRow("furnish nothing") << QStringList{"einrichten"}
                                   << "Es fehlt die eine Serverdatei: einrichten SERVERDATEI.";
  QTest::newRow("furnish no server") << QStringList{"einrichten", "gibtesnicht.qkk"}
                                     << "»gibtesnicht.qkk« ist keine Serverdatei.";
  QTest::newRow("move to nowhere") << QStringList{"umziehen", "a.qkk"}
                                   << "Es fehlt, von wo und wohin: umziehen VON NACH.";
  QTest::newRow("move option") << QStringList{"umziehen", "a.qkk", "b.qkk", "--schnell"}
                               << "Unbekannte Angabe »--schnell«.";
  QTest::newRow("year") << QStringList{"neu", "a.qkk", "--klassenwechsel", "31.2."}
                        << "»31.2.« ist kein Tag der Form TT.MM.";
  QTest::newRow("people without a source")
      << QStringList{"neu", "a.qkk", "--mit-schuetzen"}
      << "--mit-vereinen, --mit-mannschaften und --mit-schuetzen gehören zu --wie.";
  QTest::newRow("set and source") << QStringList{"neu", "a.qkk", "--wie", "b.qkk", "--starter", "verein"}
                                  << "--starter und --wie gehen nicht zusammen.";
  QTest::newRow("unknown set") << QStringList{"neu", "a.qkk", "--starter", "zwerge"}
                               << "Es gibt keine Vorlage »zwerge«, aber: preisschiessen, verein.";
  QTest::newRow("date") << QStringList{"neu", "a.qkk", "--datum", "bald"}
                        << "»bald« ist kein Datum der Form TT.MM.JJJJ.";
}

void TestCompetitionTool::refusesWrongCalls() {
  QFETCH(QStringList, arguments);
  QFETCH(QString, message);
  const qk::test::ToolAnswer answer = qk::test::callTool(arguments);
  QCOMPARE(answer.status, 2);
  QVERIFY2(answer.errors.startsWith(message + "\n"), qPrintable(answer.errors));
  QVERIFY(answer.out.isEmpty());
}

void TestCompetitionTool::makesAFileOnce() {
  const QString file = place("einmal.qkk");
  QCOMPARE(qk::test::callTool({"neu", file, "--name", "Herbstpokal", "--datum", "01.10.2026"}).status, 0);
  QFile made(file);
  QVERIFY(made.open(QIODevice::ReadOnly));
  const QByteArray before = made.readAll();
  for (const char* command : {"neu", "demo"}) {
    const qk::test::ToolAnswer again = qk::test::callTool({command, file});
    QCOMPARE(again.status, 1);
    QCOMPARE(again.errors, QString("Den Wettkampf gibt es schon, er bleibt unverändert: %1\n").arg(file));
  }
  made.seek(0);
  QCOMPARE(made.readAll(), before);
}

void TestCompetitionTool::leavesAForeignFileAlone() {
  const QString letter = path("brief.qkk");
  const QByteArray content = "Sehr geehrte Damen und Herren, Ihr Verein";
  QFile file(letter);
  QVERIFY(file.open(QIODevice::ReadWrite));
  file.write(content);
  file.flush();
  const qk::test::ToolAnswer answer = qk::test::callTool({"neu", letter});
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.startsWith("Fehler: 3"), qPrintable(answer.errors));
  file.seek(0);
  QCOMPARE(file.readAll(), content);
}

void TestCompetitionTool::namesAMissingFolder() {
  const qk::test::ToolAnswer answer = qk::test::callTool({"neu", path("fehlt/a.qkk")});
  QCOMPARE(answer.status, 1);
  QCOMPARE(answer.errors, QString("Den Ordner gibt es nicht: %1\n").arg(path("fehlt")));
}

void TestCompetitionTool::namesAMissingExchangeParent() {
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"demo", path("ohneordner.qkk"), "--austausch", path("fehlt/esa/")});
  QCOMPARE(answer.status, 1);
  QCOMPARE(answer.errors, QString("Den Ordner gibt es nicht: %1\n").arg(path("fehlt")));
  QVERIFY(!QFile::exists(path("ohneordner.qkk")));
}

void TestCompetitionTool::hintsAtTheExtension() {
  const qk::test::ToolAnswer answer = qk::test::callTool({"neu", place("ohne")});
  QCOMPARE(answer.status, 0);
  QVERIFY(answer.out.contains("Hinweis: QK-Intarso öffnet nur Dateien mit der Endung qkk."));
}

void TestCompetitionTool::demoWritesTheExchangeFolder() {
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"demo", place("demo.qkk"), "--austausch", path("esa")});
  QCOMPARE(answer.errors, QString());
  QCOMPARE(answer.status, 0);
  QVERIFY(QFile::exists(path("esa/esa_preis.ini")));
}

void TestCompetitionTool::binaryReturnsItsStatus() {
  QCOMPARE(QProcess::execute(QK_WETTKAMPF, {"neu", place("prozess.qkk")}), 0);
  QVERIFY(qk::dao::Database::open(path("prozess.qkk"))->hasTable("Disziplin"));
  QProcess again;
  again.start(QK_WETTKAMPF, {"neu", path("prozess.qkk")});
  QVERIFY(again.waitForFinished());
  QCOMPARE(again.exitCode(), 1);
  QVERIFY(QString::fromUtf8(again.readAllStandardError()).startsWith("Den Wettkampf gibt es schon"));
}

void TestCompetitionTool::beginsWithASetOrLikeAnother() {
  const qk::test::ToolAnswer first =
      qk::test::callTool({"neu", place("verein.qkk"), "--starter", "Verein", "--klassenwechsel", "01.07.",
                          "--zeile2", "Runde 2"});
  QCOMPARE(first.errors, QString());
  QCOMPARE(first.out, QString("Wettkampf angelegt: %1\n").arg(path("verein.qkk")));
  {
    const auto made = qk::dao::Database::open(path("verein.qkk"));
    QVERIFY(!made->openRecordset("Disziplin")->eof());
    QCOMPARE(made->openRecordset("Klassenwechsel")->value("wechseldatumneu").toString(), QString("01.07."));
    QCOMPARE(made->openRecordset("Wettkampf")->value("Bezeichnung2").toString(), QString("Runde 2"));
  }
  QCOMPARE(qk::test::callTool({"demo", place("alt.qkk")}).status, 0);
  const qk::test::ToolAnswer like =
      qk::test::callTool({"neu", place("wie.qkk"), "--wie", path("alt.qkk"), "--mit-schuetzen"});
  QCOMPARE(like.status, 0);
  QVERIFY2(like.out.startsWith("60 Schützen übernommen, "), qPrintable(like.out));
  QVERIFY(!qk::dao::Database::open(path("wie.qkk"))->openRecordset("Verein")->eof());
}

QTEST_GUILESS_MAIN(TestCompetitionTool)
#include "test_competition_tool.moc"
