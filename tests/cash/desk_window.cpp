#include "tests/cash/desk_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "cash/label_panel.h"

namespace qk::test {

namespace {

constexpr int kFinger = 200;  // milliseconds between two keys

}  // namespace

void DeskWindow::open(const QString& sStartNr, bool bOhneScheibenNummern) {
  window_ = std::make_unique<frmFinanz>(till_.workplace(), till_.global, reports_);
  window_->setOhneScheibenNummern(bOhneScheibenNummern);
  window_->UpdateStartNr(sStartNr, "SG Grünau", "Grünau I");
  showWindow();
}

void DeskWindow::openEmpty() {
  window_ = std::make_unique<frmFinanz>(till_.workplace(), till_.global, reports_);
  if (!window_->oeffneOhneSchuetzen()) failTest("the cash desk doesn't open");
  showWindow();
}

void DeskWindow::showWindow() {
  window_->show();
  if (!QTest::qWaitForWindowActive(window_.get())) failTest("the cash desk doesn't become active");
}

QString DeskWindow::text(const QString& name) {
  auto& widget = on<QWidget>(name);
  if (auto* label = qobject_cast<QLabel*>(&widget)) return label->text();
  if (auto* edit = qobject_cast<QLineEdit*>(&widget)) return edit->text();
  return qobject_cast<QAbstractButton*>(&widget)->text();
}

void DeskWindow::show(int tab) {
  on<QTabWidget>("SSTab1").setCurrentIndex(tab);
}

RecordedLabels& DeskWindow::recordLabels() {
  auto made = std::make_unique<RecordedLabels>();
  RecordedLabels& output = *made;
  auto& panel = on<LabelPanel>("panelEtiketten");
  panel.setOutput(std::move(made));
  panel.Form_Load();
  show(4);
  return output;
}

QStringList DeskWindow::tree(const QString& name) {
  const QAbstractItemModel& model = *on<QTreeView>(name).model();
  QStringList lines;
  for (int row = 0; row < model.rowCount(); ++row) {
    const QModelIndex root = model.index(row, 0);
    QStringList targets;
    for (int child = 0; child < model.rowCount(root); ++child)
      targets += model.index(child, 0, root).data().toString();
    if (!targets.isEmpty()) lines += root.data().toString() + ": " + targets.join(", ");
  }
  return lines;
}

void DeskWindow::select(const QString& name, int root, int child) {
  auto& view = on<QTreeView>(name);
  const QModelIndex parent = view.model()->index(root, 0);
  view.setCurrentIndex(child < 0 ? parent : view.model()->index(child, 0, parent));
}

QStringList DeskWindow::pick(const QString& entry, const std::function<void()>& open) {
  QStringList captions;
  QTimer::singleShot(0, window_.get(), [&captions, entry] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QAction* action = menu ? menu->findChild<QAction*>(entry) : nullptr;
    if (!action) return failTest("no menu with " + entry);
    for (const QAction* each : menu->actions()) captions += each->text();
    menu->close();
    action->trigger();
  });
  open();
  return captions;
}

QStringList DeskWindow::pickOfStack(int row, const QString& entry) {
  auto& grid = on<TextGrid>("grdScheiben");
  grid.setCurrentRow(row);
  return pick(entry, [&] { Q_EMIT grid.contextMenuAt(grid.mapToGlobal(QPoint(5, 5))); });
}

void DeskWindow::key(const QString& character, int milliseconds) {
  till_.clock.advance(milliseconds);
  typeInto(*QApplication::focusWidget(), character);
}

void DeskWindow::enter(int milliseconds) {
  till_.clock.advance(milliseconds);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  QCoreApplication::processEvents();
}

void DeskWindow::article(const QString& number) {
  on<QLineEdit>("txtArtikelnummer").setFocus();
  for (const QChar c : number) key(c, kFinger);
  enter(kFinger);
}

void DeskWindow::scan(const QString& text) {
  for (const QChar c : text) key(c, 5);
  enter(5);
}

QStringList column(QWidget& window, const QString& grid, int which) {
  const TextTable& table = *the<TextGrid>(window, grid).table();
  QStringList cells;
  for (int row = 1; row < table.rows(); ++row) cells += table.text(row, which);
  return cells;
}

QLineEdit* typeUnreadableAmount(TextGrid& grid, ScriptedDialogs& dialogs) {
  const auto editor = [&] { return qobject_cast<QLineEdit*>(grid.indexWidget(grid.currentIndex())); };
  grid.setFocus();
  grid.setCurrentRow(1);
  grid.setCurrentIndex(grid.model()->index(0, CashColumn::Betrag));
  QTest::keyClick(&grid, Qt::Key_Return);
  if (!editor()) return nullptr;
  editor()->setText("12.50");
  dialogs.expect(
      "Fehler: 13 - »12.50« ist kein Betrag. Bitte mit Komma und ohne Punkte eingeben, z. B. 12,50.");
  QTest::keyClick(editor(), Qt::Key_Return);
  const bool again =
      QTest::qWaitFor([&] { return dialogs.done() && editor() && editor()->text() == "12.50"; });
  return again ? editor() : nullptr;
}

void hold(Qt::Key key, int repeats) {
  for (int i = 0; i <= repeats; ++i) {
    QWidget* target = QApplication::focusWidget();
    if (!target) return failTest("nothing has the keyboard");
    const bool repeated = i > 0;
    if (!qt_sendShortcutOverrideEvent(target, 0, key, Qt::NoModifier, {}, repeated)) {
      QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, {}, repeated);
      QApplication::sendEvent(target, &down);
    }
    QCoreApplication::processEvents();
  }
  QTest::keyRelease(QApplication::focusWidget(), key);
}

std::function<void(QWidget&)> onceActive(std::function<void(QWidget&)> act) {
  return [act = std::move(act)](QWidget& window) {
    // A modal window counts as active from the first, for its parent is: the keyboard is what is waited for.
    if (!QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }))
      failTest(window.objectName() + " doesn't become active");
    act(window);
  };
}

}  // namespace qk::test
