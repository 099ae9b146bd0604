// Commands by hand: what is written, what is shown of it, on the real window.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QTimerEvent>
#include <memory>

#include "app/ground/global_variablen.h"
#include "platform/look/look.h"
#include "targetconfig/frmHaeringOutput.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmHaeringOutput : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init();
  void cleanup();

  void opensOnTheLineAndTheCommands();
  void onlyLinesInUseCanBeChosen();
  void aMissingCommandFileIsSaid();
  void anUnreadableCommandFileIsReported();
  void writesCommandThenFlag();
  void overwritesWhatWaits();
  void theTextIsSentAsItStands_data();
  void theTextIsSentAsItStands();
  void whatIsTypedIsNotCompleted();
  void enterSendsNothing();
  void anEmptyTextIsSentToo();
  void noLineSendsNothing();
  void allAndNone();
  void aFailedLineCanBeSkipped();
  void aFlagIsNotWrittenWithoutItsCommand();
  void showsWhatStandsThere();
  void aCommandIsShownAsItStands();
  void showsWhetherTheStationHasTakenIt();
  void showsWhatOthersSend();
  void aFolderThatIsGoneHasTakenNothing();
  void lookingIsCheap();
  void manners();

 private:
  void open(qint16 nLinie = 1) {
    dialog = std::make_unique<frmHaeringOutput>(place->workplace(), global);
    dialog->setLinie(nLinie);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    the<QTimer>(*dialog, "tmrStand").setInterval(24 * 3600 * 1000);  // the test is the clock
  }
  void lookAgain() {
    auto& timer = the<QTimer>(*dialog, "tmrStand");
    QTimerEvent event(timer.timerId());
    QCoreApplication::sendEvent(&timer, &event);
  }
  QString file(const QString& name) { return place->path("esa/" + name); }
  QByteArray read(const QString& name) { return Files().read(file(name)); }
  QListWidget& list() { return the<QListWidget>(*dialog, "List1"); }
  QString shown(int row) {
    const auto& table = the<QTableWidget>(*dialog, "tblStand");
    QStringList cells;
    for (int column = 0; column < table.columnCount(); ++column) cells << table.item(row, column)->text();
    return cells.join("|");
  }

  std::unique_ptr<TestWorkplace> place;
  GlobalVariablen global;
  std::unique_ptr<frmHaeringOutput> dialog;
};

void TestFrmHaeringOutput::init() {
  place = std::make_unique<TestWorkplace>();
  place->files.makeFolder(place->path("esa"));
  place->files.makeFolder(place->path("system"));
  global.SystemVerzeichnisUser = place->path("system/");
  place->files.write(place->path("system/Intarso-Befehle.txt"),
                     "76 'Umschalten auf Preismodus\r\n\r\n  53 \r\nH014 \xC4rmel\r\n");
  place->settings.setValue("Tarvex", "Häring", "Netzverzeichnis", place->path("esa"));
  place->settings.setValue("Tarvex", "Häring", "LinienAktiv", "1011");
  place->files.clearJournal();
}

void TestFrmHaeringOutput::cleanup() {
  dialog.reset();
  place.reset();
}

void TestFrmHaeringOutput::opensOnTheLineAndTheCommands() {
  open(3);
  QCOMPARE(dialog->windowTitle(), "Intarso Output");
  for (const auto& [name, caption] : {std::pair{"cmdSenden", "Senden"},
                                      {"cmdAlleWaehlen", "&Alle wählen"},
                                      {"cmdKeineWaehlen", "&Keine wählen"},
                                      {"cmdClose", "Schließen"}})
    QCOMPARE(the<QPushButton>(*dialog, name).text(), caption);
  const auto& commands = the<QComboBox>(*dialog, "cmbOutput");
  QStringList entries;
  for (int i = 0; i < commands.count(); ++i) entries << commands.itemText(i);
  QCOMPARE(entries, (QStringList{"76 'Umschalten auf Preismodus", "", "  53 ", "H014 Ärmel"}));
  QCOMPARE(commands.currentText(), "");
  QCOMPARE(list().selectedItems().size(), 1);
  QCOMPARE(list().selectedItems().front()->text(), "Linie 3");
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "1 von 3 gewählt");
  // Once more, and nothing stands there twice.
  dialog->hide();
  dialog->show();
  QCOMPARE(commands.count(), 4);
  QCOMPARE(list().count(), 3);
}

void TestFrmHaeringOutput::onlyLinesInUseCanBeChosen() {
  open(2);
  QStringList lines;
  for (int row = 0; row < list().count(); ++row) lines << list().item(row)->text();
  QCOMPARE(lines, (QStringList{"Linie 1", "Linie 3", "Linie 4"}));
  QVERIFY(list().selectedItems().isEmpty());
}

