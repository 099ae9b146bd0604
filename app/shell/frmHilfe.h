// The handbook in a window of its own, beside the work: contents, page, search, back and forward.
#pragma once

#include <QDialog>
#include <memory>

#include "app/shell/handbook.h"
#include "platform/workplace.h"

namespace Ui {
class frmHilfe;
}

namespace qk {

class frmHilfe : public QDialog {
  Q_OBJECT

 public:
  frmHilfe(const Workplace& workplace, const QString& folder, QWidget* parent = nullptr);
  ~frmHilfe() override;

  /// The one handbook beside a window, even one that keeps all others waiting. Without a page ("linie.html",
  /// "stoerungen.html#platz") it stays where it was left.
  static void showBeside(const Workplace& workplace, QWidget& window, const QString& page);

  /// Opens a page and forgets what lay ahead.
  void open(const QString& file, const QString& anchor = {});

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Place {
    QString file, anchor;
  };
  void makeKeys();
  void go(int step);
  void showPlace();
  void listPages();
  void findNext();

  Handbook handbook_;
  std::unique_ptr<Ui::frmHilfe> ui_;
  std::vector<Place> visited_;
  int at_ = -1;  ///< in visited_
};

}  // namespace qk
