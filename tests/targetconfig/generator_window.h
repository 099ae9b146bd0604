// The generator's window on a competition, as its tests drive it.
#pragma once

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <memory>

#include "platform/grid/text_grid.h"
#include "targetconfig/frmHaeringDEF.h"
#include "tests/support/drive.h"
#include "tests/support/expectations.h"
#include "tests/targetconfig/configured_competition.h"

namespace qk::test {

inline const QString kColumnQuestion = "Alle offenen Einträge dieser Spalte übertragen?";
inline const QString kWeaponQuestion = "Alle offenen Einträge dieser Waffenart übertragen?";
inline const QString kCreated = "Datei(en) erstellt";

class GeneratorWindow {
 protected:
  using C = DefinitionRows;

  void begin() { office_ = std::make_unique<ConfiguredCompetition>(); }
  void end() {
    window_.reset();
    office_.reset();
  }
  void open() {
    window_ = std::make_unique<frmHaeringDEF>(office_->place.workplace(), office_->database());
    window_->show();
    if (!QTest::qWaitForWindowActive(window_.get())) failTest("the window doesn't become active");
    QCoreApplication::processEvents();
  }
  void openWith(const QStringList& names, const QStringList& weapons = {"LG"}) {
    for (const QString& name : names) office_->addDiscipline({name, 10, false, weapons});
    open();
  }
  TextGrid& grid() { return the<TextGrid>(*window_, "flexDEF"); }
  TextTable& table() { return *grid().table(); }
  QString text(int row, int column) { return table().text(row, column); }
  QStringList column(int number) {
    QStringList texts;
    for (int row = 1; row < table().rows(); ++row) texts << text(row, number);
    return texts;
  }
  QString preview() {
    QCoreApplication::processEvents();
    return the<QPlainTextEdit>(*window_, "txtVorschau").toPlainText();
  }
  QString count() {
    QCoreApplication::processEvents();
    return the<QLabel>(*window_, "lblAnzahl").text();
  }
  void stand(int row, int number) {
    grid().setFocus();
    grid().setCurrentIndex(table().index(row - 1, number));
  }
  /// The editor of the current cell, opened by F2.
  QWidget* editor() {
    QTest::keyClick(&grid(), Qt::Key_F2);
    QWidget* found = QApplication::focusWidget();
    return found == &grid() ? nullptr : found;
  }
  /// Types into a cell and takes it over by Enter.
  void enter(int row, int number, const QString& content) {
    stand(row, number);
    QWidget* field = editor();
    if (!field) return failTest("the cell has no editor");
    typeInto(*field, content);
    QTest::keyClick(field, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
  }
  void fillFiles() {
    for (int row = 1; row < table().rows(); ++row) {
      table().setText(row, C::DateiWaffe, "0_hwLG.def");
      table().setText(row, C::DateiScheibe, "0_hsLG.def");
    }
  }
  Expectation& box(const QString& message, BoxAnswer answer = BoxAnswer::Ok) {
    return office_->place.dialogs.expect(message, answer);
  }

  std::unique_ptr<ConfiguredCompetition> office_;
  std::unique_ptr<frmHaeringDEF> window_;
};

}  // namespace qk::test
