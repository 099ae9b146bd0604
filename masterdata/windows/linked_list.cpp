#include "masterdata/windows/linked_list.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "platform/widgets/empty_text.h"

namespace qk {

namespace {

constexpr int kShownAtOnce = 200;
constexpr int kKeyRole = Qt::UserRole;

}  // namespace

LinkedListView::LinkedListView(const LinkedList& list, int position, const QString& nameEnd,
                               ErrorReport report, QWidget* parent)
    : QWidget(parent),
      list_(list),
      position_(position),
      report_(std::move(report)),
      filter_(new QLineEdit(this)),
      rows_(new QListWidget(this)),
      count_(new QLabel(this)) {
  filter_->setObjectName("filter" + list.name + nameEnd);
  filter_->setPlaceholderText("Suchen");
  filter_->setAccessibleName(list.name + " suchen");
  filter_->setClearButtonEnabled(true);
  rows_->setObjectName("lst" + list.name + nameEnd);
  rows_->setAccessibleName(list.name);
  rows_->setUniformItemSizes(true);
  setEmptyText(rows_, list.empty);
  count_->setObjectName("lbl" + list.name + nameEnd);
  count_->setTextFormat(Qt::PlainText);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(filter_);
  layout->addWidget(rows_, 1);
  layout->addWidget(count_);
  connect(filter_, &QLineEdit::textChanged, this, &LinkedListView::fill);
  connect(filter_, &QLineEdit::returnPressed, this, [this] {
    rows_->setFocus(Qt::ShortcutFocusReason);
    if (rows_->currentRow() < 0) rows_->setCurrentRow(0);
  });
  connect(rows_, &QListWidget::itemChanged, this, &LinkedListView::tick);
}

void LinkedListView::show(RowEdit* row, dao::Database* database) {
  row_ = row;
  database_ = database;
  fill();
}

void LinkedListView::refresh() {
  fill();
}

void LinkedListView::fill() {
  std::vector<NamedRow> found;
  const bool hasRow = row_ && row_->isOpen() && row_->hasLink(position_);
  if (hasRow)
    reported(report_, [&](Steps&) {
      const QSet<qint64>& members = row_->members(position_);
      found = sourceRows(*database_, list_.source, filter_->text().trimmed(),
                         QList<qint64>(members.begin(), members.end()), kShownAtOnce);
    });
  setEnabled(hasRow);
  fillWith(found);
  if (hasRow)
    showCount();
  else
    count_->clear();
}

void LinkedListView::fillWith(const std::vector<NamedRow>& rows) {
  const QSignalBlocker quiet(rows_);
  const qint64 current = rows_->currentItem() ? rows_->currentItem()->data(kKeyRole).toLongLong() : 0;
  rows_->clear();
  for (const NamedRow& one : rows) {
    auto* item = new QListWidgetItem(one.text, rows_);
    item->setData(kKeyRole, one.key);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(row_->members(position_).contains(one.key) ? Qt::Checked : Qt::Unchecked);
    if (one.key == current) rows_->setCurrentItem(item);
  }
}

void LinkedListView::tick(QListWidgetItem* item) {
  row_->setMember(position_, item->data(kKeyRole).toLongLong(), item->checkState() == Qt::Checked,
                  item->text());
  showCount();
  Q_EMIT edited();
}

void LinkedListView::showCount() {
  QString text = QString("%1 gewählt").arg(row_->members(position_).size());
  if (rows_->count() >= kShownAtOnce) text += "; hier stehen nicht alle, die Suche engt ein";
  count_->setText(text);
}

}  // namespace qk
