// The entry of a shot by hand. Works on the shot it is given; the caller adds it to the line afterwards.
#pragma once

#include <QDialog>
#include <memory>

#include "capture/manual_shot.h"
#include "platform/workplace.h"

class QLineEdit;
namespace Ui {
class frmHaeringEinzelschuss;
}

namespace qk {

class frmHaeringEinzelschuss : public QDialog {
  Q_OBJECT

 public:
  /// `SchussHaering` outlives the window; `sWettbewerbe` holds the names to choose from, each closed by "|".
  frmHaeringEinzelschuss(const Workplace& workplace, HaeringSchuss& SchussHaering,
                         const QString& sWettbewerbe, QWidget* parent = nullptr);
  ~frmHaeringEinzelschuss() override;

  /// The operator confirmed, and the shot holds what was entered. Without it the shot is to be dropped.
  bool bOK() const { return bOK_; }

 private:
  struct TextField {
    QLineEdit* edit;
    QString SchussFormular::*text;
  };
  std::vector<TextField> textFields() const;
  SchussFormular form() const;
  void SchussInFormular();
  bool FormularInSchuss();
  void EingabePruefen(bool& bFehler);
  void cmdSave_Click();
  void txtRadius_Change();
  void txtTeilerFaktor_Change();

  Workplace workplace_;
  HaeringSchuss& SchussHaering_;
  std::unique_ptr<Ui::frmHaeringEinzelschuss> ui_;
  QString lateTeiler_;  ///< the teiler that a factor behind its radius has made; empty when none has
  bool bOK_ = false;
};

}  // namespace qk
