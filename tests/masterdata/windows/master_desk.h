// The program for master data for one test: a demo competition, settings, and the real window with real
// boxes.
#pragma once

#include <memory>

#include "masterdata/windows/main_window.h"
#include "platform/dialog/message_boxes.h"
#include "platform/grid/bound_grid.h"
#include "tests/support/drive.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

class MasterDesk {
 public:
  /// Makes the competition; no window yet.
  MasterDesk();
  ~MasterDesk();

  /// A copy of the demo competition beside it.
  QString anotherCompetition(const QString& name);
  /// The window, loaded and shown; false when the program would end.
  bool open(const QString& commandLine);
  bool open() { return open(competition); }
  void drop();
  MasterDataWindow& window() { return *window_; }
  Workplace workplace() { return place.workplace(messageBoxes_); }

  /// Chooses a page in the list on the left, by the keyboard. The page itself.
  QWidget& show(const QString& key);
  BoundGrid& grid(const QString& key) { return the<BoundGrid>(*window_, "grid_" + key); }
  /// The row of the page's grid that shows this text in that column becomes current.
  void choose(const QString& key, int column, const QString& text);
  QString cell(const QString& key, int row, int column);
  int rows(const QString& key);
  QString label(const QString& name);
  QString field(const QString& name);  ///< what stands in a line edit
  void setField(const QString& name, const QString& text) { type(*window_, name, text); }
  /// Chooses an entry of a box that drops down.
  void setChoice(const QString& name, const QString& text);
  /// Where the keyboard is. A box that was closed leaves no window active on the platform of the tests.
  QWidget& focus();
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  /// The first value of a query on the competition, by a connection of its own.
  QString value(const QString& query, const QString& path = {}) const;
  void execute(const QString& action) const;

  TestWorkplace place;
  QString competition;

 private:
  MessageBoxes messageBoxes_{place.clock};

 public:
  RealBoxes boxes;

 private:
  GlobalVariablen global_;
  std::unique_ptr<MasterDataWindow> window_;
};

}  // namespace qk::test
