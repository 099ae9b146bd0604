// What the cells of a grid suggest, chosen by keys and from the dropped list.
#include <QAbstractItemView>
#include <QSignalSpy>
#include <memory>

#include "tests/platform/grid/grid_window.h"

using qk::TextGrid;
using qk::test::GridWindow;

class TestTextGridSuggestions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    window = std::make_unique<GridWindow>();
    QVERIFY(window->ready);
  }
  void cleanup() { window.reset(); }

  void suggestionsAreParsed_data();
  void suggestionsAreParsed();
  void aSuggestionIsTakenByKeyboard();
  void freeTextBesideTheSuggestions();
  void aClosedListTakesNoText();
  void theListDropsAndAChoiceIsTakenAtOnce();
  void aClosedListIsForgotten();
  void theEditorHasRoom();
  void withoutEntriesTheFieldIsPlain();
  void f4FindsTheRowsSuggestions();

 private:
  std::unique_ptr<GridWindow> window;
};

void TestTextGridSuggestions::suggestionsAreParsed_data() {
  QTest::addColumn<QString>("list");
  QTest::addColumn<bool>("freeText");
  QTest::addColumn<QStringList>("values");
  QTest::addColumn<QStringList>("shown");
  QTest::newRow("nothing") << "" << false << QStringList() << QStringList();
  QTest::newRow("nothing but free text") << "|" << true << QStringList() << QStringList();
  QTest::newRow("plain") << "|a.def|b;c.def" << true << QStringList{"a.def", "b;c.def"}
                         << QStringList{"a.def", "b;c.def"};
  QTest::newRow("closed") << "ja|nein" << false << QStringList{"ja", "nein"} << QStringList{"ja", "nein"};
  QTest::newRow("codes") << "|0;Ring|-2;keine" << true << QStringList{"Ring", "keine"}
                         << QStringList{"Ring", "keine"};
  QTest::newRow("keys") << "|#7;1.10\tLuftgewehr|#8;2.10" << true << QStringList{"7", "8"}
                        << QStringList{"7 – 1.10 – Luftgewehr", "8 – 2.10"};
}

void TestTextGridSuggestions::suggestionsAreParsed() {
  QFETCH(QString, list);
  const qk::Suggestions parsed = qk::parseSuggestions(list);
  QStringList values, shown;
  for (const qk::Suggestion& entry : parsed.entries) {
    values << entry.value;
    shown << entry.shown;
  }
  QTEST(parsed.freeText, "freeText");
  QTEST(values, "values");
  QTEST(shown, "shown");
}

