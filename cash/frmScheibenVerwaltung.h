// The administration of the target stacks: all of them, in the order of the desk, those that no desk shows
// too; and the two settings of this workstation that decide what its own desk shows.
#pragma once

#include <QDialog>
#include <memory>

#include "cash/target_stacks.h"

namespace Ui {
class frmScheibenVerwaltung;
}

namespace qk {

class frmScheibenVerwaltung : public QDialog {
  Q_OBJECT

 public:
  /// The database outlives the window.
  frmScheibenVerwaltung(const Workplace& workplace, dao::Database& database, QWidget* parent = nullptr);
  ~frmScheibenVerwaltung() override;

  void setVisible(bool visible) override;

 private:
  void connectControls();
  void Form_Load();
  void bearbeite(qint32 id);
  void verschiebe(int schritt);
  void zeige(qint32 id);
  void knoepfe();

  Workplace workplace_;
  dao::Database& database_;
  std::unique_ptr<Ui::frmScheibenVerwaltung> ui_;
  StackList stacks_;
};

}  // namespace qk
