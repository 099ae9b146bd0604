// Each of nine copies comes back as it was at its moment, to a file and to the engine of the run; what isn't
// what its evidence tells doesn't.
#include <QTemporaryDir>
#include <QtTest>

#include "backup/copy_making.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/files.h"
#include "tests/backup/copy_figures.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/test_store.h"
#include "tests/tools/tool_answer.h"

using namespace qk;
using namespace qk::test;
using dao::Database;

class TestBringBack : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    store_ = std::make_unique<DemoStore>();
  }

  void nineCopiesComeBackAsTheyWere();
  void aDeletedStakeLeavesNobodyItsPayments();
  void aCopyByCommandIsOneOfTheProgram();
  void refusesWhatTheEvidenceDoesNotTell_data();
  void refusesWhatTheEvidenceDoesNotTell();
  void withoutEvidenceOnlyWhenTold();
  void aDamagedFileNeverComesBack();
  void overwritesNothing();
  void explainsAWrongCall();

 private:
  QString path(const QString& name) const { return folder_->filePath(name); }
  QString made() {
    const qk::test::ToolAnswer answer = qk::test::callTool({"sichern", store_->path(), path("kopien")});
    return answer.out.section('\n', 0, 0).section(": ", 1);
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<DemoStore> store_;
};

void TestBringBack::nineCopiesComeBackAsTheyWere() {
  std::vector<std::vector<TableEvidence>> moments;
  std::vector<QString> copies;
  Files files;
  dao::SnapshotReader reader(store_->path(), [] { return false; });
  QDateTime moment(QDate(2026, 11, 22), QTime(9, 0));
  for (int i = 0; i < kKeptCopies; ++i, moment = moment.addSecs(600)) {
    for (int shot = 0; shot <= 3 * i; ++shot) store_->addShot("7", 1 + i % 4, shot);
    moments.push_back(figuresOfAll(store_->database()));
    copies.push_back(makeCopy(reader, {store_->path(), path("kopien"), moment}, files).copy->path);
  }
  for (size_t i = 0; i < copies.size(); ++i) {
    const QString file = path(QString("datei%1.qkk").arg(i));
    const qk::test::ToolAnswer answer = qk::test::callTool({"zurueck", copies[i], file});
    QCOMPARE(answer.errors, QString());
    QVERIFY(figuresOfAll(*Database::open(file)) == moments[i]);
    if (!storesOnServer()) continue;
    const QString server = path(QString("server%1.qkk").arg(i));
    prepareStore(server);
    QCOMPARE(qk::test::callTool({"zurueck", copies[i], server}).errors, QString());
    QVERIFY(figuresOfAll(*Database::open(server)) == moments[i]);
  }
  // They are as they were: bringing back only reads.
  for (const ProvenCopy& copy : provenCopies(files, path("kopien"), sourceOf(store_->path())))
    QVERIFY(isUnchanged(copy));
}

void TestBringBack::aDeletedStakeLeavesNobodyItsPayments() {
  const auto addStake = [](Database& store) {
    const auto stakes = store.openRecordset("Kasse_Verwaltung");
    stakes->addNew();
    const int number = stakes->value("ID").toInt();
    stakes->setValue("Bezeichnung", "Neu");
    stakes->update();
    return number;
  };
  const int stake = addStake(store_->database());
  store_->add("Kasse_Eingang", {{"KasseID", stake}, {"Startnummer", "1"}});
  store_->database().execute(QString("DELETE * FROM Kasse_Verwaltung WHERE ID = %1").arg(stake));
  const QString copy = made(), server = path("server.qkk");
  QStringList targets = {path("datei.qkk")};
  if (storesOnServer()) {
    prepareStore(server);
    targets << server;
  }
  for (const QString& target : targets) {
    QCOMPARE(qk::test::callTool({"zurueck", copy, target}).errors, QString());
    const auto store = Database::open(target);
    const auto left = store->openRecordset(
        QString("Select * from Kasse_Eingang where KasseID = %1").arg(stake), dao::RecordsetType::Snapshot);
    QVERIFY(!left->eof());
    QVERIFY(addStake(*store) > stake);
  }
}