void TestTextGridSuggestions::aSuggestionIsTakenByKeyboard() {
  window->grid->setSuggestions(3, qk::parseSuggestions("|#7;1.10\tLuftgewehr|#8;2.10\tPistole"));
  QSignalSpy edited(window->grid, &TextGrid::afterEdit);
  window->click(2, 3);
  QTest::keyClick(window->grid, Qt::Key_F2);
  QTRY_VERIFY(window->list());
  QCOMPARE(window->list()->currentText(), "10");
  QTest::keyClick(window->list(), Qt::Key_Down);
  QCOMPARE(window->list()->currentText(), "7");
  QTest::keyClick(window->list(), Qt::Key_Down);
  QTest::keyClick(window->list(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(2, 3), "8");
  QTRY_VERIFY(!window->list());
  QCOMPARE(edited.size(), 1);

  QTest::keyClick(window->grid, Qt::Key_F2);
  QTRY_VERIFY(window->list());
  QTest::keyClick(window->list(), Qt::Key_Up);
  QTest::keyClick(window->list(), Qt::Key_Escape);
  QTRY_VERIFY(!window->list());
  QCOMPARE(window->table->text(2, 3), "8");
}

void TestTextGridSuggestions::freeTextBesideTheSuggestions() {
  window->grid->setSuggestions(3, qk::parseSuggestions("|10|100"));
  window->click(2, 3);
  // The digit that starts the editing counts, and nothing is completed.
  QTest::keyClick(window->grid, Qt::Key_1);
  QTRY_VERIFY(window->list());
  QCOMPARE(window->list()->currentText(), "1");
  QTest::keyClick(window->list(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(2, 3), "1");
}

void TestTextGridSuggestions::aClosedListTakesNoText() {
  window->grid->setSuggestions(3, qk::parseSuggestions("ja|nein"));
  window->click(2, 3);
  QTest::keyClick(window->grid, Qt::Key_F2);
  QTRY_VERIFY(window->list());
  QTest::keyClicks(window->list(), "x");
  QCOMPARE(window->list()->currentText(), "10");
  QTest::keyClick(window->list(), Qt::Key_Down);
  QTest::keyClick(window->list(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(2, 3), "ja");
}

void TestTextGridSuggestions::theListDropsAndAChoiceIsTakenAtOnce() {
  window->grid->setSuggestions(3, qk::parseSuggestions("|Ring|Zehntelringe"));
  window->click(2, 3);
  for (const auto& [key, modifiers] :
       {std::pair<Qt::Key, Qt::KeyboardModifiers>{Qt::Key_F4, {}}, {Qt::Key_Down, Qt::AltModifier}}) {
    window->table->setText(2, 3, "10");
    QTest::keyClick(window->grid, key, modifiers);
    QTRY_VERIFY(window->list());
    QTRY_VERIFY(window->list()->view()->isVisible());
    QTest::keyClick(window->list()->view(), Qt::Key_Down);
    QTest::keyClick(window->list()->view(), Qt::Key_Return);
    QTRY_VERIFY(!window->list());
    QCOMPARE(window->table->text(2, 3), "Zehntelringe");
  }
}

/// What is chosen by arrows later isn't taken before Enter.
void TestTextGridSuggestions::aClosedListIsForgotten() {
  window->grid->setSuggestions(3, qk::parseSuggestions("|Ring|Zehntelringe|Teiler"));
  window->click(2, 3);
  QTest::keyClick(window->grid, Qt::Key_F4);
  QTRY_VERIFY(window->list() && window->list()->view()->isVisible());
  QTest::keyClick(window->list()->view(), Qt::Key_Escape);
  QTRY_VERIFY(!window->list()->view()->isVisible());
  for (const char* shown : {"Ring", "Zehntelringe"}) {
    QTest::keyClick(window->list(), Qt::Key_Down);
    QVERIFY(window->list());
    QCOMPARE(window->list()->currentText(), shown);
    QCOMPARE(window->table->text(2, 3), "10");
  }
}

/// A column made for a figure still shows what it suggests.
void TestTextGridSuggestions::theEditorHasRoom() {
  window->table->setText(0, 3, "Wert");
  window->table->setColumnWidth(3, 600);
  window->grid->setSuggestions(3, qk::parseSuggestions("|#7;1.10\tLuftgewehr Auflage Senioren|#8;2.10"));
  const int character = window->grid->fontMetrics().averageCharWidth();
  for (const bool atTheEdge : {false, true}) {
    if (atTheEdge) window->table->setColumnWidth(1, 20 * 1440);
    QCoreApplication::processEvents();
    window->grid->setCurrentCell(2, 3);
    QTest::keyClick(window->grid, Qt::Key_F4);
    QTRY_VERIFY(window->list() && window->list()->view()->isVisible());
    QComboBox* box = window->list();
    QVERIFY(box->width() >= 14 * character);
    QVERIFY(box->geometry().right() <= window->grid->viewport()->rect().right());
    QVERIFY(box->view()->width() >= box->view()->sizeHintForColumn(0));
    QCOMPARE(box->accessibleName(), "Wert");
    QTest::keyClick(box->view(), Qt::Key_Escape);
    QTest::keyClick(box, Qt::Key_Escape);
    QTRY_VERIFY(!window->list());
  }
}

void TestTextGridSuggestions::withoutEntriesTheFieldIsPlain() {
  window->grid->setSuggestions(3, qk::parseSuggestions("|10"));
  window->grid->setSuggestions(3, {});
  window->click(2, 3);
  QTest::keyClick(window->grid, Qt::Key_F2);
  QTRY_VERIFY(window->editor());
  QVERIFY(!window->list());
}

void TestTextGridSuggestions::f4FindsTheRowsSuggestions() {
  QVERIFY(!window->grid->hasSuggestions());
  window->grid->setSuggestions(3, qk::parseSuggestions("|10|20"));
  QVERIFY(window->grid->hasSuggestions());
  window->grid->setCurrentIndex(window->table->index(1, 1));
  QTest::keyClick(window->grid, Qt::Key_F4);
  QVERIFY(window->list() && window->list()->view()->isVisible());
  QCOMPARE(window->grid->currentIndex(), window->table->index(1, 3));
  QTest::keyClick(window->list()->view(), Qt::Key_Escape);
  QTest::keyClick(window->list(), Qt::Key_Escape);
  QTRY_VERIFY(!window->list());
  window->table->setColumnWidth(3, 0);
  QVERIFY(!window->grid->hasSuggestions());
  QTest::keyClick(window->grid, Qt::Key_F4);
  QVERIFY(!window->list());
}

QTEST_MAIN(TestTextGridSuggestions)
#include "test_text_grid_suggestions.moc"
