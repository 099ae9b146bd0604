// The results editor on a small competition: shooter 107 with five teilers and three series, shooter 108 with
// one of each, a teiler whose discipline is gone.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "evaluation/frmSchuetzeErg.h"
#include "platform/dialog/message_boxes.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "tests/capture/workbench.h"
#include "tests/evaluation/result_rows.h"
#include "tests/support/drive.h"
#include "tests/support/image_paper.h"
#include "tests/support/real_boxes.h"

namespace qk::test {

/// What somebody without the right is told.
inline const QString kRight =
    "Sie besitzen nicht das erforderliche Recht\r\num Ergebnisse zu löschen oder nachträglich zu ändern!";

class ResultsDesk {
 public:
  ResultsDesk();

  /// The window of that shooter, loaded and shown.
  void open(const QString& sStartnummer = "107");
  /// Constructed and told its shooter; not loaded.
  frmSchuetzeErg& make(const QString& sStartnummer = "107");
  frmSchuetzeErg& window() { return *window_; }
  void close() { window_.reset(); }

  BoundGrid& grid();  ///< of the active tab
  BoundRows& rows() { return *grid().rows(); }
  void showSerien() { the<QTabWidget>(*window_, "SSTab1").setCurrentIndex(1); }
  /// The column of all rows that are shown, divided by blanks.
  QString shown(int column);
  QString count();
  QString news() { return the<QLabel>(*window_, "lblStand").text(); }
  void clickTitle(int column);
  void select(int row) { grid().setCurrentRow(row); }
  /// Adds the row to the marks, as a click with the control key does.
  void mark(int row);
  /// Where a box was closed the platform of the tests leaves no window active; keys want one.
  void activate();
  /// The editor that is open, once what opens it has been dealt with; nullptr for none.
  QLineEdit* editor();
  /// F2, the text, Enter.
  void typeAt(int row, int column, const QString& text);

  /// "Ergebnis|Waffe|Datum|DisziID" of a stored row; empty when it is gone.
  QString stored(const QString& table, int id);
  QStringList everything();  ///< of both tables
  QString ids(const QString& table, const QString& condition = "ID > 0");
  /// The error box of the house.
  Expectation& expectError(const Error& error, const QString& text, BoxAnswer answer);
  /// From now on the teilers can't be listed: their disciplines are away. Returns the failure.
  Error breakListing();
  /// Another desk's connection.
  dao::Database& other() { return bench.store(); }

  Workbench bench;
  MessageBoxes messageBoxes{bench.clock};
  RealBoxes boxes;
  GlobalVariablen global;
  ImagePaper current, asking;

 private:
  std::unique_ptr<frmSchuetzeErg> window_;
};

}  // namespace qk::test