void TestBringBack::aCopyByCommandIsOneOfTheProgram() {
  const qk::test::ToolAnswer first = qk::test::callTool({"sichern", store_->path(), path("kopien")});
  QCOMPARE(first.errors, QString());
  QVERIFY2(first.out.startsWith("Gesichert und geprüft: " + path("kopien/Demo ")), qPrintable(first.out));
  QVERIFY(qk::test::callTool({"sichern", store_->path(), path("kopien")})
              .out.startsWith("Unverändert seit der letzten Sicherung: "));
  Files files;
  const auto copies = provenCopies(files, path("kopien"), sourceOf(store_->path()));
  QCOMPARE(copies.size(), 1u);
  const qk::test::ToolAnswer back = qk::test::callTool({"zurueck", copies[0].path, path("neu.qkk")});
  QVERIFY2(back.out.startsWith("Die Kopie ist unversehrt: Stand " +
                               copies[0].evidence.moment.toString("dd.MM.yyyy HH:mm:ss") + " von " +
                               sourceOf(store_->path()) + ", "),
           qPrintable(back.out));
  QVERIFY(back.out.endsWith("Zurückgeholt nach " + path("neu.qkk") + ". " + copies[0].path +
                            " ist unverändert.\n"));
}

void TestBringBack::refusesWhatTheEvidenceDoesNotTell_data() {
  QTest::addColumn<QString>("what");
  QTest::addColumn<QString>("told");
  QTest::newRow("missing") << "missing"
                           << "Neben der Kopie liegt kein Beleg";
  QTest::newRow("torn") << "torn"
                        << "ist beschädigt oder verändert.";
  QTest::newRow("worked in") << "worked in"
                             << "Die Kopie ist nicht mehr, was der Beleg sagt";
  QTest::newRow("flipped") << "flipped"
                           << "Die Kopie ist nicht mehr, was der Beleg sagt";
}

void TestBringBack::refusesWhatTheEvidenceDoesNotTell() {
  QFETCH(QString, what);
  QFETCH(QString, told);
  const QString copy = made(), evidence = evidencePathOf(copy);
  if (what == "missing") QVERIFY(QFile::remove(evidence));
  if (what == "torn") QVERIFY(QFile::resize(evidence, QFileInfo(evidence).size() / 2));
  if (what == "worked in") Database::open(copy)->execute("UPDATE Wettkampf SET Ort = 'Anderswo'");
  if (what == "flipped") flip(copy, QFileInfo(copy).size() / 2);
  const qk::test::ToolAnswer answer = qk::test::callTool({"zurueck", copy, path("neu.qkk")});
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.contains(told), qPrintable(answer.errors));
  QVERIFY(answer.errors.contains("--ungeprueft"));
  QVERIFY(!QFile::exists(path("neu.qkk")));
}

void TestBringBack::withoutEvidenceOnlyWhenTold() {
  const auto wanted = figuresOfAll(store_->database());
  const QString copy = made();
  QVERIFY(QFile::remove(evidencePathOf(copy)));
  const qk::test::ToolAnswer answer = qk::test::callTool({"zurueck", copy, path("neu.qkk"), "--ungeprueft"});
  QCOMPARE(answer.errors, QString());
  QVERIFY(answer.out.startsWith("Die Kopie wird ohne Beleg zurückgeholt; die Datei ist in sich stimmig.\n"));
  QVERIFY(figuresOfAll(*Database::open(path("neu.qkk"))) == wanted);
}

void TestBringBack::aDamagedFileNeverComesBack() {
  const QString copy = made();
  for (qint64 page = 1; page < QFileInfo(copy).size() / 4096; ++page) flip(copy, page * 4096);
  const qk::test::ToolAnswer answer = qk::test::callTool({"zurueck", copy, path("neu.qkk"), "--ungeprueft"});
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.contains("Die Kopie ist beschädigt: "), qPrintable(answer.errors));
  QVERIFY(!QFile::exists(path("neu.qkk")));
}

void TestBringBack::overwritesNothing() {
  const QString copy = made();
  for (const QString& there : {store_->path(), copy}) {
    const auto before = figuresOfAll(*Database::open(there, true));
    const qk::test::ToolAnswer answer = qk::test::callTool({"zurueck", copy, there});
    QCOMPARE(answer.status, 1);
    QVERIFY2(answer.errors.contains("Das Ziel ist nicht leer, es bleibt unverändert."),
             qPrintable(answer.errors));
    QVERIFY(figuresOfAll(*Database::open(there, true)) == before);
  }
  Files files;
  QVERIFY(isUnchanged(provenCopies(files, path("kopien"), sourceOf(store_->path())).front()));
}

void TestBringBack::explainsAWrongCall() {
  QCOMPARE(qk::test::callTool({"sichern", store_->path()}).status, 2);
  QCOMPARE(qk::test::callTool({"zurueck", store_->path()}).status, 2);
  QCOMPARE(qk::test::callTool({"zurueck", "a", "b", "--anders"}).status, 2);
  QCOMPARE(qk::test::callTool({"zurueck", path("gibtsnicht.qkk"), path("neu.qkk")}).status, 1);
  QCOMPARE(qk::test::callTool({"sichern", path("gibtsnicht.qkk"), path("kopien")}).status, 1);
}

QTEST_GUILESS_MAIN(TestBringBack)
#include "test_bring_back.moc"
