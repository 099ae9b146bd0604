// The exchange folder, three switches of the program's behaviour, and the copies of the open competition.
#pragma once

#include <QDialog>
#include <memory>

#include "app/ground/copy_settings.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace Ui {
class frmHaeringEinstellungen;
}

namespace qk {

/// Asks for the exchange folder, naming the stored one, the chooser opening at `start`. With its final
/// separator; empty when cancelled. Stores nothing.
QString NetzverzeichnisWaehlen(const Workplace& workplace, const QString& start);

class frmHaeringEinstellungen : public QDialog {
  Q_OBJECT

 public:
  explicit frmHaeringEinstellungen(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmHaeringEinstellungen() override;

  bool bOK() const { return bOK_; }

 private:
  void cmdHaeringPfad_Click();
  void cmdKopienOrdner_Click();
  void cmdOK_Click();
  void showFolder(const QString& folder);
  void showCopies();
  void storeCopies(Steps& step);

  Workplace workplace_;
  std::unique_ptr<Ui::frmHaeringEinstellungen> ui_;
  QString folder_;  // empty while none is chosen
  CopySettings copies_;
  bool bOK_ = false;
};

}  // namespace qk
