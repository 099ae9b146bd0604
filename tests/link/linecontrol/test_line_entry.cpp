// What the operator types and presses on a line: it counts at once, and clearing clears all of it.
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QTest>
#include <QToolBar>

#include "link/linecontrol/line_disciplines.h"
#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestLineEntry : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("1");
    QVERIFY(office_->open());
  }
  void cleanup() { office_.reset(); }

  void signedOffTheButtonsStay();
  void clearingAlsoTakesAdditionalShots_data();
  void clearingAlsoTakesAdditionalShots();
  void whatIsBeingTypedCounts_data();
  void whatIsBeingTypedCounts();
  void listsInTheOrderOfTheCompetition();
  void longStartNumbers();
  void noneIsWhatTheButtonSays();

 private:
  TextTable& stationGrid() { return *office_->on<TextGrid>(1, "flexHaeringDiszi").table(); }
  TextTable& shots() { return *office_->on<TextGrid>(1, "flex").table(); }

  std::unique_ptr<RangeOffice> office_;
};

/// A lost 52 or 66 can be sent again.
void TestLineEntry::signedOffTheButtonsStay() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdAbmeldenSchuetze");
  QCOMPARE(office_->line(1).sStartnummer(), QString());
  QCOMPARE(office_->on<QLineEdit>(1, "m_txtStartNummer").text(), QString());
  for (const char* name : {"cmdAbmeldenSchuetze", "cmdNachkauf", "cmdSendenSchuetzenDisziplinen",
                           "cmdClearHaeringSchuss", "cmdWahlAlle", "cmdWahlKeine"})
    QVERIFY2(office_->on<QPushButton>(1, name).isEnabled(), name);
  QCOMPARE(office_->on<TextGrid>(1, "flexHaeringDiszi").palette().color(QPalette::Text),
           office_->line(1).palette().color(QPalette::Active, QPalette::Text));
  office_->takeCommand(1);
  office_->place.files.clearJournal();
  office_->press(1, "cmdAbmeldenSchuetze");
  QCOMPARE(office_->place.files.journal().count("write HServ1.nrt"), 3);
}

void TestLineEntry::clearingAlsoTakesAdditionalShots_data() {
  QTest::addColumn<QString>("by");
  QTest::newRow("Schuss leeren") << "cmdClearHaeringSchuss";
  QTest::newRow("keine wählen") << "cmdWahlKeine";
  QTest::newRow("another shooter") << "";
}

void TestLineEntry::clearingAlsoTakesAdditionalShots() {
  QFETCH(QString, by);
  office_->chooseShooter(1, "107");
  for (const int row : {1, 14}) {
    // Sent before, and entered again: total and base are no longer those of the def file.
    stationGrid().setText(row, LineDisciplines::Auswahl, "1");
    stationGrid().setText(row, LineDisciplines::Nachkauf, "7");
    stationGrid().setText(row, LineDisciplines::Gesamt, "99");
    stationGrid().setText(row, LineDisciplines::Grundwert, "92");
  }
  if (by.isEmpty())
    office_->chooseShooter(1, "105");
  else
    office_->press(1, by);
  for (const int row : {1, 14}) {
    const QString shots = stationGrid().text(row, LineDisciplines::Schuss);
    QVERIFY(!shots.isEmpty());
    QCOMPARE(stationGrid().text(row, LineDisciplines::Gesamt), shots);
    QCOMPARE(stationGrid().text(row, LineDisciplines::Grundwert), shots);
    QCOMPARE(stationGrid().text(row, LineDisciplines::Nachkauf), QString());
    QCOMPARE(stationGrid().text(row, LineDisciplines::Auswahl), QString(by == "cmdWahlKeine" ? "0" : "1"));
  }
}

void TestLineEntry::whatIsBeingTypedCounts_data() {
  QTest::addColumn<QString>("by");
  QTest::addColumn<QString>("command");
  const QString registration = "75107 ; Müller Jörg ; 107 ; 107 ; " + QString(30, '-');
  QTest::newRow("F6") << "F6" << registration;
  QTest::newRow("F7") << "F7"
                      << "801;5";
  QTest::newRow("button") << "cmdNachkauf"
                          << "801;5";
  QTest::newRow("mnemonic") << "Alt"
                            << "801;5";
  QTest::newRow("toolbar") << "anmelden" << registration;
}

