// The one report control: a report file, a data file, where it goes to.
//
//   ReportControl control(workplace, {current, asking});
//   control.run({.reportFile = "…/tag.rpt", .dataFile = path, .windowTitle = "Tag", .parameter =
//                "Tageswahl;Date(2026,11,20);TRUE;"});
#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "platform/report/report_data.h"
#include "platform/workplace.h"

class QWidget;

namespace qk {

class Paper;

namespace report {

struct Order {
  enum class Destination { Window = 0, Printer = 1 };

  QString reportFile;
  QString dataFile;
  QString subreport;      ///< name of a part that has a data file of its own
  QString subreportFile;  ///< that file
  QString windowTitle;
  /// Puts the window where it belongs, before it is shown; nothing leaves that to the window system.
  std::function<void(QWidget& window)> place = {};
  int zoom = 100;  ///< per cent
  Destination destination = Destination::Window;
  /// "Name;Date(YYYY,MM,dd);TRUE;" or "Name;text;TRUE;". Empty, or FALSE at its end: no value is set.
  QString parameter = {};
  /// Rows in memory for the first part, in place of its query.
  std::shared_ptr<const TableRows> rows = {};
};

/// Reads a parameter into its name and value. Error 5 where it hasn't that form.
void readParameter(const QString& text, QHash<QString, QVariant>& parameters);

}  // namespace report

class ReportControl {
 public:
  struct Papers {
    Paper& current;  ///< prints without a question
    Paper& asking;   ///< for the window's button
  };
  /// All of them outlive the control.
  ReportControl(const Workplace& workplace, Papers papers) : workplace_(workplace), papers_(papers) {}

  /// Returns when the report is printed, or its window closed: the data file may go then. False when the
  /// operator stopped the printing. Whatever keeps the report from being shown is an Error whose description
  /// names the report file and the line, or the data file: 53 report file missing, 321 mistake in it, those
  /// of the store, 482 printer, 5 parameter. The window says itself what goes wrong in it later.
  bool run(const report::Order& order, QWidget* parent = nullptr);
  /// The same for a report that is made, not read.
  bool run(report::Definition definition, const report::Order& order, QWidget* parent = nullptr);

 private:
  bool print(report::Definition definition, report::Input input, const report::Order& order);
  void show(report::Definition definition, report::Input input, const report::Order& order, QWidget* parent);

  Workplace workplace_;
  Papers papers_;
};

}  // namespace qk
