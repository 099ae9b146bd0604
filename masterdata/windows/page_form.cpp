#include "masterdata/windows/page_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "masterdata/pages/page_query.h"
#include "platform/look/plain_tip.h"

namespace qk {

namespace {

constexpr int kNumberCharacters = 10;
constexpr int kMemoLines = 3;
const char kColumn[] = "spalte";  // what column a control is for

QFont boldened(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace

PageForm::PageForm(ErrorReport report, QWidget* parent) : QWidget(parent), report_(std::move(report)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
}

void PageForm::addHeading(QFormLayout& layout, const QString& text) {
  auto* heading = new QLabel(text, body_);
  heading->setTextFormat(Qt::PlainText);
  heading->setFont(boldened(heading->font()));
  layout.addRow(heading);
}

void PageForm::clear() {
  row_ = nullptr;
  fields_.clear();
  references_.clear();
  delete std::exchange(body_, nullptr);
}

void PageForm::build(RowEdit& row, dao::Database& database) {
  clear();
  row_ = &row;
  database_ = &database;
  body_ = new QWidget(this);
  layout()->addWidget(body_);
  auto* form = new QFormLayout(body_);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  QString group;
  for (const PageColumn& column : row.columns()) {
    if (column.group != group && !column.group.isEmpty()) addHeading(*form, column.group);
    group = column.group;
    Field made = field(column);
    made.control->setObjectName("feld_" + row.page().key + "_" + column.column);
    made.control->setAccessibleName(column.label);
    made.control->setProperty(kColumn, column.column);
    made.control->setToolTip(plainTip(column.effect));
    made.control->installEventFilter(this);
    made.control->setFocusPolicy(Qt::StrongFocus);
    if (column.kind == ColumnKind::Flag) {
      form->addRow(QString(), made.control);
    } else {
      auto* label = new QLabel(column.label + ":", body_);
      label->setTextFormat(Qt::PlainText);
      label->setBuddy(made.control);
      QWidget* beside = made.control->parentWidget() == body_ ? made.control : made.control->parentWidget();
      form->addRow(label, beside);
    }
    fields_.insert(column.column, made);
  }
}

PageForm::Field PageForm::field(const PageColumn& column) {
  switch (column.kind) {
    case ColumnKind::Flag:
      return flagField(column);
    case ColumnKind::Choice:
      return choiceField(column);
    case ColumnKind::Reference:
      return referenceField(column);
    case ColumnKind::LookUp:
      return lookUpField(column);
    case ColumnKind::Memo:
      return memoField(column);
    default:
      return textField(column);
  }
}

PageForm::Field PageForm::flagField(const PageColumn& column) {
  auto* box = new QCheckBox(column.label, body_);
  connect(box, &QCheckBox::toggled, this, [this, name = column.column](bool on) {
    if (showing_) return;
    row_->setValue(name, on ? -1 : 0);
    Q_EMIT edited();
  });
  return {box, [this, box, name = column.column] { box->setChecked(row_->value(name).toInt() != 0); }};
}

/// A value that is none of the choices stands there as it is, until another one is chosen.
PageForm::Field PageForm::choiceField(const PageColumn& column) {
  auto* list = new QComboBox(body_);
  const auto fill = [this, list, column] {
    list->clear();
    for (const PageChoice& choice : column.choices) list->addItem(choice.text, choice.value);
    const QVariant value = row_->isOpen() ? row_->value(column.column) : QVariant();
    int at = -1;
    for (int i = 0; i < list->count(); ++i)
      if (list->itemData(i).toString() == value.toString()) at = i;
    if (at < 0 && !value.toString().isEmpty()) {
      list->addItem(value.toString(), value);
      at = list->count() - 1;
    }
    list->setCurrentIndex(at);
  };
  connect(list, &QComboBox::currentIndexChanged, this, [this, list, name = column.column](int at) {
    if (showing_ || at < 0) return;
    row_->setValue(name, list->itemData(at));
    Q_EMIT edited();
  });
  return {list, fill};
}

void PageForm::fillReference(const PageColumn& column, QComboBox& list) const {
  list.clear();
  list.addItem("(keine Angabe)", qlonglong(0));
  for (const NamedRow& row : referredRows(*database_, column.reference))
    list.addItem(row.text, qlonglong(row.key));
}

/// What it refers to may be gone; the number stands there then, and stays.
PageForm::Field PageForm::referenceField(const PageColumn& column) {
  auto* list = new QComboBox(body_);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kNumberCharacters);
  fillReference(column, *list);
  references_.insert(column.column, list);
  connect(list, &QComboBox::currentIndexChanged, this, [this, list, name = column.column](int at) {
    if (showing_ || at < 0) return;
    row_->setValue(name, list->itemData(at), list->itemText(at));
    Q_EMIT edited();
  });
  return {list, [this, list, name = column.column] {
            const qlonglong key = row_->isOpen() ? row_->value(name).toLongLong() : 0;
            int at = list->findData(key);
            if (at < 0) {
              list->addItem(QString("(fehlt: Nr. %1)").arg(key), key);
              at = list->count() - 1;
            }
            list->setCurrentIndex(at);
          }};
}

PageForm::Field PageForm::lookUpField(const PageColumn& column) {
  auto* beside = new QWidget(body_);
  auto* layout = new QHBoxLayout(beside);
  layout->setContentsMargins({});
  auto* edit = new QLineEdit(beside);
  edit->setMaximumWidth((kNumberCharacters + 4) * fontMetrics().averageCharWidth());
  auto* found = new QLabel(beside);
  found->setTextFormat(Qt::PlainText);
  found->setObjectName("lbl_" + row_->page().key + "_" + column.column);
  layout->addWidget(edit);
  layout->addWidget(found, 1);
  const auto name = [this, found, column = column.column] {
    QString text;
    reported(report_, [&](Steps&) {
      if (row_->isOpen()) text = row_->lookedUpText(column);
    });
    found->setText(text);
  };
  connect(edit, &QLineEdit::textEdited, this, [this, name, column = column.column](const QString& text) {
    row_->setEntry(column, text);
    name();
    Q_EMIT edited();
  });
  return {edit, [this, edit, name, column = column.column] {
            edit->setText(row_->isOpen() ? row_->entry(column) : QString());
            name();
          }};
}

PageForm::Field PageForm::memoField(const PageColumn& column) {
  auto* edit = new QPlainTextEdit(body_);
  edit->setTabChangesFocus(true);
  edit->setMaximumHeight((kMemoLines + 1) * fontMetrics().lineSpacing());
  connect(edit, &QPlainTextEdit::textChanged, this, [this, edit, name = column.column] {
    if (showing_) return;
    row_->setEntry(name, edit->toPlainText());
    Q_EMIT edited();
  });
  return {edit, [this, edit, name = column.column] {
            edit->setPlainText(row_->isOpen() ? row_->entry(name) : QString());
          }};
}

PageForm::Field PageForm::textField(const PageColumn& column) {
  auto* edit = new QLineEdit(body_);
  if (column.kind != ColumnKind::Text)
    edit->setMaximumWidth((kNumberCharacters + 4) * fontMetrics().averageCharWidth());
  connect(edit, &QLineEdit::textEdited, this, [this, name = column.column](const QString& text) {
    row_->setEntry(name, text);
    Q_EMIT edited();
  });
  return {edit, [this, edit, name = column.column] {
            edit->setText(row_->isOpen() ? row_->entry(name) : QString());
          }};
}

void PageForm::show() {
  const QScopedValueRollback showing(showing_, true);
  setEnabled(row_ && row_->isOpen());
  for (const Field& field : fields_) field.show();
}

void PageForm::refreshReferences() {
  if (!row_) return;
  const QScopedValueRollback showing(showing_, true);
  for (const PageColumn& column : row_->columns()) {
    QComboBox* list = references_.value(column.column);
    if (!list) continue;
    fillReference(column, *list);
    fields_.value(column.column).show();
  }
}

void PageForm::focus(const QString& column) {
  if (!row_ || row_->columns().empty()) return;
  const QString wanted = column.isEmpty() ? row_->columns().front().column : column;
  QWidget* control = fields_.value(wanted).control;
  if (!control) return;
  control->setFocus(Qt::ShortcutFocusReason);
  if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->selectAll();
}

bool PageForm::eventFilter(QObject* watched, QEvent* event) {
  // Who turns the wheel over the form wants to see more of it, not to change what he passes.
  const auto* list = qobject_cast<QComboBox*>(watched);
  if (event->type() == QEvent::Wheel && list && !list->hasFocus()) {
    event->ignore();
    return true;
  }
  if (event->type() == QEvent::FocusIn) Q_EMIT entered(watched->property(kColumn).toString());
  return QWidget::eventFilter(watched, event);
}

}  // namespace qk
