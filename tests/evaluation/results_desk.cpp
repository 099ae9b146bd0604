#include "tests/evaluation/results_desk.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>

#include "evaluation/result_table.h"

namespace qk::test {

ResultsDesk::ResultsDesk() {
  global.bErgebnisseAendern = true;
  bench.clock.set("22.11.2026 10:41:07");
  bench.fill(kResultRows);
}

frmSchuetzeErg& ResultsDesk::make(const QString& sStartnummer) {
  window_ = std::make_unique<frmSchuetzeErg>(bench.TestWorkplace::workplace(messageBoxes), global,
                                             ReportControl::Papers{current, asking});
  window_->setStartnummer(sStartnummer);
  window_->setWettkampf(bench.path("Pokal.qkk"));
  return *window_;
}

void ResultsDesk::open(const QString& sStartnummer) {
  make(sStartnummer);
  QVERIFY(window_->LoadSchuetzen());
  QVERIFY(window_->LoadErgebnisse());
  window_->show();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  for (const char* name : {"TDBGrid1", "TDBGrid2"})
    QVERIFY(the<BoundGrid>(*window_, name).rows()->waitForAll());
}

BoundGrid& ResultsDesk::grid() {
  const bool teiler = the<QTabWidget>(*window_, "SSTab1").currentIndex() == 0;
  return the<BoundGrid>(*window_, teiler ? "TDBGrid1" : "TDBGrid2");
}

QString ResultsDesk::shown(int column) {
  rows().waitForAll();
  QStringList cells;
  for (int row = 0; row < rows().count(); ++row) cells << rows().index(row, column).data().toString();
  return cells.join(" ");
}

QString ResultsDesk::count() {
  const bool teiler = &grid() == &the<BoundGrid>(*window_, "TDBGrid1");
  return the<QLabel>(*window_, teiler ? "Data2" : "Data3").text();
}

void ResultsDesk::clickTitle(int column) {
  QHeaderView* header = grid().horizontalHeader();
  const QPoint title(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, 5);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
}

void ResultsDesk::mark(int row) {
  const QRect cell = grid().visualRect(rows().index(row, 0));
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, Qt::ControlModifier, cell.center());
}

void ResultsDesk::activate() {
  window_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

QLineEdit* ResultsDesk::editor() {
  activate();
  QCoreApplication::processEvents();
  auto* editor = qobject_cast<QLineEdit*>(window_->focusWidget());
  return editor && grid().viewport()->isAncestorOf(editor) ? editor : nullptr;
}

void ResultsDesk::typeAt(int row, int column, const QString& text) {
  activate();
  grid().setFocus();
  grid().setCurrentIndex(rows().index(row, column));
  QTest::keyClick(&grid(), Qt::Key_F2);
  QLineEdit* cell = editor();
  QVERIFY(cell);
  cell->selectAll();
  if (text.isEmpty())
    QTest::keyClick(cell, Qt::Key_Delete);
  else
    typeInto(*cell, text);
  QTest::keyClick(cell, Qt::Key_Return);
  QCoreApplication::processEvents();  // the editor hands its text over from there
}

QString ResultsDesk::stored(const QString& table, int id) {
  return bench
      .read("Select * from " + table + " where ID = " + QString::number(id),
            {"Ergebnis", "WTyp", "Datum", "DisziID"})
      .join("/");
}

QStringList ResultsDesk::everything() {
  QStringList all;
  for (const char* table : {"Schuss", "SchussSerien"})
    all << bench.read(QString("Select * from ") + table + " order by ID",
                      {"ID", "Ergebnis", "WTyp", "Datum", "DisziID", "Startnummer"});
  return all;
}

QString ResultsDesk::ids(const QString& table, const QString& condition) {
  return bench.read("Select * from " + table + " where " + condition + " order by ID", {"ID"}).join(" ");
}

Expectation& ResultsDesk::expectError(const Error& error, const QString& text, BoxAnswer answer) {
  return boxes
      .expect("Fehler: " + QString::number(error.number()) + " - " + error.description() + "\n" + text,
              answer)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
}

Error ResultsDesk::breakListing() {
  Error error(0);
  BoundRows probe([&](const Error& failure) {
    error = failure;
    return ErrorAnswer::Abort;
  });
  probe.open(other(), resultQuery(ResultKind::Teiler, "107").text());
  probe.waitForAll();
  other().dropTable("Disziplin");
  probe.refresh();
  probe.waitForAll();
  return error;
}

}  // namespace qk::test
