// Which firing lines exist at this station: edits the setting LinienAktiv, one character per line position.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/workplace.h"

namespace Ui {
class frmLinienSetup;
}

namespace qk {

class frmLinienSetup : public QDialog {
  Q_OBJECT

 public:
  explicit frmLinienSetup(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmLinienSetup() override;

  bool bOK() const { return bOK_; }
  /// The value of LinienAktiv: as read, after OK as stored.
  const QString& SettingsLinie() const { return settingsLinie_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmdUebertrag_Click();
  void cmdOK_Click();
  void fillList(int count);
  void showCount();

  Workplace workplace_;
  std::unique_ptr<Ui::frmLinienSetup> ui_;
  QString settingsLinie_;
  bool bOK_ = false;
};

}  // namespace qk
