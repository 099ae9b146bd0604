// The choice of advertising pictures on its real window, and the text that comes of it.
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <memory>

#include "platform/look/look.h"
#include "platform/widgets/picture_loader.h"
#include "platform/widgets/picture_view.h"
#include "targetconfig/frmWerbeFenster.h"
#include "targetconfig/line_choice.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kIconIsThere = Qt::UserRole + 1;

}  // namespace

class TestFrmWerbeFenster : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init();
  void cleanup();

  void offersTheLinesInUse();
  void offersOneLineOnly();
  void offersThePicturesOfTheFolder();
  void choosesForTheSelectedLines();
  void oneLineHasNoNumber();
  void drawsAPictureForEachLine();
  void twoLinesMayDrawTheSame();
  void withoutPicturesTheNameIsEmpty();
  void drawingFromNothingIsReported();
  void withoutAChosenPictureTheNameIsEmpty();
  void withoutALineItStays();
  void cancelChoosesNothing();
  void showsThePictures();
  void brokenPicturesHaveANote_data();
  void brokenPicturesHaveANote();
  void onlyWhatIsInSightIsRead();
  void theChoiceReadsBack();
  void manners();

 private:
  void open(bool bEinzel = false, qint16 AktLinie = 0) {
    dialog = std::make_unique<frmWerbeFenster>(place->workplace());
    dialog->setEinzel(bEinzel);
    dialog->setAktLinie(AktLinie);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  void addPicture(const QString& name, const QSize& size = {40, 30}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(file(name), "bmp"));
  }
  QString file(const QString& name) { return place->path("esa/" + name); }
  QListWidget& lines() { return the<QListWidget>(*dialog, "List1"); }
  QListWidget& pictures() { return the<QListWidget>(*dialog, "lstBilder"); }
  PictureView& preview() { return the<PictureView>(*dialog, "picVorschau"); }
  QStringList textsOf(const QListWidget& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) texts << list.item(row)->text();
    return texts;
  }
  int read() {
    int count = 0;
    for (int row = 0; row < pictures().count(); ++row)
      count += pictures().item(row)->data(kIconIsThere).toBool();
    return count;
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<frmWerbeFenster> dialog;
};

void TestFrmWerbeFenster::init() {
  place = std::make_unique<TestWorkplace>();
  place->files.makeFolder(place->path("esa"));
  place->settings.setValue("Tarvex", "Häring", "Netzverzeichnis", place->path("esa"));
  place->settings.setValue("Tarvex", "Häring", "LinienAktiv", "1011");
}

void TestFrmWerbeFenster::cleanup() {
  dialog.reset();
  place.reset();
}

void TestFrmWerbeFenster::offersTheLinesInUse() {
  open();
  QCOMPARE(dialog->windowTitle(), "Auswahl Werbefenster");
  for (const auto& [name, caption] : {std::pair{"cmdAlleWaehlen", "&Alle wählen"},
                                      {"cmdKeineWaehlen", "&Keine wählen"},
                                      {"chkZufall", "an gewählte Linien zufällig vergeben"}})
    QCOMPARE(the<QAbstractButton>(*dialog, name).text(), caption);
  QCOMPARE(textsOf(lines()), (QStringList{"Linie 1", "Linie 3", "Linie 4"}));
  QCOMPARE(lines().selectedItems().size(), 3);
  click(*dialog, "cmdKeineWaehlen");
  QCOMPARE(lines().selectedItems().size(), 0);
  click(*dialog, "cmdAlleWaehlen");
  QCOMPARE(lines().selectedItems().size(), 3);
}

void TestFrmWerbeFenster::offersOneLineOnly() {
  open(true, 7);
  QCOMPARE(textsOf(lines()), QStringList{"Linie 7"});
  QVERIFY(lines().item(0)->isSelected());
  for (const char* name : {"List1", "cmdAlleWaehlen", "cmdKeineWaehlen"})
    QVERIFY(!the<QWidget>(*dialog, name).isEnabled());
}

void TestFrmWerbeFenster::offersThePicturesOfTheFolder() {
  addPicture("Sponsor.bmp");
  addPicture("Bäcker.BMP");
  place->files.write(file("esa_preis.ini"), "");
  open();
  QCOMPARE(textsOf(pictures()), (QStringList{"Bäcker.BMP", "Sponsor.bmp"}));
  QVERIFY(pictures().item(0)->isSelected());
  QVERIFY(pictures().hasFocus());
}

