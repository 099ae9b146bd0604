// The settings store, on a real file that other programs write too.
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <thread>

#include "platform/runtime/error.h"
#include "platform/settings/settings.h"

using namespace qk;

class TestSettings : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void missingValuesGiveTheDefault();
  void valuesReturnAsTheyWent_data();
  void valuesReturnAsTheyWent();
  void theFileIsPlain();
  void numbersAndFlags_data();
  void numbersAndFlags();
  void strangeKeysStayApart();
  void foreignLinesStay();
  void aForeignChangeIsSeen();
  void lineEndsStay();
  void theFirstOfTwoCounts();
  void windowsLineEndsAndByteOrderMark();
  void everyWriteMovesTheTimeStampOn();
  void theSameTimeStampHidesNoOwnWrite();
  void noWriteIsLost();
  void anUnchangedValueWritesNothing();
  void aWriteThatFails();
  void foldersAreMade();
  void defaultPath();

 private:
  QByteArray content() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
  }
  void put(const QByteArray& bytes) const {
    QFile file(path_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
};

void TestSettings::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  path_ = folder_->path() + "/einstellungen";
}

void TestSettings::missingValuesGiveTheDefault() {
  const Settings settings(path_);
  QCOMPARE(settings.value("App", "Teil", "Schlüssel"), "");
  QCOMPARE(settings.value("App", "Teil", "Schlüssel", "sonst"), "sonst");
  QCOMPARE(settings.number("App", "Teil", "Schlüssel", 7), 7);
  QVERIFY(settings.flag("App", "Teil", "Schlüssel", true));
  QVERIFY(!QFile::exists(path_));
}

void TestSettings::valuesReturnAsTheyWent_data() {
  QTest::addColumn<QString>("value");
  for (const char* value :
       {"", " ", "  Blanks  ", "C:\\neu\\rest\\", "a=b=c", "[x]", "Häring €", "%", "%:", "%25", "%:%0A",
        "eins\r\nzwei", "\n", "\r", "100%\n%0A", "\t", "; kein Kommentar"})
    QTest::newRow(qPrintable(QString("<%1>").arg(QString(value).toHtmlEscaped()))) << QString(value);
}
void TestSettings::valuesReturnAsTheyWent() {
  QFETCH(QString, value);
  Settings settings(path_);
  settings.setValue("App", "Teil", "Vorher", "v");
  settings.setValue("App", "Teil", "Schlüssel", value);
  settings.setValue("App", "Teil", "Nachher", "n");
  for (const Settings* reader : {&settings, new Settings(path_)}) {
    QCOMPARE(reader->value("App", "Teil", "Schlüssel", "fehlt"), value);
    QCOMPARE(reader->value("App", "Teil", "Vorher"), "v");
    QCOMPARE(reader->value("App", "Teil", "Nachher"), "n");
    if (reader != &settings) delete reader;
  }
}

void TestSettings::theFileIsPlain() {
  Settings settings(path_);
  settings.setValue("App", "Häring", "Pfad", "C:\\neu\\");
  settings.setValue("App-40", "Daten", "Export", "/tmp/x/");
  settings.setValue("App", "Häring", "Aktiv", "101");
  QCOMPARE(content(),
           QByteArray("[App/Häring]\nPfad=C:\\neu\\\nAktiv=101\n\n[App-40/Daten]\nExport=/tmp/x/\n"));
}

void TestSettings::numbersAndFlags_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("number");
  QTest::addColumn<bool>("flag");
  QTest::newRow("one") << "1" << 1 << true;
  QTest::newRow("nought") << "0" << 0 << false;
  QTest::newRow("minus one") << "-1" << -1 << true;
  QTest::newRow("whole part") << "3.9" << 3 << true;
  QTest::newRow("whole part below") << "-3.9" << -3 << true;
  QTest::newRow("tenths are no nought") << "0.5" << 0 << true;
  QTest::newRow("comma stops") << "12,7" << 12 << true;
  QTest::newRow("unit behind") << " 743 px" << 743 << true;
  QTest::newRow("colour") << "16777215" << 16777215 << true;
}
void TestSettings::numbersAndFlags() {
  QFETCH(QString, text);
  QFETCH(int, number);
  QFETCH(bool, flag);
  Settings settings(path_);
  settings.setValue("App", "Teil", "n", text);
  QCOMPARE(settings.number("App", "Teil", "n", 99), number);
  QCOMPARE(settings.flag("App", "Teil", "n", !flag), flag);
  for (const char* unreadable : {"", "abc", "True", "99999999999999999999"}) {
    settings.setValue("App", "Teil", "u", unreadable);
    QCOMPARE(settings.number("App", "Teil", "u", 99), 99);
  }
}

