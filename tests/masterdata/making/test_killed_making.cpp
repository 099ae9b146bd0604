// A program that is killed while it makes a competition: whole or not there, and the next try goes through.
#include <QProcess>
#include <QtTest>

#include "app/ground/unfinished_move.h"
#include "platform/dao/recordset.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/test_store.h"

using namespace qk;
using dao::Database;
using qk::test::DemoStore;

class TestKilledMaking : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<DemoStore> earlier_;

  QString path() const { return folder_->filePath("neu.qkk"); }
  QString draft() const { return path() + ".entwurf"; }

  QStringList call(const QStringList& further = {}) const {
    return QStringList{"neu", path(), "--wie", earlier_->path(), "--mit-schuetzen"} + further;
  }
  static bool isWhole(const QString& store) {
    const auto made = Database::open(store);
    return !isUnfinishedMove(*made) && made->hasTable("Waffen") &&
           made->openRecordset("Select Count(*) as Anzahl from Schützen")->value("Anzahl").toInt() == 60;
  }
  /// How far it is: a file grows under its other name, a server's store by its tables.
  qint64 progress() const {
    if (!qk::test::storesOnServer()) return QFileInfo(draft()).size() / 8192;
    try {
      return Database::open(path(), true)->tableNames().size();
    } catch (const Error&) {
      return 0;  // nothing there yet
    }
  }

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    earlier_ = std::make_unique<DemoStore>();
  }
  void cleanup() {
    earlier_.reset();
    folder_.reset();
  }

  void isWholeOrNotThere() {
    int killedInTheMiddle = 0;
    for (qint64 moment = 1; moment <= 36; moment += 5) {
      qk::test::prepareStore(path());
      QProcess program;
      program.start(QK_WETTKAMPF, call());
      QVERIFY(program.waitForStarted());
      while (progress() < moment && !program.waitForFinished(1)) {
      }
      program.kill();
      program.waitForFinished();
      const bool ended = program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0;
      if (!ended) ++killedInTheMiddle;
      if (qk::test::storesOnServer()) {
        if (ended || progress() > 0) QVERIFY(isUnfinishedMove(*Database::open(path())) || isWhole(path()));
      } else if (QFile::exists(path())) {
        QVERIFY(isWhole(path()));
      } else {
        QVERIFY(!ended);
      }
      const bool whole = !qk::test::storesOnServer() ? QFile::exists(path()) : ended;
      if (!whole) {
        QProcess again;
        again.start(QK_WETTKAMPF, call({"--von-vorn"}));
        QVERIFY(again.waitForFinished());
        QVERIFY2(again.exitCode() == 0, again.readAllStandardError());
        QVERIFY(isWhole(path()));
      }
      QVERIFY(!QFile::exists(draft()));
      folder_ = std::make_unique<QTemporaryDir>();
    }
    QVERIFY2(killedInTheMiddle > 2, qPrintable(QString::number(killedInTheMiddle)));
  }
};

QTEST_GUILESS_MAIN(TestKilledMaking)
#include "test_killed_making.moc"
