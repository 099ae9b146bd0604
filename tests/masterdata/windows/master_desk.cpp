#include "tests/masterdata/windows/master_desk.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include "masterdata/making/competition.h"
#include "masterdata/pages/page.h"
#include "platform/dao/recordset.h"
#include "platform/grid/bound_rows.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

const StoreOriginal& demo() {
  static const StoreOriginal original(makeDemoCompetition);
  return original;
}

}  // namespace

MasterDesk::MasterDesk() {
  // Its presence proves the right folder; nothing here reads it.
  QDir().mkpath(place.path("programm/System"));
  for (const char* name : {"ErgSchützen.mdb", "QKUtil.mdb", "Scheiben.mdb"})
    place.files.write(place.path("programm/System/") + name, "");
  competition = anotherCompetition("Vereinsabend.qkk");
}

QString MasterDesk::anotherCompetition(const QString& name) {
  demo().copyTo(place.path(name));
  return place.path(name);
}

MasterDesk::~MasterDesk() {
  drop();
}

bool MasterDesk::open(const QString& commandLine) {
  window_ = std::make_unique<MasterDataWindow>(workplace(), global_);
  const bool loaded = window_->load(commandLine);
  window_->resize(1366, 740);
  window_->show();
  if (!QTest::qWaitForWindowExposed(window_.get())) failTest("the window doesn't show");
  return loaded;
}

void MasterDesk::drop() {
  window_.reset();
  global_ = GlobalVariablen();
}

QWidget& MasterDesk::show(const QString& key) {
  auto& list = the<QListWidget>(*window_, "lstSeiten");
  list.setFocus();
  const std::vector<Page>& all = masterDataPages();
  for (int row = 0; row < int(all.size()); ++row) {
    if (all[size_t(row)].key != key) continue;
    QTest::keyClick(&list, Qt::Key_Home);
    for (int step = 0; step < row; ++step) QTest::keyClick(&list, Qt::Key_Down);
  }
  return *window_->page();
}

void MasterDesk::choose(const QString& key, int column, const QString& text) {
  BoundGrid& list = grid(key);
  list.rows()->waitForAll();
  for (int row = 0; row < list.rows()->count(); ++row) {
    if (cell(key, row, column) != text) continue;
    list.setFocus();
    list.setCurrentIndex(list.rows()->index(row, column));
    return;
  }
  failTest("no row " + text + " in " + key);
}

QString MasterDesk::cell(const QString& key, int row, int column) {
  const BoundRows& rows = *grid(key).rows();
  return rows.data(rows.index(row, column), Qt::DisplayRole).toString();
}

int MasterDesk::rows(const QString& key) {
  BoundRows& rows = *grid(key).rows();
  rows.waitForAll();
  return rows.count();
}

QString MasterDesk::label(const QString& name) {
  return the<QLabel>(*window_, name).text();
}

QString MasterDesk::field(const QString& name) {
  return the<QLineEdit>(*window_, name).text();
}

void MasterDesk::setChoice(const QString& name, const QString& text) {
  auto& list = the<QComboBox>(*window_, name);
  const int at = list.findText(text);
  if (at < 0) return failTest("no choice " + text + " in " + name);
  list.setFocus();
  QTest::keyClick(&list, Qt::Key_Home);
  while (list.currentIndex() < at) QTest::keyClick(&list, Qt::Key_Down);
}

QWidget& MasterDesk::focus() {
  window_->activateWindow();
  if (!QTest::qWaitForWindowActive(window_.get())) failTest("the window doesn't become active");
  QWidget* focus = window_->focusWidget();
  return focus ? *focus : *window_;
}

void MasterDesk::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&focus(), key, modifiers);
}

QString MasterDesk::value(const QString& query, const QString& path) const {
  const auto database = dao::Database::open(path.isEmpty() ? competition : path);
  const auto row = database->openRecordset(query);
  return row->eof() ? "-" : row->value(0).toString();
}

void MasterDesk::execute(const QString& action) const {
  dao::Database::open(competition)->execute(action);
}

}  // namespace qk::test