void TestSettings::strangeKeysStayApart() {
  Settings settings(path_);
  const QStringList keys{"a", "A", "a=b", "[a", "a\nb", "a%3Db", " a", "frmX-grd 1"};
  for (const QString& key : keys) settings.setValue("App", "Teil", key, "Wert von " + key);
  settings.setValue("App", "Teil]", "a", "andere");
  settings.setValue("App/Teil", "x", "a", "dritte");
  settings.setValue("App", "Teil", "[b", "Wert]");
  settings.setValue("App", "Teil", "c", "danach");
  const Settings again(path_);
  QCOMPARE(again.value("App", "Teil", "[b"), "Wert]");
  QCOMPARE(again.value("App", "Teil", "c"), "danach");
  for (const QString& key : keys) QCOMPARE(again.value("App", "Teil", key), "Wert von " + key);
  QCOMPARE(again.value("App", "Teil]", "a"), "andere");
  QCOMPARE(again.value("App/Teil", "x", "a"), "dritte");
}

void TestSettings::foreignLinesStay() {
  const QByteArray foreign =
      "; Bemerkung\nohne Abschnitt=1\n\n[Fremd]\nx = y\n\xff\xfe kaputt\n\n[App/Teil]\n# auch\nalt=1\n";
  put(foreign);
  Settings settings(path_);
  settings.setValue("App", "Teil", "neu", "2");
  QCOMPARE(content(), foreign + "neu=2\n");
  settings.setValue("App", "Teil", "alt", "3");
  settings.setValue("Andere", "Teil", "k", "v");
  QCOMPARE(content(), QByteArray(foreign).replace("alt=1", "alt=3") + "neu=2\n\n[Andere/Teil]\nk=v\n");
  QCOMPARE(settings.value("Fremd", "", "x"), "");
}

void TestSettings::aForeignChangeIsSeen() {
  Settings settings(path_);
  settings.setValue("App", "Teil", "k", "eins");
  QCOMPARE(settings.value("App", "Teil", "k"), "eins");
  put("[App/Teil]\nk=zwei\n");
  QFile file(path_);
  QVERIFY(file.open(QIODevice::ReadWrite));
  QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
  file.close();
  QCOMPARE(settings.value("App", "Teil", "k"), "zwei");
  QVERIFY(QFile::remove(path_));
  QCOMPARE(settings.value("App", "Teil", "k", "weg"), "weg");
}

void TestSettings::lineEndsStay() {
  Settings settings(path_);
  put("[App/Teil]\r\na=1\r\n\r\n[Fremd/Teil]\r\nx=y\r\n");
  settings.setValue("App", "Teil", "a", "2");
  settings.setValue("App", "Teil", "b", "3");
  settings.setValue("App", "Neu", "c", "4");
  QCOMPARE(content(), QByteArray("[App/Teil]\r\na=2\r\nb=3\r\n\r\n[Fremd/Teil]\r\nx=y\r\n\r\n"
                                 "[App/Neu]\r\nc=4\r\n"));
  put("[App/Teil]\r\na=1");
  settings.setValue("App", "Teil", "b", "3");
  QCOMPARE(content(), QByteArray("[App/Teil]\r\na=1\r\nb=3\r\n"));
  put("[App/Teil]\na=1");
  settings.setValue("App", "Teil", "b", "3");
  QCOMPARE(content(), QByteArray("[App/Teil]\na=1\nb=3\n"));
}

void TestSettings::theFirstOfTwoCounts() {
  put("[App/Teil]\nk=eins\nk=zwei\n[App/Teil]\nk=drei\nm=vier\n");
  Settings settings(path_);
  QCOMPARE(settings.value("App", "Teil", "k"), "eins");
  QCOMPARE(settings.value("App", "Teil", "m"), "vier");
  settings.setValue("App", "Teil", "k", "neu");
  QCOMPARE(settings.value("App", "Teil", "k"), "neu");
}

