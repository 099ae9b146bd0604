#include "tests/cash/desk_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

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

std::function<void(QWidget&)> onceActive(std::function<void(QWidget&)> act) {
  return [act = std::move(act)](QWidget& window) {
    // A modal window counts as active from the first, for its parent is: the keyboard is what is waited for.
    if (!QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }))
      failTest(window.objectName() + " doesn't become active");
    act(window);
  };
}

}  // namespace qk::test
