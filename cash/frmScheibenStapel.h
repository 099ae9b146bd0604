// The editor of a stack of numbered targets.
//
//   frmScheibenStapel editor(workplace, database, this);
//   editor.setLStapelID(0);                      // a new one
//   if (editor.bearbeite()) …                    // saved; lStapelID() is its id
#pragma once

#include <QDialog>
#include <memory>

#include "cash/target_stacks.h"

namespace Ui {
class frmScheibenStapel;
}

namespace qk {

class frmScheibenStapel : public QDialog {
  Q_OBJECT

 public:
  /// The database outlives the window.
  frmScheibenStapel(const Workplace& workplace, dao::Database& database, QWidget* parent = nullptr);
  ~frmScheibenStapel() override;

  void setLStapelID(qint32 lStapelID) { lStapelID_ = lStapelID; }
  qint32 lStapelID() const { return lStapelID_; }
  /// Shows the stack and waits; true when it was saved. A stack that is gone is told and not shown.
  bool bearbeite();

 public Q_SLOTS:
  void accept() override;
  /// Asks before something typed is lost.
  void reject() override;

 private:
  void lade();
  void zeige(const StackInput& input);
  StackInput eingabe() const;
  bool speichere();

  Workplace workplace_;
  dao::Database& database_;
  std::unique_ptr<Ui::frmScheibenStapel> ui_;
  qint32 lStapelID_ = 0;
  TargetStack before_;
  StackInput shown_;
};

}  // namespace qk
