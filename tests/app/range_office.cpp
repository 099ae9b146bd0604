#include "tests/app/range_office.h"

#include <QDir>
#include <QFile>
#include <QListView>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/textcodec.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_store.h"
#include "tools/wettkampf/exchange.h"

namespace qk::test {

namespace {

/// Files that every office begins with; made once for all tests of a program.
struct Originals {
  Originals() {
    createDatabase(folder.filePath("vorlage"),
                   [](dao::Database& db) { buildSchema(db, embeddedSchema("LeerSA.txt")); });
  }
  QTemporaryDir folder{QDir::tempPath() + "/qkXXXXXX"};
  const StoreOriginal competition{makeDemoCompetition};
};

const Originals& originals() {
  static const Originals made;
  return made;
}

}  // namespace

QString shotRecord(int line, int hit, const QString& ring, const QString& radius, const QString& competition,
                   const QString& startNumber) {
  return QStringList{"17",
                     competition,
                     "Herren I",
                     "1",
                     QString::number(line),
                     "Name",
                     "M",
                     "0",
                     QString::number(hit),
                     ring,
                     "o",
                     "1,5",
                     "-2,5",
                     radius,
                     "90",
                     QString("10:41:%1").arg(hit % 60, 2, 10, QChar('0')),
                     "1,0",
                     "20.11.2026",
                     "1.10",
                     "frei",
                     startNumber}
      .join(" ; ");
}

RangeOffice::RangeOffice(const QString& LinienAktiv) {
  const QString system = place.path("programm/System");
  QDir().mkpath(system);
  QFile::copy(originals().folder.filePath("vorlage"), system + "/LeerSA.mdb");
  for (const char* name : {"ErgSchützen.mdb", "QKUtil.mdb", "Scheiben.mdb"})
    QFile::copy(originals().folder.filePath("vorlage"), system + "/" + name);
  competition = place.path("Vereinsabend.qkk");
  originals().competition.copyTo(competition);
  folder = place.path("esa");
  writeExchangeFolder(place.files, folder);
  place.files.clearJournal();
  set("LinienAktiv", LinienAktiv);
  set("Netzverzeichnis", folder + "/");
  // They come at their own time, where a test isn't about them.
  place.settings.setValue("Tarvex", "Daten", "KopienAktiv", "0");
}

RangeOffice::~RangeOffice() {
  drop();
}

void RangeOffice::markForTestImport() {
  const QString data = place.path("dokumente/Tarvex/Daten");
  QDir().mkpath(data);
  place.files.write(data + "/ShowHaeringTestImport.txt", "");
}

bool RangeOffice::open(const QString& commandLine) {
  window_ = std::make_unique<frmLindorm>(workplace(), global_);
  return loadAndShow(commandLine);
}

bool RangeOffice::openWith(std::shared_ptr<Storage> storage) {
  window_ = std::make_unique<frmLindorm>(workplace(), global_, nullptr, std::move(storage));
  return loadAndShow(competition);
}

bool RangeOffice::loadAndShow(const QString& commandLine) {
  const bool loaded = window_->form_load(commandLine);
  window_->resize(1366, 740);
  window_->show();
  if (!QTest::qWaitForWindowExposed(window_.get())) failTest("the main window doesn't show");
  return loaded;
}

void RangeOffice::activate() {
  window_->activateWindow();
  if (!QTest::qWaitForWindowActive(window_.get())) failTest("the main window doesn't become active");
}

void RangeOffice::drop() {
  window_.reset();
  global_ = GlobalVariablen();
}

void RangeOffice::chooseShooter(int number, const QString& startNumber) {
  type(line(number), "m_txtStartNummer", startNumber);
  test::press(line(number), "m_txtStartNummer", Qt::Key_Return);
}

void RangeOffice::tickEntry(int number, const QString& list, const QString& entry) {
  auto& view = on<QListView>(number, list);
  const QModelIndexList found =
      view.model()->match(view.model()->index(0, 0), Qt::DisplayRole, entry, 1, Qt::MatchExactly);
  if (found.isEmpty()) return failTest("no entry " + entry + " in " + list);
  view.setFocus();
  view.setCurrentIndex(found.front());
  QTest::keyClick(&view, Qt::Key_Space);
}

void RangeOffice::show(int number) {
  for (int i = 0; i < tree().topLevelItemCount(); ++i) {
    QTreeWidgetItem* item = tree().topLevelItem(i);
    if (item->data(0, Qt::UserRole).toString() != "Linie" + QString::number(number)) continue;
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualItemRect(item).center());
    return;
  }
  failTest(QString("line %1 isn't in the tree").arg(number));
}

QString RangeOffice::takeCommand(int number) {
  const QString base = folderFile("HServ" + QString::number(number));
  if (!QFile::remove(base + ".ctl")) return {};
  QFile data(base + ".nrt");
  if (!data.open(QIODevice::ReadOnly)) return {};
  return fromWindows1252(data.readAll()).remove('"').remove("\r\n");
}

void RangeOffice::send(int number, const QStringList& lines) {
  const QString base = folderFile("HSlav" + QString::number(number));
  QFile data(base + ".nrt"), flag(base + ".ctl");
  QVERIFY(data.open(QIODevice::WriteOnly) && flag.open(QIODevice::WriteOnly));
  data.write(toWindows1252(lines.join("\r\n") + "\r\n"));
}

void RangeOffice::tick(int number) {
  auto* timer = line(number).findChild<QTimer*>("Timer1");
  if (!timer->isActive()) return;
  QTimerEvent event(timer->timerId());
  QCoreApplication::sendEvent(timer, &event);
}

int RangeOffice::rowsOf(const QString& query) const {
  const auto db = database();
  const auto rs = db->openRecordset(query);
  if (!rs->eof()) rs->moveLast();
  return rs->recordCount();
}

void RangeOffice::fire(int number, const QString& record) {
  send(number, {record});
  tick(number);
}

}  // namespace qk::test