void TestFrmWerbeFenster::choosesForTheSelectedLines() {
  addPicture("a.bmp");
  addPicture("b.bmp");
  open();
  tick(*dialog, "List1", "Linie 1", false);
  tick(*dialog, "List1", "Linie 1");  // the order of the list counts, not that of the clicks
  tick(*dialog, "List1", "Linie 3", false);
  tick(*dialog, "lstBilder", "b.bmp");
  click(*dialog, "cmdOK");
  QVERIFY(dialog->bOK());
  QVERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sBildName(), "1\tb.bmp;4\tb.bmp;");
  // Opened again it has chosen nothing yet.
  dialog->show();
  QVERIFY(!dialog->bOK());
  QCOMPARE(dialog->sBildName(), "");
}

void TestFrmWerbeFenster::oneLineHasNoNumber() {
  addPicture("a.bmp");
  open(true, 7);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sBildName(), "0\ta.bmp;");
}

void TestFrmWerbeFenster::drawsAPictureForEachLine() {
  for (const char* name : {"a.bmp", "b.bmp", "c.bmp"}) addPicture(name);
  place->random.give({0.999999, 0, 0.34});
  open();
  the<QCheckBox>(*dialog, "chkZufall").setChecked(true);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sBildName(), "1\tc.bmp;3\ta.bmp;4\tb.bmp;");
  QVERIFY(place->random.isEmpty());
}

void TestFrmWerbeFenster::twoLinesMayDrawTheSame() {
  for (const char* name : {"a.bmp", "b.bmp"}) addPicture(name);
  place->random.give({0.5, 0.5, 0.1});
  open();
  the<QCheckBox>(*dialog, "chkZufall").setChecked(true);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sBildName(), "1\tb.bmp;3\tb.bmp;4\ta.bmp;");
}

void TestFrmWerbeFenster::withoutPicturesTheNameIsEmpty() {
  open();
  click(*dialog, "cmdOK");
  QVERIFY(dialog->bOK());
  QCOMPARE(dialog->sBildName(), "1\t;3\t;4\t;");
}

void TestFrmWerbeFenster::drawingFromNothingIsReported() {
  const QString text = "Fehler: 9 - " + errorDescription(9) + "\nFehler bei cmdOK_Click_err!";
  open();
  the<QCheckBox>(*dialog, "chkZufall").setChecked(true);
  place->random.give({0.7});
  place->dialogs.expect(text, BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
  place->random.give({0.1, 0.2, 0.3, 0.4});
  place->dialogs.expect(text, BoxAnswer::Retry);
  for (int line = 0; line < 3; ++line) place->dialogs.expect(text, BoxAnswer::Ignore);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sBildName(), "1\t;3\t;4\t;");
}

void TestFrmWerbeFenster::withoutAChosenPictureTheNameIsEmpty() {
  addPicture("a.bmp");
  open();
  tick(*dialog, "lstBilder", "a.bmp", false);
  QCOMPARE(preview().text(), "Kein Bild gewählt");
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sBildName(), "1\t;3\t;4\t;");
}

