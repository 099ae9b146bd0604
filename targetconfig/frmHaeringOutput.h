// Sends any command text to chosen lines by hand, past the line controls: to try out and to mend a link.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <vector>

#include "platform/runtime/retry.h"
#include "platform/workplace.h"
#include "targetconfig/line_output.h"

namespace Ui {
class frmHaeringOutput;
}

namespace qk {

struct GlobalVariablen;

class frmHaeringOutput : public QDialog {
  Q_OBJECT

 public:
  frmHaeringOutput(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent = nullptr);
  ~frmHaeringOutput() override;

  /// The line to begin with: to be set before the window is shown.
  void setLinie(qint16 nLinie) { nLinie_ = nLinie; }
  qint16 nLinie() const { return nLinie_; }

  void setVisible(bool visible) override;

 private:
  ErrorReport report(const QString& routine) const;
  void Form_Load();
  void FillCmbOutput();
  void fillLines();
  void cmdSenden_Click();
  void showOutputs();

  Workplace workplace_;
  const GlobalVariablen& global_;
  std::unique_ptr<Ui::frmHaeringOutput> ui_;
  std::vector<LineOutput> outputs_;  // by row of List1
  QTimer look_;
  qint16 nLinie_ = 0;
};

}  // namespace qk
