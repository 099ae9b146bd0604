// The file that a sheet is printed from: made, gone, and what is said where it can't be made.
#include <QDir>
#include <QFile>
#include <QTest>

#include "evaluation/print_file.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/evaluation/shooting_day.h"

using namespace qk;
using namespace qk::test;

class TestPrintFile : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    day = std::make_unique<ShootingDay>();
    day->place.random.give({0.1, 0.2});
  }
  void cleanup() {
    const QStringList left = files();
    day.reset();
    QCOMPARE(left, QStringList());
  }

  void isACopyAndGoes();
  void canBeClosedBefore();
  void theTemplateIsMissing() {
    QFile::remove(day->printTemplate());
    failsWith(53);
  }
  /// Half of it: the start of a database, and nothing behind it.
  void theTemplateIsDamaged() {
    QVERIFY(QFile(day->printTemplate()).resize(600));
    failsAsOpeningDoes();
  }
  void theTemplateIsEmpty() {
    QVERIFY(QFile(day->printTemplate()).resize(0));
    failsAsOpeningDoes();
  }
  void theTemplateIsOfAnotherKind() {
    day->place.files.write(day->printTemplate(), "kein Datenbankinhalt, ein Text");
    failsAsOpeningDoes();
  }
  void theTemplateIsReadOnly();
  void theTemporaryFolderIsMissing() {
    QVERIFY(QDir(day->place.path("temp")).removeRecursively());
    failsWith(76);
  }
  void theDiskIsFull() {
    day->place.files.fail(FileStep::Copy, "*", 61);
    failsWith(61);
  }
  void noNameCanBeTaken() {
    day->place.files.fail(FileStep::Write, "ZVA*", 70);
    failsWith(70);
  }

 private:
  QStringList files() const { return QDir(day->place.path("temp")).entryList(QDir::Files); }
  /// The error names what it is about.
  void failsWith(int number, const QString& description) {
    try {
      const Druckdatei file(day->place.workplace(), day->printTemplate());
      QFAIL("made");
    } catch (const Error& error) {
      QCOMPARE(error.number(), number);
      QCOMPARE(error.description(), description + "\nVorlage: " + day->printTemplate() +
                                        "\nTemporärer Ordner: " + day->place.path("temp"));
    }
  }
  void failsWith(int number) { failsWith(number, errorDescription(number)); }
  void failsAsOpeningDoes() {
    try {
      dao::Database::open(day->printTemplate());
      QFAIL("opens");
    } catch (const Error& error) {
      failsWith(error.number(), error.description());
    }
  }

  std::unique_ptr<ShootingDay> day;
};

void TestPrintFile::isACopyAndGoes() {
  QString path;
  {
    Druckdatei file(day->place.workplace(), day->printTemplate());
    path = file.path();
    QVERIFY(path.startsWith(day->place.path("temp/ZVA")));
    file.db().execute("INSERT INTO Ergebnisse (Disziplin) VALUES ('LG')");
    QCOMPARE(read(file.db(), "Ergebnisse", {"Disziplin"}), QStringList{"LG"});
  }
  QVERIFY(!QFile::exists(path));
  QCOMPARE(read(*dao::Database::open(day->printTemplate()), "Ergebnisse", {"Disziplin"}), QStringList());
}

void TestPrintFile::canBeClosedBefore() {
  Druckdatei file(day->place.workplace(), day->printTemplate());
  file.db().execute("INSERT INTO Ergebnisse (Disziplin) VALUES ('LG')");
  file.close();
  QCOMPARE(read(*dao::Database::open(file.path(), true), "Ergebnisse", {"Disziplin"}), QStringList{"LG"});
  try {
    file.db();
    QFAIL("still open");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 91);
  }
}

/// As it may be where the program is installed.
void TestPrintFile::theTemplateIsReadOnly() {
  QVERIFY(QFile::setPermissions(day->printTemplate(), QFile::ReadOwner));
  Druckdatei file(day->place.workplace(), day->printTemplate());
  QVERIFY(QFile::permissions(file.path()) & QFile::WriteOwner);
  file.db().execute("INSERT INTO Ergebnisse (Disziplin) VALUES ('LG')");
}

QTEST_MAIN(TestPrintFile)
#include "test_print_file.moc"