/// A cell of the additional shots is still being edited when list and question are built.
void TestLineEntry::whatIsBeingTypedCounts() {
  QFETCH(QString, by);
  QFETCH(QString, command);
  office_->chooseShooter(1, "107");
  office_->activate();
  auto& grid = office_->on<TextGrid>(1, "flexHaeringDiszi");
  grid.setFocus();
  grid.setCurrentIndex(grid.model()->index(0, LineDisciplines::Nachkauf));
  QTest::keyClick(&grid, Qt::Key_5);
  QWidget* editor = QApplication::focusWidget();
  QVERIFY(editor != &grid && grid.isAncestorOf(editor));

  const QString typed = "(Gesamt: 45 - Akt. Nachkauf: 5 )       \r\n";
  const bool registers = by == "F6" || by == "anmelden";
  QString sent;
  office_->boxes
      .expect(registers ? "Disziplinen senden: \r\n\r\n- LG Meister\t" + typed +
                              "\r\n\r\nHINWEIS:\r\nEvtl. gesendete Diziplinen werden zurückgesetzt!"
                        : "Nachkauf senden: \r\n- LG Meister\t" + typed,
              BoxAnswer::Yes)
      .titled("Hinweis");
  office_->place.waits.inEachSleep([&](int) { sent += office_->takeCommand(1) + "|"; });
  if (by == "F6") QTest::keyClick(editor, Qt::Key_F6);
  if (by == "F7") QTest::keyClick(editor, Qt::Key_F7);
  if (by == "cmdNachkauf") office_->press(1, by);
  if (by == "Alt") {
    auto& button = office_->on<QPushButton>(1, "cmdNachkauf");
    button.setText("&Nachkauf senden");
    QTest::keyClick(editor, Qt::Key_N, Qt::AltModifier);
  }
  if (by == "anmelden") {
    auto& bar = the<QToolBar>(office_->window(), "Toolbar1");
    auto* button = bar.widgetForAction(&office_->action(by));
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(5, 5));
  }
  QTRY_VERIFY(office_->boxes.done());
  QTRY_COMPARE(stationGrid().text(1, LineDisciplines::Nachkauf), QString());
  sent += office_->takeCommand(1);
  QVERIFY2(sent.startsWith(command), qPrintable(sent));
  QVERIFY2(sent.endsWith("801;5"), qPrintable(sent));
  QCOMPARE(stationGrid().text(1, LineDisciplines::Grundwert), QString("45"));
}

void TestLineEntry::listsInTheOrderOfTheCompetition() {
  const auto entries = [this](const char* list) {
    const auto* model = office_->on<QListView>(1, list).model();
    QStringList all;
    for (int row = 0; row < model->rowCount(); ++row) all += model->index(row, 0).data().toString();
    return all;
  };
  const auto stored = [this](const QString& query, const QString& column) {
    const auto db = office_->database();
    QStringList all;
    for (const auto rs = db->openRecordset(query); !rs->eof(); rs->moveNext())
      all += rs->value(column).toString();
    return all;
  };
  const QStringList byPosition = stored("Select * from Disziplin order by CmdIndex", "Name");
  const QStringList byName = stored("Select * from Disziplin order by Name", "Name");
  const QString names = "Select * from Kombination_Name order by ";
  QVERIFY(byName != byPosition);
  QVERIFY(stored(names + "CmdIndex", "Kombinationsname") !=
          stored(names + "Kombinationsname", "Kombinationsname"));
  for (const bool disciplines : {false, true})
    for (const bool combinations : {false, true}) {
      office_->drop();
      office_->database()->execute(QString("UPDATE Wettkampf SET SortedDiszi = %1, SortedKombi = %2")
                                       .arg(disciplines ? -1 : 0)
                                       .arg(combinations ? -1 : 0));
      QVERIFY(office_->open());
      QCOMPARE(entries("m_lstDisziTarvex"), disciplines ? byName : byPosition);
      QCOMPARE(entries("m_lstKombiTarvex"),
               stored(names + (combinations ? "Kombinationsname" : "CmdIndex"), "Kombinationsname"));
    }
}

void TestLineEntry::longStartNumbers() {
  const QString number = QString(49, '9') + "7";
  office_->database()->execute("UPDATE Schützen SET Startnummer = '" + number +
                               "' WHERE Startnummer = '107'");
  office_->chooseShooter(1, number);
  QCOMPARE(office_->line(1).sStartnummer(), number);
}

void TestLineEntry::noneIsWhatTheButtonSays() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 2; ++hit) office_->fire(1, shotRecord(1, hit, "9,7", "123,4"));
  const auto ticks = [this] { return shots().text(1, 0) + "|" + shots().text(2, 0); };
  office_->tickEntry(1, "m_lstDisziTarvex", "LG Serie 10");
  office_->place.random.give({0.1});
  office_->press(1, "m_cmdAlleWaehlenHaering");
  QCOMPARE(ticks(), QString("-1|-1"));
  office_->press(1, "m_cmdAlleAbwaehlenHaering");
  QCOMPARE(ticks(), QString("0|0"));
  QCOMPARE(office_->on<QListWidget>(1, "lstBesteErg").count(), 0);
}

QTEST_MAIN(TestLineEntry)
#include "test_line_entry.moc"
