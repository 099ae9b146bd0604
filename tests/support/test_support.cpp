// The test aids are strict: each strictness is seen complaining here.
#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/dialog/message_boxes.h"
#include "platform/runtime/error.h"
#include "tests/support/drive.h"
#include "tests/support/error_of.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestSupport : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { complaints_.clear(); }
  void eachShapeIsStrict_data();
  void eachShapeIsStrict();
  void eachShapeAnswers_data();
  void eachShapeAnswers();
  void realBoxesSeeRichTextAndStrangeButtons();
  void realBoxesAnswerNestedOnes();
  void realBoxesDriveWindows();
  void warningsFail();
  void clockWaitsAndChance();
  void filesFailAsWished();
  void tornWrites();
  void fullDiskAndGoneNetwork();
  void workplaceIsItsOwn();
  void driving();
  void drivingIsStrict();

 private:
  Complain collect() {
    return [this](const QString& complaint) { complaints_ += complaint; };
  }
  /// Runs the body with the expectations and dialogs of the shape that the data row names.
  void inShape(const std::function<void(Expectations&, Dialogs&)>& body) {
    QFETCH(bool, real);
    if (real) {
      RealBoxes boxes(collect());
      const TestClock clock;
      MessageBoxes dialogs(clock);
      body(boxes, dialogs);
    } else {
      ScriptedDialogs boxes(collect());
      body(boxes, boxes);
    }
  }
  static void shapes() {
    QTest::addColumn<bool>("real");
    QTest::newRow("scripted") << false;
    QTest::newRow("real") << true;
  }
  QStringList complaints_;
};

