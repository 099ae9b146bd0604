// What still stands in the editor of a cell counts, whatever key or button acts next.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <memory>

#include "platform/grid/filter_header.h"
#include "platform/grid/text_grid.h"

using qk::TextGrid;
using qk::TextTable;

namespace {

constexpr int kPlain = 0, kSuggesting = 1;

/// A window whose every way to act notes what the table says at that moment.
struct Window {
  Window() {
    auto* layout = new QVBoxLayout(&widget);
    menu = new QMenuBar(&widget);
    acts(menu->addMenu("&Bearbeiten")->addAction("Lesen"));
    tools = new QToolBar(&widget);
    acts(tools->addAction("Werkzeug"));
    button = new QPushButton("&Lesen", &widget);
    QObject::connect(button, &QPushButton::clicked, &widget, [this] { note(); });
    label = new QLabel("Beschriftung", &widget);
    grid = new TextGrid(&widget);
    for (QWidget* part : std::initializer_list<QWidget*>{menu, tools, button, label, grid})
      layout->addWidget(part);
    auto* key = new QShortcut(QKeySequence(Qt::Key_F6), &widget);
    QObject::connect(key, &QShortcut::activated, &widget, [this] { note(); });
    grid->table()->setColumns(2);
    for (const int column : {kPlain, kSuggesting}) {
      grid->table()->setColumnWidth(column, 3000);
      grid->table()->setEditable(column, true);
    }
    grid->setSuggestions(kSuggesting, {.freeText = true, .entries = {{"1", "eins"}, {"2", "zwei"}}});
    for (int row = 1; row <= 3; ++row) grid->table()->addRow({"alt", "alt"});
    widget.resize(500, 400);
    widget.show();
    widget.activateWindow();
    ready = QTest::qWaitForWindowActive(&widget);
  }
  void acts(QAction* action) {
    QObject::connect(action, &QAction::triggered, &widget, [this] { note(); });
  }
  void note() { seen = grid->table()->text(1, kPlain) + "|" + grid->table()->text(1, kSuggesting); }

  /// Types into a cell and leaves its editor open.
  void edit(int column, const QString& text) {
    grid->setFocus();
    grid->setCurrentIndex(grid->table()->index(0, column));
    grid->edit(grid->currentIndex());
    QTest::keyClicks(QApplication::focusWidget(), text);
  }
  bool isEditing() const { return grid->viewport()->findChild<QLineEdit*>() != nullptr; }

  QWidget widget;
  QMenuBar* menu;
  QToolBar* tools;
  QPushButton* button;
  QLabel* label;
  TextGrid* grid;
  QString seen;
  bool ready = false;
};

}  // namespace

class TestOpenEditors : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    window = std::make_unique<Window>();
    QVERIFY(window->ready);
  }
  void cleanup() { window.reset(); }

  void everyActionReadsWhatIsTyped_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("by");
    for (const char* by : {"key", "mnemonic", "button", "tool", "menu by mouse", "menu by keyboard"}) {
      QTest::newRow(qPrintable(QString("plain, ") + by)) << kPlain << by;
      QTest::newRow(qPrintable(QString("suggesting, ") + by)) << kSuggesting << by;
    }
  }
  void everyActionReadsWhatIsTyped() {
    QFETCH(int, column);
    QFETCH(QString, by);
    window->edit(column, "neu");
    QVERIFY(window->isEditing());
    QWidget* editor = QApplication::focusWidget();
    if (by == "key") QTest::keyClick(editor, Qt::Key_F6);
    if (by == "mnemonic") QTest::keyClick(editor, Qt::Key_L, Qt::AltModifier);
    if (by == "button") QTest::mouseClick(window->button, Qt::LeftButton);
    if (by == "tool")
      QTest::mouseClick(window->tools->widgetForAction(window->tools->actions().front()), Qt::LeftButton);
    if (by == "menu by mouse")
      QTest::mouseClick(window->menu, Qt::LeftButton, {},
                        window->menu->actionGeometry(window->menu->actions().front()).center());
    if (by == "menu by keyboard") QTest::keyClick(editor, Qt::Key_B, Qt::AltModifier);
    if (by.startsWith("menu")) {
      QVERIFY(QApplication::activePopupWidget());
      if (by == "menu by mouse") QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    }
    QTRY_COMPARE(window->seen, QString(column == kPlain ? "neu|alt" : "alt|neu"));
    QTRY_VERIFY(!window->isEditing());
  }

  void whatOnlyShowsEndsNoEdit() {
    window->edit(kPlain, "neu");
    QTest::mouseClick(window->label, Qt::LeftButton);
    QVERIFY(window->isEditing());
    QCOMPARE(window->grid->table()->text(1, kPlain), QString("alt"));
  }

  void theListOfACellIsPartOfTheEdit() {
    window->edit(kSuggesting, "");
    auto* box = window->grid->viewport()->findChild<QComboBox*>();
    QVERIFY(box);
    box->showPopup();
    QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {},
                      box->view()->visualRect(box->model()->index(1, 0)).center());
    QTRY_COMPARE(window->grid->table()->text(1, kSuggesting), QString("2"));
  }

  /// The cells of a filter row act with every key: they keep the keyboard.
  void filterCellsAreNoEditors() {
    auto* header = new qk::FilterHeader(window->grid);
    window->grid->setHorizontalHeader(header);
    header->setFilterRow(true);
    auto* cell = header->findChild<QLineEdit*>();
    QVERIFY(cell);
    cell->setFocus();
    QTest::keyClick(cell, Qt::Key_F6);
    QCOMPARE(window->seen, QString("alt|alt"));
    QVERIFY(cell->hasFocus());
  }

  /// A box over the cell may take down what was pressed.
  void whatIsGoneIsNotPressed() {
    connect(window->grid, &TextGrid::afterEdit, window->grid,
            [button = QPointer(window->button)] { delete button; });
    window->edit(kPlain, "neu");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_L, Qt::AltModifier);
    QCOMPARE(window->seen, QString());
    QCOMPARE(window->grid->table()->text(1, kPlain), QString("neu"));
  }

 private:
  std::unique_ptr<Window> window;
};

QTEST_MAIN(TestOpenEditors)
#include "test_open_editors.moc"