void TestSettings::windowsLineEndsAndByteOrderMark() {
  put("\xEF\xBB\xBF[App/Teil]\r\nk=eins\r\nm=zwei\r\n");
  Settings settings(path_);
  QCOMPARE(settings.value("App", "Teil", "k"), "eins");
  settings.setValue("App", "Teil", "k", "drei");
  QCOMPARE(settings.value("App", "Teil", "k"), "drei");
  QCOMPARE(settings.value("App", "Teil", "m"), "zwei");
}

void TestSettings::everyWriteMovesTheTimeStampOn() {
  Settings writer(path_);
  const Settings reader(path_);
  writer.setValue("App", "Teil", "k", "0");
  // The last write seems to lie ahead of the clock, as two writes within one tick do.
  QFile file(path_);
  QVERIFY(file.open(QIODevice::ReadWrite));
  QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(3600), QFileDevice::FileModificationTime));
  file.close();
  for (int i = 1; i < 5; ++i) {
    const QDateTime before = QFileInfo(path_).lastModified();
    writer.setValue("App", "Teil", "k", QString::number(i));
    QVERIFY(QFileInfo(path_).lastModified() > before);
    QCOMPARE(reader.number("App", "Teil", "k", -1), i);
  }
}

void TestSettings::theSameTimeStampHidesNoOwnWrite() {
  Settings settings(path_);
  settings.setValue("App", "Teil", "k", "an");
  QCOMPARE(settings.value("App", "Teil", "k"), "an");
  const QDateTime stamp = QFileInfo(path_).lastModified();
  settings.setValue("App", "Teil", "k", "aus");
  QFile file(path_);
  QVERIFY(file.open(QIODevice::ReadWrite));
  QVERIFY(file.setFileTime(stamp, QFileDevice::FileModificationTime));
  file.close();
  QCOMPARE(settings.value("App", "Teil", "k"), "aus");
}

void TestSettings::noWriteIsLost() {
  // Each thread has a store of its own, as each process has; the lock file is what they share.
  constexpr int kWriters = 4;
  constexpr int kWrites = 25;
  std::vector<std::thread> writers;
  for (int w = 0; w < kWriters; ++w)
    writers.emplace_back([this, w] {
      Settings settings(path_);
      for (int i = 0; i < kWrites; ++i)
        settings.setValue("App", QString::number(w), QString::number(i), QString("%1-%2").arg(w).arg(i));
    });
  for (std::thread& writer : writers) writer.join();
  const Settings settings(path_);
  for (int w = 0; w < kWriters; ++w)
    for (int i = 0; i < kWrites; ++i)
      QCOMPARE(settings.value("App", QString::number(w), QString::number(i)), QString("%1-%2").arg(w).arg(i));
}

void TestSettings::anUnchangedValueWritesNothing() {
  Settings settings(path_);
  settings.setValue("App", "Teil", "k", "v");
  const QDateTime stamp = QFileInfo(path_).lastModified();
  settings.setValue("App", "Teil", "k", "v");
  QCOMPARE(QFileInfo(path_).lastModified(), stamp);
}

void TestSettings::aWriteThatFails() {
  QFile block(folder_->path() + "/datei");
  QVERIFY(block.open(QIODevice::WriteOnly));
  block.close();
  Settings settings(folder_->path() + "/datei/einstellungen");
  try {
    settings.setValue("App", "Teil", "k", "v");
    QFAIL("written");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 75);
  }
  QCOMPARE(settings.value("App", "Teil", "k", "sonst"), "sonst");
}

void TestSettings::foldersAreMade() {
  Settings settings(folder_->path() + "/a/b/einstellungen");
  settings.setValue("App", "Teil", "k", "v");
  QCOMPARE(settings.value("App", "Teil", "k"), "v");
}

void TestSettings::defaultPath() {
  const QByteArray old = qgetenv("QK_EINSTELLUNGEN");
  qputenv("QK_EINSTELLUNGEN", "/tmp/anderswo");
  QCOMPARE(Settings::defaultFilePath(), "/tmp/anderswo");
  qunsetenv("QK_EINSTELLUNGEN");
  QVERIFY(Settings::defaultFilePath().endsWith("/qk/einstellungen.ini"));
  if (!old.isNull()) qputenv("QK_EINSTELLUNGEN", old);
}

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
