// Dialogs as real windows: QMessageBox, QInputDialog, QFileDialog, all with plain text.
#pragma once

#include "platform/dialog/dialogs.h"

class QWidget;

namespace qk {

class Clock;

class MessageBoxes : public Dialogs {
 public:
  /// The clock tells when a box that came unasked takes its first key; it outlives this.
  explicit MessageBoxes(const Clock& clock) : clock_(clock) {}

  BoxAnswer show(const Box& box) override;
  QString input(const QString& prompt, const QString& title, const QString& preset) override;
  QString openFile(const QString& filter, const QString& start) override;
  QString saveFile(const QString& filter, const QString& start) override;
  QString chooseFolder(const QString& prompt, const QString& start) override;
  std::optional<FontChoice> chooseFont(const FontChoice& current) override;
  std::optional<PrinterSetup> printerSetup(const PrinterSetup& current) override;

  /// An input box whose text can't be read on the screen. Empty when cancelled.
  QString password(const QString& prompt, const QString& title);

 private:
  QString inputText(const QString& prompt, const QString& title, const QString& preset, bool masked);
  static QWidget* parentWindow();  ///< the active modal window, else the active window

  const Clock& clock_;
};

/// "A (*.x)|*.x;*.y|B (*.*)|*.*" as name filters of a file dialog that hides the patterns it appends:
/// "A (*.x) (*.x *.y)", "B (*.*) (*)".
QStringList nameFilters(const QString& filter);

}  // namespace qk
