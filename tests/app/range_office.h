// A range office for one test: a competition, an exchange folder with its station disciplines, settings, and
// the real main window with real boxes. The station is the test itself.
#pragma once

#include <QPushButton>
#include <QTreeWidget>
#include <memory>

#include "app/frmLindorm.h"
#include "platform/dialog/message_boxes.h"
#include "tests/support/drive.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

/// A record line as a station sends it.
QString shotRecord(int line, int hit, const QString& ring, const QString& radius,
                   const QString& competition = "LG Meister", const QString& startNumber = "107");

class RangeOffice {
 public:
  /// Makes competition, templates, exchange folder and settings; no window yet.
  explicit RangeOffice(const QString& LinienAktiv = "101");
  ~RangeOffice();

  /// The file that makes the entry for recorded test data visible.
  void markForTestImport();
  /// The main window, loaded and shown. False when the load failed; the window is there all the same.
  bool open(const QString& commandLine);
  bool open() { return open(competition); }
  /// The same with a watch that looks at this.
  bool openWith(std::shared_ptr<Storage> storage);
  /// Ends the window without a question, as a crash would.
  void drop();
  frmLindorm& window() { return *window_; }
  GlobalVariablen& global() { return global_; }
  bool hasWindow() const { return window_ != nullptr; }

  /// Where a dialog was closed the platform of the tests leaves no window active; keys want one.
  void activate();

  Workplace workplace() { return place.workplace(messageBoxes_); }
  void set(const QString& key, const QString& value) {
    place.settings.setValue("Tarvex", "Häring", key, value);
  }

  /// The line control of a line, from 1.
  UserControl1& line(int number) { return window_->cLine(number - 1); }
  template <class T>
  T& on(int number, const QString& name) {
    line(number).txtStartnummer();  // the views of a line that wasn't shown yet come with its first need
    return the<T>(line(number), name);
  }
  void press(int number, const QString& button) { click(line(number), button); }
  void chooseShooter(int number, const QString& startNumber);
  /// Ticks an entry of a check list, by the keyboard.
  void tickEntry(int number, const QString& list, const QString& entry);
  /// A click on the line's node in the tree.
  void show(int number);
  QTreeWidget& tree() { return the<QTreeWidget>(*window_, "tree"); }
  QString node(int position) { return tree().topLevelItem(position - 1)->text(0); }
  QString mark(int position) {
    return tree().topLevelItem(position - 1)->data(0, Qt::UserRole + 1).toString();
  }
  QString tag(int position) {
    return tree().topLevelItem(position - 1)->data(0, Qt::UserRole + 2).toString();
  }
  QAction& action(const QString& name) { return the<QAction>(*window_, name); }

  // The station's side.
  QString folderFile(const QString& name) const { return folder + "/" + name; }
  /// The command that waits for a line, less its quotes; empty when none waits. Takes it away.
  QString takeCommand(int number);
  /// Data and flag for a line.
  void send(int number, const QStringList& lines);
  /// What a second of a line's timer does; nothing while the timer stands.
  void tick(int number);
  /// send and tick.
  void fire(int number, const QString& record);

  std::unique_ptr<dao::Database> database() const { return dao::Database::open(competition); }

  /// How many rows a query finds in the competition.
  int rowsOf(const QString& query) const;

  TestWorkplace place;
  RealBoxes boxes;
  QString competition;  ///< path of the competition file
  QString folder;       ///< exchange folder, without its final separator

 private:
  MessageBoxes messageBoxes_{place.clock};
  GlobalVariablen global_;
  bool loadAndShow(const QString& commandLine);

  std::unique_ptr<frmLindorm> window_;
};

}  // namespace qk::test
