// Tab "Scheibendruck": which labels a purchase pays for, how they are printed, and a picture of one. Every
// change of a setting is stored at once, and the picture follows.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "app/ground/settings_keys.h"
#include "cash/cash_desk.h"
#include "cash/diszi_kombi.h"
#include "cash/label_selection.h"
#include "platform/print/label_output.h"

class QAbstractButton;
class QLineEdit;

namespace Ui {
class LabelPanel;
}

namespace qk {

class PictureLabels;

class LabelPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LabelPanel(QWidget* parent = nullptr);
  ~LabelPanel() override;

  /// Once, before anything else; the desk outlives the panel.
  void setDesk(CashDesk& desk);
  /// What prints; the workstation's printers unless another is given.
  void setOutput(std::unique_ptr<LabelOutput> output);

  /// The window loads: printers, fonts and the label settings. Errors pass.
  void Form_Load();
  void Set_PrintScheibenFont();
  void Set_BarcodeFont();

  /// Rebuilds the selection table, all rows ticked.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// The table follows a row of the purchase, or all of them for -1.
  void UpdateBarcodeAnzeige(int nRow);
  /// Prints the labels: stake by stake, or the table as it was set by hand. False when the operator stopped
  /// it, or didn't want to print on a printer that stands still. Errors pass.
  bool cmdPrint();
  /// The pauses between sets let the program live: the window mustn't go meanwhile.
  bool druckt() const { return druckt_; }

 private:
  void connectControls();
  void keepFlag(QAbstractButton* box, const SettingKey& key);
  void keepPosition(QLineEdit* field, const SettingKey& key);
  void chooseFont(const SettingKey& key, const std::function<void()>& apply);
  void enableSecond();
  void showPrinter();
  /// The chosen printer is there; false when the operator doesn't want to wait for one that stands still.
  bool druckerBereit();
  int PrintScheibenEtiketten(int nRow, const std::function<bool()>& weiter);
  int anzahlEtiketten() const;
  void schedulePicture();
  void showPicture();
  void drawSample(LabelOutput& output) const;
  void showHints(const PictureLabels& picture);
  LabelLayout layoutOfLabels() const;
  LabelShooter shooterOfLabels(int nRow) const;
  void versuche(const std::function<void()>& routine);
  QString storedPrinter() const;
  Settings& settings() const { return desk_->workplace().settings; }

  std::unique_ptr<Ui::LabelPanel> ui_;
  CashDesk* desk_ = nullptr;
  std::unique_ptr<LabelSelection> selection_;
  std::unique_ptr<LabelOutput> output_;
  FontSpec barcodeFont_, textFont_;
  LabelPaper paper_;  ///< of the chosen printer
  QTimer pictureTimer_;
  bool druckt_ = false;
};

}  // namespace qk