void TestSupport::eachShapeIsStrict_data() {
  shapes();
}
void TestSupport::eachShapeIsStrict() {
  const auto complains = [this](const char* about) {
    const bool once = complaints_.size() == 1 && complaints_[0].contains(about);
    const bool more = complaints_.size() > 1 && complaints_.filter(about).size() >= 1;
    if (!once && !more) qInfo() << "expected" << about << "got" << complaints_;
    complaints_.clear();
    return once || more;
  };
  inShape([&](Expectations& boxes, Dialogs& dialogs) {
    QCOMPARE(dialogs.show({.text = "Nanu?", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
    QVERIFY(complains("unexpected box <Nanu?>"));
    QCOMPARE(dialogs.show({.text = "Nanu?", .buttons = BoxButtons::AbortRetryIgnore}), BoxAnswer::Abort);
    QVERIFY(complains("unexpected box <Nanu?>"));

    boxes.expect("Erst dies");
    QCOMPARE(dialogs.show({.text = "Dann das", .buttons = BoxButtons::OkCancel}), BoxAnswer::Cancel);
    QVERIFY(complains("expected box <Erst dies>"));
    boxes.finish();
    QVERIFY(complains("never came: box <Erst dies>"));

    boxes.expect("Text").titled("Fehler");
    dialogs.show({.text = "Text", .title = "Hinweis"});
    QVERIFY(complains("has the title <Hinweis>"));
    boxes.expect("Text", BoxAnswer::Yes).with(BoxButtons::OkCancel);
    dialogs.show({.text = "Text", .buttons = BoxButtons::YesNo});
    QVERIFY(complains("has the buttons Yes/No, expected Ok/Cancel"));
    boxes.expect("Text").showing(BoxIcon::Critical);
    dialogs.show({.text = "Text", .icon = BoxIcon::Information});
    QVERIFY(complains("has the icon information"));
    boxes.expect("Text", BoxAnswer::Yes).presetting(BoxAnswer::No);
    dialogs.show({.text = "Text", .buttons = BoxButtons::YesNo});
    QVERIFY(complains("presets Yes"));
    boxes.expect("Text", BoxAnswer::Retry);
    QCOMPARE(dialogs.show({.text = "Text", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
    QVERIFY(complains("no button for the answer Retry"));

    boxes.expectInput("Name:", "x");
    dialogs.note("Name:");
    QVERIFY(complains("expected input box <Name:>"));
    boxes.finish();
    complaints_.clear();
    QCOMPARE(dialogs.input("Name:"), "");
    QVERIFY(complains("unexpected input box <Name:>"));
    QCOMPARE(dialogs.chooseFolder("Ordner:"), "");
    QVERIFY(complains("unexpected folder dialog"));
    QCOMPARE(dialogs.openFile("A (*.x)|*.x"), "");
    QVERIFY(complains("unexpected file dialog"));
    QVERIFY(!dialogs.chooseFont({"Arial;10;0;0;0;0", 0}));
    QVERIFY(complains("unexpected font dialog"));
    boxes.expect("bleibt übrig");
  });
  QVERIFY(complains("never came: box <bleibt übrig>"));
}

void TestSupport::eachShapeAnswers_data() {
  shapes();
}
void TestSupport::eachShapeAnswers() {
  TestWorkplace place;
  place.files.write(place.path("a.x"), "");
  inShape([&](Expectations& boxes, Dialogs& dialogs) {
    bool open = false;
    boxes.expect("Eins\r\nZwei <b>", BoxAnswer::Ignore)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation)
        .presetting(BoxAnswer::Retry)
        .during([&] { open = true; });
    QCOMPARE(dialogs.show({.text = "Eins\r\nZwei <b>",
                           .title = "Fehler",
                           .icon = BoxIcon::Exclamation,
                           .buttons = BoxButtons::AbortRetryIgnore,
                           .preset = BoxAnswer::Retry}),
             BoxAnswer::Ignore);
    QVERIFY(open);
    boxes.expectInput("Name:", "Jäger").titled("Titel");
    QCOMPARE(dialogs.input("Name:", "Titel", "alt"), "Jäger");
    boxes.expectInput("Name:", std::nullopt);
    QCOMPARE(dialogs.input("Name:", "Titel", "alt"), "");
    boxes.expectOpenFile("A (*.x)|*.x|Alle Dateien (*.*)|*.*", place.path("a.x"));
    QCOMPARE(dialogs.openFile("A (*.x)|*.x|Alle Dateien (*.*)|*.*", place.path()), place.path("a.x"));
    boxes.expectOpenFile("A (*.x)|*.x", std::nullopt);
    QCOMPARE(dialogs.openFile("A (*.x)|*.x"), "");
    boxes.expectFolder("Bitte wählen:\r\nC:\\x", place.path("temp"));
    QCOMPARE(dialogs.chooseFolder("Bitte wählen:\r\nC:\\x", place.path()), place.path("temp"));
    boxes.expectFolder("Bitte wählen:", std::nullopt);
    QCOMPARE(dialogs.chooseFolder("Bitte wählen:"), "");
    boxes.expectFont(FontChoice{"DejaVu Sans;12;-1;0;0;0", 255});
    const auto font = dialogs.chooseFont({"DejaVu Sans;10;0;0;0;0", 255});
    QVERIFY(font);
    QCOMPARE(font->font, "DejaVu Sans;12;-1;0;0;0");
    QCOMPARE(font->colour, 255u);
    QVERIFY(boxes.done());
    QCOMPARE(boxes.asked().size(), 8);
  });
  QCOMPARE(complaints_, QStringList());
}

void TestSupport::realBoxesSeeRichTextAndStrangeButtons() {
  RealBoxes boxes(collect());
  boxes.expect("Text");
  QMessageBox rich;
  rich.setText("Text");
  rich.exec();
  QCOMPARE(complaints_, QStringList("box <Text> shows rich text"));
  complaints_.clear();
  boxes.expect("Text");
  QMessageBox strange;
  strange.setTextFormat(Qt::PlainText);
  strange.setText("Text");
  strange.setStandardButtons(QMessageBox::Yes | QMessageBox::Save);
  strange.exec();
  QCOMPARE(complaints_, QStringList("box <Text> has a strange set of buttons"));
}

void TestSupport::realBoxesAnswerNestedOnes() {
  RealBoxes boxes(collect());
  const TestClock clock;
  MessageBoxes dialogs(clock);
  QStringList answered;
  boxes.expect("außen", BoxAnswer::Yes).during([&] {
    boxes.expectInput("innen", "tief");
    answered += dialogs.input("innen", "", "");
  });
  if (dialogs.confirm("außen")) answered += "ja";
  QCOMPARE(answered, QStringList({"tief", "ja"}));
  QCOMPARE(complaints_, QStringList());

  // A box that opens by itself while another one waits for its answer.
  boxes.expect("außen", BoxAnswer::No).during([&] {
    QTimer::singleShot(0, this, [&] { dialogs.note("dazwischen"); });
    boxes.expect("dazwischen");
    while (!boxes.done()) QCoreApplication::processEvents();
  });
  QVERIFY(!dialogs.confirm("außen"));
  QCOMPARE(complaints_, QStringList());
}

void TestSupport::realBoxesDriveWindows() {
  RealBoxes boxes(collect());
  QDialog window;
  window.setObjectName("frmFenster");
  boxes.expectWindow("frmFenster", [](QWidget& shown) { static_cast<QDialog&>(shown).accept(); });
  QCOMPARE(window.exec(), int(QDialog::Accepted));
  QCOMPARE(complaints_, QStringList());
  boxes.expectWindow("frmFenster", [](QWidget&) {});
  QCOMPARE(window.exec(), int(QDialog::Rejected));
  QVERIFY(complaints_.value(0).startsWith("still open after its answer: frmFenster"));
  complaints_.clear();
  QCOMPARE(window.exec(), int(QDialog::Rejected));
  QCOMPARE(complaints_, QStringList("unexpected window <frmFenster>"));
}

void TestSupport::warningsFail() {
  {
    StrictMessages messages(collect());
    qWarning("so nicht");
    QCOMPARE(complaints_, QStringList("unexpected warning: so nicht"));
    complaints_.clear();
    qCritical("gar nicht");
    QCOMPARE(complaints_.size(), 1);
    complaints_.clear();
    messages.expect("^erwartet");
    qWarning("erwartet und gesagt");
    QCOMPARE(complaints_, QStringList());
    qWarning("erwartet und gesagt");
    QCOMPARE(complaints_.size(), 1);
    complaints_.clear();
    qWarning("This plugin does not support raise()");
    QCOMPARE(complaints_, QStringList());
    messages.expect("nie gesagt");
  }
  QCOMPARE(complaints_, QStringList("never said: nie gesagt"));
}

void TestSupport::clockWaitsAndChance() {
  TestClock clock;
  clock.set("20.11.2026 05:59:00");
  TestWaits waits(clock);
  QStringList seen;
  bool eventRan = false;
  QTimer::singleShot(0, this, [&] { eventRan = true; });
  waits.inEachSleep([&](int number) { seen += QString::number(number); });
  waits.inSleep(2, [&] { seen += "zweiter"; });
  waits.sleep(500);
  waits.sleep(200);
  waits.sleep(200);
  waits.runMessageLoop();
  QVERIFY(eventRan);
  QCOMPARE(seen, QStringList({"1", "2", "zweiter", "3"}));
  QCOMPARE(waits.sleeps(), QList<int>({500, 200, 200}));
  QCOMPARE(waits.total(), 900);
  QCOMPARE(waits.messageLoops(), 1);
  QCOMPARE(clock.now(), QDateTime(QDate(2026, 11, 20), QTime(5, 59, 0, 900)));

  TestRandom random(collect());
  random.give({0.25, 0.5});
  QCOMPARE(random.next(), 0.25);
  QVERIFY(!random.isEmpty());
  QCOMPARE(random.next(), 0.5);
  QCOMPARE(complaints_, QStringList());
  random.next();
  QCOMPARE(complaints_, QStringList("the random source ran dry"));
}

void TestSupport::filesFailAsWished() {
  TestWorkplace place;
  FailingFiles& files = place.files;
  files.fail(FileStep::Write, "A*.txt", 70, 2, 1);
  files.write(place.path("a1.txt"), "x");
  QCOMPARE(errorOf([&] { files.write(place.path("a1.txt"), "y"); }), 70);
  files.write(place.path("b.txt"), "x");
  QCOMPARE(errorOf([&] { files.write(place.path("a2.txt"), "y"); }), 70);
  files.write(place.path("a2.txt"), "z");
  QCOMPARE(files.read(place.path("a1.txt")), QByteArray("x"));
  files.fail(FileStep::Look, "b.txt", 0, 1);
  QVERIFY(!files.exists(place.path("b.txt")));
  QVERIFY(files.exists(place.path("b.txt")));
  QCOMPARE(files.looks(), 2);
  files.remove(place.path("b.txt"));
  QCOMPARE(files.journal(), QStringList({"write a1.txt", "write a1.txt !70", "write b.txt",
                                         "write a2.txt !70", "write a2.txt", "read a1.txt", "remove b.txt"}));
  QStringList seen;
  files.before([&](FileStep step, const QString& path) {
    if (step == FileStep::Read) seen += path;
  });
  files.read(place.path("a1.txt"));
  QCOMPARE(seen, QStringList(place.path("a1.txt")));
}

void TestSupport::tornWrites() {
  TestWorkplace place;
  place.files.tear(FileStep::Write, "t", 3);
  QCOMPARE(errorOf([&] { place.files.write(place.path("t"), "abcdef"); }), 61);
  QCOMPARE(place.files.read(place.path("t")), QByteArray("abc"));
  place.files.tear(FileStep::Append, "t", 1, 57);
  QCOMPARE(errorOf([&] { place.files.append(place.path("t"), "xyz"); }), 57);
  QCOMPARE(place.files.read(place.path("t")), QByteArray("abcx"));
  place.files.write(place.path("t"), "whole");
  QCOMPARE(place.files.read(place.path("t")), QByteArray("whole"));
}

void TestSupport::fullDiskAndGoneNetwork() {
  TestWorkplace place;
  place.files.write(place.path("a"), "x");
  place.files.fillDisk();
  QCOMPARE(errorOf([&] { place.files.append(place.path("a"), "y"); }), 61);
  QCOMPARE(errorOf([&] { place.files.makeFolder(place.path("neu")); }), 61);
  QCOMPARE(errorOf([&] { place.files.copy(place.path("a"), place.path("b")); }), 61);
  QCOMPARE(place.files.read(place.path("a")), QByteArray("x"));
  place.files.heal();
  place.files.unplug();
  QCOMPARE(errorOf([&] { place.files.read(place.path("a")); }), 76);
  QCOMPARE(errorOf([&] { place.files.remove(place.path("a")); }), 76);
  QVERIFY(!place.files.exists(place.path("a")));
  QVERIFY(!place.files.readable(place.path("a")));
  QVERIFY(!place.files.folderExists(place.path()));
  QCOMPARE(place.files.list(place.path(), "*"), QStringList());
  place.files.heal();
  QVERIFY(place.files.exists(place.path("a")));
}

void TestSupport::workplaceIsItsOwn() {
  qputenv("QK_DOKUMENTE", "/vorher");
  QString folder;
  {
    TestWorkplace place;
    folder = place.path();
    QVERIFY(!folder.contains('.'));
    QCOMPARE(qEnvironmentVariable("QK_DOKUMENTE"), place.path("dokumente"));
    QCOMPARE(qEnvironmentVariable("QK_EINSTELLUNGEN"), place.settings.filePath());
    place.settings.setValue("App", "Teil", "k", "v");
    QVERIFY(place.files.exists(place.path("einstellungen")));
  }
  QVERIFY(!QFile::exists(folder));
  QCOMPARE(qEnvironmentVariable("QK_DOKUMENTE"), "/vorher");
  qunsetenv("QK_DOKUMENTE");
}

namespace {

/// A small window to drive.
struct Window : QWidget {
  Window() : button("Los", this), edit(this), list(this), action("Eintrag", this) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&button);
    layout->addWidget(&edit);
    layout->addWidget(&list);
    button.setObjectName("cmdLos");
    edit.setObjectName("txtName");
    list.setObjectName("List1");
    action.setObjectName("mnuEintrag");
    list.setSelectionMode(QAbstractItemView::MultiSelection);
    list.addItems({"Eins", "Zwei"});
    auto* ticked = new QListWidgetItem("Drei", &list);
    ticked->setCheckState(Qt::Unchecked);
    show();
  }
  QPushButton button;
  QLineEdit edit;
  QListWidget list;
  QAction action;
};

}  // namespace

void TestSupport::driving() {
  Window window;
  int clicks = 0;
  int triggers = 0;
  connect(&window.button, &QPushButton::clicked, this, [&] { ++clicks; });
  connect(&window.action, &QAction::triggered, this, [&] { ++triggers; });
  click(window, "cmdLos");
  trigger(window, "mnuEintrag");
  QCOMPARE(clicks, 1);
  QCOMPARE(triggers, 1);
  type(window, "txtName", "Jörg Weiß 9,7;");
  QCOMPARE(window.edit.text(), "Jörg Weiß 9,7;");
  type(window, "txtName", "neu");
  QCOMPARE(window.edit.text(), "neu");
  typeInto(window.edit, "Ä");
  QCOMPARE(window.edit.text(), "neuÄ");
  press(window, "txtName", Qt::Key_Backspace);
  QCOMPARE(window.edit.text(), "neu");
  type(window, "txtName", "");
  QCOMPARE(window.edit.text(), "");
  tick(window, "List1", "Zwei");
  tick(window, "List1", "Drei");
  QCOMPARE(window.list.selectedItems().size(), 1);
  QCOMPARE(window.list.item(2)->checkState(), Qt::Checked);
  tick(window, "List1", "Zwei", false);
  QCOMPARE(window.list.selectedItems().size(), 0);
}

void TestSupport::drivingIsStrict() {
  Window window;
  QVERIFY_THROWS_EXCEPTION(DriveError, click(window, "cmdFehlt"));
  window.button.setEnabled(false);
  QVERIFY_THROWS_EXCEPTION(DriveError, click(window, "cmdLos"));
  window.button.setEnabled(true);
  window.button.hide();
  QVERIFY_THROWS_EXCEPTION(DriveError, click(window, "cmdLos"));
  window.button.show();
  QPushButton twin(&window);
  twin.setObjectName("cmdLos");
  QVERIFY_THROWS_EXCEPTION(DriveError, click(window, "cmdLos"));
  window.action.setEnabled(false);
  QVERIFY_THROWS_EXCEPTION(DriveError, trigger(window, "mnuEintrag"));
  QVERIFY_THROWS_EXCEPTION(DriveError, tick(window, "List1", "Vier"));
  QVERIFY_THROWS_EXCEPTION(DriveError, type(window, "List1", "x"));
  window.edit.setReadOnly(true);
  QVERIFY_THROWS_EXCEPTION(DriveError, type(window, "txtName", "x"));
  QVERIFY_THROWS_EXCEPTION(DriveError, the<QLineEdit>(window, "cmdLos"));
}

QTEST_MAIN(TestSupport)
#include "test_support.moc"
