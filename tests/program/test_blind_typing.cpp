// Somebody types a start number and Enter while a box comes up that nobody called: the real program keeps the
// shot.
#include <QFile>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/program/range_folder.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

using namespace qk;

class TestBlindTyping : public QObject {
  Q_OBJECT

  static void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(content);
  }
  static int rows(dao::Database& db) {
    const auto rs = db.openRecordset("Select * from Haering_Daten");
    if (!rs->eof()) rs->moveLast();
    return rs->recordCount();
  }

 private Q_SLOTS:
  void aShotThatCannotBeStoredIsNotTypedAway() {
    test::RangeFolder folder;
    Range range({folder.path(), "11", 0, 1, {}});
    const auto program = range.startProgram();
    program->waitUntil("tree", [&] { return program->items("tree").size() == 2; });
    Walk walk(*program);
    walk.selectLine(1);
    walk.chooseShooter(1, "107");
    walk.priceModeOn(1);

    const auto db = dao::Database::open(range.competition());
    const dao::TableDef table = db->tableDef("Haering_Daten");
    db->dropTable("Haering_Daten");
    const QString flag = range.exchangeFolder() + "HSlav1.ctl";
    write(range.exchangeFolder() + "HSlav1.nrt",
          "\"17 ; LG ; Herren ; 1 ; 1 ; M ; M ; 0 ; 1 ; 9,7 ; o ; 1,5 ; -2,5 ; 123,4 ; 90 ; 10:41:01 ; 1,0 ; "
          "20.11.2026 ; 1.10 ; frei ; 107\"\r\n");
    write(flag, "\"\"\r\n");
    program->waitUntil("box", [&] { return !program->modal().isEmpty(); });
    const QJsonObject box = program->modal();
    program->typeBlindly("107\n");
    program->typeBlindly("107\n");
    // The answers come in order: what was typed has been dealt with when this one comes.
    QCOMPARE(program->modal()["id"], box["id"]);
    QVERIFY(box["text"].toString().contains("Fehler beim Speichern der Intarso-Ergebnisse"));
    QVERIFY(QFile::exists(flag));
    db->createTable(table);
    program->answer("Fehler beim Speichern der Intarso-Ergebnisse", "Wiederholen");
    program->waitUntil("stored", [&] { return !QFile::exists(flag); });
    QCOMPARE(rows(*db), 1);
    QVERIFY(program->modal().isEmpty());
  }
};

QTEST_GUILESS_MAIN(TestBlindTyping)
#include "test_blind_typing.moc"