void TestFrmWerbeFenster::withoutALineItStays() {
  open();
  click(*dialog, "cmdKeineWaehlen");
  place->dialogs.expect("Bitte mindestens eine Linie wählen!").titled("Hinweis").with(BoxButtons::Ok);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmWerbeFenster::cancelChoosesNothing() {
  addPicture("a.bmp");
  open();
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(dialog->sBildName(), "");
}

void TestFrmWerbeFenster::showsThePictures() {
  addPicture("a.bmp", {40, 30});
  addPicture("b.bmp", {2048, 1024});
  open();
  QTRY_COMPARE(preview().image().size(), QSize(40, 30));
  QCOMPARE(the<QLabel>(*dialog, "lblGroesse").text(), "40 × 30 Pixel");
  tick(*dialog, "lstBilder", "b.bmp");
  QTRY_COMPARE(preview().image().size(), QSize(1024, 512));
  QCOMPARE(the<QLabel>(*dialog, "lblGroesse").text(), "2048 × 1024 Pixel");
  QCOMPARE(preview().grab().toImage().pixelColor(preview().rect().center()), QColor(Qt::red));
  QTRY_COMPARE(read(), 2);
  QCOMPARE(pictures().item(1)->toolTip(), "2048 × 1024 Pixel");
  pictures().clearSelection();
  QCOMPARE(the<QLabel>(*dialog, "lblGroesse").text(), "");
}

void TestFrmWerbeFenster::brokenPicturesHaveANote_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<qint64>("size");
  QTest::addColumn<QString>("note");
  const auto header = [](qint32 width, qint32 height) {
    QByteArray bytes = QByteArray("BM") + QByteArray(8, '\0') + QByteArray("\x36\0\0\0\x28\0\0\0", 8);
    for (const qint32 value : {width, height})
      bytes += QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
    return bytes + QByteArray("\x01\0\x18\0", 4) + QByteArray(24, '\0');
  };
  const QString broken = "Die Datei ist beschädigt oder kein Bild.";
  QTest::newRow("empty") << QByteArray() << qint64(0) << broken;
  QTest::newRow("text") << QByteArray("kein Bild") << qint64(9) << broken;
  QTest::newRow("another format") << QByteArray(
                                         "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")
                                  << qint64(60) << broken;
  QTest::newRow("many pixels") << header(10000, 10000) << qint64(54)
                               << "Das Bild ist zu groß für eine Vorschau.";
  QTest::newRow("large file") << header(10, 10) << qint64(400 * 1000 * 1000)
                              << "Die Datei ist zu groß für eine Vorschau";
}

void TestFrmWerbeFenster::brokenPicturesHaveANote() {
  QFETCH(QByteArray, content);
  QFETCH(qint64, size);
  QFETCH(QString, note);
  place->files.write(file("a.bmp"), content);
  QVERIFY(QFile::resize(file("a.bmp"), size));  // sparse: takes no room
  addPicture("b.bmp");
  open();
  QTRY_VERIFY2(preview().text().startsWith(note), qPrintable(preview().text()));
  QTRY_COMPARE(read(), 2);
  QVERIFY(pictures().item(0)->toolTip().startsWith(note));
  QCOMPARE(pictures().item(1)->toolTip(), "40 × 30 Pixel");
  // Its name stands below the others.
  QCOMPARE(pictures().item(0)->icon().actualSize(pictures().iconSize()), pictures().iconSize());
  // Whether the station can show it is the station's affair.
  click(*dialog, "cmdOK");
  QVERIFY(dialog->sBildName().startsWith("1\ta.bmp;"));
}

void TestFrmWerbeFenster::onlyWhatIsInSightIsRead() {
  addPicture("000.bmp", {8, 8});
  for (int i = 1; i < 300; ++i)
    QVERIFY(QFile::copy(file("000.bmp"), file(QString("%1.bmp").arg(i, 3, 10, QChar('0')))));
  open();
  QCOMPARE(pictures().count(), 300);
  QTRY_VERIFY(pictures().item(0)->data(kIconIsThere).toBool());
  QTRY_VERIFY(pictures().item(3)->data(kIconIsThere).toBool());
  QVERIFY(read() < 60);
  QVERIFY(!pictures().item(299)->data(kIconIsThere).toBool());
  pictures().verticalScrollBar()->setValue(pictures().verticalScrollBar()->maximum());
  QTRY_VERIFY(pictures().item(299)->data(kIconIsThere).toBool());
  QVERIFY(read() < 120);
}

void TestFrmWerbeFenster::theChoiceReadsBack() {
  QCOMPARE(bilderJeLinie(""), (std::map<int, QString>{}));
  QCOMPARE(bilderJeLinie("1\ta.bmp;12\t;"), (std::map<int, QString>{{1, "a.bmp"}, {12, ""}}));
  QCOMPARE(bilderJeLinie(bildEintrag(3, "a;b.bmp") + bildEintrag(4, "c.bmp")),
           (std::map<int, QString>{{3, "a;b.bmp"}, {4, "c.bmp"}}));
}

void TestFrmWerbeFenster::manners() {
  addPicture("Ein Bild mit einem langen Namen und noch mehr davon.bmp");
  open();
  QTRY_COMPARE(read(), 1);
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmWerbeFenster)
#include "test_frm_werbe_fenster.moc"
