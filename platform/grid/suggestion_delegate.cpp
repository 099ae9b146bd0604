#include "platform/grid/suggestion_delegate.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace qk {

namespace {

constexpr int kLeastCharacters = 14;
constexpr int kMaxVisibleEntries = 16;

/// A combo box whose field shows the value of what is chosen, while its list shows the explanation too.
class SuggestionBox : public QComboBox {
  Q_OBJECT

 public:
  SuggestionBox(const Suggestions& suggestions, QWidget* parent) : QComboBox(parent) {
    setObjectName("cellEditor");
    setFrame(false);
    setEditable(true);
    setInsertPolicy(NoInsert);
    // Completing while somebody types would put "10" where "1" was meant.
    setCompleter(nullptr);
    lineEdit()->setReadOnly(!suggestions.freeText);
    setMaxVisibleItems(kMaxVisibleEntries);
    for (const Suggestion& entry : suggestions.entries) addItem(entry.shown, entry.value);
    connect(this, &QComboBox::activated, this, [this](int index) {
      setEditText(itemData(index).toString());
      if (std::exchange(dropped_, false)) Q_EMIT chosen();
    });
  }

  void setValue(const QString& value) {
    setCurrentIndex(findData(value));
    setEditText(value);
    lineEdit()->selectAll();
  }

  void showPopup() override {
    dropped_ = true;
    const int wanted = view()->sizeHintForColumn(0) + 2 * fontMetrics().height();
    view()->setMinimumWidth(std::min(wanted, window()->width()));
    QComboBox::showPopup();
  }

 Q_SIGNALS:
  void chosen();  ///< from the dropped list

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    dropped_ = false;
    QComboBox::keyPressEvent(event);
  }

 private:
  bool dropped_ = false;
};

}  // namespace

SuggestionDelegate::SuggestionDelegate(const Suggestions& suggestions, QObject* parent)
    : TickDelegate(parent), suggestions_(suggestions) {}

QWidget* SuggestionDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                          const QModelIndex& index) const {
  auto* box = new SuggestionBox(suggestions_, parent);
  const auto* model = index.model();
  box->setAccessibleName(model->headerData(index.column(), Qt::Horizontal).toString());
  connect(box, &SuggestionBox::chosen, this, [this, box] {
    auto* self = const_cast<SuggestionDelegate*>(this);
    Q_EMIT self->commitData(box);
    Q_EMIT self->closeEditor(box);
  });
  return box;
}

void SuggestionDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  static_cast<SuggestionBox*>(editor)->setValue(index.data(Qt::EditRole).toString());
}

void SuggestionDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                      const QModelIndex& index) const {
  model->setData(index, static_cast<SuggestionBox*>(editor)->currentText(), Qt::EditRole);
}

void SuggestionDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                              const QModelIndex&) const {
  QRect place = option.rect;
  const int wanted = editor->fontMetrics().averageCharWidth() * kLeastCharacters + 2 * place.height();
  place.setWidth(std::max(place.width(), wanted));
  if (const QWidget* parent = editor->parentWidget(); place.right() > parent->rect().right())
    place.moveRight(std::max(parent->rect().right(), place.width() - 1));
  editor->setGeometry(place);
}

}  // namespace qk

#include "suggestion_delegate.moc"