void TestFrmHaeringOutput::aMissingCommandFileIsSaid() {
  const QString path = place->path("system/Intarso-Befehle.txt");
  place->files.remove(path);
  place->dialogs.expect("Intarso-Steuerdatei nicht vorhanden:\r\n" + path)
      .titled("Fehler")
      .with(BoxButtons::Ok)
      .showing(BoxIcon::Exclamation);
  open();
  QCOMPARE(the<QComboBox>(*dialog, "cmbOutput").count(), 0);
  type(*dialog, "cmbOutput", "53");
  click(*dialog, "cmdSenden");
  QCOMPARE(read("HServ1.nrt"), QByteArray("\"53\"\r\n"));
}

void TestFrmHaeringOutput::anUnreadableCommandFileIsReported() {
  place->files.fail(FileStep::Read, "Intarso-Befehle.txt", 70, 1);
  place->dialogs
      .expect("Fehler: 70 - " + errorDescription(70) + "\nFehler bei FillCmbOutput_err!", BoxAnswer::Retry)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  open();
  QCOMPARE(the<QComboBox>(*dialog, "cmbOutput").count(), 4);
}

void TestFrmHaeringOutput::writesCommandThenFlag() {
  open(3);
  tick(*dialog, "List1", "Linie 1");
  the<QComboBox>(*dialog, "cmbOutput").setCurrentIndex(0);
  place->files.clearJournal();
  click(*dialog, "cmdSenden");
  QCOMPARE(place->files.journal(),
           (QStringList{"write HServ1.nrt", "write HServ1.ctl", "write HServ3.nrt", "write HServ3.ctl"}));
  QCOMPARE(read("HServ3.nrt"), QByteArray("\"76 'Umschalten auf Preismodus\"\r\n"));
  QCOMPARE(read("HServ3.ctl"), QByteArray("\"\"\r\n"));
  QVERIFY(dialog->isVisible());
}

void TestFrmHaeringOutput::overwritesWhatWaits() {
  place->files.write(file("HServ1.nrt"), "\"75107 ; alt\"\r\n");
  place->files.write(file("HServ1.ctl"), "\"\"\r\n");
  open(1);
  type(*dialog, "cmbOutput", "53");
  click(*dialog, "cmdSenden");
  QCOMPARE(read("HServ1.nrt"), QByteArray("\"53\"\r\n"));
}

void TestFrmHaeringOutput::theTextIsSentAsItStands_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QByteArray>("bytes");
  QTest::newRow("empty") << "" << QByteArray("\"\"\r\n");
  QTest::newRow("blanks") << "  53  " << QByteArray("\"  53  \"\r\n");
  QTest::newRow("quotes") << "a\"b" << QByteArray("\"a\"b\"\r\n");
  QTest::newRow("umlauts") << "Ärmel €" << QByteArray("\"\xC4rmel \x80\"\r\n");
  QTest::newRow("beyond the code page") << "字" << QByteArray("\"?\"\r\n");
}

void TestFrmHaeringOutput::theTextIsSentAsItStands() {
  QFETCH(QString, text);
  QFETCH(QByteArray, bytes);
  open(1);
  type(*dialog, "cmbOutput", text);
  press(*dialog, "cmdSenden", Qt::Key_Space);
  QCOMPARE(read("HServ1.nrt"), bytes);
  QCOMPARE(read("HServ1.ctl"), QByteArray("\"\"\r\n"));
}

void TestFrmHaeringOutput::whatIsTypedIsNotCompleted() {
  open(1);
  type(*dialog, "cmbOutput", "h0");
  click(*dialog, "cmdSenden");
  QCOMPARE(read("HServ1.nrt"), QByteArray("\"h0\"\r\n"));
  QCOMPARE(the<QComboBox>(*dialog, "cmbOutput").count(), 4);
}

void TestFrmHaeringOutput::enterSendsNothing() {
  open(1);
  type(*dialog, "cmbOutput", "53");
  QTest::keyClick(the<QComboBox>(*dialog, "cmbOutput").lineEdit(), Qt::Key_Return);
  press(*dialog, "List1", Qt::Key_Enter);
  QVERIFY(!place->files.exists(file("HServ1.nrt")) && !place->files.exists(file("HServ1.ctl")));
  QVERIFY(!the<QPushButton>(*dialog, "cmdSenden").isDefault());
  QVERIFY(dialog->isVisible());
}

void TestFrmHaeringOutput::anEmptyTextIsSentToo() {
  open(1);
  click(*dialog, "cmdSenden");
  QCOMPARE(read("HServ1.nrt"), QByteArray("\"\"\r\n"));
  QCOMPARE(read("HServ1.ctl"), QByteArray("\"\"\r\n"));
}

void TestFrmHaeringOutput::noLineSendsNothing() {
  open(2);
  type(*dialog, "cmbOutput", "53");
  place->files.clearJournal();
  click(*dialog, "cmdSenden");
  QCOMPARE(place->files.journal(), QStringList());
  QVERIFY(dialog->isVisible());
}

