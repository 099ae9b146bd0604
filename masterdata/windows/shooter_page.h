// The page of the shooters: the list with filters and order, and the form of the one that is chosen or typed.
#pragma once

#include <memory>

#include "masterdata/counter/counter.h"
#include "masterdata/windows/page_widget.h"
#include "platform/workplace.h"

namespace Ui {
class ShooterPage;
}

namespace qk {

class BoundRows;
class GridBrowser;

class ShooterPage : public PageWidget {
  Q_OBJECT

 public:
  explicit ShooterPage(const Workplace& workplace, QWidget* parent = nullptr);
  ~ShooterPage() override;

  void open(dao::Database& database) override;
  void refresh() override;
  bool leave() override;
  void begin() override;
  void addRow() override;
  void storeRow() override { save(); }
  void removeRow() override;
  void dropEdit() override;

  bool isEdited() const;
  /// False while something typed isn't stored.
  bool save();
  /// Rows that an act is meant for: those marked in the list, or the one that is shown.
  QList<qint64> chosen() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void layOutGrid();
  void showRows();
  void follow();
  void showShooter(qint64 id);
  void saveAndNext();
  void showState();
  void act(const QString& said);
  qint64 idOfRow(int row) const;

  Workplace workplace_;
  std::unique_ptr<Ui::ShooterPage> ui_;
  std::unique_ptr<BoundRows> rows_;
  std::unique_ptr<GridBrowser> browser_;
  dao::Database* database_ = nullptr;
  std::unique_ptr<Counter> counter_;
  QByteArray followed_;  // the row of the list that the form came from
};

}  // namespace qk
