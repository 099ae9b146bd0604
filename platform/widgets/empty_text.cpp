#include "platform/widgets/empty_text.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLabel>

namespace qk {

namespace {

class EmptyText : public QLabel {
 public:
  EmptyText(QAbstractItemView* view, const QString& text) : QLabel(text, view->viewport()), view_(view) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(6);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setForegroundRole(QPalette::PlaceholderText);
    setAutoFillBackground(false);
    view->viewport()->installEventFilter(this);
    const QAbstractItemModel* model = view->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyText::update);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyText::update);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyText::update);
    update();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) setGeometry(view_->viewport()->rect());
    return QLabel::eventFilter(watched, event);
  }

 private:
  void update() { setVisible(!view_->model() || view_->model()->rowCount() == 0); }

  QAbstractItemView* view_;
};

}  // namespace

void setEmptyText(QAbstractItemView* view, const QString& text) {
  for (QObject* child : view->viewport()->children())
    if (auto* shown = dynamic_cast<EmptyText*>(child)) return shown->setText(text);
  new EmptyText(view, text);
}

}  // namespace qk