void TestFrmHaeringOutput::allAndNone() {
  open(1);
  click(*dialog, "cmdAlleWaehlen");
  QCOMPARE(list().selectedItems().size(), 3);
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "3 von 3 gewählt");
  click(*dialog, "cmdKeineWaehlen");
  QCOMPARE(list().selectedItems().size(), 0);
  click(*dialog, "cmdClose");
  QVERIFY(!dialog->isVisible());
}

void TestFrmHaeringOutput::aFailedLineCanBeSkipped() {
  open();
  click(*dialog, "cmdAlleWaehlen");
  type(*dialog, "cmbOutput", "53");
  place->files.fail(FileStep::Write, "HServ3.nrt", 76);
  place->dialogs
      .expect("Fehler: 76 - " + errorDescription(76) + "\nFehler bei cmdSenden_Click_err!", BoxAnswer::Ignore)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  click(*dialog, "cmdSenden");
  QCOMPARE(read("HServ4.nrt"), QByteArray("\"53\"\r\n"));
  QCOMPARE(shown(0), "1|53|10:00:00|noch nicht übernommen");
  QCOMPARE(shown(1), "3|53|10:00:00|nicht gesendet");
  lookAgain();
  QCOMPARE(shown(1), "3|53|10:00:00|nicht gesendet");
  place->dialogs.expect("Fehler: 76 - " + errorDescription(76) + "\nFehler bei cmdSenden_Click_err!",
                        BoxAnswer::Abort);
  place->files.clearJournal();
  click(*dialog, "cmdSenden");
  QCOMPARE(place->files.journal().count("write HServ4.nrt"), 0);
}

void TestFrmHaeringOutput::aFlagIsNotWrittenWithoutItsCommand() {
  open(1);
  type(*dialog, "cmbOutput", "99");
  place->files.fail(FileStep::Write, "HServ1.nrt", 70);
  place->dialogs.expect("Fehler: 70 - " + errorDescription(70) + "\nFehler bei cmdSenden_Click_err!",
                        BoxAnswer::Ignore);
  click(*dialog, "cmdSenden");
  QVERIFY(!place->files.exists(file("HServ1.ctl")));
}

void TestFrmHaeringOutput::showsWhatStandsThere() {
  place->files.write(file("HServ1.nrt"), "\"75107 ; \xC4rmel\"\r\n");
  place->files.write(file("HServ1.ctl"), "\"\"\r\n");
  place->files.write(file("HServ3.nrt"), "\"53\"\r\n");
  open();
  QCOMPARE(shown(0), "1|75107 ; Ärmel||noch nicht übernommen");
  QCOMPARE(shown(1), "3|53||übernommen");
  QCOMPARE(shown(2), "4|||–");
}

void TestFrmHaeringOutput::aCommandIsShownAsItStands() {
  place->files.write(file("HServ1.nrt"), "\"75107 ; Kurz & Lang\"\r\n");
  open();
  const QString tip = the<QTableWidget>(*dialog, "tblStand").item(0, 1)->toolTip();
  QVERIFY(Qt::mightBeRichText(tip));
  QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), "75107 ; Kurz & Lang");
  QCOMPARE(the<QTableWidget>(*dialog, "tblStand").item(1, 1)->toolTip(), QString());
}

void TestFrmHaeringOutput::showsWhetherTheStationHasTakenIt() {
  open(1);
  type(*dialog, "cmbOutput", "53");
  click(*dialog, "cmdSenden");
  place->clock.advance(60000);
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|noch nicht übernommen");
  place->files.remove(file("HServ1.ctl"));
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|übernommen");
}

void TestFrmHaeringOutput::showsWhatOthersSend() {
  open(1);
  place->clock.advance(60000);
  place->files.write(file("HServ4.nrt"), "\"13\"\r\n");
  place->files.write(file("HServ4.ctl"), "\"\"\r\n");
  lookAgain();
  QCOMPARE(shown(2), "4|13|10:01:00|noch nicht übernommen");
}

void TestFrmHaeringOutput::aFolderThatIsGoneHasTakenNothing() {
  open(1);
  type(*dialog, "cmbOutput", "53");
  click(*dialog, "cmdSenden");
  place->files.unplug();
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|Ordner nicht erreichbar");
  place->files.heal();
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|noch nicht übernommen");
  place->files.unplug();
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|Ordner nicht erreichbar");
  place->files.heal();
  place->files.remove(file("HServ1.ctl"));
  lookAgain();
  QCOMPARE(shown(0), "1|53|10:00:00|übernommen");
}

void TestFrmHaeringOutput::lookingIsCheap() {
  place->settings.setValue("Tarvex", "Häring", "LinienAktiv", QString(50, '1'));
  open(1);
  place->files.clearLooks();
  place->files.clearJournal();
  lookAgain();
  QCOMPARE(place->files.looks(), 50);
  QCOMPARE(place->files.journal(), QStringList());
}

void TestFrmHaeringOutput::manners() {
  open(1);
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmHaeringOutput)
#include "test_frm_haering_output.moc"
