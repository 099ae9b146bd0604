// The generator's questions whether others take over what was entered.
#include <QDialog>
#include <QPushButton>

#include "platform/look/look.h"
#include "tests/targetconfig/generator_window.h"

using namespace qk;
using namespace qk::test;

class TestFrmHaeringDefFillDown : public QObject, private GeneratorWindow {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { begin(); }
  void cleanup() { end(); }

  void fillDownAsksOnce();
  void fillDownRefused();
  void fillDownWaitsForItsWindow();
  void fillDownEndsWithItsWindow();
  void fillDownBeforeAnotherFolder();
  void fillDownBeforeCreating();
  void fillDownByWeapon();
  void fillDownOfDefinitions();

 private:
  /// Types a weapon file into the first row; its editor, still open.
  QWidget* typeWeaponFile() {
    stand(1, C::DateiWaffe);
    QWidget* field = editor();
    if (field) typeInto(*field, "w");
    return field;
  }
};

void TestFrmHaeringDefFillDown::fillDownAsksOnce() {
  openWith({"a", "b"}, {"LG", "LP"});
  table().setText(3, C::DateiWaffe, "eigen");
  box(kColumnQuestion, BoxAnswer::Yes).titled("Frage").with(BoxButtons::YesNo);
  enter(1, C::DateiWaffe, "0_hwLG.def");
  QCOMPARE(column(C::DateiWaffe), (QStringList{"0_hwLG.def", "0_hwLG.def", "eigen", "0_hwLG.def"}));
  // In any other row nothing is asked.
  enter(2, C::DateiWaffe, "0_hwLP.def");
  QCOMPARE(text(2, C::DateiWaffe), "0_hwLP.def");
}

void TestFrmHaeringDefFillDown::fillDownRefused() {
  openWith({"a", "b"});
  box(kColumnQuestion, BoxAnswer::No);
  enter(1, C::DateiWaffe, "w");
  QCOMPARE(column(C::DateiWaffe), (QStringList{"w", ""}));
}

/// The question belongs to this window: another one is never covered by it.
void TestFrmHaeringDefFillDown::fillDownWaitsForItsWindow() {
  openWith({"a", "b"});
  QTest::keyClick(typeWeaponFile(), Qt::Key_Return);
  QCoreApplication::sendPostedEvents();
  QDialog other(window_.get());
  other.setModal(true);
  other.show();
  QVERIFY(QTest::qWaitForWindowActive(&other));
  QCoreApplication::processEvents();
  QVERIFY(office_->place.dialogs.asked().isEmpty());
  box(kColumnQuestion, BoxAnswer::Yes);
  other.close();
  window_->activateWindow();
  QTRY_COMPARE(column(C::DateiWaffe), (QStringList{"w", "w"}));
}

void TestFrmHaeringDefFillDown::fillDownEndsWithItsWindow() {
  openWith({"a", "b"});
  QTest::keyClick(typeWeaponFile(), Qt::Key_Return);
  QCoreApplication::sendPostedEvents();  // takes the text over; the question is still to come
  QCOMPARE(text(1, C::DateiWaffe), "w");
  the<QPushButton>(*window_, "cmdClose").click();
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  QVERIFY(office_->place.dialogs.asked().isEmpty());
  QCOMPARE(column(C::DateiWaffe), (QStringList{"w", ""}));
}

void TestFrmHaeringDefFillDown::fillDownBeforeAnotherFolder() {
  openWith({"a", "b"});
  typeWeaponFile();
  box(kColumnQuestion, BoxAnswer::Yes);
  office_->place.dialogs.expectFolder("Bitte Pfad auswählen:", std::nullopt);
  click(*window_, "cmdAuswahlDirecotry");
  QCOMPARE(column(C::DateiWaffe), (QStringList{"w", "w"}));
}

void TestFrmHaeringDefFillDown::fillDownBeforeCreating() {
  openWith({"a", "b"});
  fillFiles();
  table().setText(2, C::DateiWaffe, "");
  typeWeaponFile();
  // The click takes the cell over, and its question comes before the files do.
  box(kColumnQuestion, BoxAnswer::Yes);
  box(kCreated);
  click(*window_, "cmdErstellen");
  QCOMPARE(column(C::DateiWaffe), (QStringList{"w", "w"}));
  QVERIFY(office_->content("0_hd_LG_b.def").contains("\">DateiWaffe\"\r\n\"w\""));
}

void TestFrmHaeringDefFillDown::fillDownByWeapon() {
  openWith({"a", "b"}, {"LG", "LP"});
  box(kWeaponQuestion, BoxAnswer::Yes).titled("Frage").with(BoxButtons::YesNo);
  enter(4, C::DateiScheibe, "0_hsLP.def");
  QCOMPARE(column(C::DateiScheibe), (QStringList{"", "0_hsLP.def", "", "0_hsLP.def"}));
}

void TestFrmHaeringDefFillDown::fillDownOfDefinitions() {
  openWith({"a", "b"}, {"LG", "LP"});
  click(*window_, "optOutput_0");
  QCoreApplication::processEvents();
  box(kWeaponQuestion, BoxAnswer::Yes);
  enter(1, C::DefDatei, "x.def");
  QCOMPARE(column(C::DefDatei), (QStringList{"x.def", "", "x.def", ""}));
}

QTEST_MAIN(TestFrmHaeringDefFillDown)
#include "test_frm_haering_def_fill_down.moc"
