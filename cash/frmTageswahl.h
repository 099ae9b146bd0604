// Which day of the cash desk a list is for.
#pragma once

#include <QDate>
#include <QDialog>
#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class frmTageswahl;
}

namespace qk {

class frmTageswahl : public QDialog {
  Q_OBJECT

 public:
  /// `tage`: what is offered, the latest first.
  explicit frmTageswahl(std::vector<QDate> tage, QWidget* parent = nullptr);
  ~frmTageswahl() override;

  /// One choice only; else as many as are wanted.
  void setBSingleSel(bool bSingleSel);
  /// What was chosen; empty after cancelling.
  std::vector<QDate> GetTage() const;
  /// The last of the days offered; nothing where there is none.
  std::optional<QDate> GetLetzenTag() const;

 private:
  std::unique_ptr<Ui::frmTageswahl> ui_;
  std::vector<QDate> tage_;
};

}  // namespace qk
