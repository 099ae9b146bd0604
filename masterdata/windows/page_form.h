// The form of a page, made from its description: a control for each column, under headings.
//
// Controls are called "feld_" + the page's key + "_" + the column's name. What is edited goes into the row at
// once, nothing into the store.
#pragma once

#include <QHash>
#include <QWidget>
#include <functional>

#include "masterdata/pages/row_edit.h"
#include "platform/runtime/retry.h"

class QComboBox;
class QFormLayout;
class QLabel;

namespace qk {

class PageForm : public QWidget {
  Q_OBJECT

 public:
  /// `report`: for what can't be read while the form is worked with.
  explicit PageForm(ErrorReport report, QWidget* parent = nullptr);

  /// Makes the controls for the columns of the row; those of the row before go. Both outlive them.
  void build(RowEdit& row, dao::Database& database);
  /// No controls, and no row.
  void clear();
  /// Shows what the row holds; without an open row all is empty and disabled.
  void show();
  /// Reads what columns refer to anew.
  void refreshReferences();
  /// To the first control, or to that of a column.
  void focus(const QString& column = {});
  QWidget* controlOf(const QString& column) const { return fields_.value(column).control; }

 Q_SIGNALS:
  void edited();
  /// The keyboard is in the control of this column.
  void entered(const QString& column);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Field {
    QWidget* control = nullptr;
    std::function<void()> show;
  };
  void addHeading(QFormLayout& layout, const QString& text);
  Field field(const PageColumn& column);
  Field flagField(const PageColumn& column);
  Field choiceField(const PageColumn& column);
  Field referenceField(const PageColumn& column);
  Field lookUpField(const PageColumn& column);
  Field memoField(const PageColumn& column);
  Field textField(const PageColumn& column);
  void fillReference(const PageColumn& column, QComboBox& list) const;

  ErrorReport report_;
  RowEdit* row_ = nullptr;
  dao::Database* database_ = nullptr;
  QWidget* body_ = nullptr;
  QHash<QString, Field> fields_;
  QHash<QString, QComboBox*> references_;
  bool showing_ = false;
};

}  // namespace qk
