// What an empty list says, for as long as it is empty.
#include <QLabel>
#include <QListView>
#include <QStringListModel>
#include <QTest>

#include "platform/widgets/empty_text.h"

using namespace qk;

class TestEmptyText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void standsWhileThereAreNoRows() {
    QStringListModel model;
    QListView view;
    view.setModel(&model);
    setEmptyText(&view, "Keine Schützen");
    view.show();
    QLabel* text = shown(view);
    QVERIFY(text);
    QCOMPARE(text->text(), "Keine Schützen");
    model.setStringList({"Müller"});
    QVERIFY(!shown(view));
    model.removeRow(0);
    QCOMPARE(shown(view), text);
    model.insertRow(0);
    QVERIFY(!shown(view));
  }

  void anotherTextTakesItsPlace() {
    QStringListModel model;
    QListView view;
    view.setModel(&model);
    setEmptyText(&view, "Keine Schützen");
    setEmptyText(&view, "Nicht geöffnet");
    view.show();
    QCOMPARE(view.viewport()->findChildren<QLabel*>().size(), 1);
    QCOMPARE(shown(view)->text(), "Nicht geöffnet");
  }

  void isNeverCut() {
    QStringListModel model;
    QListView view;
    view.setModel(&model);
    setEmptyText(&view, "Der Wettkampf ist auf dieser Linie nicht geöffnet.");
    view.show();
    for (const int width : {400, 160}) {
      view.resize(width, 200);
      QLabel* text = shown(view);
      QCOMPARE(text->geometry(), view.viewport()->rect());
      QVERIFY(text->heightForWidth(text->width()) <= text->height());
      QVERIFY(text->minimumSizeHint().width() <= text->width());
    }
  }

 private:
  static QLabel* shown(const QListView& view) {
    for (QLabel* label : view.viewport()->findChildren<QLabel*>())
      if (label->isVisible()) return label;
    return nullptr;
  }
};

QTEST_MAIN(TestEmptyText)
#include "test_empty_text.moc"
