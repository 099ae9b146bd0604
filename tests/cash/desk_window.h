// The cash desk's real window on a till, driven by object names.
#pragma once

#include <functional>
#include <memory>

#include "cash/frmFinanz.h"
#include "platform/grid/text_grid.h"
#include "tests/cash/till.h"
#include "tests/support/drive.h"
#include "tests/support/report_doors.h"

namespace qk::test {

class DeskWindow {
 public:
  explicit DeskWindow(Till& till) : till_(till), reports_(none_) {}
  DeskWindow(Till& till, ReportDoor& reports) : till_(till), reports_(reports) {}

  /// Opens the desk as a program of its own does: without a shooter.
  void openEmpty();
  /// Opens the desk for a shooter, as the main window does, and waits until it has the keyboard.
  void open(const QString& sStartNr = "108", bool bOhneScheibenNummern = true);
  void close() { window_.reset(); }

  frmFinanz& window() { return *window_; }
  template <class T>
  T& on(const QString& name) {
    return the<T>(*window_, name);
  }
  QString text(const QString& label);
  bool visible(const QString& name) { return on<QWidget>(name).isVisible(); }
  QStringList purchase() { return Till::rows(*on<TextGrid>("flex").table()); }
  QStringList stored() { return Till::rows(*on<TextGrid>("flexAll").table()); }
  void press(const QString& button) { click(*window_, button); }
  void show(int tab);

  /// Types an article number slowly and Enter.
  void article(const QString& number);
  /// Keys at a scanner's speed, and Enter, to whatever has the keyboard.
  void scan(const QString& text);
  /// A key to whatever has the keyboard, after that time.
  void key(const QString& character, int milliseconds);
  void enter(int milliseconds);

 private:
  void showWindow();

  Till& till_;
  NoReports none_;
  ReportDoor& reports_;
  std::unique_ptr<frmFinanz> window_;
};

/// Drives a window of the desk as soon as it has the keyboard.
std::function<void(QWidget&)> onceActive(std::function<void(QWidget&)> act);

}  // namespace qk::test
