// Answers the real message boxes, input boxes, choosers and modal windows of a running program from the
// expectations. It sees every modal dialog as it is shown, nested ones too; what nobody expected is closed.
#pragma once

#include <QObject>

#include "tests/support/expectations.h"

class QDialog;
class QFileDialog;
class QFontDialog;
class QInputDialog;
class QMessageBox;

namespace qk {
class PrinterSetupDialog;
}

namespace qk::test {

class RealBoxes : public QObject, public Expectations {
  Q_OBJECT

 public:
  explicit RealBoxes(Complain complain = failTest);
  ~RealBoxes() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void answer(QDialog* dialog);
  void answerBox(QMessageBox& box);
  void answerInput(QInputDialog& dialog);
  void answerFile(QFileDialog& dialog);
  /// Sets the font only; the colour has a dialog of its own behind the button "cmdFarbe".
  void answerFont(QFontDialog& dialog);
  void answerPrinterSetup(PrinterSetupDialog& dialog);
  void answerWindow(QDialog& dialog);
};

}  // namespace qk::test
