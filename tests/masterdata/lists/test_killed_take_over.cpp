// A program that dies while it takes a list over: all of the list stands in the competition, or nothing.
#include <QProcess>
#include <QtTest>

#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "tests/masterdata/lists/list_place.h"
#include "tests/support/postgres_server.h"
#include "tests/support/test_store.h"

using namespace qk::lists;
using qk::test::ListPlace;

namespace {

constexpr int Kills = 50;
constexpr int New = 800;
constexpr int Changed = 2;

QString list() {
  QString text =
      "Startnummer;Nachname;Vorname;Geburtsdatum;Geschlecht;Verein;Mannschaft;Telefon\n"
      "101;;;;;;;0911/1\n104;;;;;Verein 1;;0911/4\n";
  for (int i = 0; i < New; ++i)
    text += QString("%1;Name %1;Vorname;1.2.1990;m;Verein %2;Mannschaft %2;\n").arg(5000 + i).arg(i % 30);
  return text;
}

}  // namespace

class TestKilledTakeOver : public QObject {
  Q_OBJECT

 private:
  /// Milliseconds from "bereit" to the end of a run that nobody disturbs.
  qint64 undisturbed(const QString& listPath) {
    ListPlace place;
    QProcess taker;
    start(taker, place, listPath);
    QElapsedTimer time;
    time.start();
    taker.waitForFinished(60'000);
    return taker.exitCode() == 0 ? time.elapsed() : -1;
  }

  void start(QProcess& taker, ListPlace& place, const QString& listPath) {
    taker.start(QK_LIST_TAKER, {place.path(), listPath});
    QVERIFY(taker.waitForReadyRead(60'000));
    QCOMPARE(taker.readLine(), QByteArray("bereit\n"));
  }

  /// The program itself, or, every other time on a server, the connection under it.
  void end(QProcess& taker, ListPlace& place, int run) {
    if (qk::test::storesOnServer() && run % 2 == 1) {
      qk::test::serverDatabase(place.path())
          .native(
              "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() "
              "AND backend_type = 'client backend' AND pid <> pg_backend_pid()");
    } else {
      taker.kill();
    }
    QVERIFY(taker.state() == QProcess::NotRunning || taker.waitForFinished(60'000));
  }

 private Q_SLOTS:
  void allOrNothing() {
    const QTemporaryDir folder;
    const QString listPath = folder.filePath("Liste.csv");
    QFile file(listPath);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(list().toUtf8()) > 0);
    file.close();
    const auto table = qk::test::listOf(list());
    const qint64 whole = undisturbed(listPath);
    QVERIFY(whole > 0);

    int none = 0, all = 0;
    QRandomGenerator random(4711);
    for (int run = 0; run < Kills; ++run) {
      ListPlace place;
      const auto before = readStoreState(place.store());
      QProcess taker;
      start(taker, place, listPath);
      taker.waitForFinished(static_cast<int>(random.bounded(whole + whole / 10 + 1)));
      end(taker, place, run);

      const auto after = readStoreState(place.store());
      const Judgement judgement =
          judge(ListKind::Shooters, table, recognised(ListKind::Shooters, table->rows.front()), after);
      if (sameRows(*before, *after)) {
        ++none;
        QVERIFY(!lastImport(place.store()));
        QCOMPARE(judgement.count(Verdict::New), New);
      } else {
        ++all;
        QCOMPARE(judgement.count(Verdict::Known), New + Changed);
        QCOMPARE(lastImport(place.store())->added, New);
        QVERIFY(undoLastImport(place.store()).done);
        QVERIFY(sameRows(*before, *readStoreState(place.store())));
      }
      // Whatever it was, the next one goes through.
      QVERIFY(takeOver(place.store(), place.judged(list()), "Liste", QDateTime::currentDateTime()).written);
    }
    qInfo("ended %d times: %d times nothing, %d times all", Kills, none, all);
    QVERIFY(none > 0);
  }
};

QTEST_GUILESS_MAIN(TestKilledTakeOver)
#include "test_killed_take_over.moc"
