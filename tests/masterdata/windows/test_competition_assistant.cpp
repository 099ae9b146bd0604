// The assistant for a new competition, on its real widgets.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <memory>

#include "masterdata/windows/new_competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/look/look.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestCompetitionAssistant : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    place->clock.set("22.11.2026 18:00:00");
    QDir().mkpath(place->path("programm/starter"));
    qputenv("QK_PROGRAMM", place->path("programm").toUtf8());
    place->files.write(place->path("programm/starter/klein.txt"),
                       "# Kleiner Verein\n# Nur eine Klasse.\n\nZeilen Schützenklassen\n"
                       "  ID | Klasse | KZ | Alter von | Alter bis | Auflage | Geschlecht\n"
                       "  1  | Alle   | A  | 0         | 120       | nein    | 0\n");
  }
  void cleanup() {
    window.reset();
    place.reset();
  }

  void aStarterSet();
  void thePathFollowsTheName();
  void whatIsMissingIsSaid();
  void likeTheOpenOne();
  void withoutStarterSets();
  void abandoned();
  void manners();

 private:
  void open(const QString& earlier = {}) {
    window = std::make_unique<NewCompetition>(place->workplace(), place->path(), earlier);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
  }
  QLineEdit& field(const char* name) { return the<QLineEdit>(*window, name); }
  /// Where the engine of the run has stores.
  QString target() {
    const QString path = place->path("Pokal.qkk");
    prepareStore(path);
    if (storesOnServer()) the<QRadioButton>(*window, "optServer").setChecked(true);
    return path;
  }
  QString value(const QString& path, const QString& query) {
    return dao::Database::open(path)->openRecordset(query)->value(0).toString();
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<NewCompetition> window;
};

void TestCompetitionAssistant::aStarterSet() {
  open();
  QCOMPARE(the<QComboBox>(*window, "cboStarter").currentText(), "Kleiner Verein");
  QCOMPARE(the<QLabel>(*window, "lblBeginn").text(), "Nur eine Klasse.");
  QCOMPARE(field("txtStichtag").text(), "22.11.2026");
  QVERIFY(field("txtBezeichnung").hasFocus());
  const QString path = target();
  type(*window, "txtBezeichnung", "Herbstpokal");
  type(*window, "txtBezeichnung2", "Vorrunde");
  type(*window, "txtOrt", "Grünau");
  type(*window, "txtStichtag", "1.7.26");
  type(*window, "txtPfad", path);
  press(*window, "txtPfad", Qt::Key_Return);
  QCOMPARE(window->path(), path);
  QVERIFY(!window->isVisible());
  QCOMPARE(value(path, "Select Bezeichnung from Wettkampf"), "Herbstpokal");
  QCOMPARE(value(path, "Select Bezeichnung2 from Wettkampf"), "Vorrunde");
  QCOMPARE(value(path, "Select Klasse from Schützenklassen"), "Alle");
}

void TestCompetitionAssistant::thePathFollowsTheName() {
  open();
  type(*window, "txtBezeichnung", "Pokal: 1. Runde/West");
  QCOMPARE(field("txtPfad").text(), place->path("Pokal- 1- Runde-West.qkk"));
  type(*window, "txtPfad", "/anderswo/pokal.qkk");
  type(*window, "txtBezeichnung", "Anders");
  QCOMPARE(field("txtPfad").text(), "/anderswo/pokal.qkk");
}

void TestCompetitionAssistant::whatIsMissingIsSaid() {
  open();
  place->dialogs.expect("Es fehlt die Bezeichnung des Wettkampfs.").titled("Neuer Wettkampf");
  click(*window, "cmdOK");
  QVERIFY(window->isVisible());
  type(*window, "txtBezeichnung", "Pokal");
  type(*window, "txtStichtag", "31.02.");
  place->dialogs.expect("»31.02.« ist kein Stichtag (TT.MM.JJJJ).");
  click(*window, "cmdOK");
  QVERIFY(field("txtStichtag").hasFocus());
  type(*window, "txtStichtag", "1.7.26");
  the<QComboBox>(*window, "cboStarter").setCurrentIndex(-1);
  place->dialogs.expect("Es ist kein Startersatz gewählt.");
  click(*window, "cmdOK");
  QVERIFY(the<QComboBox>(*window, "cboStarter").hasFocus());
  click(*window, "optFrueher");
  place->dialogs.expect("Es fehlt der frühere Wettkampf.");
  click(*window, "cmdOK");
  QVERIFY(field("txtFrueher").hasFocus());
  QCOMPARE(window->path(), "");
}

void TestCompetitionAssistant::likeTheOpenOne() {
  const QString earlier = place->path("Frueher.qkk");
  prepareStore(earlier);
  makeDemoCompetition(earlier);
  open(earlier);
  QVERIFY(!field("txtFrueher").isEnabled());
  click(*window, "optFrueher");
  QCOMPARE(field("txtFrueher").text(), earlier);
  QVERIFY(field("txtFrueher").isEnabled());
  the<QCheckBox>(*window, "chkVereine").setChecked(true);
  const QString path = target();
  type(*window, "txtBezeichnung", "Pokal");
  type(*window, "txtPfad", path);
  click(*window, "cmdOK");
  QCOMPARE(window->path(), path);
  QCOMPARE(value(path, "SELECT Count(*) AS N FROM Verein"),
           value(earlier, "SELECT Count(*) AS N FROM Verein"));
  QCOMPARE(value(path, "SELECT Count(*) AS N FROM Schützen"), "0");
}

void TestCompetitionAssistant::withoutStarterSets() {
  QFile::remove(place->path("programm/starter/klein.txt"));
  open();
  QVERIFY(!the<QRadioButton>(*window, "optStarter").isEnabled());
  QVERIFY(the<QRadioButton>(*window, "optLeer").isChecked());
}

void TestCompetitionAssistant::abandoned() {
  open();
  type(*window, "txtBezeichnung", "Pokal");
  press(*window, "txtBezeichnung", Qt::Key_Escape);
  QCOMPARE(window->path(), "");
  QVERIFY(!window->isVisible());
}

void TestCompetitionAssistant::manners() {
  open();
  QCOMPARE(badManners(*window).join('\n'), QString());
}

QTEST_MAIN(TestCompetitionAssistant)
#include "test_competition_assistant.moc"
