// The members of a row as a list of ticks, with a filter above. Of a long table it shows the members and the
// first rows that hold what was typed; nothing is stored here.
#pragma once

#include <QListWidget>
#include <QWidget>

#include "masterdata/pages/page_query.h"
#include "masterdata/pages/row_edit.h"
#include "platform/runtime/retry.h"

class QLabel;
class QLineEdit;

namespace qk {

class LinkedListView : public QWidget {
  Q_OBJECT

 public:
  /// `position` among the lists of the page. `nameEnd` tells its controls from those of other lists.
  LinkedListView(const LinkedList& list, int position, const QString& nameEnd, ErrorReport report,
                 QWidget* parent = nullptr);

  /// The row whose members are ticked, or none. Both outlive what is shown.
  void show(RowEdit* row, dao::Database* database);
  /// Reads the rows anew; ticks that aren't stored stay.
  void refresh();

 Q_SIGNALS:
  void edited();

 private:
  void fill();
  void fillWith(const std::vector<NamedRow>& rows);
  void tick(QListWidgetItem* item);
  void showCount();

  const LinkedList& list_;
  int position_;
  ErrorReport report_;
  RowEdit* row_ = nullptr;
  dao::Database* database_ = nullptr;
  QLineEdit* filter_;
  QListWidget* rows_;
  QLabel* count_;
};

}  // namespace qk
