// Every program says what it is when it is only asked that, on a console without a screen.
#include <QProcess>
#include <QTest>

class TestCalls : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyProgramAnswers_data() {
    QTest::addColumn<QString>("program");
    for (const QString name : {"qk-intarso", "qk-stammdaten", "qk-station", "qk-wettkampf", "qk-rundgang"})
      QTest::newRow(qPrintable(name)) << QString(QK_BIN_FOLDER) + "/" + name;
    QTest::newRow("qk-vorlage") << QString(QK_VORLAGE);
  }
  void everyProgramAnswers() {
    QFETCH(QString, program);
    const QString name = program.section('/', -1);
    for (const QString option : {"--hilfe", "--help", "-h"}) {
      const QString help = answer(program, {option});
      QVERIFY2(help.startsWith(name), qPrintable(option + ": " + help));
      QVERIFY2(help.contains("Aufruf:") && help.contains("--version"), qPrintable(help));
    }
    QCOMPARE(answer(program, {"--version"}), name + " " QK_VERSION "\n");
  }

 private:
  static QString answer(const QString& program, const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.remove("DISPLAY");
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
      return "ended with " + QString::number(process.exitCode()) + ": " + process.readAllStandardError();
    return QString::fromUtf8(process.readAllStandardOutput());
  }
};

QTEST_GUILESS_MAIN(TestCalls)
#include "test_calls.moc"
