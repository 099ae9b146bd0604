// A bound grid over a store with six rows, in a window with a neighbour for the keyboard.
#pragma once

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/runtime/error.h"
#include "tests/support/drive.h"
#include "tests/support/test_store.h"

namespace qk::test {

class BoundGridBench : public QObject {
 protected:
  void open() {
    folder = std::make_unique<QTemporaryDir>();
    prepareStore(folder->filePath("lager"));
    database = dao::Database::create(folder->filePath("lager"), {.durable = false});
    dao::FieldDef id{.name = "ID", .type = dao::FieldType::Long, .autoNumber = true};
    database->createTable({"Artikel",
                           {id,
                            {.name = "Name", .type = dao::FieldType::Text, .size = 20},
                            {.name = "Menge", .type = dao::FieldType::Long},
                            {.name = "Preis", .type = dao::FieldType::Double},
                            {.name = "Fertig", .type = dao::FieldType::Boolean},
                            {.name = "Am", .type = dao::FieldType::Date}},
                           {{"PrimaryKey", {"ID"}, true, true, true}}});
    const auto recordset = database->openRecordset("Artikel");
    for (int i = 1; i <= 6; ++i) {
      recordset->addNew();
      recordset->setValue("Name", QString("Nr %1").arg(i));
      recordset->setValue("Menge", 10 - i);
      recordset->setValue("Preis", i + 0.5);
      recordset->setValue("Am", QDateTime(QDate(2026, 11, 20), QTime(0, 0)));
      recordset->update();
    }
    reports.clear();
    answer = ErrorAnswer::Abort;
    window = std::make_unique<QWidget>();
    grid = new BoundGrid(window.get());
    elsewhere = new QLineEdit(window.get());
    auto* layout = new QVBoxLayout(window.get());
    layout->addWidget(grid);
    layout->addWidget(elsewhere);
    rows = new BoundRows(
        [this](const Error& error) {
          reports.append(error.number());
          lastDescription = error.description();
          return answer;
        },
        window.get());
    grid->setRows(rows);
    rows->open(*database, "Select * from Artikel order by ID");
    QVERIFY(rows->waitForAll());
    window->resize(700, 400);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
  }
  void close() {
    window.reset();
    database.reset();
  }
  QString cell(int row, int column) { return rows->index(row, column).data().toString(); }
  QString stored(const QString& field) {
    const auto recordset = database->openRecordset("Select * from Artikel order by ID");
    QStringList values;
    for (; !recordset->eof(); recordset->moveNext()) values.append(recordset->value(field).toString());
    return values.join(",");
  }
  void typeAt(int row, int column, const QString& text) {
    grid->setCurrentIndex(rows->index(row, column));
    grid->edit(rows->index(row, column));
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->selectAll();
    if (text.isEmpty())
      QTest::keyClick(editor, Qt::Key_Delete);
    else
      typeInto(*editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();  // the editor hands its text over from there
  }

  std::unique_ptr<QTemporaryDir> folder;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<QWidget> window;
  BoundGrid* grid = nullptr;
  BoundRows* rows = nullptr;
  QLineEdit* elsewhere = nullptr;
  QList<int> reports;
  QString lastDescription;
  ErrorAnswer answer = ErrorAnswer::Abort;
};

}  // namespace qk::test
