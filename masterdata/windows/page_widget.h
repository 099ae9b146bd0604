// What the main window asks of a page, whatever it looks like.
#pragma once

#include <QWidget>

#include "platform/dao/database.h"

namespace qk {

class PageWidget : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  /// Shows the rows of a competition, which outlives the page or the next call.
  virtual void open(dao::Database& database) = 0;
  /// Reads anew what other windows and workstations may have changed; what is edited here stays.
  virtual void refresh() = 0;
  /// Asks for what is edited and not stored. False when the operator goes on editing: the page stays then.
  virtual bool leave() = 0;
  /// The keyboard goes where the work on the page begins.
  virtual void begin() = 0;

  // What menu and keys do.
  virtual void addRow() {}
  virtual void storeRow() {}
  virtual void removeRow() {}
  virtual void dropEdit() {}

 Q_SIGNALS:
  /// Something went well: a line for the status bar. The number of rows may have changed.
  void done(const QString& text);
};

}  // namespace qk
