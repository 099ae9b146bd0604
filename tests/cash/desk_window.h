// The cash desk's real window on a till, driven by object names.
#pragma once

#include <functional>
#include <memory>

#include "cash/frmFinanz.h"
#include "platform/grid/text_grid.h"
#include "tests/cash/recorded_labels.h"
#include "tests/cash/till.h"
#include "tests/support/drive.h"
#include "tests/support/report_doors.h"

class QLineEdit;

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
  /// Shows the tab of the labels, on printers that write down what they are told.
  RecordedLabels& recordLabels();

  /// "LG Meister: 10   (Zehner), 11   (Zehner)" for each root of `treeDiszi` or `treeKombi` that holds
  /// something.
  QStringList tree(const QString& name);
  /// Selects a root, or a child of it.
  void select(const QString& tree, int root, int child = -1);
  /// Opens a popup menu by that signal or key, and picks an entry of it; the captions of all.
  QStringList pick(const QString& entry, const std::function<void()>& open);
  /// Picks an entry of the menu that the right button opens on a stack.
  QStringList pickOfStack(int row, const QString& entry);

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

/// A column of a grid, without its header.
QStringList column(QWidget& window, const QString& grid, int which);

/// Types an amount that can't be read into the first row, expects its box, and gives the editor where it
/// stands again; null without one.
QLineEdit* typeUnreadableAmount(TextGrid& grid, ScriptedDialogs& dialogs);

/// One long press, as the platform tells it: the key and its repeats, each to whatever has the keyboard then.
void hold(Qt::Key key, int repeats);

/// Drives a window of the desk as soon as it has the keyboard.
std::function<void(QWidget&)> onceActive(std::function<void(QWidget&)> act);

}  // namespace qk::test
