// What the door to disks tells of the real ones, against what the system says another way.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

#include "platform/runtime/storage.h"

using namespace qk;

class TestStorageDoor : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void roomAsTheSystemCountsIt() {
    const QTemporaryDir folder;
    const std::optional<DiskRoom> room = Storage().roomAt(folder.path());
    QVERIFY(room);
    const auto system = std::filesystem::space(folder.path().toStdU16String());
    QCOMPARE(room->total, qint64(system.capacity));
    // Others write meanwhile.
    QVERIFY(qAbs(room->free - qint64(system.available)) <= room->total / 20);
    QVERIFY(folder.path().startsWith(room->root));
  }

  void whatIsNotThereHasNoRoom() {
    const QTemporaryDir folder;
    Storage storage;
    for (const QString& path : {folder.filePath("fehlt"), QString(), QString("C:\\Programme\\ESA2002\\")}) {
      QVERIFY(!storage.isThere(path));
      QVERIFY(!storage.roomAt(path));
      QVERIFY(!storage.timeOfListing(path));
      QCOMPARE(storage.sizeOf(path), qint64(0));
    }
  }

  void aFileIsNoFolder() {
    const QTemporaryDir folder;
    QFile file(folder.filePath("datei"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("12345");
    file.close();
    Storage storage;
    QVERIFY(!storage.isThere(file.fileName()));
    QVERIFY(!storage.timeOfListing(file.fileName()));
    QCOMPARE(storage.sizeOf(file.fileName()), qint64(5));
    QVERIFY(storage.isThere(folder.path()));
    QVERIFY(storage.timeOfListing(folder.path() + "/"));
  }
};

QTEST_GUILESS_MAIN(TestStorageDoor)
#include "test_storage.moc"
