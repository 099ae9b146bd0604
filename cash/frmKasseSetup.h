// "QK-Kasse Setup": five choices. All but the last are kept for the other programs of the family only.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/workplace.h"

namespace Ui {
class frmKasseSetup;
}

namespace qk {

class frmKasseSetup : public QDialog {
  Q_OBJECT

 public:
  explicit frmKasseSetup(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmKasseSetup() override;

 private:
  void cmdOK();

  Workplace workplace_;
  std::unique_ptr<Ui::frmKasseSetup> ui_;
};

}  // namespace qk
