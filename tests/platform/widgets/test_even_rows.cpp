// A row of buttons that breaks into rows of equal length.
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "platform/widgets/even_rows.h"

using namespace qk;

class TestEvenRows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void oneRowWhereThereIsRoom();
  void groupsStandApart();
  void breaksEvenly_data();
  void breaksEvenly();
  void nothingIsCut();
  void hiddenOnesTakeNoRoom();
  void windowMakesRoomForTheRows();
  void aLongerTextIsLaidOutAnew();

 private:
  QStringList rows() const;
  int widthOfOneRow() const { return panel_->sizeHint().width(); }

  std::unique_ptr<QWidget> window_;
  EvenRows* panel_ = nullptr;
  QList<QPushButton*> buttons_;
};

void TestEvenRows::init() {
  window_ = std::make_unique<QWidget>();
  auto* layout = new QVBoxLayout(window_.get());
  layout->setContentsMargins(0, 0, 0, 0);
  panel_ = new EvenRows(window_.get());
  layout->addWidget(panel_);
  layout->addStretch(1);
  buttons_.clear();
  for (const char* text : {"auf Preismodus umschalten", "senden", "Nachkauf", "abmelden", "beenden", "frei"})
    buttons_.append(new QPushButton(text, panel_));
  window_->show();
}

/// The buttons of each row, by their number from left to right.
QStringList TestEvenRows::rows() const {
  QMap<int, QMap<int, int>> placed;
  for (int i = 0; i < buttons_.size(); ++i)
    if (!buttons_[i]->isHidden()) placed[buttons_[i]->y()][buttons_[i]->x()] = i + 1;
  QStringList all;
  for (const auto& row : placed) {
    QString numbers;
    for (int number : row) numbers += QString::number(number);
    all.append(numbers);
  }
  return all;
}

void TestEvenRows::oneRowWhereThereIsRoom() {
  panel_->resize(2 * widthOfOneRow(), 100);
  QCOMPARE(rows(), QStringList("123456"));
  for (const QPushButton* button : buttons_) QVERIFY(qAbs(button->width() - buttons_.front()->width()) <= 1);
  QCOMPARE(buttons_.back()->geometry().right(), panel_->width() - 1);
  // All of one width is a luxury: what is needed comes first.
  panel_->resize(widthOfOneRow(), 100);
  QCOMPARE(rows(), QStringList("123456"));
}

void TestEvenRows::groupsStandApart() {
  panel_->setLeftGroup(4);
  const int room = widthOfOneRow() + 100;
  panel_->resize(room, 100);
  QCOMPARE(rows(), QStringList("123456"));
  for (const QPushButton* button : buttons_) QCOMPARE(button->width(), button->sizeHint().width());
  const int between = buttons_[1]->x() - buttons_[0]->geometry().right();
  QCOMPARE(buttons_[4]->x() - buttons_[3]->geometry().right(), between + 100);
  QCOMPARE(buttons_[5]->geometry().right(), room - 1);
  panel_->resize(widthOfOneRow() - 1, 100);
  QCOMPARE(rows(), (QStringList{"123", "456"}));
  QVERIFY(qAbs(buttons_[4]->width() - buttons_[3]->width()) <= 1);
}

void TestEvenRows::breaksEvenly_data() {
  QTest::addColumn<double>("part");
  QTest::addColumn<QStringList>("rows");
  QTest::newRow("a little too narrow") << 0.99 << QStringList{"123", "456"};
  QTest::newRow("half") << 0.5 << QStringList{"12", "34", "56"};
  QTest::newRow("hardly any") << 0.1 << QStringList{"1", "2", "3", "4", "5", "6"};
}

void TestEvenRows::breaksEvenly() {
  QFETCH(double, part);
  QFETCH(QStringList, rows);
  const int width = int(widthOfOneRow() * part);
  panel_->resize(width, 400);
  QCOMPARE(this->rows(), rows);
  QCOMPARE(panel_->heightForWidth(width), buttons_.back()->geometry().bottom() + 1);
}

void TestEvenRows::nothingIsCut() {
  for (int width = panel_->minimumSizeHint().width(); width < widthOfOneRow() + 100; width += 7) {
    panel_->resize(width, panel_->heightForWidth(width));
    for (const QPushButton* button : buttons_) {
      QVERIFY(button->width() >= button->sizeHint().width());
      QVERIFY(panel_->rect().contains(button->geometry()));
    }
  }
}

void TestEvenRows::hiddenOnesTakeNoRoom() {
  const int all = widthOfOneRow();
  buttons_[0]->hide();
  QVERIFY(widthOfOneRow() < all);
  panel_->resize(widthOfOneRow(), 100);
  QCOMPARE(rows(), QStringList("23456"));
}

void TestEvenRows::windowMakesRoomForTheRows() {
  window_->resize(widthOfOneRow() * 2 / 3, 400);
  QTRY_COMPARE(rows().size(), 2);
  QCOMPARE(panel_->height(), panel_->heightForWidth(panel_->width()));
  window_->resize(widthOfOneRow() * 2, 400);
  QTRY_COMPARE(rows().size(), 1);
  QCOMPARE(panel_->height(), panel_->heightForWidth(panel_->width()));
}

void TestEvenRows::aLongerTextIsLaidOutAnew() {
  window_->resize(widthOfOneRow(), 400);
  QTRY_COMPARE(rows().size(), 1);
  buttons_[3]->setText("Schützen abmelden und Linie freigeben");
  QTRY_COMPARE(rows().size(), 2);
}

QTEST_MAIN(TestEvenRows)
#include "test_even_rows.moc"
